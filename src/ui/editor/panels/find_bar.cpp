#include "ui/editor/panels/find_bar.h"

#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/kit/tab_order.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kFieldX = 36, kFieldWidth = 360, kFieldHeight = 28, kFirstRow = 8, kRowApart = 36,
              kOptionWidth = 28, kOptionGap = 2, kOptionEnd = 4, kCheckGap = 10, kInField = 9,
              kBehindField = 16, kLeastField = 160, kFieldOfNone = 110, kCloseRoom = 34,
              kLeastCount = 55, kButton = 28, kArrow = 32, kPartGap = 8, kCheckApart = 6,
              kRoomBehind = 4;
constexpr int kAllIndicator = 10, kCurrentIndicator = 11;
constexpr std::size_t kMostMatches = 100000;

wxString selectedLine(wxStyledTextCtrl& text) {
    const wxString selected = text.GetSelectedText();
    return selected.Contains("\n") ? wxString() : selected;
}

}  // namespace

FindBar::FindBar(wxWindow* parent, const Look& look, wxStyledTextCtrl& text,
                 EditorSettings& settings, std::function<void()> layOut,
                 std::function<void()> closed)
    : PaintedWindow(parent, look, false),
      text_(text),
      settings_(settings),
      layOut_(std::move(layOut)),
      closed_(std::move(closed)) {
    for (wxTextCtrl** field : {&field_, &replacement_}) {
        *field = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER | wxBORDER_NONE);
        native::bareField(**field);
        for (const auto& event : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
            (*field)->Bind(event, [this](wxFocusEvent& change) {
                Refresh();
                showSelection();
                change.Skip();
            });
    }
    replacement_->SetHint(words("Replace with"));
    inSelection_ =
        new PaintedCheck(this, look, PaintedCheck::Kind::box, words("Only in the selection"),
                         [this](bool) { countReplaced(); });
    inSelection_->setWord(&ThemeTable::text, kCheckGap);
    native::setAccessibleName(*field_, words("Find"));
    native::setAccessibleName(*replacement_, words("Replace with"));
    makeButtons();
    connectField(*field_);
    connectField(*replacement_);
    field_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { search(); });
    text_.Bind(wxEVT_STC_UPDATEUI, [this](wxStyledTextEvent& event) {
        if (IsShown() && (event.GetUpdated() & wxSTC_UPDATE_SELECTION) != 0) countReplaced();
        event.Skip();
    });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (!moveByTab(tabOrder(), event)) event.Skip();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        place();
        event.Skip();
    });
    setAccessibleName(words("Find"));
}

PaintedButton* FindBar::addOption(const wxString& label, const wxString& name,
                                  bool EditorSettings::*on) {
    PaintedButton::Face face;
    face.label = label;
    face.name = name;
    auto* button = new PaintedButton(this, look(), PaintedButton::Kind::option, face, {});
    button->setBack(&ThemeTable::editor);
    button->setPressed(settings_.*on);
    button->setAction([this, button, on] {
        settings_.*on = !(settings_.*on);
        button->setPressed(settings_.*on);
        search();
    });
    options_.push_back(button);
    return button;
}

void FindBar::makeButtons() {
    using Kind = PaintedButton::Kind;
    addOption("Aa", words("Match case"), &EditorSettings::findMatchCase);
    addOption("W", words("Whole words"), &EditorSettings::findWholeWord);
    addOption(".*", words("Regular expression"), &EditorSettings::findExpression);
    const auto icon = [this](Icon picture, const wxString& name, std::function<void()> act) {
        return new PaintedButton(this, look(), Kind::plain,
                                 {picture, {}, {}, name, &ThemeTable::secondText}, std::move(act));
    };
    more_ = icon(Icon::right, words("Replace"), [this] { open(!replaceRow_); });
    previous_ = icon(Icon::up, words("Previous match, Shift+F3"), [this] { go(false); });
    next_ = icon(Icon::down, words("Next match, F3"), [this] { go(true); });
    close_ = icon(Icon::close, words("Close, Esc"), [this] { closed_(); });
    const auto framed = [this](const wxString& label, std::function<void()> act) {
        PaintedButton::Face face;
        face.label = label;
        return new PaintedButton(this, look(), Kind::framed, face, std::move(act));
    };
    markAll_ = framed(words("Mark all"), [this] { selectAll(); });
    replace_ = framed(words("Replace"), [this] { replaceOne(); });
    replaceAll_ = framed(words("Replace all"), [this] { replaceAll(); });
}

