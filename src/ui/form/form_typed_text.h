// Values that an entry field cannot hold as they stand.
#pragma once

#include <string>
#include <string_view>

namespace korvant::ui {

/// A text as a control shows it, and the way back. Controls cut a text at a zero byte and change
/// line ends, so control characters are shown as their pictures (U+2400 and up) and every line end
/// as a line feed; toBytes(shown()) is always the text that was given.
class TypedText {
  public:
    explicit TypedText(std::string_view bytes);

    /// UTF-8 for the control.
    const std::string& shown() const { return shown_; }
    /// What the user made of it, as bytes for the script.
    std::string toBytes(std::string_view edited) const;

  private:
    std::string original_;
    std::string shown_;
    bool carriageReturns_ = false;  ///< every line ends in a carriage return and a line feed
    bool pictures_ = false;         ///< control characters are shown as pictures
};

/// What a row takes, in bytes of UTF-8: fields of one line cut longer texts without a word, and
/// take seconds for longer lines.
constexpr std::size_t kLongestLine = 30'000;

/// A field of one line does not show all of the text.
bool needsSeveralLines(std::string_view bytes) noexcept;
/// A line of it is longer than any field takes.
bool isTooLongToEdit(std::string_view bytes) noexcept;

/// UTF-8 of the beginning of a text, on one line; enough to fill any column.
std::string onOneLine(std::string_view bytes);

}  // namespace korvant::ui
