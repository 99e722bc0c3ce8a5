// Comparing, finding and sorting.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include "host/engine/array_sort.h"
#include "host/engine/array_type.h"
#include "host/engine/array_use.h"
#include "host/engine/memory_budget.h"
#include "host/engine/native_call.h"
#include "host/engine/stop_query.h"

using korvant::ArrayType;
using korvant::ArrayUse;
using korvant::ElementOrder;
using korvant::failInScript;
using korvant::raiseInScript;
using korvant::StopEvery;

namespace {

/// Comparisons of numbers, and of objects, between two looks at the clock.
constexpr std::size_t kNumbers = 16384;
constexpr unsigned kObjects = 64;

/// What the order of elements that are no numbers is asked about.
void* objectIn(const void* place) {
    void* pointer;
    std::memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

bool failForMethods(const ArrayType& type, bool several, const char* methods) {
    try {
        raiseInScript((std::string("Type '") + type.element->GetName() +
                       (several ? "' has multiple matching " : "' does not have a matching ") +
                       methods + (several ? " methods" : " method"))
                          .c_str());
    } catch (...) {
        raiseInScript("Out of memory");
    }
    return false;
}

bool canBeFound(const ArrayType& type) {
    if (!type.holdsPointers() || type.kind == ArrayType::Kind::text) return true;
    return type.equal != nullptr || type.compare != nullptr ||
           failForMethods(type, type.severalEqual, "opEquals or opCmp");
}

bool canBeSorted(const ArrayType& type) {
    if (!type.holdsPointers() || type.kind == ArrayType::Kind::text) return true;
    return type.compare != nullptr || failForMethods(type, type.severalCompare, "opCmp");
}

/// Scripts have no other functions for this; hosts may.
bool takesTwoElements(const asIScriptFunction& less) {
    if (less.GetParamCount() != 2) return false;
    for (const asUINT parameter : {0U, 1U}) {
        int id = 0;
        asDWORD flags = 0;
        if (less.GetParam(parameter, &id, &flags) < 0) return false;
        if ((flags & asTM_INOUTREF) == 0 && (id & asTYPEID_OBJHANDLE) == 0) return false;
    }
    return true;
}

/// The index as scripts get it; they cannot be told of more.
int indexFor(asUINT found) {
    return found <= asUINT{std::numeric_limits<int>::max()} ? static_cast<int>(found) : -1;
}

/// Memory for the length of a sort, which counts against the run.
class Scratch {
  public:
    explicit Scratch(asQWORD bytes) {
        if (bytes > std::numeric_limits<std::size_t>::max() / 2) return;
        bytes_ = static_cast<std::size_t>(bytes);
        if (!korvant::memoryBudget.charge(bytes_)) return;
        memory_ = std::malloc(std::max<std::size_t>(bytes_, 1));
        if (memory_ == nullptr) korvant::memoryBudget.release(bytes_);
    }
    ~Scratch() {
        if (memory_ == nullptr) return;
        korvant::memoryBudget.release(bytes_);
        std::free(memory_);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    void* get() const { return memory_; }

  private:
    std::size_t bytes_ = 0;
    void* memory_ = nullptr;
};

template <class Number>
bool sortNumbers(Number* numbers, std::size_t count, bool asc) {
    constexpr std::size_t kInserted = 24;
    const Scratch spare(asQWORD{count} / 2 * sizeof(Number));
    if (spare.get() == nullptr) return failInScript("Out of memory");
    StopEvery every(64);
    const auto stop = [&every] { return every(); };
    auto* const half = static_cast<Number*>(spare.get());
    const auto up = [](Number left, Number right) { return left < right; };
    const auto down = [](Number left, Number right) { return right < left; };
    if (asc)
        korvant::mergeSort<Number, kInserted, kNumbers>(numbers, count, half, up, stop);
    else
        korvant::mergeSort<Number, kInserted, kNumbers>(numbers, count, half, down, stop);
    return true;
}

/// An element outside of its array, as large as the largest.
using Slot = asQWORD;

/// Sorts slots by what scripts say about elements. False when a comparison failed or the script is
/// to be stopped.
template <class Before>
bool sortSlots(Slot* slots, std::size_t count, ElementOrder& order, Before before) {
    StopEvery every(kObjects);
    bool stopped = false;
    const auto stop = [&] { return stopped = stopped || order.failed() || every(); };
    korvant::mergeSort<Slot, 1, 1>(slots, count, slots + count, before, stop);
    return !stopped && !order.failed();
}

bool sortByOwnOrder(Slot* slots, std::size_t count, const ArrayType& type, bool asc) {
    ElementOrder order(type);
    const auto up = [&order](const Slot& left, const Slot& right) {
        return order.before(objectIn(&left), objectIn(&right));
    };
    const auto down = [&up](const Slot& left, const Slot& right) { return up(right, left); };
    return asc ? sortSlots(slots, count, order, up) : sortSlots(slots, count, order, down);
}

bool sortByFunction(Slot* slots, std::size_t count, const ArrayType& type,
                    asIScriptFunction& less) {
    ElementOrder order(type);
    const bool objects = type.ownsObjects();
    const auto argument = [objects](const Slot& slot) {
        return objects ? objectIn(&slot) : const_cast<Slot*>(&slot);
    };
    return sortSlots(slots, count, order, [&](const Slot& left, const Slot& right) {
        return order.before(less, argument(left), argument(right));
    });
}

}  // namespace

bool ScriptArray::operator==(const ScriptArray& other) const noexcept {
    if (&type_ != &other.type_ || size_ != other.size_) return false;
    if (!type_.holdsPointers())
        return korvant::withNumber(type_.elementId, [&](auto number) {
            const auto* const first = reinterpret_cast<const decltype(number)*>(data_);
            return std::equal(first, first + size_,
                              reinterpret_cast<const decltype(number)*>(other.data_));
        });
    const ArrayUse use(*this), itsUse(other);
    ElementOrder order(type_);
    StopEvery stop(kObjects);
    for (asUINT i = 0; i < size_; ++i)
        if (stop() || !order.equal(objectIn(place(i)), objectIn(other.place(i)))) return false;
    return true;
}

int ScriptArray::Find(asUINT startAt, const void* value) const noexcept {
    if (!canBeFound(type_)) return -1;
    if (!type_.holdsPointers())
        return korvant::withNumber(type_.elementId, [&](auto number) {
            std::memcpy(&number, value, sizeof number);
            const auto* const first = reinterpret_cast<const decltype(number)*>(data_);
            const auto* const found =
                std::find(first + std::min(startAt, size_), first + size_, number);
            return found != first + size_ ? indexFor(static_cast<asUINT>(found - first)) : -1;
        });
    void* const wanted = type_.ownsObjects() ? const_cast<void*>(value) : objectIn(value);
    const ArrayUse use(*this);
    ElementOrder order(type_);
    StopEvery stop(kObjects);
    for (asUINT i = startAt; i < size_ && !order.failed() && !stop(); ++i)
        if (order.equal(objectIn(place(i)), wanted)) return indexFor(i);
    return -1;
}

int ScriptArray::FindByRef(asUINT startAt, const void* ref) const noexcept {
    const bool handles = type_.kind == ArrayType::Kind::handle;
    const void* const wanted = handles ? objectIn(ref) : ref;
    for (asUINT i = startAt; i < size_; ++i) {
        const void* const element = handles ? objectIn(place(i)) : elementAt(i);
        if (element == wanted) return indexFor(i);
    }
    return -1;
}

bool ScriptArray::Sort(asUINT startAt, asUINT count, bool asc) noexcept {
    if (!mayChange() || !canBeSorted(type_)) return false;
    if (count < 2) return true;
    if (asQWORD{startAt} + count > size_) return failInScript("Index out of bounds");
    if (type_.holdsPointers()) return sortElements(nullptr, startAt, count, asc);
    return korvant::withNumber(type_.elementId, [&](auto number) {
        return sortNumbers(reinterpret_cast<decltype(number)*>(place(startAt)), count, asc);
    });
}

bool ScriptArray::Sort(asIScriptFunction* less, asUINT startAt, asUINT count) noexcept {
    if (!mayChange()) return false;
    if (less == nullptr) return failInScript("Null pointer access");
    if (count < 2 || size_ < 2) return true;
    if (startAt >= size_) return failInScript("Index out of bounds");
    if (!takesTwoElements(*less)) return failInScript("The call failed");
    return sortElements(less, startAt, std::min(count, size_ - startAt), true);
}

/// A copy is sorted, because script code that compares may write into the elements. Handles in the
/// copy hold their objects.
bool ScriptArray::sortElements(asIScriptFunction* less, asUINT startAt, asUINT count,
                               bool asc) noexcept {
    const Scratch scratch((asQWORD{count} + count / 2) * sizeof(Slot));
    if (scratch.get() == nullptr) return failInScript("Out of memory");
    const ArrayUse use(*this);
    auto* const slots = static_cast<Slot*>(scratch.get());
    const bool handles = type_.kind == ArrayType::Kind::handle;
    for (asUINT i = 0; i < count; ++i) {
        std::memcpy(&slots[i], place(asQWORD{startAt} + i), type_.width);
        if (handles) type_.addReference(objectIn(&slots[i]));
    }
    const bool sorted = less != nullptr ? sortByFunction(slots, count, type_, *less)
                                        : sortByOwnOrder(slots, count, type_, asc);
    for (asUINT i = 0; sorted && i < count; ++i) {
        unsigned char* const element = place(asQWORD{startAt} + i);
        Slot before = 0;
        std::memcpy(&before, element, type_.width);
        std::memcpy(element, &slots[i], type_.width);
        slots[i] = before;
    }
    for (asUINT i = 0; handles && i < count; ++i) type_.releaseObject(objectIn(&slots[i]));
    return sorted;
}
