// A small window over the text that never takes the keyboard.
#pragma once

#include <wx/popupwin.h>

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class PopUp : public wxPopupWindow {
  public:
    explicit PopUp(wxWindow* parent);

    bool AcceptsFocus() const override { return false; }
    /// Below what it belongs to, or above it where there is more room or it is wanted so. All in
    /// coordinates of the screen.
    void showBeside(const wxRect& what, const wxSize& size, bool above = false);
    /// Whether the pointer is over it or no further away than this.
    bool holdsPointer(int within) const;
};

/// Lines no wider than `width`; words that are wider are broken. At most `most` of them.
std::vector<wxString> wrappedLines(const wxWindow& window, const wxString& text, const wxFont& font,
                                   int width, std::size_t most = 100);

}  // namespace korvant::ui
