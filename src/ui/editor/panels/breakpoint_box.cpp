#include "ui/editor/panels/breakpoint_box.h"

#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <vector>

#include "ui/kit/tab_order.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidth = 440, kHeight = 220, kHeading = 40, kFooter = 40, kRow = 32, kLeft = 16,
              kFieldX = 150, kRight = 16, kFieldHeight = 28, kPassesWidth = 64,
              kFirst = kHeading + 6, kInField = 9, kApart = 3, kIndent = 40;
constexpr const char* kLabels[] = {"Stop every time", "Stop when", "Stop after", "Only print"};

}  // namespace

BreakpointBox::BreakpointBox(wxWindow& frame, wxStyledTextCtrl& control, const Look& look,
                             Actions actions)
    : PaintedWindow(&frame, look, false), control_(control), actions_(std::move(actions)) {
    Hide();
    makeChoices();
    makeEnd();
    SetCursor(wxCursor(wxCURSOR_ARROW));
    Bind(wxEVT_CHAR_HOOK, &BreakpointBox::onKey, this);
}

void BreakpointBox::makeChoices() {
    for (int i = kEveryTime; i < kChoices; ++i) {
        const auto choice = static_cast<Choice>(i);
        choices_[i] = new PaintedCheck(this, look(), PaintedCheck::Kind::choice, words(kLabels[i]),
                                       [this, choice](bool) { choose(choice, true); });
        choices_[i]->setBack(&ThemeTable::popUp);
        if (choice == kEveryTime) continue;
        fields_[i] = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER | wxBORDER_NONE);
        native::bareField(*fields_[i]);
        native::setAccessibleName(*fields_[i], words(kLabels[i]));
        for (const auto& event : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
            fields_[i]->Bind(event, [this](wxFocusEvent& change) {
                Refresh();
                change.Skip();
            });
        Bind(
            wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { take(); }, fields_[i]->GetId());
    }
    fields_[kPrints]->SetHint("best {best}");
}

void BreakpointBox::makeEnd() {
    using Kind = PaintedButton::Kind;
    on_ = new PaintedCheck(this, look(), PaintedCheck::Kind::box, words("Switched on"));
    on_->setBack(&ThemeTable::popUp);
    const auto button = [this](Kind kind, const wxString& label, std::function<void()> act) {
        PaintedButton::Face face;
        face.label = label;
        auto* made = new PaintedButton(this, look(), kind, face, std::move(act));
        made->setBack(&ThemeTable::popUp);
        return made;
    };
    delete_ = button(Kind::danger, words("Delete"), [this] {
        actions_.remove(line_);
        close();
    });
    done_ = button(Kind::main, words("Done"), [this] { take(); });
    close_ = new PaintedButton(this, look(), Kind::plain,
                               {Icon::close, {}, {}, words("Close"), &ThemeTable::secondText},
                               [this] { close(); });
    close_->setBack(&ThemeTable::popUp);
}

void BreakpointBox::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (code == WXK_ESCAPE) return close();
    std::vector<wxWindow*> order{choices_[choice_], on_, delete_, done_, close_};
    if (fields_[choice_]) order.insert(order.begin() + 1, fields_[choice_]);
    if (moveByTab(order, event)) return;
    const bool onChoice = dynamic_cast<PaintedCheck*>(FindFocus()) != nullptr;
    if ((code == WXK_RETURN || code == WXK_NUMPAD_ENTER) && onChoice) return take();
    const bool moves = (code == WXK_UP || code == WXK_DOWN) && !event.HasAnyModifiers();
    if (!moves) return event.Skip();
    const int next = choice_ + (code == WXK_DOWN ? 1 : kChoices - 1);
    choose(static_cast<Choice>(next % kChoices), true);
}

void BreakpointBox::open(int line, const BreakpointWishes& wishes) {
    line_ = line;
    fields_[kWhen]->ChangeValue(fromUtf8(wishes.condition));
    fields_[kAfter]->ChangeValue(wxString::Format("%d", wishes.passes > 0 ? wishes.passes : 10));
    fields_[kPrints]->ChangeValue(fromUtf8(wishes.prints));
    on_->setValue(wishes.enabled);
    for (wxTextCtrl* field : fields_)
        if (field) field->SetFont(look().code);
    setAccessibleName(wxString::Format(words("Breakpoint at line %d"), line));
    Show();
    place();
    choose(!wishes.prints.empty()      ? kPrints
           : !wishes.condition.empty() ? kWhen
           : wishes.passes > 0         ? kAfter
                                       : kEveryTime,
           false);
    // What has just been shown takes the keyboard when it stands on the screen.
    CallAfter([this] {
        if (IsShown()) choose(choice_, true);
    });
}

void BreakpointBox::close() {
    if (!IsShown()) return;
    Hide();
    line_ = 0;
    actions_.closed();
}

void BreakpointBox::choose(Choice choice, bool focus) {
    choice_ = choice;
    for (int i = kEveryTime; i < kChoices; ++i) choices_[i]->setValue(i == choice);
    for (int i = kWhen; i < kChoices; ++i) fields_[i]->Enable(i == choice);
    colourFields();
    Refresh();
    if (!focus) return;
    if (fields_[choice]) {
        fields_[choice]->SetFocus();
        fields_[choice]->SetInsertionPointEnd();
    } else {
        choices_[choice]->SetFocus();
    }
}

