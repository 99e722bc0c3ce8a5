#include "base/system/wide_text_win32.h"

#include <windows.h>

#include "base/text/text_encoding.h"

namespace korvant {

std::wstring wideOfUtf8(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), length);
    return wide;
}

std::string utf8OfWide(std::wstring_view wide) {
    const int units = static_cast<int>(wide.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

std::wstring wideOfBytes(std::string_view bytes) {
    return wideOfUtf8(decodeForDisplay(bytes));
}

}  // namespace korvant
