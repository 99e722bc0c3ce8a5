#include "ui/form/form_window.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>

#include <algorithm>

#include "host/services/frontend.h"
#include "ui/form/form_buttons.h"
#include "ui/form/form_check_window.h"
#include "ui/form/form_list.h"
#include "ui/form/form_page.h"
#include "ui/form/form_page_links.h"
#include "ui/form/form_place.h"
#include "ui/form/form_question.h"
#include "ui/form/form_report.h"
#include "ui/kit/icon_painter.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/theme.h"
#include "ui/kit/ui_native.h"
#include "ui/kit/ui_runtime.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 8;
constexpr int kIconSize = 16;

/// The button below `parent` whose caption underlines the letter; null for none that can be
/// pressed.
wxButton* buttonWithKey(const wxWindow& parent, int letter) {
    for (wxWindow* child : parent.GetChildren()) {
        if (!child->IsShown() || !child->IsEnabled()) continue;
        if (auto* button = dynamic_cast<wxButton*>(child)) {
            wxString label = button->GetLabel();
            label.Replace("&&", wxEmptyString);
            const wxString key = label.AfterFirst('&').Left(1);
            if (!key.empty() && static_cast<int>(wxToupper(key[0])) == letter) return button;
        } else if (wxButton* found = buttonWithKey(*child, letter)) {
            return found;
        }
    }
    return nullptr;
}

bool press(wxButton* button) {
    if (!button) return false;
    wxCommandEvent pressed(wxEVT_BUTTON, button->GetId());
    pressed.SetEventObject(button);
    button->GetEventHandler()->AddPendingEvent(pressed);
    return true;
}

}  // namespace

FormWindow::FormWindow(wxWindow* parent, EditSession& session)
    : Guarded(parent, wxID_ANY, toDisplay(session.title()), wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX),
      session_(session),
      column_(new wxBoxSizer(wxVERTICAL)) {
    makeSearch();
    Bind(wxEVT_CHAR_HOOK, &FormWindow::onKey, this);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { confirm(); }, wxID_OK);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { cancel(); }, wxID_CANCEL);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { cancel(); });
}

FormWindow::~FormWindow() = default;

void FormWindow::makeSearch() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    search_ = new wxSearchCtrl(this, wxID_ANY);
    search_->SetDescriptiveText(toDisplay(formText(FormText::filter, session_.locale())) +
                                " (Ctrl+F)");
    search_->ShowCancelButton(true);
    const int id = search_->GetId();
    Bind(
        wxEVT_TEXT, [this](wxCommandEvent&) { takeSearch(); }, id);
    Bind(
        wxEVT_SEARCHCTRL_CANCEL_BTN, [this](wxCommandEvent&) { clearSearch(); }, id);
    row->Add(search_, wxSizerFlags(1).CentreVertical());
    undo_ = makeHistoryButton(FormText::undo, " (Ctrl+Z)");
    redo_ = makeHistoryButton(FormText::redo, " (Ctrl+Y)");
    drawHistoryButtons();
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        drawHistoryButtons();
        event.Skip();
    });
    row->Add(undo_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(kGap)));
    row->Add(redo_, wxSizerFlags().CentreVertical());
    onPress(*undo_, [this] { undo(); });
    onPress(*redo_, [this] { redo(); });
    column_->Add(row, wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap)));
}

void FormWindow::drawHistoryButtons() {
    const wxColour colour = currentTheme().text;
    undo_->SetBitmap(iconBundle(Icon::undo, kIconSize, colour));
    redo_->SetBitmap(iconBundle(Icon::redo, kIconSize, colour));
}

wxBitmapButton* FormWindow::makeHistoryButton(FormText caption, const char* key) {
    auto* button = new wxBitmapButton(this, wxID_ANY, iconBundle(Icon::undo, kIconSize, *wxBLACK),
                                      wxDefaultPosition, FromDIP(wxSize(30, 30)), wxBORDER_NONE);
    button->SetToolTip(toDisplay(formText(caption, session_.locale())) + key);
    button->DisableFocusFromKeyboard();
    return button;
}

