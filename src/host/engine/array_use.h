// The mark of an array that script code runs inside of.
#pragma once

#include "korvantide/script_array.h"

namespace korvant {

/// While it lives, the array lives and refuses to be changed by anybody else.
class ArrayUse {
  public:
    explicit ArrayUse(const ScriptArray& array) noexcept : array_(array) {
        array.AddRef();
        ++array.uses_;
    }
    ~ArrayUse() {
        --array_.uses_;
        array_.Release();
    }
    ArrayUse(const ArrayUse&) = delete;
    ArrayUse& operator=(const ArrayUse&) = delete;

  private:
    const ScriptArray& array_;
};

}  // namespace korvant
