// The script type `string`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvant {

/// A reference-counted byte string. The text stands first, so that a pointer to the object is a
/// pointer to its text as well: the script type's methods and every `string &in` argument rely on
/// it. A new object has the count 1, which belongs to whoever made it.
class ScriptString {
  public:
    std::string text;

    /// New object, from a free list; null when memory is exhausted.
    static ScriptString* create(std::string_view bytes = {}) noexcept;
    void addRef() noexcept;
    void release() noexcept;
    std::int32_t count() const noexcept { return count_; }

  private:
    ScriptString() = default;
    ~ScriptString() = default;
    std::int32_t count_ = 1;
};

/// Overwrites the module-wide result string and returns it with one reference added for the
/// caller. Functions that are declared to return `string@` return this. `bytes` may lie inside
/// the result string itself.
ScriptString* returnResultString(std::string bytes) noexcept;

}  // namespace korvant
