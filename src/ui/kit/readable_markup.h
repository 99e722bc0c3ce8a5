// Markup of scripts made fit for a view: words that may be cut, colours that can be read.
#pragma once

#include <wx/colour.h>

#include <string>

namespace korvant::ui {

/// `markup` with a mark (<wbr>) wherever a long word or path may go on in the next line. Tags and
/// entities stay whole.
std::string withBreaks(const std::string& markup);

/// The colour of every <font> that could not be read on `back` moves towards `text`, as far as it
/// needs to. Markup with backgrounds of its own stays as it is.
std::string readableColours(const std::string& markup, const wxColour& back, const wxColour& text);

/// `colour`, or the nearest mixture with `text` whose contrast against `back` is at least 4.5.
wxColour readableOn(const wxColour& colour, const wxColour& back, const wxColour& text);

}  // namespace korvant::ui
