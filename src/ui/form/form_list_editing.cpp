// Opening and closing what edits a row.
#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "object/form/form_texts.h"
#include "ui/form/form_choosers.h"
#include "ui/form/form_lines_dialog.h"
#include "ui/form/form_list.h"
#include "ui/form/form_refusal.h"
#include "ui/form/form_row_painter.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {

RowEditor CListCtrlEx::editorOf(std::int32_t property) const {
    const bool lines = needsSeveralLines(session_.textValue(property));
    switch (session_.row(property).letter) {
        case 's':
            return lines ? RowEditor::lines : RowEditor::field;
        case 'e':
            return lines ? RowEditor::lines : RowEditor::fieldAndButton;
        case 'F':
        case 'f':
        case 'c':
            return RowEditor::fieldAndButton;
        case 'l':
        case 'd':
            return RowEditor::field;
        case 'o':
            return RowEditor::option;
        case 'b':
            return RowEditor::toggle;
        default:
            return RowEditor::none;
    }
}

void CListCtrlEx::editSelected() {
    if (FormRow* row = selectedRow()) beginEdit(*row);
}

namespace {

/// Where the window around the open list takes the keyboard, the list itself is to have it: the
/// arrows would walk through the form. The list's own function does nothing on such systems.
void giveKeysTo(wxOwnerDrawnComboBox& list) {
    wxComboPopup* const popup = list.GetPopupControl();
    wxWindow* const shown = popup ? popup->GetControl() : nullptr;
    if (shown && wxWindow::FindFocus() == shown->GetParent()) shown->wxWindow::SetFocus();
}

}  // namespace

void CListCtrlEx::beginEdit(FormRow& row) {
    if (isEdited(row) || !session_.state(row.property()).editable) return;
    switch (editorOf(row.property())) {
        case RowEditor::none:
            return;
        case RowEditor::toggle:
            return toggle(row);
        case RowEditor::lines:
            return openLines(row, wxEmptyString);
        default:
            return open(row);
    }
}

/// Makes the control of the row: the toolkit asks it for its editor when it is selected.
void CListCtrlEx::open(FormRow& row) {
    if (!select(row.property())) return;
    typed_.emplace(session_.fullText(row.property()));
    edited_ = &row;
    DoSelectProperty(&row, wxPG_SEL_FORCE | wxPG_SEL_FOCUS | wxPG_SEL_DONT_SEND_EVENT);
    if (wxOwnerDrawnComboBox* list = options()) {
        list->Popup();
        giveKeysTo(*list);
    }
}

void CListCtrlEx::endEdit() {
    FormRow* row = edited_;
    edited_ = nullptr;
    typed_.reset();
    hideRefusal();
    if (row) DoSelectProperty(row, wxPG_SEL_FORCE | wxPG_SEL_DONT_SEND_EVENT);
}

wxTextCtrl* CListCtrlEx::field() const {
    return edited_ ? dynamic_cast<wxTextCtrl*>(GetEditorControl()) : nullptr;
}

wxOwnerDrawnComboBox* CListCtrlEx::options() const {
    return edited_ ? dynamic_cast<wxOwnerDrawnComboBox*>(GetEditorControl()) : nullptr;
}

wxString CListCtrlEx::fieldText() const {
    return typed_ ? fromUtf8(typed_->shown()) : wxString();
}

bool CListCtrlEx::fieldModified() const {
    return field() && typed_ && field()->GetValue() != fieldText();
}

void CListCtrlEx::setField(const wxString& text) {
    if (!field()) return;
    field()->ChangeValue(text);
    field()->SetInsertionPointEnd();
}

void CListCtrlEx::fieldChanged() {
    hideRefusal();
}

void CListCtrlEx::hideRefusal() {
    if (refusal_) refusal_->Destroy();
    refusal_ = nullptr;
}

/// A rule changed the row whose field is open.
void CListCtrlEx::refreshField() {
    if (fieldModified()) return;
    if (!session_.state(edited_->property()).editable) return endEdit();
    typed_.emplace(session_.fullText(edited_->property()));
    if (field() && field()->GetValue() != fieldText()) setField(fieldText());
}

bool CListCtrlEx::commit() {
    if (!edited_) return true;
    const FormRow& row = *edited_;
    if (!fieldModified()) {
        endEdit();
        return true;
    }
    const std::string typed = typed_->toBytes(toUtf8(field()->GetValue()));
    const EditCommit outcome = session_.commitText(row.property(), typed);
    if (outcome.accepted) endEdit();
    return take(row, outcome);
}

void CListCtrlEx::revert() {
    endEdit();
}

bool CListCtrlEx::take(const FormRow& row, const EditCommit& outcome) {
    if (outcome.accepted)
        host_.showChanges();
    else
        refuse(row, outcome.message);
    return outcome.accepted;
}

