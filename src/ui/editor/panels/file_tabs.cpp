#include "ui/editor/panels/file_tabs.h"

#include <wx/menu.h>

#include <algorithm>

#include "ui/editor/panels/function_chooser.h"
#include "ui/kit/mnemonics.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kPadding = 16, kGap = 13, kCross = 14, kRight = 12, kMostText = 220;
constexpr int kAccent = 2, kLineHeight = 20, kMore = 32, kCellBeyond = 3, kWheelStep = 60;
constexpr double kDot = 4, kCellRadius = 4;
constexpr int kFirstItem = 1, kDragFrom = 8;

}  // namespace

FileTabs::FileTabs(wxWindow* parent, const Look& look, Actions actions)
    : PaintedWindow(parent, look, true),
      actions_(std::move(actions)),
      chooser_(new FunctionChooser(this, look, [this] { actions_.functions(); })),
      more_(new PaintedButton(this, look, PaintedButton::Kind::plain,
                              {Icon::down, {}, {}, words("All open files")},
                              [this] { openList(); })) {
    chooser_->onLeft = [this] { SetFocus(); };
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        place();
        event.Skip();
    });
    Bind(wxEVT_KEY_DOWN, &FileTabs::onKey, this);
    bindMouse();
    native::setAccessibleRole(*this, native::AccessibleRole::tabs);
}

void FileTabs::bindMouse() {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        const std::size_t tab = tabAt(event.GetPosition());
        if (tab == tabs_.size()) return;
        const std::uint64_t id = tabs_[tab].id;
        if (isOnCross(tab, event.GetPosition())) {
            pressed_ = id;
        } else {
            dragged_ = id;
            dragFrom_ = event.GetX();
            actions_.chosen(id);
        }
        Refresh();
    });
    Bind(wxEVT_LEFT_UP, &FileTabs::onRelease, this);
    Bind(wxEVT_MIDDLE_UP, [this](wxMouseEvent& event) {
        const std::size_t tab = tabAt(event.GetPosition());
        if (tab < tabs_.size()) actions_.closed(tabs_[tab].id);
    });
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        scroll(event.GetWheelRotation() > 0 ? -dip(kWheelStep) : dip(kWheelStep));
    });
    Bind(wxEVT_MOTION, &FileTabs::onMotion, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { dragged_ = 0; });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        pointer_ = {-1, -1};
        event.Skip();
    });
}

/// The tab may be gone afterwards.
void FileTabs::onRelease(wxMouseEvent& event) {
    dragged_ = 0;
    if (HasCapture()) ReleaseMouse();
    const std::uint64_t pressed = std::exchange(pressed_, 0);
    const std::size_t tab = tabAt(event.GetPosition());
    if (pressed == 0 || tab == tabs_.size() || tabs_[tab].id != pressed) return Refresh();
    if (isOnCross(tab, event.GetPosition())) actions_.closed(pressed);
}

/// The tab changes places with those that its pointer comes over, once it is past their middle.
void FileTabs::drag(int x) {
    if (std::abs(x - dragFrom_) < dip(kDragFrom) && !HasCapture()) return;
    if (!HasCapture()) CaptureMouse();
    const auto found = std::find_if(tabs_.begin(), tabs_.end(),
                                    [this](const DocumentTab& tab) { return tab.id == dragged_; });
    if (found == tabs_.end()) return;
    const auto at = static_cast<std::size_t>(found - tabs_.begin());
    std::size_t to = at;
    const auto middle = [this](std::size_t tab) {
        const wxRect place = tabPlace(tab);
        return place.x + place.width / 2;
    };
    while (to > 0 && x < middle(to - 1)) --to;
    while (to + 1 < tabs_.size() && x > middle(to + 1)) ++to;
    if (to != at) actions_.moved(dragged_, to > at ? to + 1 : to);
}

void FileTabs::onMotion(wxMouseEvent& event) {
    if (dragged_ != 0 && event.LeftIsDown()) drag(event.GetX());
    if (!event.LeftIsDown()) dragged_ = 0;
    const std::size_t tab = tabAt(event.GetPosition()), before = tabAt(pointer_);
    const bool onCross = tab < tabs_.size() && isOnCross(tab, event.GetPosition());
    const bool wasOnCross = before < tabs_.size() && isOnCross(before, pointer_);
    pointer_ = event.GetPosition();
    if (tab == before && onCross == wasOnCross) return;
    wxString tip;
    if (onCross)
        tip = words("Close");
    else if (tab < tabs_.size())
        tip = tabs_[tab].detail.empty() ? words("Not saved yet") : fromUtf8(tabs_[tab].detail);
    if (tip.empty())
        UnsetToolTip();
    else
        SetToolTip(tip);
    Refresh();
}

