// Colours and sizes that suit the desktop, light or dark.
#pragma once

#include <wx/colour.h>
#include <wx/font.h>

class wxWindow;

namespace korvant::ui {

struct Theme {
    bool dark = false;
    wxColour window;     ///< behind dialogs
    wxColour text;       ///< on `window`
    wxColour field;      ///< behind text that can be edited or read
    wxColour fieldText;  ///< on `field`
    wxColour faint;      ///< of remarks, on `window` and on `field`
    wxColour rule;       ///< of lines between parts
    wxColour link;
    wxColour error;        ///< of a text that says what is wrong
    wxColour errorTint;    ///< behind a row with an error
    wxColour warningTint;  ///< behind a row with a warning
};

/// Of the desktop as it is now.
Theme currentTheme();

/// The desktop's font for texts in dialogs.
wxFont dialogFont();
/// A font whose characters all have one width.
wxFont fixedFont();

/// `share` of `over` laid over `under`; 0 to 1.
wxColour blend(const wxColour& over, const wxColour& under, double share);

}  // namespace korvant::ui
