#include "ui/editor/panels/code_marks.h"

#include <wx/image.h>
#include <wx/stc/stc.h>

#include "ui/kit/icon_painter.h"
#include "ui/kit/look.h"

namespace korvant::ui {
namespace {

constexpr int kSize = 16;

/// The control paints pictures at the size of 96 dots per inch only; where the screen is finer its
/// own shapes look better.
bool picturesFit(const wxStyledTextCtrl& control) {
    return control.GetContentScaleFactor() < 1.5;
}

void defineMark(wxStyledTextCtrl& control, int marker, Icon icon, int otherwise,
                const wxColour& colour, const wxColour& back) {
    if (picturesFit(control))
        control.MarkerDefineBitmap(
            marker, iconBundle(icon, kSize, colour, back).GetBitmap(wxSize(kSize, kSize)));
    else
        control.MarkerDefine(marker, otherwise, colour, colour);
}

}  // namespace

void showFoldMarks(wxStyledTextCtrl& control, const Look* look) {
    if (!look) {
        control.MarkerDefine(wxSTC_MARKNUM_FOLDEROPEN, wxSTC_MARK_MINUS);
        control.MarkerDefine(wxSTC_MARKNUM_FOLDER, wxSTC_MARK_PLUS);
        return;
    }
    const wxColour colour = colourOf((*look)->secondText), back = colourOf((*look)->editor);
    defineMark(control, wxSTC_MARKNUM_FOLDEROPEN, Icon::down, wxSTC_MARK_ARROWDOWN, colour, back);
    defineMark(control, wxSTC_MARKNUM_FOLDER, Icon::right, wxSTC_MARK_ARROW, colour, back);
    defineMark(control, wxSTC_MARKNUM_FOLDEREND, Icon::right, wxSTC_MARK_ARROW, colour, back);
    defineMark(control, wxSTC_MARKNUM_FOLDEROPENMID, Icon::down, wxSTC_MARK_ARROWDOWN, colour,
               back);
}

}  // namespace korvant::ui
