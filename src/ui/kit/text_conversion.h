// Between the bytes of scripts and the toolkit's texts.
#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

#include "base/text/text_encoding.h"

namespace korvant::ui {

inline wxString fromUtf8(std::string_view utf8) {
    return wxString::FromUTF8(utf8.data(), utf8.size());
}

inline std::string toUtf8(const wxString& text) {
    const auto bytes = text.utf8_str();
    return std::string(bytes.data(), bytes.length());
}

/// Bytes of a script, to be shown.
inline wxString toDisplay(std::string_view bytes) {
    return fromUtf8(decodeForDisplay(bytes));
}

/// What the user typed, as bytes for the script.
inline std::string fromTyped(const wxString& text) {
    return encodeTyped(toUtf8(text));
}

}  // namespace korvant::ui
