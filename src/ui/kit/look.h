// Colours and fonts of the editor's window, as the toolkit takes them.
#pragma once

#include <wx/colour.h>
#include <wx/font.h>

#include "editor/control/theme_table.h"

namespace korvant::ui {

inline wxColour colourOf(Rgb colour, int alpha = 255) {
    return wxColour(colour.red, colour.green, colour.blue, static_cast<unsigned char>(alpha));
}

/// What the parts of one window are painted with. They keep a reference: a change of the theme is
/// a change of this object and a repaint of everything.
struct Look {
    const ThemeTable* table = &lightTheme();
    wxFont plain;   ///< the desktop's
    wxFont strong;  ///< of headings
    wxFont small;   ///< of second texts
    wxFont code;
    wxFont codeStrong;

    const ThemeTable& operator*() const { return *table; }
    const ThemeTable* operator->() const { return table; }
};

/// The desktop's fonts, and for code the first of a list that is installed.
void useSystemFonts(Look& look);
/// The face of that list; never empty.
wxString codeFace();
/// The table of a choice; the classic look has none of its own and is painted light.
const ThemeTable& tableOf(ThemeChoice choice);

}  // namespace korvant::ui
