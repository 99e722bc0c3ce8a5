// What changes an array.
//
// New elements are first made behind the end of the array, where nobody sees them, and what is
// removed is destroyed there: script code that runs meanwhile finds a whole array.
#include <algorithm>
#include <cstring>

#include "host/engine/array_type.h"
#include "host/engine/array_use.h"
#include "host/engine/native_call.h"
#include "host/engine/object_count.h"
#include "host/engine/script_string.h"
#include "host/engine/stop_query.h"

using korvant::ArrayType;
using korvant::ArrayUse;
using korvant::failInScript;
using korvant::raiseInScript;
using korvant::ScriptString;
using korvant::StopEvery;

namespace {

/// Constructors and assignments of elements between two looks at the clock.
constexpr unsigned kLook = 256;
/// An array that becomes much smaller gives a buffer back that is larger than that.
constexpr std::size_t kKeptBuffer = std::size_t{64} << 10;

void* pointerIn(const void* place) {
    void* pointer;
    std::memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

/// Objects of script classes refer to their class, of which no more may live; see ObjectCount.
bool tooManyObjects(const ArrayType& type, asQWORD elements) {
    return type.kind == ArrayType::Kind::object &&
           elements > asQWORD{korvant::ObjectCount::kMost} &&
           (type.element->GetFlags() & asOBJ_SCRIPT_OBJECT) != 0;
}

/// Moves what lies from `middle` to `last` in front of what lies before it.
void moveToFront(unsigned char* first, unsigned char* middle, unsigned char* last) {
    unsigned char few[64];
    const auto left = static_cast<std::size_t>(middle - first);
    const auto right = static_cast<std::size_t>(last - middle);
    if (left == 0 || right == 0) return;
    if (right <= sizeof few) {
        std::memcpy(few, middle, right);
        std::memmove(first + right, first, left);
        std::memcpy(first, few, right);
    } else if (left <= sizeof few) {
        std::memcpy(few, first, left);
        std::memmove(first, middle, right);
        std::memcpy(first + right, few, left);
    } else {
        std::rotate(first, middle, last);
    }
}

}  // namespace

bool ScriptArray::addDefaults(asUINT count) noexcept {
    const asQWORD end = asQWORD{size_} + count;
    if (tooManyObjects(type_, end)) return failInScript("Out of memory");
    if (!makeRoom(end)) return false;
    if (!type_.ownsObjects()) {
        if (count != 0) std::memset(place(size_), 0, std::size_t{count} * type_.width);
        return true;
    }
    const ArrayUse use(*this);
    StopEvery stop(kLook);
    for (asQWORD i = size_; i < end; ++i) {
        void* const object = stop() ? nullptr : type_.makeObject();
        if (object == nullptr) {
            drop(size_, i);
            return false;
        }
        *reinterpret_cast<void**>(place(i)) = object;
    }
    return true;
}

/// A copy of an object for this array; null when that failed.
void* ScriptArray::copyObject(const void* value) noexcept {
    if (type_.kind == ArrayType::Kind::text) {
        const auto* const text = static_cast<const ScriptString*>(value);
        ScriptString* const copy = ScriptString::create(text->text);
        if (copy == nullptr) raiseInScript("Out of memory");
        return copy;
    }
    const ArrayUse use(*this);
    void* const object = type_.makeObject();
    if (object == nullptr || value == nullptr || assignElement(object, value)) return object;
    type_.releaseObject(object);
    return nullptr;
}

bool ScriptArray::assignElement(void* object, const void* value) noexcept {
    if (object == nullptr || value == nullptr) return failInScript("Null pointer access");
    if (type_.kind == ArrayType::Kind::text)
        return static_cast<ScriptString*>(object)->assign(
                   static_cast<const ScriptString*>(value)->text) ||
               failInScript("Out of memory");
    type_.engine->AssignScriptObject(object, const_cast<void*>(value), type_.element);
    return korvant::runningScriptIsWell();
}

/// `value` may lie in the buffer that is about to move.
bool ScriptArray::addCopy(const void* value) noexcept {
    const asQWORD end = asQWORD{size_} + 1;
    if (!type_.holdsPointers()) {
        unsigned char number[sizeof(asQWORD)];
        std::memcpy(number, value, type_.width);
        if (!makeRoom(end)) return false;
        std::memcpy(place(size_), number, type_.width);
        return true;
    }
    if (tooManyObjects(type_, end)) return failInScript("Out of memory");
    void* const pointer = type_.ownsObjects() ? copyObject(value) : pointerIn(value);
    if (type_.ownsObjects() && pointer == nullptr) return false;
    if (!type_.ownsObjects()) type_.addReference(pointer);
    if (makeRoom(end)) {
        *reinterpret_cast<void**>(place(size_)) = pointer;
        return true;
    }
    type_.releaseObject(pointer);
    return false;
}

/// `other` may be this array. Its elements stay where they are relative to its buffer.
bool ScriptArray::addCopies(const ScriptArray& other) noexcept {
    const asUINT count = other.size_;
    const asQWORD end = asQWORD{size_} + count;
    if (tooManyObjects(type_, end)) return failInScript("Out of memory");
    if (!makeRoom(end)) return false;
    if (count == 0) return true;
    if (!type_.ownsObjects()) {
        std::memcpy(place(size_), other.data_, std::size_t{count} * type_.width);
        if (type_.kind == ArrayType::Kind::handle)
            for (asQWORD i = size_; i < end; ++i) type_.addReference(pointerIn(place(i)));
        return true;
    }
    const ArrayUse use(*this), itsUse(other);
    StopEvery stop(kLook);
    for (asUINT i = 0; i < count; ++i) {
        void* const copy = stop() ? nullptr : copyObject(other.elementAt(i));
        if (copy == nullptr) {
            drop(size_, asQWORD{size_} + i);
            return false;
        }
        *reinterpret_cast<void**>(place(asQWORD{size_} + i)) = copy;
    }
    return true;
}

/// What was added behind the end becomes the elements from `index` on.
void ScriptArray::show(asUINT index, asUINT count) noexcept {
    const asQWORD end = asQWORD{size_} + count;
    if (count != 0) moveToFront(place(index), place(size_), place(end));
    size_ = static_cast<asUINT>(end);
}

bool ScriptArray::pushValue(const void* value) noexcept {
    if (!addCopy(value)) return false;
    ++size_;
    return true;
}

/// There is room for them.
bool ScriptArray::pushValues(asUINT count, const void* value) noexcept {
    if (type_.holdsPointers()) {
        StopEvery stop(kLook);
        for (asUINT i = 0; i < count; ++i)
            if (stop() || !pushValue(value)) return false;
        return true;
    }
    korvant::withNumber(type_.elementId, [&](auto number) {
        std::memcpy(&number, value, sizeof number);
        std::fill_n(reinterpret_cast<decltype(number)*>(data_), count, number);
    });
    size_ = count;
    return true;
}

/// Destroys what lies from `first` to `last` behind the end.
void ScriptArray::drop(asQWORD first, asQWORD last) noexcept {
    if (!type_.holdsPointers() || first == last) return;
    const ArrayUse use(*this);
    for (; first < last; ++first) type_.releaseObject(pointerIn(place(first)));
}

void ScriptArray::shrinkTo(asUINT elements) noexcept {
    const asUINT before = size_;
    size_ = elements;
    drop(elements, before);
}

bool ScriptArray::Reserve(asUINT maxElements) noexcept {
    if (!mayChange()) return false;
    return maxElements <= capacity_ || setCapacity(maxElements) || failInScript("Out of memory");
}

bool ScriptArray::Resize(asUINT numElements) noexcept {
    if (!mayChange()) return false;
    if (numElements > size_) {
        if (!addDefaults(numElements - size_)) return false;
        size_ = numElements;
        return true;
    }
    shrinkTo(numElements);
    if (std::size_t{capacity_} * type_.width > kKeptBuffer && size_ < capacity_ / 4)
        setCapacity(size_);
    return true;
}

bool ScriptArray::InsertLast(const void* value) noexcept {
    return mayChange() && pushValue(value);
}

bool ScriptArray::InsertAt(asUINT index, const void* value) noexcept {
    if (!mayChange()) return false;
    if (index > size_) return failInScript("Index out of bounds");
    if (!addCopy(value)) return false;
    show(index, 1);
    return true;
}

bool ScriptArray::InsertAt(asUINT index, const ScriptArray& other) noexcept {
    if (!mayChange()) return false;
    if (index > size_) return failInScript("Index out of bounds");
    if (&type_ != &other.type_) return failInScript("Mismatching array types");
    const asUINT count = other.size_;
    if (!addCopies(other)) return false;
    show(index, count);
    return true;
}

bool ScriptArray::RemoveAt(asUINT index) noexcept {
    if (!mayChange()) return false;
    return index < size_ ? RemoveRange(index, 1) : failInScript("Index out of bounds");
}

bool ScriptArray::RemoveLast() noexcept {
    if (!mayChange()) return false;
    if (size_ == 0) return failInScript("Index out of bounds");
    shrinkTo(size_ - 1);
    return true;
}

bool ScriptArray::RemoveRange(asUINT start, asUINT count) noexcept {
    if (!mayChange()) return false;
    if (count == 0) return true;
    if (start > size_) return failInScript("Index out of bounds");
    const asUINT removed = std::min(count, size_ - start);
    if (removed != 0) moveToFront(place(start), place(asQWORD{start} + removed), place(size_));
    shrinkTo(size_ - removed);
    return true;
}

bool ScriptArray::Reverse() noexcept {
    if (!mayChange()) return false;
    const auto reverse = [this](auto number) {
        auto* const first = reinterpret_cast<decltype(number)*>(data_);
        std::reverse(first, first + size_);
    };
    if (type_.holdsPointers())
        reverse(static_cast<void*>(nullptr));
    else
        korvant::withNumber(type_.elementId, reverse);
    return true;
}

bool ScriptArray::SetValue(asUINT index, const void* value) noexcept {
    if (index >= size_) return failInScript("Index out of bounds");
    if (type_.ownsObjects()) {
        const ArrayUse use(*this);
        return assignElement(elementAt(index), value);
    }
    if (type_.holdsPointers())
        setHandle(index, pointerIn(value));
    else
        std::memmove(place(index), value, type_.width);
    return true;
}

/// The last reference to the old object may run script code.
void ScriptArray::setHandle(asUINT index, void* object) noexcept {
    const ArrayUse use(*this);
    type_.addReference(object);
    void*& slot = *reinterpret_cast<void**>(place(index));
    void* const before = slot;
    slot = object;
    type_.releaseObject(before);
}

ScriptArray& ScriptArray::operator=(const ScriptArray& other) noexcept {
    if (&other == this || !mayChange()) return *this;
    if (&type_ != &other.type_) {
        raiseInScript("Mismatching array types");
        return *this;
    }
    const ArrayUse use(*this), itsUse(other);
    if (other.size_ < size_)
        shrinkTo(other.size_);
    else if (addDefaults(other.size_ - size_))
        size_ = other.size_;
    else
        return *this;
    if (type_.holdsPointers())
        assignPointers(other);
    else if (size_ != 0)
        std::memcpy(data_, other.data_, std::size_t{size_} * type_.width);
    return *this;
}

void ScriptArray::assignPointers(const ScriptArray& other) noexcept {
    StopEvery stop(kLook);
    for (asUINT i = 0; i < size_ && !stop(); ++i) {
        if (!type_.ownsObjects())
            setHandle(i, pointerIn(other.place(i)));
        else if (!assignElement(elementAt(i), other.elementAt(i)))
            return;
    }
}
