#include "ui/editor/editor_search_dialogs.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

#include "ui/kit/text_conversion.h"
#include "ui/kit/window_place.h"

namespace korvant::ui {
namespace {

constexpr int kGap = 8;
constexpr int kFieldWidth = 260;

}  // namespace

SearchWindow::SearchWindow(wxWindow* parent, const wxString& title, KeyHandler onKey)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE),
      fields_(new wxBoxSizer(wxVERTICAL)),
      checks_(new wxBoxSizer(wxVERTICAL)),
      buttons_(new wxBoxSizer(wxVERTICAL)) {
    text_ = addField("&Search for:");
    Bind(wxEVT_CHAR_HOOK, std::move(onKey));
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { close(); });
}

wxComboBox* SearchWindow::addField(const wxString& label) {
    auto* caption = new wxStaticText(this, wxID_ANY, label);
    auto* field = new wxComboBox(this, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                 FromDIP(wxSize(kFieldWidth, -1)), 0, nullptr, wxCB_DROPDOWN);
    fields_->Add(caption, wxSizerFlags().Border(wxBOTTOM, FromDIP(kGap / 4)));
    fields_->Add(field, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap)));
    return field;
}

wxCheckBox* SearchWindow::addOption(const wxString& label) {
    auto* box = new wxCheckBox(this, wxID_ANY, label);
    checks_->Add(box, wxSizerFlags().Border(wxBOTTOM, FromDIP(kGap / 2)));
    return box;
}

wxButton* SearchWindow::addButton(const wxString& label, std::function<void()> pressed) {
    auto* button = new wxButton(this, wxID_ANY, label);
    button->Bind(wxEVT_BUTTON, [pressed = std::move(pressed)](wxCommandEvent&) { pressed(); });
    buttons_->Add(button, wxSizerFlags().Expand().Border(wxBOTTOM, FromDIP(kGap / 2)));
    return button;
}

void SearchWindow::addCloseButton(const wxString& label) {
    auto* button = new wxButton(this, wxID_OK, label);
    button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { close(); });
    buttons_->Add(button, wxSizerFlags().Expand());
    SetEscapeId(wxID_OK);
}

void SearchWindow::close() {
    Hide();
    Destroy();
}

void SearchWindow::arrange() {
    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(fields_, wxSizerFlags().Expand());
    left->Add(checks_);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(left, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(kGap)));
    row->Add(buttons_, wxSizerFlags().Border(wxALL, FromDIP(kGap)));
    SetSizerAndFit(row);
}

/// In the upper right corner of the editor, so that it covers little of the text.
void SearchWindow::place() {
    const wxRect area = workArea(GetParent());
    const wxRect editor = GetParent()->GetScreenRect();
    const wxSize size = GetSize();
    const int right = editor.GetRight() - size.x - FromDIP(3 * kGap);
    const int top = editor.GetTop() + FromDIP(8 * kGap);
    SetPosition({std::clamp(right, area.x, std::max(area.x, area.GetRight() - size.x)),
                 std::clamp(top, area.y, std::max(area.y, area.GetBottom() - size.y))});
}

void SearchWindow::open(const SearchFields& fields) {
    arrange();
    place();
    fill(*text_, fields.searched, fields.text);
    text_->SetFocus();
    text_->SelectAll();
    Show();
}

void SearchWindow::fill(wxComboBox& field, const std::vector<std::string>& list,
                        const std::string& text) {
    field.Clear();
    for (const std::string& entry : list) field.Append(fromUtf8(entry));
    field.SetValue(fromUtf8(text));
}

std::string SearchWindow::searchText() const {
    return toUtf8(text_->GetValue());
}

SearchOptions SearchWindow::options() const {
    return {matchCase_->GetValue(), wholeWords_->GetValue(), regularExpressions_->GetValue()};
}

void SearchWindow::took(const SearchOutcome& outcome) {
    if (!outcome.insertOnTop) return;
    const wxString text = text_->GetValue();
    text_->Insert(text, 0);
    text_->SetValue(text);
}

CFindDlg::CFindDlg(wxWindow* parent, std::unique_ptr<FindDialog> logic, KeyHandler onKey)
    : SearchWindow(parent, "Search", std::move(onKey)), logic_(std::move(logic)) {
    matchCase_ = addOption("Match case");
    wholeWords_ = addOption("Match whole words only");
    regularExpressions_ = addOption("Regular expressions");
    addButton("&Next match", [this] { took(logic_->next(searchText(), options())); })->SetDefault();
    addButton("&Previous Match", [this] { took(logic_->previous(searchText(), options())); });
    addCloseButton("Close");
    open(logic_->open());
}

CReplaceDlg::CReplaceDlg(wxWindow* parent, std::unique_ptr<ReplaceDialog> logic, KeyHandler onKey)
    : SearchWindow(parent, "Search and replace", std::move(onKey)), logic_(std::move(logic)) {
    replacement_ = addField("Replace &with:");
    matchCase_ = addOption("Match case");
    wholeWords_ = addOption("Match whole words only");
    regularExpressions_ = addOption("Regular expressions");
    inSelection_ = addOption("Replace in selection only");
    inSelection_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { selectionOnlyToggled(); });
    addButtons();
    const SearchFields fields = logic_->open();
    fill(*replacement_, fields.replacements, fields.replacement);
    open(fields);
}

void CReplaceDlg::addButtons() {
    next_ = addButton("&Next match", [this] { took(logic_->next(searchText(), options())); });
    next_->SetDefault();
    previous_ =
        addButton("&Previous match", [this] { took(logic_->previous(searchText(), options())); });
    replace_ = addButton("&Replace",
                         [this] { took(logic_->replace(searchText(), replacement(), options())); });
    addButton("Replace &All",
              [this] { took(logic_->replaceAll(searchText(), replacement(), options())); });
    addCloseButton("&Close");
}

void CReplaceDlg::selectionOnlyToggled() {
    logic_->setInSelection(inSelection_->GetValue());
    for (wxButton* button : {next_, previous_, replace_}) button->Enable(!logic_->inSelection());
}

std::string CReplaceDlg::replacement() const {
    return toUtf8(replacement_->GetValue());
}

}  // namespace korvant::ui
