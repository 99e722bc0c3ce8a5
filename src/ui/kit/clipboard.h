// The desktop's clipboard.
#pragma once

#include <wx/string.h>

namespace korvant::ui {

/// False when the clipboard cannot be had.
bool copyToClipboard(const wxString& text);
/// Empty when there is no text.
wxString textFromClipboard(bool primarySelection = false);
/// True until it is known that there is no text. Waits for nobody, so that menus can ask it.
bool clipboardMayHaveText();

}  // namespace korvant::ui