void FindBar::connectField(wxTextCtrl& field) {
    field.Bind(wxEVT_KEY_DOWN, &FindBar::onFieldKey, this);
    field.Bind(wxEVT_TEXT_ENTER,
               [this, &field](wxCommandEvent&) { &field == field_ ? go(true) : replaceOne(); });
}

void FindBar::onFieldKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (code == WXK_ESCAPE) return closed_();
    const bool enter = code == WXK_RETURN || code == WXK_NUMPAD_ENTER;
    if (enter && event.AltDown()) return selectAll();
    if (enter && event.ShiftDown()) return go(false);
    if (code == WXK_DOWN) return go(true);
    if (code == WXK_UP) return go(false);
    event.Skip();
}

void FindBar::applyLook() {
    for (wxWindow* field : std::initializer_list<wxWindow*>{field_, replacement_}) {
        field->SetFont(look().code);
        field->SetBackgroundColour(colourOf(look()->editor));
        field->SetForegroundColour(colourOf(look()->text));
    }
    const auto indicator = [this](int number, const Tint& tint) {
        text_.IndicatorSetStyle(number, wxSTC_INDIC_ROUNDBOX);
        text_.IndicatorSetForeground(number, colourOf(tint.colour));
        text_.IndicatorSetAlpha(number, tint.alpha);
        text_.IndicatorSetOutlineAlpha(number, tint.outline);
        text_.IndicatorSetUnder(number, true);
    };
    indicator(kAllIndicator, look()->findAll);
    indicator(kCurrentIndicator, look()->findCurrent);
}

std::vector<wxWindow*> FindBar::tabOrder() const {
    std::vector<wxWindow*> order{field_, replacement_};
    order.insert(order.end(), options_.begin(), options_.end());
    order.insert(order.end(),
                 {previous_, next_, markAll_, replace_, replaceAll_, inSelection_, close_, more_});
    return order;
}

void FindBar::show(bool withReplace) {
    replaceRow_ = withReplace;
    PaintedButton::Face face = more_->face();
    face.icon = withReplace ? Icon::down : Icon::right;
    more_->setFace(face);
    layOut_();
    applyLook();
}

bool FindBar::resume() {
    if (field_->GetValue().empty()) return false;
    show(false);
    search();
    return true;
}

void FindBar::open(bool withReplace) {
    show(withReplace);
    if (const wxString selected = selectedLine(text_); !selected.empty())
        field_->ChangeValue(selected);
    field_->SetFocus();
    field_->SelectAll();
    search();
}

void FindBar::leave() {
    for (const int indicator : {kAllIndicator, kCurrentIndicator}) {
        text_.SetIndicatorCurrent(indicator);
        text_.IndicatorClearRange(0, text_.GetLength());
    }
    matches_.clear();
    text_.SetSelAlpha(wxSTC_ALPHA_NOALPHA);
}

