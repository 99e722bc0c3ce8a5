// Where the elements of an array lie: what scripts ask for most of all, compiled into the functions
// that they call.
#pragma once

#include <cstring>

#include "host/engine/array_type.h"
#include "host/engine/native_call.h"
#include "korvantide/script_array.h"

namespace korvant {

struct ArrayPlaces {
    static unsigned char* place(const ScriptArray& array, asQWORD index) noexcept {
        return array.data_ + static_cast<std::size_t>(index) * array.type_.width;
    }

    /// What scripts know as a reference to the element; null beyond the end and for null, with the
    /// exception set.
    static void* at(const ScriptArray& array, asUINT index) noexcept {
        if (index >= array.size_) [[unlikely]] {
            raiseInScript("Index out of bounds");
            return nullptr;
        }
        unsigned char* const found = place(array, index);
        if (!array.type_.ownsObjects()) return found;
        void* const element = *reinterpret_cast<void**>(found);
        if (element == nullptr) [[unlikely]]
            raiseInScript("Null pointer access");
        return element;
    }

    /// Puts a number behind the others where there is room; false where more is to be done.
    static bool append(ScriptArray& array, const void* number) noexcept {
        const ArrayType& type = array.type_;
        if (array.uses_ != 0 || array.size_ >= array.capacity_ || type.holdsPointers())
            return false;
        unsigned char* const to = place(array, array.size_);
        // One or two of the processor's instructions each, where an unknown width would be a call.
        if (type.width == 4)
            std::memcpy(to, number, 4);
        else if (type.width == 8)
            std::memcpy(to, number, 8);
        else
            std::memcpy(to, number, type.width);
        ++array.size_;
        return true;
    }
};

}  // namespace korvant
