#include "ui/form/form_row.h"

#include "ui/form/form_list.h"
#include "ui/form/form_row_editors.h"
#include "ui/form/form_row_painter.h"

namespace korvant::ui {
namespace {

/// The toolkit takes a row without a value for an unset one and greys its field.
const wxVariant& anyValue() {
    static const wxVariant value(true);
    return value;
}

}  // namespace

FormRow::FormRow(CListCtrlEx& list, std::int32_t property)
    : wxPGProperty(wxEmptyString, wxEmptyString), list_(list), property_(property) {
    m_value = anyValue();
    if (list.session().row(property).letter == 'c') SetFlag(wxPG_PROP_CUSTOMIMAGE);
}

wxString FormRow::GetValueAsString(int) const {
    return list_.fieldText();
}

wxPGCellRenderer* FormRow::GetCellRenderer(int) const {
    return const_cast<FormRowPainter*>(&list_.painter());
}

const wxPGEditor* FormRow::DoGetEditorClass() const {
    return list_.isEdited(*this) ? &rowEditor(list_.editorOf(property_)) : &noRowEditor();
}

wxSize FormRow::OnMeasureImage(int) const {
    if (!HasFlag(wxPG_PROP_CUSTOMIMAGE)) return wxSize(0, 0);
    return list_.FromDIP(wxSize(form_size::kSwatchWidth + form_size::kGap, form_size::kBoxSize));
}

bool FormRow::OnEvent(wxPropertyGrid*, wxWindow*, wxEvent& event) {
    if (event.GetEventType() != wxEVT_BUTTON) return false;
    guarded([this] { list_.openChooser(); });
    return true;
}

FormRow* asFormRow(wxPGProperty* item) {
    return dynamic_cast<FormRow*>(item);
}

}  // namespace korvant::ui
