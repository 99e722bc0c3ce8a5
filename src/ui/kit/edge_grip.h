// Dragging an edge of a pane: its outermost pixels take the pointer.
#pragma once

#include <wx/defs.h>

#include <functional>

class wxWindow;

namespace korvant::ui {

/// From now on the pixels of `window` at `edge` (wxLEFT, wxRIGHT or wxUP) are a grip. `dragged`
/// gets how far the pointer has gone since the last call, in pixels, down or to the right.
/// `window`'s other handlers see no press that begins there. To be called when the window's own
/// handlers are bound.
void makeEdgeGrip(wxWindow& window, wxDirection edge, std::function<void(int)> dragged);

}  // namespace korvant::ui
