#include "ui/window_place.h"

#include <wx/display.h>
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

}  // namespace

wxRect workArea(const wxWindow* window) {
    return wxDisplay(displayOf(window)).GetClientArea();
}

void placeDialog(wxTopLevelWindow& dialog) {
    const wxRect area = workArea(dialog.GetParent());
    const wxSize wanted = dialog.GetBestSize();
    dialog.SetMinSize(bounded(dialog.GetMinSize(), area));
    dialog.SetSize(bounded(wanted, area));
    dialog.GetParent() ? dialog.CentreOnParent() : dialog.CentreOnScreen();
}

void refitInPlace(wxTopLevelWindow& dialog) {
    const wxRect area = workArea(&dialog);
    const wxSize size = bounded(dialog.GetBestSize(), area);
    const wxPoint corner = dialog.GetPosition();
    dialog.SetSize(std::clamp(corner.x, area.x, area.GetRight() + 1 - size.x),
                   std::clamp(corner.y, area.y, area.GetBottom() + 1 - size.y), size.x, size.y);
}

}  // namespace korvant::ui
