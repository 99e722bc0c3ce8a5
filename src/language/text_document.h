// The text of a script that is being edited: bytes, lines, and the ways in which others count them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvant {

/// A place as line and column, both from 0; the column in bytes or in UTF-16 units, as said.
struct TextPosition {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    bool operator==(const TextPosition&) const = default;
};

/// Bytes `begin` up to, not including, `end`.
struct ByteRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t size() const { return end - begin; }
    bool empty() const { return end <= begin; }
    bool contains(std::size_t offset) const { return begin <= offset && offset < end; }
    bool operator==(const ByteRange&) const = default;
};

/// Lines end with "\n", as for the compiler; a "\r" before it belongs to the line end. There is
/// always a last line, perhaps empty. What lies beyond the text or its line is taken as the end of
/// it. A byte that is no UTF-8 counts as one UTF-16 unit.
class TextDocument {
  public:
    explicit TextDocument(std::string text = {});

    const std::string& text() const noexcept { return text_; }
    std::size_t size() const noexcept { return text_.size(); }
    std::uint32_t lineCount() const noexcept { return static_cast<std::uint32_t>(starts_.size()); }

    std::size_t lineStart(std::uint32_t line) const;
    /// Without the line end.
    ByteRange lineRange(std::uint32_t line) const;
    std::string_view lineText(std::uint32_t line) const;
    std::uint32_t lineOf(std::size_t offset) const;

    TextPosition positionOf(std::size_t offset) const;  ///< column in bytes
    std::size_t offsetOf(TextPosition position) const;  ///< column in bytes
    TextPosition utf16PositionOf(std::size_t offset) const;
    /// A position inside a character is taken as its beginning.
    std::size_t offsetOfUtf16(TextPosition position) const;

    /// Puts `with` in the place of `range`. Takes time in proportion to the text.
    void replace(ByteRange range, std::string_view with);

    /// How often the text has been changed.
    std::uint64_t version() const noexcept { return version_; }

  private:
    struct Wide {
        std::size_t begin;
        std::size_t excess;  ///< bytes less units of those in front of it
        std::uint8_t bytes;
        std::uint8_t units;
    };
    void findWide();
    std::size_t unitsBefore(std::size_t offset) const;

    std::string text_;
    std::vector<std::size_t> starts_;  ///< of all lines
    std::vector<Wide> wide_;           ///< in the order of the text
    std::uint64_t version_ = 0;
};

}  // namespace korvant
