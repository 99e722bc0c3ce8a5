#include "ui/kit/look.h"

#include <wx/fontenum.h>
#include <wx/settings.h>

#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kCodePoints = 10;

wxString usable(const wxString& face) {
    if (face.empty() || !wxFontEnumerator::IsValidFacename(face)) return {};
    const wxFont font = native::paintable(wxFontInfo(kCodePoints).FaceName(face));
    return font.GetFaceName() == face ? face : wxString();
}

}  // namespace

/// No face that joins letters: with one, "<=" would look like a single sign.
wxString codeFace() {
    const wxString desktops = native::monospacedFace();
    for (const wxString& face :
         {wxString("Cascadia Mono"), wxString("Consolas"), desktops, wxString("Hack"),
          wxString("DejaVu Sans Mono"), wxString("Liberation Mono"), wxString("Courier New")})
        if (const wxString found = usable(face); !found.empty()) return found;
    return fixedFont().GetFaceName();
}

void useSystemFonts(Look& look) {
    look.plain = dialogFont();
    look.strong = native::semibold(look.plain);
    look.small = look.plain;
    look.small.SetFractionalPointSize(look.plain.GetFractionalPointSize() - 1);
    look.code = wxFont(wxFontInfo(kCodePoints).FaceName(codeFace()));
    look.codeStrong = look.code.Bold();
}

const ThemeTable& tableOf(ThemeChoice choice) {
    const bool dark =
        choice == ThemeChoice::dark || (choice == ThemeChoice::system && native::prefersDark());
    return dark ? darkTheme() : lightTheme();
}

}  // namespace korvant::ui
