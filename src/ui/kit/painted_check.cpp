#include "ui/kit/painted_check.h"

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kBox = 14, kChoice = 16, kBoxGap = 8, kChoiceGap = 10, kBeyond = 4;
constexpr double kRadius = 3, kDotShare = 0.375;

}  // namespace

PaintedCheck::PaintedCheck(wxWindow* parent, const Look& look, Kind kind, const wxString& label,
                           std::function<void(bool)> changed)
    : PaintedWindow(parent, look, true),
      kind_(kind),
      label_(label),
      changed_(std::move(changed)),
      gap_(kind == Kind::box ? kBoxGap : kChoiceGap) {
    for (const auto& down : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK})
        Bind(down, [this](wxMouseEvent&) {
            SetFocus();
            press();
        });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_SPACE && !event.HasAnyModifiers()) return press();
        if (event.GetKeyCode() == WXK_TAB)
            Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                       : wxNavigationKeyEvent::IsForward);
        else
            event.Skip();
    });
    native::setAccessibleRole(*this, native::AccessibleRole::toggle);
    refreshName();
}

void PaintedCheck::press() {
    if (!IsEnabled()) return;
    setValue(kind_ == Kind::choice || !value_);
    if (changed_) changed_(value_);
}

void PaintedCheck::setValue(bool value) {
    if (std::exchange(value_, value) == value) return;
    refreshName();
    Refresh();
}

void PaintedCheck::setWord(Rgb ThemeTable::*colour, int gap) {
    wordColour_ = colour;
    gap_ = gap;
}

void PaintedCheck::refreshName() {
    setAccessibleName(label_ + (value_ ? ", on" : ", off"));
}

int PaintedCheck::markSize() const {
    return dip(kind_ == Kind::box ? kBox : kChoice);
}

int PaintedCheck::wantedWidth() const {
    return markSize() + dip(gap_) + textWidth(*this, label_, look().plain) + dip(kBeyond);
}

void PaintedCheck::paintMark(wxGraphicsContext& context, const wxRect& place) {
    if (kind_ == Kind::box) return paintCheckMark(context, look(), place, dip(kRadius), value_);
    context.SetPen(value_ ? wxNullGraphicsPen
                          : context.CreatePen(wxPen(colourOf(look()->fieldEdge))));
    context.SetBrush(wxBrush(colourOf(value_ ? look()->accent : look()->editor)));
    if (!value_) return context.DrawEllipse(place.x, place.y, place.width - 1, place.height - 1);
    context.DrawEllipse(place.x, place.y, place.width, place.height);
    const double dot = place.width * kDotShare, inset = (place.width - dot) / 2;
    context.SetBrush(wxBrush(colourOf(look()->editor)));
    context.DrawEllipse(place.x + inset, place.y + inset, dot, dot);
}

void PaintedCheck::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), (*look()).*back_);
    const int mark = markSize();
    paintMark(context, {0, (size.y - mark) / 2, mark, mark});
    text(context, label_, look().plain, IsEnabled() ? (*look()).*wordColour_ : look()->disabled,
         mark + dip(gap_), 0, size.y);
    if (focused()) focusMark(context, wxRect(size));
}

void paintCheckMark(wxGraphicsContext& context, const Look& look, const wxRect& place,
                    double radius, bool checked) {
    if (!checked) {
        context.SetPen(wxPen(colourOf(look->fieldEdge)));
        context.SetBrush(wxBrush(colourOf(look->editor)));
        context.DrawRoundedRectangle(place.x + 0.5, place.y + 0.5, place.width - 1,
                                     place.height - 1, radius);
        return;
    }
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(look->accent)));
    context.DrawRoundedRectangle(place.x, place.y, place.width, place.height, radius);
    const double inset = place.width / 14.0;
    paintIcon(context, Icon::check, place.x + inset, place.y + inset, place.width - 2 * inset,
              colourOf(look->editor));
}

}  // namespace korvant::ui
