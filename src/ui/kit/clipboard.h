// The desktop's clipboard.
#pragma once

#include <wx/string.h>

namespace korvant::ui {

/// False when the clipboard cannot be had.
bool copyToClipboard(const wxString& text);
/// Empty when there is no text.
wxString textFromClipboard(bool primarySelection = false);

}  // namespace korvant::ui