void BreakpointBox::colourFields() {
    for (int i = kWhen; i < kChoices; ++i) {
        const bool used = i == choice_;
        fields_[i]->SetBackgroundColour(colourOf(used ? look()->editor : look()->chrome));
        fields_[i]->SetForegroundColour(colourOf(used ? look()->text : look()->secondText));
    }
}

BreakpointWishes BreakpointBox::wishes() const {
    BreakpointWishes wishes;
    wishes.enabled = on_->value();
    long passes = 0;
    if (choice_ == kWhen) wishes.condition = toUtf8(fields_[kWhen]->GetValue());
    if (choice_ == kAfter && fields_[kAfter]->GetValue().ToLong(&passes))
        wishes.passes = static_cast<std::int32_t>(std::clamp(passes, 0L, 1000000000L));
    if (choice_ == kPrints) wishes.prints = toUtf8(fields_[kPrints]->GetValue());
    return wishes;
}

void BreakpointBox::take() {
    actions_.done(line_, wishes());
    close();
}

/// Above the line where there is no room in the text below it, and over its neighbours where there
/// is none at all.
void BreakpointBox::place() {
    if (line_ == 0) return;
    const wxSize own(dip(kWidth), dip(kHeight)), room = GetParent()->GetClientSize();
    const wxRect text(GetParent()->ScreenToClient(control_.ClientToScreen(wxPoint())),
                      control_.GetClientSize());
    const int row = control_.TextHeight(0), apart = dip(kApart);
    const int y = text.y + control_.PointFromPosition(control_.PositionFromLine(line_ - 1)).y;
    const int below = y + row + apart, above = y - own.y - apart;
    const bool fits = below + own.y <= text.GetBottom() + 1;
    const int wanted = fits || above < text.y ? below : above;
    const wxPoint at(std::min(text.x + dip(kIndent), room.x - own.x),
                     std::min(wanted, room.y - own.y));
    SetSize(wxRect(wxPoint(std::max(at.x, 0), std::max(at.y, 0)), own));
    native::putInFront(*this);
    placeParts();
}

void BreakpointBox::placeParts() {
    const wxSize own = GetSize();
    for (int i = kEveryTime; i < kChoices; ++i) {
        const int at = dip(kFirst) + i * dip(kRow);
        const int most = dip(kFieldX - kLeft - 6), wanted = choices_[i]->wantedWidth();
        choices_[i]->SetSize(dip(kLeft), at, i == kEveryTime ? wanted : std::min(wanted, most),
                             dip(kFieldHeight));
        if (fields_[i]) placeField(static_cast<Choice>(i), at);
    }
    const int foot = own.y - dip(kFooter) + dip(6);
    on_->SetSize(dip(kLeft), foot, on_->wantedWidth(), dip(kFieldHeight));
    const int done = done_->wantedWidth(), gone = delete_->wantedWidth();
    done_->SetSize(own.x - dip(kRight) - done, foot, done, dip(kFieldHeight));
    delete_->SetSize(own.x - dip(kRight + 20) - done - gone, foot, gone, dip(kFieldHeight));
    close_->SetSize(own.x - dip(36), dip(6), dip(28), dip(28));
}

wxRect BreakpointBox::fieldPlace(Choice choice) const {
    const int width = choice == kAfter ? kPassesWidth : kWidth - kFieldX - kRight;
    return {dip(kFieldX), dip(kFirst) + choice * dip(kRow), dip(width), dip(kFieldHeight)};
}

/// Centred in its box, which is painted.
void BreakpointBox::placeField(Choice choice, int y) {
    wxTextCtrl& field = *fields_[choice];
    const wxRect box = fieldPlace(choice);
    const int tall = std::min(field.GetBestSize().y, box.height - 4);
    field.SetSize(box.x + dip(kInField), y + (box.height - tall + 1) / 2,
                  box.width - 2 * dip(kInField), tall);
}

void BreakpointBox::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->popUpEdge);
    fill(context, {1, 1, size.x - 2, size.y - 2}, look()->popUp);
    fill(context, {1, dip(kHeading) - 1, size.x - 2, 1}, look()->hair);
    fill(context, {1, size.y - dip(kFooter), size.x - 2, 1}, look()->hair);
    const bool lined = choice_ == kWhen || choice_ == kAfter;
    paintIcon(context,
              choice_ == kPrints ? Icon::breakpointPrints
              : lined            ? Icon::breakpointCondition
                                 : Icon::breakpoint,
              dip(14), dip(12), dip(16), colourOf(look()->breakpoint), *wxWHITE);
    text(context, wxString::Format(words("Breakpoint at line %d"), line_), look().strong,
         look()->text, dip(38), 0, dip(kHeading));
    text(context, words("passes"), look().plain, look()->secondText,
         dip(kFieldX + kPassesWidth + 12), dip(kFirst) + kAfter * dip(kRow), dip(kFieldHeight));
    for (int i = kWhen; i < kChoices; ++i)
        fieldBox(context, fieldPlace(static_cast<Choice>(i)), fields_[i]->HasFocus(), i == choice_);
}

}  // namespace korvant::ui
