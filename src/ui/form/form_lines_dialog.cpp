#include "ui/form/form_lines_dialog.h"

#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "ui/form/form_buttons.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {

FormLinesDialog::FormLinesDialog(wxWindow* parent, const wxString& title, std::int32_t locale)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    field_ = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition,
                            FromDIP(wxSize(420, 220)), wxTE_MULTILINE | wxTE_DONTWRAP);
    native::padLines(*field_);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(field_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
    column->Add(okAndCancel(this, locale),
                wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8)));
    SetSizerAndFit(column);
    CentreOnParent();
    SetEscapeId(wxID_CANCEL);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_RETURN && event.GetModifiers() == wxMOD_CONTROL)
            EndModal(wxID_OK);
        else
            event.Skip();
    });
}

void FormLinesDialog::setText(const wxString& text) {
    field_->ChangeValue(text);
    field_->SetInsertionPointEnd();
    field_->SetFocus();
}

wxString FormLinesDialog::text() const {
    return field_->GetValue();
}

}  // namespace korvant::ui
