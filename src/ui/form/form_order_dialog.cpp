#include "ui/form/form_order_dialog.h"

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/sizer.h>

#include <numeric>

#include "ui/form/form_buttons.h"
#include "ui/kit/text_conversion.h"

namespace korvant::ui {
namespace {

wxString withoutDots(wxString caption) {
    caption.Replace("...", "");
    return caption;
}

}  // namespace

CListOrderDialog::CListOrderDialog(wxWindow* parent, const wxArrayString& elements, int current,
                                   std::int32_t locale)
    : Guarded(parent, wxID_ANY, withoutDots(toDisplay(formText(FormText::order, locale))),
              wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      locale_(locale),
      order_(elements.size()) {
    std::iota(order_.begin(), order_.end(), 0);
    list_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(300, 260)), elements,
                          wxLB_SINGLE);
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    up_ = addButton(*buttons, FormText::up, &CListOrderDialog::up);
    down_ = addButton(*buttons, FormText::down, &CListOrderDialog::down);
    first_ = addButton(*buttons, FormText::first, &CListOrderDialog::first);
    last_ = addButton(*buttons, FormText::last, &CListOrderDialog::last);
    auto* upper = new wxBoxSizer(wxHORIZONTAL);
    upper->Add(list_, wxSizerFlags(1).Expand());
    upper->Add(buttons, wxSizerFlags().Border(wxLEFT, FromDIP(8)));
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(upper, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(8)));
    column->Add(okAndCancel(this, locale),
                wxSizerFlags().Right().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8)));
    SetSizerAndFit(column);
    CentreOnParent();
    SetEscapeId(wxID_CANCEL);
    if (!elements.empty()) list_->SetSelection(current < 0 ? 0 : current);
    Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { update(); });
    Bind(wxEVT_CHAR_HOOK, &CListOrderDialog::onKey, this);
    update();
    list_->SetFocus();
}

wxButton* CListOrderDialog::addButton(wxSizer& column, FormText caption,
                                      void (CListOrderDialog::*move)()) {
    wxButton* button = formButton(this, wxID_ANY, caption, locale_);
    column.Add(button, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(6)));
    onPress(*button, [this, move] { (this->*move)(); });
    return button;
}

int CListOrderDialog::chosen() const {
    return list_->GetSelection();
}

void CListOrderDialog::moveTo(int place) {
    const int from = chosen();
    if (from < 0 || place < 0 || place >= static_cast<int>(order_.size()) || place == from) return;
    const wxString caption = list_->GetString(static_cast<unsigned>(from));
    const std::int32_t element = order_[static_cast<std::size_t>(from)];
    list_->Delete(static_cast<unsigned>(from));
    list_->Insert(caption, static_cast<unsigned>(place));
    order_.erase(order_.begin() + from);
    order_.insert(order_.begin() + place, element);
    list_->SetSelection(place);
    list_->EnsureVisible(place);
    update();
}

void CListOrderDialog::update() {
    const int at = chosen(), end = static_cast<int>(order_.size()) - 1;
    up_->Enable(at > 0);
    first_->Enable(at > 0);
    down_->Enable(at >= 0 && at < end);
    last_->Enable(at >= 0 && at < end);
}

void CListOrderDialog::onKey(wxKeyEvent& event) {
    const int code = event.GetKeyCode();
    if (event.GetModifiers() == wxMOD_ALT && code == WXK_UP) return up();
    if (event.GetModifiers() == wxMOD_ALT && code == WXK_DOWN) return down();
    if (event.GetModifiers() == wxMOD_ALT && code == WXK_HOME) return first();
    if (event.GetModifiers() == wxMOD_ALT && code == WXK_END) return last();
    if (event.GetModifiers() == wxMOD_CONTROL && code == WXK_RETURN) return EndModal(wxID_OK);
    event.Skip();
}

}  // namespace korvant::ui
