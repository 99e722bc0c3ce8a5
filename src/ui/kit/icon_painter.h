// Painting the icons of the editor's window at any size.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/colour.h>

#include "ui/kit/icon_paths.h"

class wxGraphicsContext;

namespace korvant::ui {

/// Draws an icon into a square of `size` at (x, y). Without a second colour, layers in it are
/// drawn in a weak first one.
void paintIcon(wxGraphicsContext& context, Icon icon, double x, double y, double size,
               const wxColour& first, const wxColour& second = wxNullColour);

/// The icon as pictures of whatever size is asked for; `size` is the one at 96 dots per inch.
wxBitmapBundle iconBundle(Icon icon, int size, const wxColour& first,
                          const wxColour& second = wxNullColour);

}  // namespace korvant::ui
