#include "ui/form/form_field.h"

#include <wx/odcombo.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "ui/form/form_refusal.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_native.h"

namespace korvant::ui {

namespace {

/// Where the window around the open list takes the keyboard, the list itself is to have it: the
/// arrows would walk through the form. The list's own function does nothing on such systems.
void giveKeysTo(wxOwnerDrawnComboBox& list) {
    wxComboPopup* const popup = list.GetPopupControl();
    wxWindow* const shown = popup ? popup->GetControl() : nullptr;
    if (shown && wxWindow::FindFocus() == shown->GetParent()) shown->wxWindow::SetFocus();
}

}  // namespace

void FormField::open(FormRow& row) {
    began_.emplace(session_.fullText(row.property()));
    row_ = &row;
    list_.DoSelectProperty(&row, wxPG_SEL_FORCE | wxPG_SEL_FOCUS | wxPG_SEL_DONT_SEND_EVENT);
    if (text()) native::takeLongTexts(*text());
    if (wxOwnerDrawnComboBox* list = options()) {
        list->Popup();
        giveKeysTo(*list);
    }
}

void FormField::close() {
    FormRow* const row = row_;
    forget();
    hideRefusal();
    if (row) list_.DoSelectProperty(row, wxPG_SEL_FORCE | wxPG_SEL_DONT_SEND_EVENT);
}

void FormField::forget() {
    row_ = nullptr;
    began_.reset();
}

wxTextCtrl* FormField::text() const {
    return row_ ? dynamic_cast<wxTextCtrl*>(list_.GetEditorControl()) : nullptr;
}

wxOwnerDrawnComboBox* FormField::options() const {
    return row_ ? dynamic_cast<wxOwnerDrawnComboBox*>(list_.GetEditorControl()) : nullptr;
}

wxString FormField::original() const {
    return began_ ? fromUtf8(began_->shown()) : wxString();
}

bool FormField::modified() const {
    return text() && began_ && text()->GetValue() != original();
}

std::string FormField::typed() const {
    return began_->toBytes(toUtf8(text()->GetValue()));
}

void FormField::set(const wxString& value) {
    if (!text()) return;
    text()->ChangeValue(value);
    text()->SetInsertionPointEnd();
}

void FormField::refresh() {
    if (modified()) return;
    if (!session_.state(row_->property()).editable) return close();
    began_.emplace(session_.fullText(row_->property()));
    if (text() && text()->GetValue() != original()) set(original());
}

void FormField::markOption(const wxString& typed) {
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

void FormField::refuse(const wxString& message, const wxRect& place) {
    hideRefusal();
    refusal_ = new FormRefusal(&list_, message, place);
    wxTextCtrl* const typing = text();
    if (typing && !typing->HasFocus())
        list_.CallAfter([this] {
            if (text()) text()->SetFocus();
        });
}

void FormField::hideRefusal() {
    if (refusal_) refusal_->Destroy();
    refusal_ = nullptr;
}

wxString FormField::refusal() const {
    return refusal_ ? refusal_->message() : wxString();
}

}  // namespace korvant::ui
