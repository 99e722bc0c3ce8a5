#include "ui/editor/panels/status_line.h"

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kIconX = 12, kIcon = 14, kTextX = 34, kRemarkGap = 16, kRightGap = 20, kMargin = 12;

}  // namespace

StatusLine::StatusLine(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, false) {
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (event.GetX() < endOfText() && onPressed) onPressed();
    });
    native::setAccessibleRole(*this, native::AccessibleRole::status);
}

int StatusLine::endOfText() const {
    return dip(kTextX + kRemarkGap) + textWidth(*this, content_.text, look().plain) +
           textWidth(*this, content_.remark, look().plain);
}

void StatusLine::setContent(const Content& content) {
    if (content == content_) return;
    const bool spoken = content.text != content_.text || content.remark != content_.remark;
    content_ = content;
    if (spoken)
        setAccessibleName(content.remark.empty() ? content.text
                                                 : content.text + " - " + content.remark);
    Refresh();
}

void StatusLine::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), (*look()).*content_.back);
    fill(context, {0, 0, size.x, 1}, look()->border);
    paintIcon(context, content_.icon, dip(kIconX), (size.y - dip(kIcon)) / 2, dip(kIcon),
              colourOf((*look()).*content_.iconColour), colourOf(look()->editor));
    int right = size.x - dip(kMargin);
    for (auto part = content_.right.rbegin(); part != content_.right.rend(); ++part) {
        right -= textWidth(*this, *part, look().plain);
        text(context, *part, look().plain, look()->secondText, right, 0, size.y);
        right -= dip(kRightGap);
    }
    const wxString shown = shortened(*this, content_.text, look().plain, right - dip(kTextX));
    text(context, shown, look().plain, look()->text, dip(kTextX), 0, size.y);
    const int x = dip(kTextX) + textWidth(*this, shown, look().plain) + dip(kRemarkGap);
    text(context, shortened(*this, content_.remark, look().plain, right - x), look().plain,
         look()->secondText, x, 0, size.y);
}

}  // namespace korvant::ui
