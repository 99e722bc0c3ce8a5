// The marks of rows and pages that have errors or warnings.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/gdicmn.h>

#include "object/form/edit_session.h"

class wxDC;

namespace korvant::ui {

/// Width and height of a mark, in logical pixels.
constexpr int kMarkSize = 16;

/// Draws the mark into a square; nothing for Severity::none. The shapes differ, for eyes that do
/// not see the colours.
void drawMark(wxDC& dc, const wxRect& square, Severity severity);

/// The same as a picture for tabs.
wxBitmapBundle markPicture(Severity severity);

}  // namespace korvant::ui