std::vector<FindBar::Match> FindBar::matchesIn(int begin, int end) const {
    std::vector<Match> matches;
    const wxString wanted = field_->GetValue();
    if (wanted.empty()) return matches;
    int flags = settings_.findMatchCase ? wxSTC_FIND_MATCHCASE : 0;
    if (settings_.findWholeWord) flags |= wxSTC_FIND_WHOLEWORD;
    if (settings_.findExpression) flags |= wxSTC_FIND_REGEXP | wxSTC_FIND_POSIX;
    text_.SetSearchFlags(flags);
    while (begin <= end && matches.size() < kMostMatches) {
        text_.SetTargetStart(begin);
        text_.SetTargetEnd(end);
        if (text_.SearchInTarget(wanted) < 0) break;
        const Match match{text_.GetTargetStart(), text_.GetTargetEnd()};
        if (match.end > match.begin) matches.push_back(match);
        begin = std::max(match.end, match.begin + 1);
    }
    return matches;
}

void FindBar::textChanged() {
    if (IsShown()) search();
}

void FindBar::search() {
    matches_ = matchesIn(0, text_.GetLength());
    mark();
    showCount(false);
}

int FindBar::currentMatch() const {
    for (std::size_t i = 0; i < matches_.size(); ++i)
        if (matches_[i].begin == text_.GetSelectionStart() &&
            matches_[i].end == text_.GetSelectionEnd())
            return static_cast<int>(i);
    return -1;
}

/// The colour of the match that has been found is not mixed with another one while one searches.
void FindBar::showSelection() {
    const bool searching = IsShown() && (field_->HasFocus() || replacement_->HasFocus());
    text_.SetSelAlpha(searching && currentMatch() >= 0 ? 0 : wxSTC_ALPHA_NOALPHA);
}

void FindBar::mark() {
    for (const int indicator : {kAllIndicator, kCurrentIndicator}) {
        text_.SetIndicatorCurrent(indicator);
        text_.IndicatorClearRange(0, text_.GetLength());
    }
    showSelection();
    const int current = currentMatch();
    for (std::size_t i = 0; i < matches_.size(); ++i) {
        const bool isCurrent = static_cast<int>(i) == current;
        text_.SetIndicatorCurrent(isCurrent ? kCurrentIndicator : kAllIndicator);
        text_.IndicatorFillRange(matches_[i].begin, matches_[i].end - matches_[i].begin);
    }
}

void FindBar::showCount(bool wrapped) {
    const int current = currentMatch();
    const auto count = static_cast<int>(matches_.size());
    said_ = field_->GetValue().empty() ? wxString()
            : count == 0               ? words("No match")
            : current < 0              ? wxString::Format("%d", count)
                                       : wxString::Format(words("%d of %d"), current + 1, count);
    if (wrapped) said_ += ", " + words("first again");
    countReplaced();
    place();
    Refresh();
}

std::vector<FindBar::Match> FindBar::replacedMatches() const {
    if (!inSelection_->value()) return matches_;
    return matchesIn(text_.GetSelectionStart(), text_.GetSelectionEnd());
}

/// The button says how many it will replace.
void FindBar::countReplaced() {
    const auto count = replaceRow_ ? static_cast<int>(replacedMatches().size()) : 0;
    PaintedButton::Face face = replaceAll_->face();
    face.label =
        count > 0 ? wxString::Format(words("Replace all %d"), count) : words("Replace all");
    if (face.label == replaceAll_->face().label) return;
    replaceAll_->setFace(face);
    place();
}

void FindBar::select(const Match& match) {
    text_.EnsureVisibleEnforcePolicy(text_.LineFromPosition(match.begin));
    text_.SetSelection(match.begin, match.end);
    text_.EnsureCaretVisible();
}

void FindBar::go(bool forward) {
    if (matches_.empty()) return showCount(false);
    const int caret = forward ? text_.GetSelectionEnd() : text_.GetSelectionStart();
    const auto found =
        forward ? std::find_if(matches_.begin(), matches_.end(),
                               [caret](const Match& match) { return match.begin >= caret; })
                : std::find_if(matches_.rbegin(), matches_.rend(), [caret](const Match& match) {
                      return match.end <= caret;
                  }).base();
    const bool none = forward ? found == matches_.end() : found == matches_.begin();
    if (none)
        select(forward ? matches_.front() : matches_.back());
    else
        select(forward ? *found : *(found - 1));
    mark();
    showCount(none);
}

