#include "ui/editor/panels/row_field.h"

#include <wx/textctrl.h>

#include <algorithm>

#include "ui/editor/assist/pop_up.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {
namespace {

constexpr int kPad = 8, kLine = 20, kSide = 4;
constexpr std::size_t kMostLines = 6;

}  // namespace

RowNote::RowNote(RowList& list, const Look& look)
    : PaintedWindow(list.GetParent(), look, false), list_(list) {
    Hide();
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { say({}, {}); });
}

/// Below the row, or above it where there is no room; over the neighbours of the list.
void RowNote::say(const wxString& text, const wxRect& place) {
    said_ = text;
    if (text.empty()) return Hide(), void();
    const wxRect room(GetParent()->GetClientSize());
    const wxPoint at = list_.GetPosition() + place.GetPosition();
    const int left = list_.GetPosition().x + dip(kSide);
    const int most = std::max(list_.GetSize().x - dip(2 * kSide), dip(80));
    lines_ = wrappedLines(*this, text, look().plain, most - dip(2 * kPad), kMostLines);
    int width = 0;
    for (const wxString& line : lines_)
        width = std::max(width, textWidth(*this, line, look().plain));
    width = std::min(width + dip(2 * kPad) + 2, most);
    const int height = static_cast<int>(lines_.size()) * dip(kLine) + dip(kPad);
    const int below = at.y + place.height + dip(2), above = at.y - height - dip(2);
    const bool fits = below + height <= room.height || above < 0;
    SetSize(std::clamp(at.x, left, std::max(left + most - width, left)), fits ? below : above,
            width, height);
    setAccessibleName(text);
    Show();
    native::putInFront(*this);
    Refresh();
}

void RowNote::paint(wxGraphicsContext& context) {
    const wxSize size = GetClientSize();
    fill(context, wxRect(size), look()->errorEdge);
    fill(context, wxRect(size).Deflate(1), look()->errorBand);
    int y = dip(kPad / 2);
    for (const wxString& line : lines_) {
        this->text(context, line, look().plain, look()->error, dip(kPad), y, dip(kLine));
        y += dip(kLine);
    }
}

RowField::RowField(RowList& list, const Look& look, Place placeOf)
    : list_(list), look_(look), placeOf_(placeOf) {
    list.onMoved = [this] { place(); };
    list.Bind(wxEVT_KILL_FOCUS, &RowField::onListLeft, this);
}

void RowField::makeField() {
    if (field_) return;
    field_ = new wxTextCtrl(&list_, wxID_ANY, {}, {}, {}, wxTE_PROCESS_ENTER | wxBORDER_SIMPLE);
    field_->Bind(wxEVT_TEXT_ENTER, &RowField::onReturn, this);
    field_->Bind(wxEVT_KEY_DOWN, &RowField::onKey, this);
    field_->Bind(wxEVT_TEXT, &RowField::onText, this);
    field_->Bind(wxEVT_KILL_FOCUS, &RowField::onLeft, this);
}

void RowField::onText(wxCommandEvent&) {
    if (note_ && !note_->said().empty()) say({}, row_);
}

void RowField::onLeft(wxFocusEvent& event) {
    if (row_ >= 0 && field_->GetValue() == before_) close();
    event.Skip();
}

void RowField::onListLeft(wxFocusEvent& event) {
    if (row_ < 0 && note_) note_->say({}, {});
    event.Skip();
}

void RowField::open(int row, const wxString& text, Taken taken) {
    // Whoever comes back to what he has begun finds it.
    if (row == row_) return field_->SetFocus();
    makeField();
    list_.select(row);
    say({}, row);
    taken_ = std::move(taken);
    before_ = text;
    field_->SetFont(look_.code);
    field_->SetBackgroundColour(colourOf(look_->editor));
    field_->ChangeValue(text);
    row_ = row;
    say({}, row);
    place();
    field_->Show();
    field_->SelectAll();
    field_->SetFocus();
}

void RowField::refuse(int row, const wxString& why) {
    close();
    say(why, row);
}

void RowField::setRow(int row) {
    row_ = row;
    place();
}

void RowField::place() {
    if (row_ < 0) {
        if (note_) note_->say({}, {});
        return;
    }
    const wxRect rect = (list_.*placeOf_)(row_);
    field_->SetSize(rect);
    if (note_ && !note_->said().empty()) note_->say(note_->said(), rect);
}

void RowField::say(const wxString& problem, int row) {
    if (!note_ && problem.empty()) return;
    if (!note_) note_ = new RowNote(list_, look_);
    note_->say(problem, problem.empty() ? wxRect() : (list_.*placeOf_)(row));
    if (!field_) return;
    field_->SetForegroundColour(colourOf(problem.empty() ? look_->text : look_->error));
    native::setAccessibleName(*field_, problem);
    field_->Refresh();
}

void RowField::onKey(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE)
        end();
    else if (event.GetKeyCode() == 'A' && event.GetModifiers() == wxMOD_CONTROL)
        field_->SelectAll();  // not every system's fields know the key
    else
        event.Skip();
}

void RowField::take() {
    const wxString text = field_->GetValue();
    const Taken taken = taken_;
    const wxString problem = text == before_ ? wxString() : taken(text);
    if (problem.empty()) return end();
    if (row_ >= 0) say(problem, row_);
}

bool RowField::hasFocus() const {
    return row_ >= 0 && field_->HasFocus();
}

void RowField::end() {
    close();
    list_.SetFocus();
}

void RowField::close() {
    row_ = -1;
    if (note_) note_->say({}, {});
    if (field_) field_->Hide();
}

}  // namespace korvant::ui
