// Bytes that scripts exchange, and text as people see it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvant {

bool isValidUtf8(std::string_view bytes) noexcept;

/// Length of the UTF-8 sequence that `bytes` begins with: 1 to 4, 0 when it begins with none, -1
/// when it is one that breaks off at the end of `bytes`.
int utf8SequenceLength(std::string_view bytes) noexcept;

/// The code point of a Windows Western byte, and its UTF-8 form appended to `text`.
char32_t westernCodePoint(unsigned char byte) noexcept;
void appendUtf8(std::string& text, char32_t codePoint);

/// UTF-8 to show: `bytes` as they stand where they are valid UTF-8, otherwise read as Windows
/// Western, whose undefined bytes (0x81 0x8D 0x8F 0x90 0x9D) map to the code points of their own
/// numbers, so that encodeWestern(decodeForDisplay(b)) == b for every b that is not UTF-8.
std::string decodeForDisplay(std::string_view bytes);

/// Windows Western bytes read as such, whatever they look like. Source: Windows code page 1252.
std::string decodeWestern(std::string_view bytes);

/// Windows Western bytes of a UTF-8 text; characters that it lacks become '?'.
std::string encodeWestern(std::string_view utf8);

/// True when every character of a UTF-8 text has a Windows Western byte.
bool fitsWestern(std::string_view utf8) noexcept;

/// UTF-8 of UTF-16 bytes, without a byte-order mark; nothing where half a character is alone, so
/// that encodeUtf16 of the answer always gives `bytes` again.
std::optional<std::string> decodeUtf16(std::string_view bytes, bool bigEndian);

/// UTF-16 bytes of a UTF-8 text; a byte that is no UTF-8 becomes U+FFFD.
std::string encodeUtf16(std::string_view utf8, bool bigEndian);

/// What a user typed (UTF-8), as bytes for the script: Windows Western where it fits and is shown
/// as what was typed, else UTF-8. decodeForDisplay gives back what was typed.
std::string encodeTyped(std::string_view utf8);

}  // namespace korvant
