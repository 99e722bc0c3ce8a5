#include "ui/kit/window_place.h"

#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/toplevel.h>
#include <wx/utils.h>

#include <algorithm>

namespace korvant::ui {
namespace {

unsigned displayOf(const wxWindow* window) {
    const int index = window && window->IsShownOnScreen()
                          ? wxDisplay::GetFromWindow(window)
                          : wxDisplay::GetFromPoint(wxGetMousePosition());
    return index == wxNOT_FOUND ? 0U : static_cast<unsigned>(index);
}

wxSize bounded(const wxSize& wanted, const wxRect& area) {
    return {std::min(wanted.x, area.width), std::min(wanted.y, area.height)};
}

wxSize fittingClientSize(wxTopLevelWindow& dialog) {
    wxSizer* sizer = dialog.GetSizer();
    return sizer ? sizer->ComputeFittingClientSize(&dialog) : dialog.GetBestSize();
}

}  // namespace

wxRect workArea(const wxWindow* window) {
    return wxDisplay(displayOf(window)).GetClientArea();
}

/// Sized by its inside: what the frame adds is known only after the first showing.
void placeDialog(wxTopLevelWindow& dialog) {
    const wxRect area = workArea(dialog.GetParent());
    dialog.SetClientSize(bounded(fittingClientSize(dialog), area));
    dialog.SetSize(bounded(dialog.GetSize(), area));
    dialog.GetParent() ? dialog.CentreOnParent() : dialog.CentreOnScreen();
}

void refitInPlace(wxTopLevelWindow& dialog) {
    const wxRect area = workArea(&dialog);
    dialog.SetClientSize(bounded(fittingClientSize(dialog), area));
    const wxSize size = bounded(dialog.GetSize(), area);
    const wxPoint corner = dialog.GetPosition();
    dialog.SetSize(std::clamp(corner.x, area.x, area.GetRight() + 1 - size.x),
                   std::clamp(corner.y, area.y, area.GetBottom() + 1 - size.y), size.x, size.y);
}

}  // namespace korvant::ui