void FormWindow::layOut(wxWindow* body) {
    links_ = new FormPageLinks(this, [this](int page) { goTo({page, -1}); });
    links_->MoveBeforeInTabOrder(body);
    column_->Add(links_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(kGap)));
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        updateLinks();
    });
    column_->Add(body, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT, FromDIP(kGap)));
    column_->Add(makeButtons(), wxSizerFlags().Expand().Border(wxALL, FromDIP(kGap)));
    SetSizer(column_);
    report_ = new FormReport(this);
    for (int i = 0; i < session_.pageCount(); ++i) showSeverity(i, session_.pageSeverity(i));
    updateHistory();
    session_.takeChanges();
    SetMinClientSize(FromDIP(wxSize(360, 400)));
    placeForm(*this, session_.kind());
}

wxSizer* FormWindow::makeButtons() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    wxButton* check = formButton(this, wxID_ANY, FormText::check, session_.locale());
    check->SetToolTip("F9");
    onPress(*check, [this] { this->check(); });
    row->Add(check);
    row->AddStretchSpacer();
    row->Add(okAndCancel(this, session_.locale()));
    return row;
}

bool FormWindow::edit() {
    showPage(0);
    pageShown();
    const LoopGuard guard([this] { EndModal(wxID_CANCEL); });
    return showModal(*this) == wxID_OK;
}

CListCtrlEx* FormWindow::activeList() {
    const int active = activePage();
    return active < 0 ? nullptr : page(active).list();
}

void FormWindow::pageShown() {
    const int active = activePage();
    if (active < 0) return;
    page(active).activate();
    page(active).list()->SetFocus();
    updateLinks();
}

void FormWindow::updateLinks() {
    const bool changes =
        links_->update(session_, activePage(), !search_->GetValue().empty(), hidesMarks());
    if (links_->fit(GetClientSize().x) || changes) Layout();
}

void FormWindow::showChanges() {
    const EditChanges changes = session_.takeChanges();
    for (int i = 0; i < session_.pageCount(); ++i) page(i).apply(changes);
    for (int i : changes.pages) showSeverity(i, session_.pageSeverity(i));
    if (changes.history) updateHistory();
    if (changes.filter || !changes.pages.empty()) updateLinks();
}

void FormWindow::updateHistory() {
    undo_->Enable(session_.canUndo());
    redo_->Enable(session_.canRedo());
}

void FormWindow::rowSelected(CListCtrlEx& list, std::int32_t property) {
    page(list.page()).describe(property);
}

bool FormWindow::goTo(const EditPlace& place) {
    if (place.page < 0) return true;
    if (!commit()) return false;
    if (activePage() != place.page) {
        showPage(place.page);
        pageShown();
    }
    if (place.property < 0) return true;
    if (!session_.state(place.property).visible) clearSearch();
    CListCtrlEx* list = activeList();
    list->select(place.property);
    list->SetFocus();
    return true;
}

void FormWindow::undo() {
    if (CListCtrlEx* list = activeList()) list->revert();
    const EditPlace place = session_.undo();
    showChanges();
    goTo(place);
}

void FormWindow::redo() {
    if (CListCtrlEx* list = activeList()) list->revert();
    const EditPlace place = session_.redo();
    showChanges();
    goTo(place);
}

/// Only the active page can hold an open field: another page is shown only after a commit.
bool FormWindow::commit() {
    CListCtrlEx* list = activeList();
    return !list || list->commit();
}

void FormWindow::confirm() {
    if (!commit()) return;
    const EditCheck outcome = session_.confirm();
    if (outcome.passed) return end(wxID_OK);
    showChanges();
    goTo(outcome.place);
    report_->show(outcome.report + "<hr>" + outcome.details, ScreenToClient(wxGetMousePosition()));
}

/// Something is lost when the form is left now. What was changed back counts as not changed.
bool FormWindow::changedByUser() {
    const CListCtrlEx* list = activeList();
    return (list && list->typing()) || (session_.canUndo() && session_.changed());
}

