#include "ui/form/form_place.h"

#include <wx/display.h>
#include <wx/toplevel.h>

#include <algorithm>

#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kFirstWidth = 620;
constexpr int kFirstHeight = 640;
constexpr int kFrame = 40;  ///< more than a title bar and borders take

wxRect clipped(wxRect place) {
    const int index = wxDisplay::GetFromPoint(place.GetPosition() + place.GetSize() / 2);
    const wxRect area = wxDisplay(index < 0 ? 0U : static_cast<unsigned>(index)).GetClientArea();
    place.width = std::min(place.width, area.width);
    place.height = std::min(place.height, area.height);
    place.x = std::clamp(place.x, area.x, area.GetRight() + 1 - place.width);
    place.y = std::clamp(place.y, area.y, area.GetBottom() + 1 - place.height);
    return place;
}

}  // namespace

void placeForm(wxTopLevelWindow& form, FormKind kind) {
    const FormRectangle& last = rememberedRectangle(kind);
    if (last.known) {
        form.SetSize(clipped(wxRect(last.x, last.y, last.width, last.height)));
        return;
    }
    // By its inside: on X the first window of a process would lose its place while the toolkit
    // asks the window manager how wide frames are.
    const wxRect area = workArea(form.GetParent());
    form.SetClientSize(std::min(form.FromDIP(kFirstWidth), area.width),
                       std::min(form.FromDIP(kFirstHeight), area.height - form.FromDIP(kFrame)));
    form.GetParent() ? form.CentreOnParent() : form.CentreOnScreen();
}

void rememberForm(const wxTopLevelWindow& form, FormKind kind) {
    if (form.IsMaximized() || form.IsIconized()) return;
    const wxRect place = form.GetRect();
    rememberedRectangle(kind) = {place.x, place.y, place.width, place.height, true};
}

}  // namespace korvant::ui
