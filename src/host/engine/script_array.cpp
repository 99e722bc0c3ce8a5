// Making arrays, and what they hold.
#include "korvantide/script_array.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "host/engine/active_context.h"
#include "host/engine/array_places.h"
#include "host/engine/array_type.h"
#include "host/engine/array_use.h"
#include "host/engine/memory_budget.h"
#include "host/engine/native_call.h"
#include "host/engine/script_string.h"

using korvant::ArrayPlaces;
using korvant::ArrayType;
using korvant::ArrayUse;
using korvant::memoryBudget;
using korvant::raiseInScript;

namespace {

/// Elements that the first growth makes room for.
constexpr asQWORD kFirstElements = 4;
constexpr asQWORD kMostElements = std::numeric_limits<asUINT>::max();

}  // namespace

ScriptArray::ScriptArray(ArrayType& type) noexcept : type_(type) {
    // The arrays of a type share one reference to it: engines with assertions count to a million.
    if (type.arrays++ == 0) type.type->AddRef();
}

ScriptArray::~ScriptArray() {
    // A destructor of the script may run, and a debugger look at what is left.
    if (type_.holdsPointers())
        for (asUINT i = 0; i < size_; ++i)
            type_.releaseObject(std::exchange(*reinterpret_cast<void**>(place(i)), nullptr));
    std::free(data_);
    memoryBudget.release(sizeof(ScriptArray) + std::size_t{capacity_} * type_.width);
    asITypeInfo* const type = type_.type;
    if (--type_.arrays == 0) type->Release();
}

ScriptArray* ScriptArray::make(asITypeInfo* type) noexcept {
    ArrayType* const record = ArrayType::of(type);
    ScriptArray* array = nullptr;
    if (record != nullptr && memoryBudget.charge(sizeof(ScriptArray))) {
        array = new (std::nothrow) ScriptArray(*record);
        if (array == nullptr) memoryBudget.release(sizeof(ScriptArray));
    }
    if (array == nullptr)
        raiseInScript("Out of memory");
    else if ((type->GetFlags() & asOBJ_GC) != 0)
        record->engine->NotifyGarbageCollectorOfNewObject(array, type);
    return array;
}

/// A script that is stopped inside a constructor of elements gets what there is: it does not go on,
/// but without an exception the engine expects an object.
ScriptArray* ScriptArray::orNone(bool filled) noexcept {
    if (filled || (korvant::activeContext() != nullptr && korvant::runningScriptIsWell()))
        return this;
    Release();
    return nullptr;
}

ScriptArray* ScriptArray::Create(asITypeInfo* type) noexcept {
    return make(type);
}

ScriptArray* ScriptArray::Create(asITypeInfo* type, asUINT length) noexcept {
    ScriptArray* const array = make(type);
    return array != nullptr ? array->orNone(array->Resize(length)) : nullptr;
}

ScriptArray* ScriptArray::Create(asITypeInfo* type, asUINT length, void* defaultValue) noexcept {
    ScriptArray* const array = make(type);
    if (array == nullptr) return nullptr;
    return array->orNone(array->makeRoom(length) && array->pushValues(length, defaultValue));
}

ScriptArray* ScriptArray::Create(asITypeInfo* type, void* listBuffer) noexcept {
    ScriptArray* const array = make(type);
    if (array == nullptr) return nullptr;
    return array->orNone(array->takeList(static_cast<unsigned char*>(listBuffer)));
}

/// The list is a 32-bit count and, aligned to four bytes, the elements: numbers, handles and
/// pointers to objects of reference types, which may be taken out, or objects themselves.
bool ScriptArray::takeList(unsigned char* list) noexcept {
    asUINT count = 0;
    std::memcpy(&count, list, sizeof count);
    if (!makeRoom(count)) return false;
    list += sizeof count;
    if (type_.ownsObjects() && (type_.element->GetFlags() & asOBJ_VALUE) != 0)
        return takeValues(list, count);
    const std::size_t bytes = std::size_t{count} * type_.width;
    if (bytes != 0) std::memcpy(data_, list, bytes);
    if (type_.holdsPointers()) std::memset(list, 0, bytes);
    size_ = count;
    return true;
}

