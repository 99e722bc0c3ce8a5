#include "ui/form/form_group_bar.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/form/form_buttons.h"
#include "ui/form/form_list.h"
#include "ui/form/form_order_dialog.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 6;
constexpr int kButtonPadding = 14;

}  // namespace

FormGroupBar::FormGroupBar(wxWindow* parent, EditSession& session, CListCtrlEx& list,
                           FormHost& host)
    : Guarded(parent), session_(session), list_(list), host_(host) {
    const EditGroupBar bar = session.groupBar(list.page());
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(this, wxID_ANY, formCaption(FormText::element, session.locale())),
             wxSizerFlags().CentreVertical());
    row->AddSpacer(FromDIP(kGap));
    elements_ = new wxChoice(this, wxID_ANY);
    elements_->SetMinSize(FromDIP(wxSize(80, -1)));
    row->Add(elements_, wxSizerFlags(1).CentreVertical());
    add_ = addButton(*row, FormText::add, bar.showAdd);
    copy_ = addButton(*row, FormText::copy, bar.showCopy);
    remove_ = addButton(*row, FormText::remove, bar.showRemove);
    order_ = addButton(*row, FormText::order, bar.showOrder);
    auto* around = new wxBoxSizer(wxVERTICAL);
    around->Add(row, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kGap)));
    SetSizer(around);
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

wxButton* FormGroupBar::addButton(wxSizer& row, FormText caption, bool shown) {
    auto* button = new wxButton(this, wxID_ANY, keyedFormCaption(caption, session_.locale()),
                                wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->SetMinSize(button->GetBestSize() + FromDIP(wxSize(kButtonPadding, 0)));
    row.Add(button, wxSizerFlags().Expand().Border(wxLEFT, FromDIP(kGap)));
    button->Show(shown);
    return button;
}

void FormGroupBar::update() {
    const EditGroupBar bar = session_.groupBar(list_.page());
    wxArrayString captions;
    for (const std::string& element : bar.elements) captions.Add(toDisplay(element));
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
