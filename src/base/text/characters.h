// Bytes of ASCII, whatever the locale of the process.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// These take a byte, signed or not, or a negative number for none.
constexpr bool isDigit(int c) noexcept {
    return c >= '0' && c <= '9';
}
constexpr bool isLetter(int c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
/// What names in scripts are made of.
constexpr bool isWordByte(int c) noexcept {
    return isDigit(c) || isLetter(c) || c == '_';
}
/// Whether the byte is part of a character that ASCII does not have.
constexpr bool isBeyondAscii(char c) noexcept {
    return static_cast<unsigned char>(c) >= 0x80;
}

constexpr char lowerCase(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
inline std::string lowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = lowerCase(c);
    return result;
}

inline constexpr std::string_view kLineBlanks = " \t\r";
inline constexpr std::string_view kTextBlanks = " \t\r\n";
inline constexpr std::string_view kAllBlanks = " \t\n\v\f\r";

/// The text without the `blanks` at its ends; an empty one when nothing else is in it.
constexpr std::string_view trimmed(std::string_view text, std::string_view blanks) noexcept {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// For names that an engine does not have.
inline std::string orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace korvant