bool ScriptArray::takeValues(const unsigned char* list, asUINT count) noexcept {
    for (asUINT i = 0; i < count; ++i, list += type_.element->GetSize())
        if (!pushValue(list)) return false;
    return true;
}

void ScriptArray::AddRef() const noexcept {
    collecting_ = false;
    references_.fetch_add(1, std::memory_order_relaxed);
}

void ScriptArray::Release() const noexcept {
    collecting_ = false;
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

asITypeInfo* ScriptArray::GetArrayObjectType() const noexcept {
    return type_.type;
}
int ScriptArray::GetArrayTypeId() const noexcept {
    return type_.type->GetTypeId();
}
int ScriptArray::GetElementTypeId() const noexcept {
    return type_.elementId;
}
int ScriptArray::GetRefCount() const noexcept {
    return references_.load(std::memory_order_relaxed);
}

void ScriptArray::EnumReferences(asIScriptEngine* engine) noexcept {
    if (!type_.holdsPointers() || type_.kind == ArrayType::Kind::text) return;
    const asQWORD flags = type_.element->GetFlags();
    const bool parts = (flags & asOBJ_VALUE) != 0;
    if (parts && (flags & asOBJ_GC) == 0) return;
    for (asUINT i = 0; i < size_; ++i) {
        void* const object = *reinterpret_cast<void**>(place(i));
        if (object == nullptr) continue;
        if (parts)
            engine->ForwardGCEnumReferences(object, type_.element);
        else
            engine->GCEnumCallback(object);
    }
}

void ScriptArray::ReleaseAllHandles(asIScriptEngine*) noexcept {
    shrinkTo(0);
}

unsigned char* ScriptArray::place(asQWORD index) const noexcept {
    return ArrayPlaces::place(*this, index);
}

/// What scripts know as a reference to the element.
void* ScriptArray::elementAt(asUINT index) const noexcept {
    unsigned char* const found = place(index);
    return type_.ownsObjects() ? *reinterpret_cast<void**>(found) : found;
}

const void* ScriptArray::At(asUINT index) const noexcept {
    return ArrayPlaces::at(*this, index);
}

void* ScriptArray::At(asUINT index) noexcept {
    return const_cast<void*>(std::as_const(*this).At(index));
}

bool ScriptArray::mayChange() const noexcept {
    if (uses_ != 0) raiseInScript("The array is in use");
    return uses_ == 0;
}

bool ScriptArray::setCapacity(asQWORD elements) noexcept {
    const asQWORD wanted = elements * type_.width;
    if (elements > kMostElements || wanted > std::numeric_limits<std::size_t>::max() / 2)
        return false;
    const std::size_t bytes = static_cast<std::size_t>(wanted);
    const std::size_t held = std::size_t{capacity_} * type_.width;
    if (bytes > held && !memoryBudget.charge(bytes - held)) return false;
    // Never none, because that frees and answers null.
    void* const moved = std::realloc(data_, std::max<std::size_t>(bytes, 1));
    if (moved == nullptr) {
        if (bytes > held) memoryBudget.release(bytes - held);
        return false;
    }
    if (bytes < held) memoryBudget.release(held - bytes);
    data_ = static_cast<unsigned char*>(moved);
    capacity_ = static_cast<asUINT>(elements);
    return true;
}

/// By one half at least, so that appending costs the same however many there are.
bool ScriptArray::makeRoom(asQWORD elements) noexcept {
    if (elements <= capacity_) return true;
    const asQWORD half = capacity_ == 0 ? 0 : asQWORD{capacity_} + capacity_ / 2;
    const asQWORD wanted = std::min(std::max({elements, half, kFirstElements}), kMostElements);
    if (setCapacity(wanted) || setCapacity(elements)) return true;
    raiseInScript("Out of memory");
    return false;
}
