#include "ui/kit/edge_grip.h"

#include <wx/cursor.h>
#include <wx/event.h>
#include <wx/utils.h>
#include <wx/window.h>

#include <memory>

namespace korvant::ui {
namespace {

constexpr int kGrip = 4;

struct Grip {
    wxDirection edge;
    std::function<void(int)> dragged;
    bool dragging = false;
    bool shown = false;  ///< the pointer says that there is a grip
    int last = 0;

    bool horizontal() const { return edge != wxUP; }
    bool contains(const wxWindow& window, const wxPoint& place) const {
        const int width = window.FromDIP(kGrip);
        if (edge == wxLEFT) return place.x < width;
        if (edge == wxRIGHT) return place.x >= window.GetClientSize().x - width;
        return place.y < width;
    }
    int pointer() const {
        const wxPoint place = wxGetMousePosition();
        return horizontal() ? place.x : place.y;
    }
};

void move(wxWindow& window, Grip& grip, wxMouseEvent& event) {
    if (grip.dragging) {
        const int now = grip.pointer();
        if (now != grip.last) grip.dragged(now - std::exchange(grip.last, now));
        return;
    }
    const bool over = grip.contains(window, event.GetPosition());
    if (over != grip.shown)
        window.SetCursor(over ? wxCursor(grip.horizontal() ? wxCURSOR_SIZEWE : wxCURSOR_SIZENS)
                              : wxNullCursor);
    grip.shown = over;
    event.Skip();
}

}  // namespace

void makeEdgeGrip(wxWindow& window, wxDirection edge, std::function<void(int)> dragged) {
    const auto grip = std::make_shared<Grip>(Grip{edge, std::move(dragged)});
    window.Bind(wxEVT_MOTION, [&window, grip](wxMouseEvent& event) { move(window, *grip, event); });
    window.Bind(wxEVT_LEFT_DOWN, [&window, grip](wxMouseEvent& event) {
        if (!grip->contains(window, event.GetPosition())) return event.Skip();
        grip->dragging = true;
        const wxPoint pressed =
            window.ClientToScreen(event.GetPosition());  // it may be elsewhere now
        grip->last = grip->horizontal() ? pressed.x : pressed.y;
        window.CaptureMouse();
    });
    window.Bind(wxEVT_LEFT_UP, [&window, grip](wxMouseEvent& event) {
        if (!grip->dragging) return event.Skip();
        move(window, *grip, event);  // where it was let go may not have been told
        grip->dragging = false;
        if (window.HasCapture()) window.ReleaseMouse();
    });
    window.Bind(wxEVT_MOUSE_CAPTURE_LOST,
                [grip](wxMouseCaptureLostEvent&) { grip->dragging = false; });
}

}  // namespace korvant::ui