void FindBar::selectAll() {
    if (matches_.empty()) return;
    text_.SetMultipleSelection(true);
    text_.SetAdditionalSelectionTyping(true);
    text_.SetSelection(matches_[0].begin, matches_[0].end);
    for (std::size_t i = 1; i < matches_.size(); ++i)
        text_.AddSelection(matches_[i].end, matches_[i].begin);
    text_.SetFocus();
}

/// The control fills in the groups of the expression that has just been searched for.
void FindBar::replaceOne() {
    const int current = currentMatch();
    if (current >= 0) {
        const Match match = matches_[static_cast<std::size_t>(current)];
        matchesIn(match.begin, match.end);
        text_.SetTargetStart(match.begin);
        text_.SetTargetEnd(match.end);
        if (text_.SearchInTarget(field_->GetValue()) >= 0)
            settings_.findExpression ? text_.ReplaceTargetRE(replacement_->GetValue())
                                     : text_.ReplaceTarget(replacement_->GetValue());
        text_.SetSelection(text_.GetTargetEnd(), text_.GetTargetEnd());
    }
    search();
    go(true);
}

void FindBar::replaceAll() {
    const bool part = inSelection_->value();
    int begin = part ? text_.GetSelectionStart() : 0;
    int end = part ? text_.GetSelectionEnd() : text_.GetLength();
    text_.BeginUndoAction();
    for (const std::vector<Match> all = matchesIn(begin, end); const Match& first : all) {
        (void)first;
        text_.SetTargetStart(begin);
        text_.SetTargetEnd(end);
        if (text_.SearchInTarget(field_->GetValue()) < 0) break;
        const int before = text_.GetTargetEnd() - text_.GetTargetStart();
        const int after = settings_.findExpression ? text_.ReplaceTargetRE(replacement_->GetValue())
                                                   : text_.ReplaceTarget(replacement_->GetValue());
        begin = text_.GetTargetStart() + after;
        end += after - before;
    }
    text_.EndUndoAction();
    search();
}

/// Centred in its box, which the bar paints.
void FindBar::placeField(wxTextCtrl& field, int y, int width) {
    const int tall = std::min(field.GetBestSize().y, dip(kFieldHeight) - 4);
    field.SetSize(dip(kFieldX + kInField), y + (dip(kFieldHeight) - tall + 1) / 2, width, tall);
}

int FindBar::countWidth() const {
    return std::max(textWidth(*this, said_, look().strong) + dip(12), dip(kLeastCount));
}

int FindBar::besideFirst(Below below) const {
    if (below == kAll) return dip(kCloseRoom);
    const int arrows = countWidth() + dip(2 * kArrow + kPartGap + kCloseRoom);
    return below >= kMarkAll ? arrows : arrows + markAll_->wantedWidth();
}

int FindBar::besideSecond(Below below) const {
    if (!replaceRow_ || below == kAll) return 0;
    const int buttons =
        replace_->wantedWidth() + replaceAll_->wantedWidth() + dip(2 * kPartGap + kRoomBehind);
    return below >= kCheck ? buttons : buttons + dip(kCheckApart) + inSelection_->wantedWidth();
}

int FindBar::roomForField(Below below) const {
    const int beside = std::max(besideFirst(below), besideSecond(below));
    return width_ - dip(kFieldX + kBehindField) - beside;
}

/// In a narrow window the field gives way first.
void FindBar::arrange(int width) {
    width_ = width;
    below_ = kNone;
    while (below_ < kAll && roomForField(below_) < dip(kLeastField))
        below_ = static_cast<Below>(below_ + 1);
    fieldWidth_ = std::clamp(roomForField(below_), dip(kFieldOfNone), dip(kFieldWidth));
    rows_ = replaceRow_ ? 2 : 1;
    placeBeside();
}

