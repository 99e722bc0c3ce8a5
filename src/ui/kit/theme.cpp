#include "ui/kit/theme.h"

#include <wx/settings.h>

#include <algorithm>
#include <cmath>

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

wxColour system(wxSystemColour colour) {
    return wxSystemSettings::GetColour(colour);
}

bool isDark(const wxColour& background) {
    return background.GetLuminance() < 0.5;
}

unsigned char mix(unsigned char over, unsigned char under, double share) {
    return static_cast<unsigned char>(std::lround(over * share + under * (1 - share)));
}

}  // namespace

wxColour blend(const wxColour& over, const wxColour& under, double share) {
    return wxColour(mix(over.Red(), under.Red(), share), mix(over.Green(), under.Green(), share),
                    mix(over.Blue(), under.Blue(), share));
}

Theme currentTheme() {
    Theme theme;
    theme.window = system(wxSYS_COLOUR_FRAMEBK);
    theme.text = system(wxSYS_COLOUR_BTNTEXT);
    theme.field = system(wxSYS_COLOUR_WINDOW);
    theme.fieldText = system(wxSYS_COLOUR_WINDOWTEXT);
    theme.dark = isDark(theme.window);
    theme.faint = blend(theme.text, theme.window, 0.6);
    theme.rule = blend(theme.text, theme.window, 0.2);
    theme.link = theme.dark ? wxColour(0x62, 0xA0, 0xEA) : wxColour(0x1A, 0x5F, 0xB4);
    theme.error = theme.dark ? wxColour(0xFF, 0x7B, 0x72) : wxColour(0xB0, 0x1B, 0x24);
    theme.errorTint = blend(wxColour(0xE0, 0x1B, 0x24), theme.field, theme.dark ? 0.28 : 0.15);
    theme.warningTint = blend(wxColour(0xF5, 0xB0, 0x00), theme.field, theme.dark ? 0.24 : 0.22);
    return theme;
}

wxFont dialogFont() {
    return native::paintable(wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT));
}

/// Not the system's "fixed" font: with some desktops that is the font of the dialogs.
wxFont fixedFont() {
    const double points = std::max(10.0, dialogFont().GetFractionalPointSize());
    return wxFont(wxFontInfo(points).Family(wxFONTFAMILY_TELETYPE));
}

}  // namespace korvant::ui
