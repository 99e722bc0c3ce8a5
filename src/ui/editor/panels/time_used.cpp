#include "ui/editor/panels/time_used.h"

#include <algorithm>

#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kIcon = 16, kGap = 8, kBarWidth = 120, kBarHeight = 4, kBarGap = 12;
constexpr std::uint32_t kShort = 10;  // percent of the time that is left

}  // namespace

wxString clockText(std::uint32_t milliseconds) {
    const std::uint32_t seconds = milliseconds / 1000;
    return wxString::Format("%u:%02u", seconds / 60, seconds % 60);
}

wxString limitText(std::uint32_t milliseconds) {
    wxString text = clockText(milliseconds);
    if (const std::uint32_t part = milliseconds % 1000) text += wxString::Format(".%03u", part);
    while (text.Contains('.') && text.EndsWith("0")) text.RemoveLast();
    return text;
}

namespace {

wxString allowedText(std::uint32_t limit) {
    return wxString::Format(words(" of %s allowed"), limitText(limit));
}

}  // namespace

TimeUsed::TimeUsed(wxWindow* parent, const Look& look) : PaintedWindow(parent, look, false) {}

void TimeUsed::setTime(std::uint32_t used, std::uint32_t limit) {
    const bool seen = used / 1000 != used_ / 1000 || limit != limit_ ||
                      shareWidth(used) != shareWidth(used_) || isShort(used) != isShort(used_);
    if (!seen) return;
    used_ = used;
    limit_ = limit;
    setAccessibleName(limit ? clockText(used) + allowedText(limit) : clockText(used));
    Refresh();
}

int TimeUsed::wantedWidth() const {
    int width = dip(kIcon + kGap) + textWidth(*this, "00:00", look().strong);
    if (limit_ != 0)
        width += textWidth(*this, allowedText(limit_), look().plain) + dip(kBarGap + kBarWidth);
    return width;
}

/// Of the bar, in pixels.
int TimeUsed::shareWidth(std::uint32_t used) const {
    return limit_ == 0 ? 0
                       : static_cast<int>(dip(kBarWidth) * std::min(1.0, double(used) / limit_));
}

bool TimeUsed::isShort(std::uint32_t used) const {
    return limit_ != 0 && std::uint64_t{used} * 100 > std::uint64_t{limit_} * (100 - kShort);
}

void TimeUsed::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    paintIcon(context, Icon::clock, 0, (size.y - dip(kIcon)) / 2, dip(kIcon),
              colourOf(look()->secondText));
    int x = dip(kIcon + kGap);
    const wxString used = clockText(used_);
    text(context, used, look().strong, look()->text, x, 0, size.y);
    if (limit_ == 0) return;
    x += textWidth(*this, used, look().strong);
    const wxString allowed = allowedText(limit_);
    text(context, allowed, look().plain, look()->secondText, x, 0, size.y);
    x += textWidth(*this, allowed, look().plain) + dip(kBarGap);
    const wxRect bar(x, (size.y - dip(kBarHeight)) / 2, dip(kBarWidth), dip(kBarHeight));
    rounded(context, bar, bar.height / 2.0, look()->track);
    wxRect part = bar;
    part.width = shareWidth(used_);
    if (part.width > 0)
        rounded(context, part, bar.height / 2.0, isShort(used_) ? look()->error : look()->accent);
}

}  // namespace korvant::ui
