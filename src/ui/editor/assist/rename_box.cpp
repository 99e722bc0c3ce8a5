#include "ui/editor/assist/rename_box.h"

#include <wx/stc/stc.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/editor/assist/pop_up.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/window_words.h"

namespace korvant::ui {
namespace {

constexpr int kWidth = 360, kPad = 8, kFieldHeight = 28, kLine = 20;
const char kHelp[] = "Enter renames every use, Esc leaves the name";

}  // namespace

RenameBox::RenameBox(wxStyledTextCtrl& control, const Look& look,
                     std::function<void(const std::string&)> renamed)
    : PaintedWindow(&control, look, false), control_(control), renamed_(std::move(renamed)) {
    Hide();
    SetCursor(wxCursor(wxCURSOR_ARROW));
    field_ = new wxTextCtrl(this, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER);
    native::setAccessibleName(*field_, words("New name"));
    Bind(wxEVT_CHAR_HOOK, &RenameBox::onKey, this);
    control_.Bind(wxEVT_SET_FOCUS, &RenameBox::onTextEntered, this);
    field_->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        entered_ = true;
        event.Skip();
    });
    Bind(
        wxEVT_TEXT,
        [this](wxCommandEvent&) {
            if (!reason_.empty()) refuse({});
        },
        field_->GetId());
}

void RenameBox::open(const wxString& name, const wxRect& line) {
    line_ = line;
    field_->SetFont(look().code);
    field_->SetBackgroundColour(colourOf(look()->editor));
    field_->SetForegroundColour(colourOf(look()->text));
    field_->ChangeValue(name);
    setAccessibleName(words("New name") + ": " + name);
    refuse({});
    entered_ = false;
    Show();
    Raise();
    CallAfter([this] {
        if (!IsShown()) return;
        field_->SetFocus();
        field_->SelectAll();
    });
}

void RenameBox::refuse(const wxString& reason) {
    reason_ = reason;
    if (!reason.empty()) setAccessibleName(reason);
    layOut();
}

void RenameBox::layOut() {
    const int width = std::min(dip(kWidth), std::max(control_.GetClientSize().x, dip(100)));
    const wxFont& font = reason_.empty() ? look().small : look().plain;
    lines_ = wrappedLines(*this, reason_.empty() ? words(kHelp) : reason_, font,
                          width - dip(2 * kPad), 4);
    const int height =
        dip(kFieldHeight + 2 * kPad) + static_cast<int>(lines_.size()) * dip(kLine) + dip(2);
    const int x =
        std::clamp(line_.x - dip(kPad), 0, std::max(control_.GetClientSize().x - width, 0));
    const int below = line_.GetBottom() + 1;
    const bool fits = below + height <= control_.GetClientSize().y || line_.y < height;
    SetSize(x, fits ? below : line_.y - height, width, height);
    field_->SetSize(dip(kPad), dip(kPad), width - dip(2 * kPad), dip(kFieldHeight));
    Refresh();
}

void RenameBox::close() {
    if (!IsShown()) return;
    Hide();
    control_.SetFocus();
}

/// Who goes on in the text has left the box.
void RenameBox::onTextEntered(wxFocusEvent& event) {
    event.Skip();
    if (entered_) Hide();
}

void RenameBox::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (code == WXK_ESCAPE) return close();
    if (code != WXK_RETURN && code != WXK_NUMPAD_ENTER) return event.Skip();
    renamed_(toUtf8(field_->GetValue().Trim().Trim(false)));
}

void RenameBox::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->popUpEdge);
    fill(context, wxRect(size).Deflate(1), look()->popUp);
    int y = dip(kFieldHeight) + dip(kPad + kPad / 2);
    for (const wxString& line : lines_) {
        text(context, line, reason_.empty() ? look().small : look().plain,
             reason_.empty() ? look()->secondText : look()->error, dip(kPad), y, dip(kLine));
        y += dip(kLine);
    }
}

}  // namespace korvant::ui
