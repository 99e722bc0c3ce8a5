#include "ui/editor/assist/choice_box.h"

#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "editor/assist/suggestion_list.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidth = 520, kMargin = 8, kHeading = 28, kFieldHeight = 28, kRow = 24,
              kRowsSeen = 12;

ListMetrics metrics() {
    ListMetrics places;
    places.iconX = 10;
    places.nameX = 32;
    places.indent = 16;
    return places;
}

}  // namespace

ChoiceBox::ChoiceBox(wxStyledTextCtrl& control, const Look& look)
    : PaintedWindow(&control, look, false), control_(control) {
    Hide();
    SetCursor(wxCursor(wxCURSOR_ARROW));
    field_ = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER);
    list_ = new RowList(this, look, metrics(), "Choice");
    list_->count = [this] { return static_cast<int>(shown_.size()); };
    list_->row = [this](int index) {
        return content_.choices[shown_[static_cast<std::size_t>(index)]].row;
    };
    list_->onActivated = [this](int index) { take(index); };
    list_->onSelected = [this](int) { tellSeen(); };
    list_->Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        const int row = list_->rowAt(event.GetY());
        if (row >= 0) CallAfter([this, row] { take(row); });
    });
    Bind(
        wxEVT_TEXT, [this](wxCommandEvent&) { filter(); }, field_->GetId());
    Bind(wxEVT_CHAR_HOOK, &ChoiceBox::onKey, this);
    control_.Bind(wxEVT_SET_FOCUS, &ChoiceBox::onTextEntered, this);
    field_->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        entered_ = true;
        event.Skip();
    });
}

void ChoiceBox::open(Content content, const wxRect& line) {
    content_ = std::move(content);
    line_ = line;
    field_->SetFont(look().code);
    field_->SetBackgroundColour(colourOf(look()->editor));
    field_->SetForegroundColour(colourOf(look()->text));
    field_->SetHint(words("Type to find"));
    native::setAccessibleName(*field_, content_.heading);
    setAccessibleName(content_.heading);
    field_->ChangeValue({});
    filter();
    list_->select(content_.selected);
    entered_ = false;
    Show();
    Raise();
    // What has just been shown takes the keyboard when it stands on the screen.
    CallAfter([this] {
        if (IsShown()) field_->SetFocus();
    });
}

void ChoiceBox::close() {
    if (!IsShown()) return;
    Hide();
    control_.SetFocus();
}

/// Names that begin with what is typed come first.
void ChoiceBox::filter() {
    const std::string wanted = toUtf8(field_->GetValue());
    std::vector<std::pair<NameMatch::Rank, std::size_t>> found;
    for (std::size_t i = 0; i < content_.choices.size(); ++i) {
        auto rank = matchName(content_.choices[i].name, wanted).rank;
        if (rank == NameMatch::Rank::exact || wanted.empty()) rank = NameMatch::Rank::prefix;
        if (rank != NameMatch::Rank::none) found.emplace_back(rank, i);
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    shown_.clear();
    for (const auto& [rank, index] : found) shown_.push_back(index);
    list_->rowsChanged();
    list_->select(shown_.empty() ? -1 : 0);
    if (!wanted.empty()) tellSeen();
    layOut();
}

void ChoiceBox::layOut() {
    const wxSize room = control_.GetClientSize();
    const int width = std::min(dip(kWidth), room.x - dip(2 * kMargin));
    const int below = room.y - line_.GetBottom() - 1;
    const bool up = !line_.IsEmpty() && line_.y > below;
    const int tall = line_.IsEmpty() ? room.y - dip(4 * kMargin) : up ? line_.y : below;
    const int fits = (tall - dip(kHeading + kFieldHeight + 2 * kMargin)) / dip(kRow);
    const int most = std::max(std::min(kRowsSeen, fits), 1);
    const int rows = std::clamp(static_cast<int>(shown_.size()), 1, most);
    const int listHeight = rows * dip(kRow);
    const wxSize size(width, dip(kHeading + kFieldHeight + 2 * kMargin) + listHeight);
    wxPoint at((room.x - width) / 2, dip(kMargin));
    if (!line_.IsEmpty()) {
        const bool fitsBelow = size.y <= below;
        at.x = std::clamp(line_.x, 0, std::max(room.x - width, 0));
        at.y = fitsBelow || !up ? line_.GetBottom() + 1 : line_.y - size.y;
    }
    SetSize(at.x, at.y, size.x, size.y);
    field_->SetSize(dip(kMargin), dip(kHeading), width - dip(2 * kMargin), dip(kFieldHeight));
    list_->SetSize(1, dip(kHeading + kFieldHeight + kMargin), width - 2, listHeight);
    Refresh();
}

/// Who goes on in the text has left the box.
void ChoiceBox::onTextEntered(wxFocusEvent& event) {
    event.Skip();
    if (entered_) Hide();
}

void ChoiceBox::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (code == WXK_ESCAPE) return close();
    if (code == WXK_RETURN || code == WXK_NUMPAD_ENTER) return take(list_->selected());
    const int page = code == WXK_PAGEUP || code == WXK_PAGEDOWN ? kRowsSeen : 1;
    const bool up = code == WXK_UP || code == WXK_PAGEUP;
    if (!up && code != WXK_DOWN && code != WXK_PAGEDOWN) return event.Skip();
    if (shown_.empty()) return;
    const int last = static_cast<int>(shown_.size()) - 1;
    list_->select(std::clamp(list_->selected() + (up ? -page : page), 0, last));
    tellSeen();
}

void ChoiceBox::tellSeen() {
    const int row = list_->selected();
    if (row >= 0 && content_.seen) content_.seen(shown_[static_cast<std::size_t>(row)]);
}

void ChoiceBox::take(int row) {
    if (!IsShown()) return;
    const auto chosen = content_.chosen;
    const bool any = row >= 0 && row < static_cast<int>(shown_.size());
    const std::size_t index = any ? shown_[static_cast<std::size_t>(row)] : 0;
    if (!any) return;
    close();
    if (chosen) chosen(index);
}

void ChoiceBox::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->popUpEdge);
    fill(context, wxRect(size).Deflate(1), look()->popUp);
    text(context, shortened(*this, content_.heading, look().strong, size.x - dip(4 * kMargin)),
         look().strong, look()->text, dip(kMargin + 2), 0, dip(kHeading));
}

}  // namespace korvant::ui
