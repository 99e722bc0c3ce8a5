#include "ui/kit/painted_button.h"

#include <algorithm>

namespace korvant::ui {
namespace {

constexpr int kLeft = 10, kGap = 8, kLinkKeyGap = 10, kRight = 12;
constexpr double kRadius = 6;

}  // namespace

PaintedButton::PaintedButton(wxWindow* parent, const Look& look, Kind kind, Face face,
                             std::function<void()> pressed)
    : PaintedWindow(parent, look, true),
      kind_(kind),
      face_(std::move(face)),
      pressed_(std::move(pressed)) {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) {
        down_ = true;
        Refresh();
    });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { down_ = true; });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        const bool was = std::exchange(down_, false);
        Refresh();
        if (was && wxRect(GetClientSize()).Contains(event.GetPosition())) press();
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        down_ = false;
        event.Skip();
    });
    Bind(wxEVT_KEY_DOWN, &PaintedButton::onKey, this);
    refreshName();
}

void PaintedButton::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    const bool pressing = code == WXK_SPACE || code == WXK_RETURN || code == WXK_NUMPAD_ENTER;
    if (pressing && !event.HasAnyModifiers())
        press();
    else
        event.Skip();
}

void PaintedButton::press() {
    if (IsEnabled() && pressed_) pressed_();
}

void PaintedButton::refreshName() {
    const wxString name = face_.name.empty() ? face_.label : face_.name;
    const wxString spoken = face_.key.empty() ? name : name + ", " + face_.key;
    if (spoken == accessibleName()) return;
    setAccessibleName(spoken);
    SetToolTip(face_.key.empty() ? name : name + " (" + face_.key + ")");
}

void PaintedButton::setFace(Face face) {
    face_ = std::move(face);
    refreshName();
    Refresh();
}

void PaintedButton::showWords(bool shown) {
    if (words_ == shown) return;
    words_ = shown;
    Refresh();
}

void PaintedButton::setPressed(bool pressed) {
    if (toggled_ == pressed) return;
    toggled_ = pressed;
    Refresh();
}

int PaintedButton::wantedWidth() const {
    if (face_.icon && wordless()) return dip(32);
    const wxFont& font = kind_ == Kind::main || face_.strong ? look().strong : look().plain;
    int width = dip(kind_ == Kind::link ? 0 : face_.icon && !face_.endIcon ? kLeft : kRight);
    if (face_.icon) width += dip(iconSize_ + iconGap_);
    width += textWidth(*this, face_.label, font);
    if (!face_.key.empty()) width += dip(keyGap()) + textWidth(*this, face_.key, look().small);
    return width + dip(kind_ == Kind::link ? 0 : face_.endIcon ? 4 : kRight);
}

int PaintedButton::keyGap() const {
    return kind_ == Kind::link ? kLinkKeyGap : kGap;
}

Rgb PaintedButton::textColour() const {
    if (kind_ == Kind::main) return look()->mainText;
    if (!IsEnabled()) return look()->disabled;
    if (kind_ == Kind::link) return look()->accent;
    if (kind_ == Kind::danger) return look()->error;
    if (kind_ == Kind::option && !toggled_) return look()->secondText;
    return look()->text;
}

void PaintedButton::paintBack(wxGraphicsContext& context) {
    const wxRect all(GetClientSize());
    fill(context, all, (*look()).*back_);
    if (kind_ == Kind::main)
        return rounded(context, all, FromDIP(kRadius),
                       IsEnabled() ? look()->mainFill : look()->disabled);
    if (kind_ == Kind::framed) {
        context.SetPen(wxPen(colourOf(look()->border)));
        context.SetBrush(wxBrush(colourOf(look()->dark ? look()->pressed : look()->editor)));
        context.DrawRoundedRectangle(0, 0, all.width - 1, all.height - 1, dip(5));
    }
    if (kind_ == Kind::link || !IsEnabled()) return;
    if (kind_ == Kind::option && toggled_) {
        context.SetPen(wxPen(colourOf(look()->accent)));
        context.SetBrush(wxBrush(colourOf(look()->selected)));
        context.DrawRoundedRectangle(0, 0, all.width - 1, all.height - 1, dip(4));
        return;
    }
    if (toggled_ || down_)
        rounded(context, all, FromDIP(kRadius), look()->pressed);
    else if (hovered() && kind_ != Kind::framed)
        rounded(context, all, FromDIP(kRadius), look()->hover);
}

void PaintedButton::paint(wxGraphicsContext& context) {
    paintBack(context);
    const wxSize size = GetClientSize();
    const double top = (size.y - dip(iconSize_)) / 2;
    const Rgb colour = textColour();
    const Rgb iconColour = face_.iconColour && IsEnabled() ? (*look()).*face_.iconColour : colour;
    const auto icon = [&](double x) {
        paintIcon(context, *face_.icon, x, top, dip(iconSize_), colourOf(iconColour));
    };
    if (face_.icon && wordless()) {
        icon((size.x - dip(iconSize_)) / 2);
    } else {
        double x = dip(kind_ == Kind::link ? 0 : face_.icon && !face_.endIcon ? kLeft : kRight);
        if (kind_ == Kind::option) x = (size.x - textWidth(*this, face_.label, look().plain)) / 2.0;
        if (face_.icon && !face_.endIcon) {
            icon(x);
            x += dip(iconSize_ + iconGap_);
        }
        const wxFont& font = kind_ == Kind::main || face_.strong ? look().strong : look().plain;
        text(context, face_.label, font, colour, x, 0, size.y);
        x += textWidth(*this, face_.label, font) + dip(keyGap());
        if (face_.icon && face_.endIcon) icon(x - dip(keyGap()) + dip(2));
        const Rgb keyColour = kind_ == Kind::main ? look()->mainKey
                              : IsEnabled()       ? look()->secondText
                                                  : look()->disabled;
        text(context, face_.key, look().small, keyColour, x, 0, size.y);
    }
    if (focused()) focusMark(context, wxRect(size));
}

}  // namespace korvant::ui
