#include "ui/editor/panels/frame_chooser.h"

#include <wx/menu.h>

#include "ui/kit/mnemonics.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kSide = 8, kInset = 10, kIcon = 14, kTextX = 30, kGap = 6, kTop = 6, kHeight = 28;
constexpr double kRadius = 5;
constexpr int kFirstItem = 1;

}  // namespace

FrameChooser::FrameChooser(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, true) {
    native::setAccessibleRole(*this, native::AccessibleRole::button);
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { open(); });
    Bind(wxEVT_KEY_DOWN, &FrameChooser::onKey, this);
}

void FrameChooser::setFrames(std::vector<Frame> frames, std::size_t chosen, bool isException) {
    frames_ = std::move(frames);
    chosen_ = chosen;
    isException_ = isException;
    if (chosen_ < frames_.size())
        setAccessibleName(words("Call stack") + ": " + frames_[chosen_].name + ", " +
                          frames_[chosen_].place);
    Refresh();
}

void FrameChooser::open() {
    if (frames_.empty()) return;
    wxMenu menu;
    for (std::size_t i = 0; i < frames_.size(); ++i)
        menu.AppendRadioItem(kFirstItem + static_cast<int>(i),
                             escapeLabel(frames_[i].name + "   " + frames_[i].place));
    menu.Check(kFirstItem + static_cast<int>(chosen_), true);
    const int item = GetPopupMenuSelectionFromUser(menu, wxPoint(dip(kSide), GetClientSize().y));
    if (item != wxID_NONE) choose(item - kFirstItem);
}

void FrameChooser::choose(int frame) {
    if (frame >= 0 && frame < static_cast<int>(frames_.size()) && onChosen) onChosen(frame);
}

void FrameChooser::onKey(wxKeyEvent& event) {
    const int at = static_cast<int>(chosen_);
    switch (event.GetKeyCode()) {
        case WXK_UP:
            return choose(at - 1);
        case WXK_DOWN:
            return choose(at + 1);
        case WXK_RETURN:
        case WXK_SPACE:
            return open();
        default:
            event.Skip();
    }
}

void FrameChooser::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    const wxRect field(dip(kSide), dip(kTop), size.x - dip(2 * kSide), dip(kHeight));
    context.SetPen(wxPen(colourOf(look()->border)));
    context.SetBrush(wxBrush(colourOf(hovered() ? look()->hover : look()->editor)));
    context.DrawRoundedRectangle(field.x + 0.5, field.y + 0.5, field.width - 1, field.height - 1,
                                 dip(kRadius));
    if (focused()) focusMark(context, field);
    fill(context, {0, size.y - 1, size.x, 1}, look()->hair);
    if (chosen_ >= frames_.size()) return;
    const double iconY = field.y + (field.height - dip(kIcon)) / 2.0;
    const Icon icon = chosen_ > 0 ? Icon::callerArrow : isException_ ? Icon::bolt : Icon::stopArrow;
    const Rgb colour = chosen_ > 0    ? look()->secondText
                       : isException_ ? look()->error
                                      : look()->stopMark;
    paintIcon(context, icon, field.x + dip(kInset - 1), iconY, dip(kIcon), colourOf(colour));
    const int arrowX = field.GetRight() - dip(kInset + kIcon - 3);
    paintIcon(context, Icon::down, arrowX, iconY, dip(kIcon), colourOf(look()->secondText));
    const int placeWidth = textWidth(*this, frames_[chosen_].place, look().small);
    const int placeX = arrowX - dip(kGap) - placeWidth;
    text(context, frames_[chosen_].place, look().small, look()->secondText, placeX, field.y,
         field.height);
    const int nameX = field.x + dip(kTextX);
    text(context, shortened(*this, frames_[chosen_].name, look().plain, placeX - dip(kGap) - nameX),
         look().plain, look()->text, nameX, field.y, field.height);
}

}  // namespace korvant::ui
