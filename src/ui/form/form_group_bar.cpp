#include "ui/form/form_group_bar.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "ui/form/form_buttons.h"
#include "ui/form/form_list.h"
#include "ui/form/form_order_dialog.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 6;
constexpr int kButtonPadding = 10;
constexpr int kChoiceWidth = 80;

/// The lists of the desktop show no pictures.
wxString signOf(Severity severity) {
    if (severity == Severity::error) return wxString::FromUTF8("\xE2\x9C\x96 ");
    return severity == Severity::warning ? wxString::FromUTF8("\xE2\x9A\xA0 ") : wxString();
}

}  // namespace

FormGroupBar::FormGroupBar(wxWindow* parent, EditSession& session, CListCtrlEx& list,
                           FormHost& host)
    : Guarded(parent), session_(session), list_(list), host_(host) {
    const EditGroupBar bar = session.groupBar(list.page());
    auto* choice = new wxBoxSizer(wxHORIZONTAL);
    choice->Add(new wxStaticText(this, wxID_ANY, formCaption(FormText::element, session.locale())),
                wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
    elements_ = new wxChoice(this, wxID_ANY);
    elements_->SetMinSize(FromDIP(wxSize(kChoiceWidth, -1)));
    choice->Add(elements_, wxSizerFlags(1).CentreVertical());
    buttons_ = new wxBoxSizer(wxHORIZONTAL);
    add_ = addButton(FormText::add, bar.showAdd);
    copy_ = addButton(FormText::copy, bar.showCopy);
    remove_ = addButton(FormText::remove, bar.showRemove);
    order_ = addButton(FormText::order, bar.showOrder);
    parts_ = new wxBoxSizer(wxHORIZONTAL);
    parts_->Add(choice, wxSizerFlags(1).Expand().Border(wxRIGHT, FromDIP(kGap)));
    parts_->Add(buttons_, wxSizerFlags().Expand());
    auto* around = new wxBoxSizer(wxVERTICAL);
    // Every part keeps the gap behind itself.
    around->Add(parts_, wxSizerFlags(1).Expand().Border(wxALL & ~wxRIGHT, FromDIP(kGap)));
    SetSizer(around);
    Bind(wxEVT_SIZE, &FormGroupBar::onSize, this);
    Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) { chooseElement(event.GetSelection()); });
    // The wheel scrolls the rows; it changes no choice.
    elements_->Bind(wxEVT_MOUSEWHEEL,
                    [this](wxMouseEvent& event) { list_.GetEventHandler()->ProcessEvent(event); });
    onPress(*add_, [this] { runAndFill(&EditSession::addElement); });
    onPress(*copy_, [this] { runAndFill(&EditSession::copyElement); });
    onPress(*remove_, [this] { run(&EditSession::removeElement); });
    onPress(*order_, [this] { order(); });
    update();
}

/// Where there is no room for all in one line the buttons go below the choice.
void FormGroupBar::onSize(wxSizeEvent& event) {
    const int wanted = FromDIP(kChoiceWidth) + FromDIP(4 * kGap) + buttons_->CalcMin().x +
                       GetTextExtent(toDisplay(formText(FormText::element, session_.locale()))).x;
    const int orientation = wanted > GetClientSize().x ? wxVERTICAL : wxHORIZONTAL;
    if (orientation == parts_->GetOrientation()) return event.Skip();
    parts_->SetOrientation(orientation);
    const int below = orientation == wxVERTICAL ? wxBOTTOM : 0;
    parts_->GetItem(static_cast<std::size_t>(0))->SetFlag(wxEXPAND | wxRIGHT | below);
    InvalidateBestSize();
    // The page first: controls that are laid out in the old height complain of having none.
    CallAfter([this] {
        GetParent()->Layout();
        Layout();
    });
}

wxButton* FormGroupBar::addButton(FormText caption, bool shown) {
    auto* button = new wxButton(this, wxID_ANY, keyedFormCaption(caption, session_.locale()),
                                wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    const wxSize best = button->GetBestSize();
    button->SetMinSize(
        wxSize(best.x + FromDIP(kButtonPadding), std::max(best.y, elements_->GetBestSize().y)));
    buttons_->Add(button, wxSizerFlags().Expand().Border(wxRIGHT, FromDIP(kGap)));
    button->Show(shown);
    return button;
}

void FormGroupBar::update() {
    const EditGroupBar bar = session_.groupBar(list_.page());
    wxArrayString captions;
    for (std::size_t i = 0; i < bar.elements.size(); ++i)
        captions.Add(signOf(bar.severities[i]) + toDisplay(bar.elements[i]));
    if (captions != elements_->GetStrings()) elements_->Set(captions);
    elements_->SetSelection(bar.current);
    elements_->Enable(!captions.empty());
    add_->Enable(bar.canAdd);
    copy_->Enable(bar.canCopy);
    remove_->Enable(bar.canRemove);
    order_->Enable(bar.canOrder);
}

bool FormGroupBar::run(bool (EditSession::*action)(int)) {
    if (!list_.commit()) return false;
    const bool changed = (session_.*action)(list_.page());
    done();
    return changed;
}

/// A new element is there to be filled.
void FormGroupBar::runAndFill(bool (EditSession::*action)(int)) {
    if (!run(action)) return;
    list_.selectFirst();
    list_.SetFocus();
}

void FormGroupBar::chooseElement(int element) {
    if (list_.commit()) session_.chooseElement(list_.page(), element);
    done();
}

void FormGroupBar::order() {
    if (!list_.commit()) return;
    wxArrayString captions;
    const EditGroupBar bar = session_.groupBar(list_.page());
    for (const std::string& element : bar.elements) captions.Add(toDisplay(element));
    CListOrderDialog dialog(wxGetTopLevelParent(this), captions, bar.current, session_.locale());
    if (showModal(dialog) == wxID_OK) session_.orderElements(list_.page(), dialog.order());
    done();
}

void FormGroupBar::done() {
    host_.showChanges();
    update();
}

}  // namespace korvant::ui
