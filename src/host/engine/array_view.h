// Reading arrays, whoever registered their type.
#pragma once

#include <cstdint>

#include "host/engine/engine_compat.h"

class ScriptArray;

namespace korvant {

/// An array of the module's own type, or of a host's: a template with one type argument whose
/// native methods `uint length() const` and `T& opIndex(uint)` are those of the engine's array
/// add-on. Those are called through the engine, on a context of their own.
class ArrayView {
  public:
    /// `object` is of type `typeId`, no handle. Both must live as long as the view.
    ArrayView(asIScriptEngine* engine, int typeId, const void* object);

    /// False for everything that is no array.
    explicit operator bool() const { return own_ != nullptr || length_ != nullptr; }
    std::uint32_t size() const;
    int elementType() const { return elementId_; }
    /// Where element `index` lies: the number, the handle or the object. Null beyond the end.
    const void* element(std::uint32_t index) const;

  private:
    void findMethods(const asITypeInfo& type);

    asIScriptEngine* engine_;
    const void* object_;
    const ScriptArray* own_ = nullptr;
    asIScriptFunction* length_ = nullptr;
    asIScriptFunction* index_ = nullptr;
    int elementId_ = 0;
};

}  // namespace korvant
