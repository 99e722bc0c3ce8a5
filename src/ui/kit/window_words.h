// The words of the editor's window in the three languages of the module.
#pragma once

#include <wx/string.h>

#include <span>

namespace korvant::ui {

/// One text: what stands in the code, and what is shown instead of it. UTF-8.
struct WindowWords {
    const char* english;
    const char* french;
    const char* spanish;
};

/// Ascending by the English text.
std::span<const WindowWords> windowWords();

/// In the language of the module; the English text itself where there is no other.
wxString words(const char* english);

}  // namespace korvant::ui
