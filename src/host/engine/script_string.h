// The script type `string`.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "host/engine/memory_budget.h"

namespace korvant {

/// A reference-counted byte string. The text stands first, so that a pointer to the object is a
/// pointer to its text as well: the script type's methods and every `string &in` argument rely on
/// it. A new object has the count 1, which belongs to whoever made it.
///
/// What lives is counted against the memory budget. Operations that may grow answer false, with
/// the text as it was, when the budget or the longest string allowed would be exceeded. C++ code
/// may write `text` itself; that is counted with the next operation.
class ScriptString {
  public:
    std::string text;

    /// New object, from a free list; null when memory is exhausted.
    static ScriptString* create(std::string_view bytes = {}) noexcept;
    /// New object with both texts, one after the other; null when memory is exhausted.
    static ScriptString* join(std::string_view first, std::string_view second) noexcept;
    /// New object that scripts cannot change and whose handles are not counted; for a literal.
    static ScriptString* createConstant(std::string_view bytes) noexcept;
    static void destroyConstant(const ScriptString* string) noexcept { delete string; }
    void addRef() noexcept {
        if (count_ != kImmortal) ++count_;
    }
    void release() noexcept {
        assert(count_ > 0);
        if (count_ != kImmortal && --count_ == 0) giveBack();
    }
    std::int32_t count() const noexcept { return count_; }
    bool constant() const noexcept { return constant_; }

    /// `bytes` may lie inside this text.
    bool assign(std::string_view bytes) noexcept;
    bool assign(const std::string& bytes) noexcept {
        if (bytes.size() > text.capacity()) return assign(std::string_view(bytes));
        text = bytes;
        settle();
        return true;
    }
    bool append(std::string_view bytes) noexcept;
    bool append(const std::string& bytes) noexcept {
        if (!makeRoom(text.size() + bytes.size())) return false;
        text.append(bytes);
        return true;
    }
    /// Cuts, or adds zero bytes.
    bool resize(std::size_t bytes) noexcept;
    /// Takes the text over.
    bool adopt(std::string&& bytes) noexcept;

  private:
    ScriptString() = default;
    ~ScriptString() = default;
    friend class StringPool;

    /// A count that reached this stays there: the object lives on instead of being freed too early.
    static constexpr std::int32_t kImmortal = std::numeric_limits<std::int32_t>::max();

    void giveBack() noexcept;
    bool makeRoom(std::size_t bytes) noexcept {
        if (bytes > text.capacity()) return grow(bytes);
        settle();
        return bytes <= memoryBudget.stringLimit;
    }
    bool grow(std::size_t bytes) noexcept;
    /// What a text takes beside the object itself.
    static std::size_t heapBytes(const std::string& text) noexcept {
        return text.capacity() > std::string().capacity() ? text.capacity() + 1 : 0;
    }
    /// Counts a buffer that came or went without a word to the budget.
    void settle() noexcept {
        if (heapBytes(text) != charged_) countAnew();
    }
    void countAnew() noexcept;

    std::int32_t count_ = 1;
    bool constant_ = false;
    std::size_t charged_ = 0;  ///< bytes on the heap that the budget knows of
};

/// Overwrites the module-wide result string and returns it with one reference added for the
/// caller. Functions that are declared to return `string@` return this. `bytes` may lie inside
/// the result string itself. A text that is too long raises "Out of memory", changes nothing and
/// gives null.
ScriptString* returnResultString(std::string bytes) noexcept;

/// Empties the result string when it holds much and no script holds it; for the end of a run.
void trimResultString() noexcept;

}  // namespace korvant
