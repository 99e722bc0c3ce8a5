#include "ui/kit/pane_heading.h"

#include <algorithm>

#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kCell = 28, kSmallCell = 24, kRightMargin = 8, kBareMargin = 7, kBareIcon = 14;
constexpr int kFoldedStart = 24, kBareStart = 12, kArrow = 6, kFoldIcon = 14;
constexpr int kAccent = 2, kAccentBeyond = 4;
constexpr int kLeastGap = 8, kRemarkGap = 8, kUnderlinedRemarkGap = 24;
constexpr int kBadgeGap = 6, kBadgePadding = 7, kBadgeHeight = 16;

}  // namespace

PaneHeading::PaneHeading(wxWindow* parent, const Look& look, Style style, std::vector<Title> titles)
    : PaintedWindow(parent, look, true), style_(style), titles_(std::move(titles)) {
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        placeButtons();
        event.Skip();
    });
    Bind(wxEVT_LEFT_DOWN, &PaneHeading::onClick, this);
    Bind(wxEVT_KEY_DOWN, &PaneHeading::onKey, this);
    native::setAccessibleRole(*this, native::AccessibleRole::tabs);
    refreshName();
}

void PaneHeading::refreshName() {
    if (titles_.empty()) return;
    const Title& title = titles_[static_cast<std::size_t>(chosen_)];
    setAccessibleName(title.text + (remark_.empty() ? "" : ", " + remark_));
}

void PaneHeading::setTitles(std::vector<Title> titles) {
    titles_ = std::move(titles);
    if (chosen_ >= static_cast<int>(titles_.size())) chosen_ = 0;
    refreshName();
    Refresh();
}

void PaneHeading::setRemark(const wxString& remark) {
    if (remark == remark_) return;
    remark_ = remark;
    refreshName();
    Refresh();
}

void PaneHeading::choose(int title) {
    if (title < 0 || title >= static_cast<int>(titles_.size())) return;
    chosen_ = title;
    refreshName();
    Refresh();
}

void PaneHeading::setFolded(bool folded) {
    folded_ = folded;
    Refresh();
}

PaintedButton* PaneHeading::addButton(Icon icon, const wxString& name,
                                      std::function<void()> pressed) {
    auto* button =
        new PaintedButton(this, look(), PaintedButton::Kind::plain,
                          {icon, {}, {}, name, &ThemeTable::secondText}, std::move(pressed));
    if (style_ == Style::bare) button->setIconPlace(kBareIcon, 0);
    buttons_.push_back(button);
    placeButtons();
    return button;
}

void PaneHeading::showButton(PaintedButton* button, bool shown) {
    if (button->IsShown() == shown) return;
    button->Show(shown);
    placeButtons();
}

void PaneHeading::placeButtons() {
    const wxSize size = GetClientSize();
    const int cell = dip(style_ == Style::underlined ? kCell : kSmallCell);
    int x = size.x - dip(style_ == Style::bare ? kBareMargin : kRightMargin);
    for (auto i = buttons_.rbegin(); i != buttons_.rend(); ++i) {
        if (!(*i)->IsShown()) continue;
        x -= cell;
        (*i)->SetSize(x, (size.y - cell) / 2 + 1, cell, cell - 2);
    }
}

int PaneHeading::titleStart() const {
    return dip(style_ == Style::folding ? kFoldedStart
               : style_ == Style::bare  ? kBareStart
                                        : start_);
}

/// Smaller where the titles would not fit.
int PaneHeading::titleGap() const {
    const auto gaps = static_cast<int>(titles_.size()) - 1;
    if (gaps < 1) return dip(gap_);
    int room = GetClientSize().x - titleStart() - dip(kRightMargin);
    for (int i = 0; i <= gaps; ++i)
        room -= titleWidth(titles_[static_cast<std::size_t>(i)], i == chosen_);
    return std::clamp(room / gaps, dip(kLeastGap), dip(gap_));
}

int PaneHeading::titleWidth(const Title& title, bool isChosen) const {
    int width = textWidth(*this, title.text, isChosen ? look().strong : look().plain);
    if (!title.badge.empty())
        width +=
            dip(kBadgeGap) + textWidth(*this, title.badge, look().small) + 2 * dip(kBadgePadding);
    return width;
}

int PaneHeading::paintTitle(wxGraphicsContext& context, int index, int x) {
    const Title& title = titles_[static_cast<std::size_t>(index)];
    const wxSize size = GetClientSize();
    const bool isChosen = index == chosen_;
    const wxFont& font = isChosen ? look().strong : look().plain;
    text(context, title.text, font, isChosen ? look()->text : look()->secondText, x, 0, size.y);
    const int width = titleWidth(title, isChosen);
    if (!title.badge.empty()) {
        const int pill = textWidth(*this, title.badge, look().small) + 2 * dip(kBadgePadding);
        const wxRect place(x + width - pill, (size.y - dip(kBadgeHeight)) / 2, pill,
                           dip(kBadgeHeight));
        rounded(context, place, place.height / 2.0, look()->badgeFill);
        text(context, title.badge, look().small, look()->badgeText, place.x + dip(kBadgePadding),
             place.y, place.height);
    }
    if (isChosen && style_ == Style::underlined)
        fill(context,
             {x - dip(kAccentBeyond), size.y - 1 - dip(kAccent), width + 2 * dip(kAccentBeyond),
              dip(kAccent)},
             look()->accent);
    return x + width;
}

void PaneHeading::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    if (topLine_)
        fill(context, {0, 0, size.x, 1}, style_ == Style::folding ? look()->hair : look()->border);
    fill(context, {0, size.y - 1, size.x, 1}, (*look()).*end_);
    if (style_ == Style::folding)
        paintIcon(context, folded_ ? Icon::right : Icon::down, dip(kArrow),
                  (size.y - dip(kFoldIcon)) / 2, dip(kFoldIcon), colourOf(look()->secondText));
    int x = titleStart();
    for (int i = 0; i < static_cast<int>(titles_.size()); ++i)
        x = paintTitle(context, i, i == 0 ? x : x + titleGap());
    const int gap = style_ == Style::underlined ? kUnderlinedRemarkGap : kRemarkGap;
    text(context, remark_, look().small, look()->secondText, x + dip(gap), 0, size.y);
    if (focused()) focusMark(context, wxRect(size));
}

void PaneHeading::onClick(wxMouseEvent& event) {
    if (style_ == Style::folding) {
        setFolded(!folded_);
        if (onFolded) onFolded(folded_);
        return;
    }
    int x = titleStart();
    for (int i = 0; i < static_cast<int>(titles_.size()); ++i) {
        const int end = x + titleWidth(titles_[static_cast<std::size_t>(i)], i == chosen_);
        const int half = titleGap() / 2;
        if (event.GetX() >= x - half && event.GetX() < end + half && onChosen) return onChosen(i);
        x = end + titleGap();
    }
}

void PaneHeading::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    const int step = code == WXK_RIGHT ? 1 : code == WXK_LEFT ? -1 : 0;
    if (step == 0 || event.HasAnyModifiers()) return event.Skip();
    if (style_ == Style::folding) {
        setFolded(step < 0);
        if (onFolded) onFolded(folded_);
    } else if (onChosen && chosen_ + step >= 0 &&
               chosen_ + step < static_cast<int>(titles_.size())) {
        onChosen(chosen_ + step);
    }
}

}  // namespace korvant::ui
