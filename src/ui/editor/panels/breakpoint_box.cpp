#include "ui/editor/panels/breakpoint_box.h"

#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidth = 440, kHeight = 220, kHeading = 40, kFooter = 40, kRow = 32, kLeft = 16,
              kFieldX = 150, kRight = 16, kFieldHeight = 28, kPassesWidth = 64;
constexpr const char* kLabels[] = {"Stop every time", "Stop when", "Stop after", "Only print"};

}  // namespace

BreakpointBox::BreakpointBox(wxStyledTextCtrl& control, const Look& look, Actions actions)
    : PaintedWindow(&control, look, false), control_(control), actions_(std::move(actions)) {
    Hide();
    makeChoices();
    makeEnd();
    SetCursor(wxCursor(wxCURSOR_ARROW));
    Bind(wxEVT_CHAR_HOOK, &BreakpointBox::onKey, this);
}

void BreakpointBox::makeChoices() {
    for (int i = kEveryTime; i < kChoices; ++i) {
        const auto choice = static_cast<Choice>(i);
        radios_[i] =
            new wxRadioButton(this, wxID_ANY, words(kLabels[i]), {}, {}, i == 0 ? wxRB_GROUP : 0);
        Bind(
            wxEVT_RADIOBUTTON, [this, choice](wxCommandEvent&) { choose(choice, true); },
            radios_[i]->GetId());
        if (choice == kEveryTime) continue;
        fields_[i] = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER);
        Bind(
            wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { take(); }, fields_[i]->GetId());
    }
    fields_[kPrints]->SetHint("best {best}");
}

void BreakpointBox::makeEnd() {
    using Kind = PaintedButton::Kind;
    on_ = new wxCheckBox(this, wxID_ANY, words("Switched on"));
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
    const bool onChoice = dynamic_cast<wxRadioButton*>(FindFocus()) || FindFocus() == on_;
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
    on_->SetValue(wishes.enabled);
    for (wxTextCtrl* field : fields_)
        if (field) {
            field->SetFont(look().code);
            field->SetBackgroundColour(colourOf(look()->editor));
            field->SetForegroundColour(colourOf(look()->text));
        }
    for (wxWindow* word :
         std::initializer_list<wxWindow*>{radios_[0], radios_[1], radios_[2], radios_[3], on_})
        word->SetForegroundColour(colourOf(look()->text));
    setAccessibleName(wxString::Format(words("Breakpoint at line %d"), line));
    place();
    Show();
    Raise();
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
    actions_.closed();
}

void BreakpointBox::choose(Choice choice, bool focus) {
    choice_ = choice;
    radios_[choice]->SetValue(true);
    for (int i = kWhen; i < kChoices; ++i) fields_[i]->Enable(i == choice);
    if (!focus) return;
    if (fields_[choice]) {
        fields_[choice]->SetFocus();
        fields_[choice]->SelectAll();
    } else {
        radios_[choice]->SetFocus();
    }
}

BreakpointWishes BreakpointBox::wishes() const {
    BreakpointWishes wishes;
    wishes.enabled = on_->GetValue();
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

/// Under its line where there is room, else above it.
void BreakpointBox::place() {
    const wxSize size = control_.GetClientSize(), own(dip(kWidth), dip(kHeight));
    const int row = control_.TextHeight(0);
    const int y = control_.PointFromPosition(control_.PositionFromLine(line_ - 1)).y;
    const int below = y + row + dip(4);
    const int top = below + own.y <= size.y ? below : std::max(y - own.y - dip(4), 0);
    SetSize(dip(40), top, own.x, own.y);
    for (int i = kEveryTime; i < kChoices; ++i) {
        const int at = dip(kHeading + 4) + i * dip(kRow);
        radios_[i]->SetSize(dip(kLeft), at, dip(kFieldX - kLeft - 6), dip(kFieldHeight));
        const int width = i == kAfter ? kPassesWidth : kWidth - kFieldX - kRight;
        if (fields_[i]) fields_[i]->SetSize(dip(kFieldX), at, dip(width), dip(kFieldHeight));
    }
    radios_[0]->SetSize(dip(kLeft), dip(kHeading + 4), dip(200), dip(kFieldHeight));
    const int foot = own.y - dip(kFooter) + dip(6);
    on_->SetSize(dip(kLeft), foot, dip(200), dip(kFieldHeight));
    const int done = done_->wantedWidth(), gone = delete_->wantedWidth();
    done_->SetSize(own.x - dip(kRight) - done, foot, done, dip(kFieldHeight));
    delete_->SetSize(own.x - dip(kRight + 20) - done - gone, foot, gone, dip(kFieldHeight));
    close_->SetSize(own.x - dip(36), dip(6), dip(28), dip(28));
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
         dip(kFieldX + kPassesWidth + 12), dip(kHeading + 4) + kAfter * dip(kRow),
         dip(kFieldHeight));
}

}  // namespace korvant::ui