void FormWindow::cancel() {
    if (!changedByUser()) return end(wxID_CANCEL);
    const int answer =
        askInForm(formText(FormText::keepChanges, session_.locale()),
                  box_style::kYesNoCancel | box_style::kIconWarning, session_.locale());
    if (answer == box_button::kYes) return confirm();
    if (answer == box_button::kNo) return end(wxID_CANCEL);
    if (CListCtrlEx* list = activeList()) list->SetFocus();
}

void FormWindow::end(int result) {
    rememberForm(*this, session_.kind());
    EndModal(result);
}

void FormWindow::check() {
    if (!commit()) return;
    const std::string link = FormCheckWindow(this, session_).ask();
    if (link.empty()) return;
    const EditPlace place = session_.follow(link);
    showChanges();
    goTo(place);
}

void FormWindow::turnPage(int by) {
    const int count = session_.pageCount();
    if (count < 2 || !commit()) return;
    showPage((activePage() + by + count) % count);
    pageShown();
}

void FormWindow::takeSearch() {
    if (searched_ == search_->GetValue()) return;
    searched_ = search_->GetValue();
    native::settle(*search_);  // the cross in it has just come or gone
    session_.setFilter(fromTyped(searched_));
    showChanges();
}

void FormWindow::clearSearch() {
    search_->Clear();
    takeSearch();
}

bool FormWindow::inSearch() const {
    const wxWindow* focus = FindFocus();
    return focus && (focus == search_ || search_->IsDescendant(const_cast<wxWindow*>(focus)));
}

void FormWindow::onKey(wxKeyEvent& event) {
    if (!(inSearch() && handleSearchKey(event)) && !handleKey(event)) event.Skip();
}

bool FormWindow::handleSearchKey(const wxKeyEvent& key) {
    const int code = key.GetKeyCode();
    takeSearch();
    if (key.GetModifiers() == wxMOD_CONTROL) return false;
    if (code == WXK_ESCAPE && !search_->GetValue().empty()) {
        clearSearch();
        return true;
    }
    if (code != WXK_RETURN && code != WXK_NUMPAD_ENTER && code != WXK_DOWN) return false;
    if (showPageFound()) return true;
    if (CListCtrlEx* list = activeList()) {
        if (list->selectedProperty() < 0) list->selectFirst();
        list->SetFocus();
    }
    return true;
}

/// Goes to the first page with what is searched where the page that is shown has none of it.
bool FormWindow::showPageFound() {
    if (session_.visibleRows(activePage()) > 0) return false;
    for (int i = 0; i < session_.pageCount(); ++i) {
        if (session_.visibleRows(i) == 0) continue;
        if (goTo({i, -1})) activeList()->selectFirst();
        return true;
    }
    return false;
}

bool FormWindow::handleEscape() {
    if (page(activePage()).inDescription())
        page(activePage()).switchToDescription();
    else if (!search_->GetValue().empty())
        clearSearch();
    else
        cancel();
    return true;
}

bool FormWindow::handleKey(const wxKeyEvent& key) {
    const int code = key.GetKeyCode();
    const bool control = key.GetModifiers() == wxMOD_CONTROL;
    // A list that has the keyboard keeps these keys from the system's own search for the button.
    if (key.GetModifiers() == wxMOD_ALT && code > ' ' && code < WXK_DELETE)
        return press(buttonWithKey(*this, code));
    if (code == WXK_ESCAPE && !key.HasAnyModifiers()) return handleEscape();
    if (code == WXK_F6 && !key.HasAnyModifiers())
        page(activePage()).switchToDescription();
    else if (code == WXK_F9 && !key.HasAnyModifiers())
        check();
    else if (!control)
        return false;
    else if (code == WXK_RETURN || code == WXK_NUMPAD_ENTER)
        confirm();
    else if (code == WXK_PAGEUP)
        turnPage(-1);
    else if (code == WXK_PAGEDOWN)
        turnPage(1);
    else if (code == 'F') {
        search_->SetFocus();
        search_->SelectAll();
    } else if (inSearch())
        return false;
    else if (code == 'Z')
        undo();
    else if (code == 'Y')
        redo();
    else if (code == 'R' && activeList())
        activeList()->resetSelected();
    else
        return false;
    return true;
}

}  // namespace korvant::ui