void CListCtrlEx::refuse(const FormRow& row, const std::string& message) {
    EnsureVisible(const_cast<FormRow*>(&row));
    wxRect place = rowRect(row.property());
    const int left = GetSplitterPosition();
    place.x += left;
    place.width -= left;
    hideRefusal();
    refusal_ = new FormRefusal(this, toDisplay(message), place);
    wxTextCtrl* typing = field();
    if (typing && !typing->HasFocus())
        CallAfter([this] {
            if (field()) field()->SetFocus();
        });
}

wxString CListCtrlEx::refusal() const {
    return refusal_ ? refusal_->message() : wxString();
}

/// Called by the toolkit before another row is selected, and when the focus leaves the list. While
/// another program has the focus the field stays as it is.
bool CListCtrlEx::CommitChangesFromEditor(wxUint32) {
    if (!edited_ || options() || !wxWindow::FindFocus()) return true;
    bool taken = false;
    guarded([&] { taken = commit(); });
    return taken;
}

void CListCtrlEx::resetSelected() {
    FormRow* row = selectedRow();
    if (!row) return;
    revert();
    take(*row, session_.resetRow(row->property()));
}

void CListCtrlEx::toggle(FormRow& row) {
    const std::int32_t property = row.property();
    take(row, session_.setBoolean(property, !session_.booleanValue(property)));
}

/// The next option that begins with what was typed is marked in the open list.
void CListCtrlEx::chooseByLetter(const wxString& typed) {
    wxOwnerDrawnComboBox* const list = options();
    if (!list || typed.empty()) return;
    const int count = static_cast<int>(list->GetCount());
    const int from = std::max(0, list->GetSelection() + 1);
    for (int i = 0; i < count; ++i) {
        const int at = (from + i) % count;
        const wxString option = list->GetString(static_cast<unsigned>(at));
        if (!option.Left(typed.length()).IsSameAs(typed, false)) continue;
        if (auto* popup = dynamic_cast<wxVListBox*>(list->GetPopupControl()))
            popup->SetSelection(at);
        return;
    }
}

/// Later: the list is still inside the event that closes it, and what was chosen is set behind it.
void CListCtrlEx::optionsClosed() {
    CallAfter([this] {
        if (!options() || options()->IsPopupShown()) return;
        const std::int32_t chosen = options()->GetSelection();
        const FormRow& row = *edited_;
        endEdit();
        SetFocus();
        if (chosen >= 0) take(row, session_.setOption(row.property(), chosen));
    });
}

void CListCtrlEx::openLines(FormRow& row, const wxString& typed) {
    const std::int32_t property = row.property();
    const EditRow& about = session_.row(property);
    const bool fromField = field() != nullptr;
    const TypedText text(session_.state(property).text);
    FormLinesDialog dialog(wxGetTopLevelParent(this), toDisplay(about.label), session_.locale());
    dialog.setText((fromField ? field()->GetValue() : fromUtf8(text.shown())) + typed);
    if (showModal(dialog) != wxID_OK) return;
    endEdit();
    take(row, session_.commitText(property, text.toBytes(toUtf8(dialog.text()))));
    SetFocus();
}

void CListCtrlEx::openChooser() {
    FormRow* row = selectedRow();
    if (!row || !session_.state(row->property()).editable) return;
    const char letter = session_.row(row->property()).letter;
    if (letter == 'e') return openLines(*row, wxEmptyString);
    std::optional<std::string> chosen;
    if (letter == 'F' || letter == 'f')
        chosen = chosenFile(*row);
    else if (letter == 'c')
        chosen = chosenColour(*row);
    else
        return beginEdit(*row);
    if (!chosen) return;
    revert();
    take(*row, session_.commitText(row->property(), *chosen));
    SetFocus();
}

std::optional<std::string> CListCtrlEx::chosenFile(const FormRow& row) {
    const EditRow& about = session_.row(row.property());
    FileRequest request;
    request.parent = wxGetTopLevelParent(this);
    request.title = toDisplay(formText(FormText::chooseFile, session_.locale()));
    request.path = field() ? field()->GetValue() : toDisplay(session_.state(row.property()).text);
    request.wildcard = wildcardOf(about.filters);
    request.save = about.letter == 'f';
    const std::optional<wxString> path = chooseFormFile(request);
    if (!path) return {};
    return fromTyped(*path);
}

std::optional<std::string> CListCtrlEx::chosenColour(const FormRow& row) {
    const auto value = static_cast<std::uint32_t>(session_.integerValue(row.property()));
    const std::optional<wxColour> colour = formChoosers().colour(
        wxGetTopLevelParent(this), toDisplay(formText(FormText::chooseColour, session_.locale())),
        wxColour(static_cast<unsigned long>(value & 0xFFFFFF)));
    if (!colour) return {};
    return toUtf8(colour->GetAsString(wxC2S_HTML_SYNTAX));
}

}  // namespace korvant::ui
