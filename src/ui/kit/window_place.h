// Where windows stand.
#pragma once

#include <wx/gdicmn.h>

class wxTopLevelWindow;
class wxWindow;

namespace korvant::ui {

/// What windows may cover of the display that `window` is on; without one, of the display under
/// the pointer.
wxRect workArea(const wxWindow* window);

/// Sizes the window to its content, but no larger than its display, and centres it over its
/// parent, else on the display.
void placeDialog(wxTopLevelWindow& dialog);

/// Grows or shrinks the window to its content where it stands, inside its display.
void refitInPlace(wxTopLevelWindow& dialog);

}  // namespace korvant::ui