bool FindBar::setWidth(int width) {
    const int before = rows_;
    arrange(width);
    return rows_ != before;
}

/// `at` counts rows in y; the answer is where the next part goes.
wxPoint FindBar::putBeside(wxPoint at, wxWindow& part, int width) {
    if (at.y >= rows_ || (at.x > dip(kFieldX) && at.x + width > width_ - dip(kRoomBehind)))
        at = {dip(kFieldX), rows_++};
    part.SetSize(at.x, dip(kFirstRow + at.y * kRowApart), width, dip(kFieldHeight));
    return {at.x + width, at.y};
}

void FindBar::placeBeside() {
    const int behind = dip(kFieldX + kBehindField) + fieldWidth_;
    const wxPoint below(dip(kFieldX), rows_);
    wxPoint down = below, at = below_ == kAll ? below : wxPoint(behind, 0);
    saidAt_ = {at.x, dip(kFirstRow + at.y * kRowApart)};
    if (at == below) ++rows_;
    at.x += countWidth();
    for (PaintedButton* button : {previous_, next_})
        at = putBeside(at, *button, dip(kButton)) + wxPoint(dip(kArrow - kButton), 0);
    at.x += dip(kPartGap);
    if (below_ == kAll)
        down = putBeside(at, *markAll_, markAll_->wantedWidth());
    else if (below_ == kMarkAll)
        down = putBeside(down, *markAll_, markAll_->wantedWidth());
    else
        putBeside(at, *markAll_, markAll_->wantedWidth());
    if (down != below) down.x += dip(kPartGap);
    if (!replaceRow_) return;
    at = below_ == kAll ? down : wxPoint(behind, 1);
    for (PaintedButton* button : {replace_, replaceAll_})
        at = putBeside(at, *button, button->wantedWidth()) + wxPoint(dip(kPartGap), 0);
    if (below_ == kCheck || below_ == kMarkAll)
        at = down;
    else
        at.x += dip(kCheckApart);
    putBeside(at, *inSelection_, inSelection_->wantedWidth());
}

void FindBar::place() {
    const int height = dip(kFieldHeight), first = dip(kFirstRow), before = rows_;
    more_->SetSize(dip(4), first - dip(2), dip(28), height);
    arrange(GetClientSize().x);
    int x = dip(kFieldX - kOptionEnd) + fieldWidth_;
    for (auto option = options_.rbegin(); option != options_.rend(); ++option) {
        x -= dip(kOptionWidth);
        (*option)->SetSize(x, first + dip(kOptionGap), dip(kOptionWidth),
                           height - dip(2 * kOptionGap));
        x -= dip(kOptionGap);
    }
    placeField(*field_, first, x - dip(kFieldX + kInField));
    close_->SetSize(width_ - dip(kCloseRoom), first, dip(28), height);
    for (wxWindow* part :
         std::initializer_list<wxWindow*>{replacement_, replace_, replaceAll_, inSelection_})
        part->Show(replaceRow_);
    if (replaceRow_)
        placeField(*replacement_, dip(kFirstRow + kRowApart), fieldWidth_ - dip(2 * kInField));
    // A longer count may need more room than there was.
    if (rows_ != before && IsShown()) layOut_();
}

void FindBar::paintBox(wxGraphicsContext& context, const wxTextCtrl& field, int y) const {
    fieldBox(context, {dip(kFieldX), y, fieldWidth_, dip(kFieldHeight)}, field.HasFocus());
}

void FindBar::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->chrome);
    fill(context, {0, size.y - 1, size.x, 1}, look()->border);
    paintBox(context, *field_, dip(kFirstRow));
    if (replaceRow_) paintBox(context, *replacement_, dip(kFirstRow + kRowApart));
    const bool none = matches_.empty() && !field_->GetValue().empty();
    text(context, said_, look().strong, none ? look()->error : look()->text, saidAt_.x, saidAt_.y,
         dip(kFieldHeight));
}

}  // namespace korvant::ui