void FileTabs::setTabs(std::vector<DocumentTab> tabs, std::uint64_t shown) {
    if (tabs == tabs_ && shown == shown_) return;
    tabs_ = std::move(tabs);
    shown_ = shown;
    place();
    refreshName();
}

void FileTabs::refreshName() {
    if (tabs_.empty()) return;
    const std::size_t shown = shownIndex();
    wxString name = fromUtf8(tabs_[shown].name);
    if (tabs_[shown].modified) name += ", " + words("changed");
    setAccessibleName(name + ", " +
                      wxString::Format(words("%d of %d"), static_cast<int>(shown) + 1,
                                       static_cast<int>(tabs_.size())));
}

void FileTabs::setFunction(const wxString& path) {
    if (path == chooser_->function()) return;
    chooser_->setFunction(path);
    place();
}

std::size_t FileTabs::shownIndex() const {
    const auto found = std::find_if(tabs_.begin(), tabs_.end(),
                                    [this](const DocumentTab& tab) { return tab.id == shown_; });
    return found == tabs_.end() ? 0 : static_cast<std::size_t>(found - tabs_.begin());
}

wxString FileTabs::nameOn(std::size_t index) const {
    return shortened(*this, fromUtf8(tabs_[index].name), look().plain, dip(kMostText));
}

int FileTabs::tabWidth(std::size_t index) const {
    return dip(kPadding) + textWidth(*this, nameOn(index), look().plain) +
           dip(kGap + kCross + kRight);
}

/// What is left of the row for tabs.
int FileTabs::room() const {
    int room = GetClientSize().x - chooser_->wantedWidth();
    if (!ends_.empty() && ends_.back() > room) room -= dip(kMore);
    return std::max(room, 0);
}

void FileTabs::place() {
    ends_.clear();
    int end = 0;
    for (std::size_t i = 0; i < tabs_.size(); ++i) ends_.push_back(end += tabWidth(i));
    const wxSize size = GetClientSize();
    const int chooserWidth = std::min(chooser_->wantedWidth(), size.x);
    chooser_->SetSize(size.x - chooserWidth, 0, chooserWidth, size.y);
    const bool overflows = end > size.x - chooserWidth;
    more_->Show(overflows);
    if (overflows) more_->SetSize(room(), 0, dip(kMore), std::max(size.y - 1, 0));
    scrolled_ = std::clamp(scrolled_, 0, std::max(end - room(), 0));
    if (!tabs_.empty()) showWhole(shownIndex());
    Refresh();
}

void FileTabs::showWhole(std::size_t index) {
    const int begin = index == 0 ? 0 : ends_[index - 1];
    if (ends_[index] - scrolled_ > room()) scrolled_ = ends_[index] - room();
    scrolled_ = std::min(scrolled_, begin);
}

void FileTabs::scroll(int pixels) {
    if (ends_.empty()) return;
    scrolled_ = std::clamp(scrolled_ + pixels, 0, std::max(ends_.back() - room(), 0));
    Refresh();
}

wxRect FileTabs::tabPlace(std::size_t index) const {
    const int begin = index == 0 ? 0 : ends_[index - 1];
    return {begin - scrolled_, 0, ends_[index] - begin, GetClientSize().y};
}

wxRect FileTabs::crossPlace(std::size_t index) const {
    const wxRect tab = tabPlace(index);
    return {tab.GetRight() + 1 - dip(kRight + kCross), (tab.height - dip(kCross)) / 2, dip(kCross),
            dip(kCross)};
}

std::size_t FileTabs::tabAt(const wxPoint& place) const {
    if (place.x < 0 || place.x >= room()) return tabs_.size();
    for (std::size_t i = 0; i < tabs_.size(); ++i)
        if (tabPlace(i).Contains(place)) return i;
    return tabs_.size();
}

bool FileTabs::isOnCross(std::size_t index, const wxPoint& place) const {
    return crossPlace(index).Inflate(dip(kCellBeyond)).Contains(place);
}

void FileTabs::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    fill(context, {0, size.y - 1, size.x, 1}, look()->border);
    context.Clip(0, 0, room(), size.y);
    for (std::size_t i = 0; i < tabs_.size(); ++i) paintTab(context, i);
    context.ResetClip();
}

