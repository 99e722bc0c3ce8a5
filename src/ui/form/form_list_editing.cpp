// Opening and closing what edits a row.
#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include "object/form/form_texts.h"
#include "ui/form/form_choosers.h"
#include "ui/form/form_lines_dialog.h"
#include "ui/form/form_list.h"
#include "ui/form/form_typed_text.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {

RowEditor CListCtrlEx::editorOf(std::int32_t property) const {
    const std::string& text = session_.textValue(property);
    const bool lines = needsSeveralLines(text) || isTooLongToEdit(text);
    switch (session_.row(property).letter) {
        case 's':
            return lines ? RowEditor::lines : RowEditor::field;
        case 'e':
            return lines ? RowEditor::lines : RowEditor::fieldAndButton;
        case 'F':
        case 'f':
            return isTooLongToEdit(text) ? RowEditor::lines : RowEditor::fieldAndButton;
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

void CListCtrlEx::open(FormRow& row) {
    if (select(row.property())) field_.open(row);
}

bool CListCtrlEx::commit() {
    if (!field_.isOpen()) return true;
    const FormRow& row = *field_.row();
    if (!field_.modified()) {
        field_.close();
        return true;
    }
    const bool tooLong = toUtf8(field_.text()->GetValue()).size() > kLongestLine;
    const EditCommit outcome =
        tooLong ? EditCommit{false, formText(FormText::tooLong, session_.locale())}
                : session_.commitText(row.property(), field_.typed());
    if (outcome.accepted) field_.close();
    return take(row, outcome);
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
    field_.refuse(toDisplay(message), place);
}

/// Called by the toolkit before another row is selected, and when the focus leaves the list. While
/// another program has the focus the field stays as it is.
bool CListCtrlEx::CommitChangesFromEditor(wxUint32) {
    if (!field_.isOpen() || field_.options() || !wxWindow::FindFocus()) return true;
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

/// Later: the list is still inside the event that closes it, and what was chosen is set behind it.
void CListCtrlEx::optionsClosed() {
    CallAfter([this] {
        if (!field_.options() || field_.options()->IsPopupShown()) return;
        const std::int32_t chosen = field_.options()->GetSelection();
        const FormRow& row = *field_.row();
        field_.close();
        SetFocus();
        if (chosen >= 0) take(row, session_.setOption(row.property(), chosen));
    });
}

/// What is typed goes behind the text; it replaces one that is too long for any field.
void CListCtrlEx::openLines(FormRow& row, const wxString& typed, bool replaces) {
    const std::int32_t property = row.property();
    const EditRow& about = session_.row(property);
    const wxTextCtrl* const field = field_.text();
    const TypedText text(session_.state(property).text);
    const bool tooLong = !field && isTooLongToEdit(session_.textValue(property));
    FormLinesDialog dialog(wxGetTopLevelParent(this), toDisplay(about.label), session_.locale());
    if (tooLong && !replaces)
        dialog.setPreview(fromUtf8(onOneLine(session_.textValue(property))));
    else
        dialog.setText(tooLong ? typed
                               : (field ? field->GetValue() : fromUtf8(text.shown())) + typed);
    if (showModal(dialog) != wxID_OK || !dialog.editable()) return;
    field_.close();
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
    request.path =
        field_.text() ? field_.text()->GetValue() : toDisplay(session_.state(row.property()).text);
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
