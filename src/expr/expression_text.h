// Expression texts: lower case, blanks and parentheses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "expr/scratch.h"

namespace korvant::expr {

/// A to Z become a to z; every other byte stays, whatever the process locale says.
constexpr char lowerCase(char byte) noexcept {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

/// Whether a byte is without meaning in an expression.
/// Deliberate: bytes are compared as signed ones, so every byte from 0x80 up counts as below
/// the blank, as zero bytes and line ends do; texts in national alphabets read as if those
/// letters were not there.
constexpr bool isBlank(char byte) noexcept {
    return static_cast<signed char>(byte) <= 32;
}

/// `text` without its blanks.
std::string removeBlanks(std::string_view text);

/// Whether no ")" comes before its "(" and as many close as open. An empty text is balanced.
bool isBalanced(std::string_view text);

/// Takes one pair of parentheses off that encloses the whole of `text`; false, and `text` left
/// as it is, when there is none or when nothing stands between them.
bool stripOuterParentheses(std::string& text);

/// A stretch of a text, as byte positions.
struct TextRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t size() const noexcept { return end - begin; }
};

/// A text whose parentheses have been paired, so that a reading jumps from one to the other.
/// The buffers are kept for the next text.
class PairedText {
  public:
    /// Takes `raw` in lower case and without blanks.
    void assignCleaned(std::string_view raw);
    /// Takes `text` as it is.
    void assign(std::string_view text);

    /// A zero byte follows, and eight bytes may be read behind the last one.
    std::string_view bytes() const noexcept { return {bytes_.data(), size_}; }
    std::string_view bytes(TextRange range) const noexcept {
        return {bytes_.data() + range.begin, range.size()};
    }
    TextRange all() const noexcept { return {0, size_}; }

    bool balanced() const noexcept { return balanced_; }
    /// The largest number of parentheses that are open at one place.
    std::uint32_t depth() const noexcept { return depth_; }
    /// Position of the ")" that closes the "(" at `open`; the text's size when nothing does.
    std::uint32_t closing(std::uint32_t open) const noexcept { return closing_[open]; }

    /// Whether one pair of parentheses encloses the whole of `range`, with something between.
    bool isEnclosed(TextRange range) const noexcept {
        return range.size() >= 3 && bytes_[range.begin] == '(' &&
               closing_[range.begin] == range.end - 1;
    }

    /// Gives memory back that only a very long text needed.
    void releaseLargeBuffers();

  private:
    void begin(std::size_t most);
    void addWord(std::uint64_t word, std::uint32_t count);
    void add(char byte);
    void pair(std::uint32_t at);
    void finish();

    Scratch<char> bytes_;             ///< room for eight more than size_ at least
    Scratch<std::uint32_t> closing_;  ///< set at positions of "(" only
    std::uint32_t size_ = 0;
    std::uint32_t innermost_ = 0;  ///< of the parentheses that are open while the text is taken
    std::uint32_t open_ = 0;
    std::uint32_t depth_ = 0;
    bool balanced_ = true;
};

}  // namespace korvant::expr
