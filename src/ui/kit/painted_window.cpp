#include "ui/kit/painted_window.h"

#include <wx/dcbuffer.h>
#include <wx/dcclient.h>

#include <cmath>
#include <memory>

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kFocusWidth = 2, kFieldRadius = 5;
constexpr double kFocusRadius = 4;

}  // namespace

PaintedWindow::PaintedWindow(wxWindow* parent, const Look& look, bool focusable)
    : look_(look), focusable_(focusable) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxSize(0, 0),
           wxBORDER_NONE | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE);
    SetCanFocus(focusable);
    Bind(wxEVT_PAINT, &PaintedWindow::onPaint, this);
    const auto repaint = [this](wxEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, [repaint](wxFocusEvent& event) { repaint(event); });
    Bind(wxEVT_KILL_FOCUS, [repaint](wxFocusEvent& event) { repaint(event); });
    Bind(wxEVT_ENTER_WINDOW, [this, repaint](wxMouseEvent& event) {
        hovered_ = true;
        repaint(event);
    });
    Bind(wxEVT_LEAVE_WINDOW, [this, repaint](wxMouseEvent& event) {
        hovered_ = false;
        repaint(event);
    });
}

void PaintedWindow::setAccessibleName(const wxString& name) {
    if (name == name_) return;
    name_ = name;
    native::setAccessibleName(*this, name);
}

void PaintedWindow::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    if (context) guarded([&] { paint(*context); });
}

void PaintedWindow::text(wxGraphicsContext& context, const wxString& text, const wxFont& font,
                         Rgb colour, double x, double y, double height) const {
    if (text.empty()) return;
    context.SetFont(font, colourOf(colour));
    double width = 0, tall = 0;
    context.GetTextExtent(text, &width, &tall);
    context.DrawText(text, x, std::ceil(y + (height - tall) / 2));
}

void PaintedWindow::fill(wxGraphicsContext& context, const wxRect& place, Rgb colour) const {
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(colour)));
    context.DrawRectangle(place.x, place.y, place.width, place.height);
}

void PaintedWindow::rounded(wxGraphicsContext& context, const wxRect& place, double radius,
                            Rgb colour) const {
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(colour)));
    context.DrawRoundedRectangle(place.x, place.y, place.width, place.height, radius);
}

void PaintedWindow::fieldBox(wxGraphicsContext& context, const wxRect& place, bool focused,
                             bool enabled) const {
    const double edge = focused ? dip(kFocusWidth) : 1, half = edge / 2;
    const Rgb line = focused ? look_->accent : enabled ? look_->fieldEdge : look_->border;
    context.SetPen(wxPen(colourOf(line), static_cast<int>(edge)));
    context.SetBrush(wxBrush(colourOf(enabled ? look_->editor : look_->chrome)));
    context.DrawRoundedRectangle(place.x + half, place.y + half, place.width - edge,
                                 place.height - edge, dip(kFieldRadius));
}

void PaintedWindow::focusMark(wxGraphicsContext& context, const wxRect& place) const {
    const int width = dip(kFocusWidth);
    context.SetPen(wxPen(colourOf(look_->accent), width));
    context.SetBrush(wxNullGraphicsBrush);
    context.DrawRoundedRectangle(place.x + width / 2.0, place.y + width / 2.0, place.width - width,
                                 place.height - width, FromDIP(kFocusRadius));
}

int textWidth(const wxWindow& window, const wxString& text, const wxFont& font) {
    int width = 0;
    window.GetTextExtent(text, &width, nullptr, nullptr, nullptr, &font);
    return width;
}

wxString shortened(const wxWindow& window, const wxString& text, const wxFont& font, int width) {
    if (textWidth(window, text, font) <= width) return text;
    wxClientDC measure(const_cast<wxWindow*>(&window));
    measure.SetFont(font);
    return wxControl::Ellipsize(text, measure, wxELLIPSIZE_END, std::max(width, 0));
}

}  // namespace korvant::ui