void FileTabs::paintTab(wxGraphicsContext& context, std::size_t index) {
    const wxRect tab = tabPlace(index);
    const bool isShown = tabs_[index].id == shown_;
    const bool isHovered = hovered() && tabAt(pointer_) == index;
    const int right = tab.GetRight();
    if (isShown) {
        fill(context, {tab.x, 0, tab.width - 1, tab.height}, look()->editor);
        fill(context, {tab.x, 0, tab.width - 1, dip(kAccent)}, look()->accent);
    } else if (isHovered) {
        fill(context, {tab.x, 0, tab.width - 1, tab.height - 1}, look()->hover);
    }
    fill(context, {right, (tab.height - dip(kLineHeight)) / 2, 1, dip(kLineHeight)},
         look()->border);
    text(context, nameOn(index), look().plain, isShown ? look()->text : look()->secondText,
         tab.x + dip(kPadding), 0, tab.height);
    paintCross(context, index);
    if (isShown && focused()) focusMark(context, wxRect(tab).Deflate(dip(kAccent)));
}

/// A changed file has a dot there, until the pointer comes.
void FileTabs::paintCross(wxGraphicsContext& context, std::size_t index) {
    const wxRect cross = crossPlace(index);
    const bool isOn = hovered() && tabAt(pointer_) == index && isOnCross(index, pointer_);
    if (isOn)
        rounded(context, wxRect(cross).Inflate(dip(kCellBeyond)), FromDIP(kCellRadius),
                look()->pressed);
    if (!tabs_[index].modified || isOn)
        return paintIcon(context, Icon::close, cross.x, cross.y, cross.width,
                         colourOf(look()->secondText));
    const double radius = FromDIP(kDot);
    context.SetPen(wxNullGraphicsPen);
    context.SetBrush(wxBrush(colourOf(look()->secondText)));
    context.DrawEllipse(cross.x + cross.width / 2.0 - radius, cross.y + cross.height / 2.0 - radius,
                        2 * radius, 2 * radius);
}

void FileTabs::step(int by) {
    const auto wanted = static_cast<std::ptrdiff_t>(shownIndex()) + by;
    const auto count = static_cast<std::ptrdiff_t>(tabs_.size());
    if (wanted >= count) return chooser_->SetFocus();
    if (wanted >= 0) actions_.chosen(tabs_[static_cast<std::size_t>(wanted)].id);
}

void FileTabs::moveShown(int by) {
    const std::size_t at = shownIndex();
    if (by < 0 && at > 0) actions_.moved(shown_, at - 1);
    if (by > 0 && at + 1 < tabs_.size()) actions_.moved(shown_, at + 2);
}

void FileTabs::onKey(wxKeyEvent& event) {
    if (tabs_.empty()) return event.Skip();
    const bool control = event.ControlDown() && !event.AltDown() && !event.ShiftDown();
    if (control && event.GetKeyCode() == WXK_LEFT) return moveShown(-1);
    if (control && event.GetKeyCode() == WXK_RIGHT) return moveShown(1);
    if (event.HasAnyModifiers()) return event.Skip();
    const int last = static_cast<int>(tabs_.size()) - 1, at = static_cast<int>(shownIndex());
    switch (event.GetKeyCode()) {
        case WXK_LEFT:
            return step(-1);
        case WXK_RIGHT:
            return step(1);
        case WXK_HOME:
            return step(-at);
        case WXK_END:
            return step(last - at);
        case WXK_DELETE:
            return actions_.closed(shown_);
        case WXK_RETURN:
        case WXK_SPACE:
        case WXK_DOWN:
            return actions_.toText();
        default:
            event.Skip();
    }
}

/// The tabs may be others when the menu closes.
void FileTabs::openList() {
    wxMenu menu;
    std::vector<std::uint64_t> ids;
    for (const DocumentTab& tab : tabs_) {
        menu.AppendRadioItem(kFirstItem + static_cast<int>(ids.size()),
                             escapeLabel(fromUtf8(tab.name)) + (tab.modified ? "*" : ""));
        ids.push_back(tab.id);
    }
    menu.Check(kFirstItem + static_cast<int>(shownIndex()), true);
    const wxRect button = more_->GetRect();
    const int item = GetPopupMenuSelectionFromUser(menu, wxPoint(button.x, button.GetBottom() + 1));
    if (item != wxID_NONE) actions_.chosen(ids[static_cast<std::size_t>(item - kFirstItem)]);
}

}  // namespace korvant::ui
