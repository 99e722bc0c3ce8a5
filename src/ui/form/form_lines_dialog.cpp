#include "ui/form/form_lines_dialog.h"

#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "ui/form/form_buttons.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_texts.h"

namespace korvant::ui {

FormLinesDialog::FormLinesDialog(wxWindow* parent, const wxString& title, std::int32_t locale)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
    field_ = new wxTextCtrl(this, wxID_ANY, wxEmptyString, wxDefaultPosition,
                            FromDIP(wxSize(420, 220)), wxTE_MULTILINE | wxTE_DONTWRAP);
    native::takeLongTexts(*field_);
    native::padLines(*field_);
    remark_ = new wxStaticText(this, wxID_ANY, uiText(UiText::tooLongToEdit));
    remark_->SetForegroundColour(currentTheme().error);
    remark_->Hide();
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(field_, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
    column->Add(remark_, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8)));
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

void FormLinesDialog::setPreview(const wxString& text) {
    setText(text + "...");
    field_->SetEditable(false);
    remark_->Show();
    GetSizer()->SetSizeHints(this);
}

bool FormLinesDialog::editable() const {
    return field_->IsEditable();
}

wxString FormLinesDialog::text() const {
    return field_->GetValue();
}

}  // namespace korvant::ui
