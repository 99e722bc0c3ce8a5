// Bytes of scripts and the system's wide characters.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// UTF-8 to UTF-16; what is not UTF-8 becomes replacement characters.
std::wstring wideOfUtf8(std::string_view utf8);
std::string utf8OfWide(std::wstring_view wide);
/// Bytes as scripts give them, decoded as for display.
std::wstring wideOfBytes(std::string_view bytes);

}  // namespace korvant
