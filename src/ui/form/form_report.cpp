#include "ui/form/form_report.h"

#include <wx/dcbuffer.h>

#include <algorithm>

#include "ui/kit/html_view.h"
#include "ui/kit/theme.h"

namespace korvant::ui {
namespace {

constexpr int kPadding = 8;
constexpr std::string_view kLineEnd = "<br>";

}  // namespace

FormReport::FormReport(wxWindow* parent) {
    Hide();
    Create(parent, wxID_ANY);
    view_ = new HtmlView(this, HtmlView::Surface::field);
    view_->SetCanFocus(false);
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        const Theme theme = currentTheme();
        dc.SetPen(wxPen(theme.error, FromDIP(1)));
        dc.SetBrush(theme.field);
        dc.DrawRectangle(GetClientSize());
    });
}

FormReport::~FormReport() {
    close();
}

void FormReport::show(std::string markup, wxPoint place) {
    while (markup.ends_with(kLineEnd)) markup.resize(markup.size() - kLineEnd.size());
    const wxSize room = GetParent()->GetClientSize();
    const int padding = FromDIP(kPadding);
    view_->setMarkup(markup);
    const int width = std::min(view_->naturalWidth(), room.x - 2 * padding);
    const int height = std::min(view_->heightAt(width) + padding, room.y - 2 * padding);
    const wxSize size(width + 2 * padding, height + 2 * padding);
    place.x = std::clamp(place.x, 0, std::max(0, room.x - size.x));
    place.y = std::clamp(place.y, 0, std::max(0, room.y - size.y));
    SetSize(wxRect(place, size));
    view_->SetSize(padding, padding, width, height);
    Show();
    Raise();
    if (!listening_) wxEvtHandler::AddFilter(this);
    listening_ = true;
}

void FormReport::close() {
    if (listening_) wxEvtHandler::RemoveFilter(this);
    listening_ = false;
    Hide();
}

int FormReport::FilterEvent(wxEvent& event) {
    const wxEventType type = event.GetEventType();
    if (type == wxEVT_LEFT_DOWN || type == wxEVT_RIGHT_DOWN || type == wxEVT_MIDDLE_DOWN) {
        auto* window = dynamic_cast<wxWindow*>(event.GetEventObject());
        const bool inside = window && (window == this || IsDescendant(window));
        close();
        return inside ? Event_Processed : Event_Skip;
    }
    if (type != wxEVT_CHAR_HOOK) return Event_Skip;
    const int code = static_cast<wxKeyEvent&>(event).GetKeyCode();
    if (code == WXK_SHIFT || code == WXK_CONTROL || code == WXK_ALT) return Event_Skip;
    close();
    return code == WXK_ESCAPE ? Event_Processed : Event_Skip;
}

}  // namespace korvant::ui
