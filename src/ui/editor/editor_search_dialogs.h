// The editor's Find and Replace windows: layout and forwarding.
#pragma once

#include <wx/dialog.h>

#include <functional>
#include <memory>

#include "editor/control/search_dialogs.h"

class wxButton;
class wxCheckBox;
class wxComboBox;
class wxSizer;

namespace korvant::ui {

/// What both have: a text to search for, three check boxes, and buttons in a column. Modeless;
/// destroys itself when it is closed. Keys of the editor work in it through `onKey`.
class SearchWindow : public wxDialog {
  public:
    using KeyHandler = std::function<void(wxKeyEvent&)>;

  protected:
    SearchWindow(wxWindow* parent, const wxString& title, KeyHandler onKey);

    wxComboBox* addField(const wxString& label);
    wxCheckBox* addOption(const wxString& label);
    wxButton* addButton(const wxString& label, std::function<void()> pressed);
    void addCloseButton(const wxString& label);
    /// Lays out what was added, fills the fields and shows the window.
    void open(const SearchFields& fields);
    void fill(wxComboBox& field, const std::vector<std::string>& list, const std::string& text);

    std::string searchText() const;
    SearchOptions options() const;
    void took(const SearchOutcome& outcome);

  private:
    void close();
    void arrange();
    void place();

    wxSizer* fields_;
    wxSizer* checks_;
    wxSizer* buttons_;
    wxComboBox* text_ = nullptr;
    wxCheckBox* matchCase_ = nullptr;
    wxCheckBox* wholeWords_ = nullptr;
    wxCheckBox* regularExpressions_ = nullptr;

    friend class CFindDlg;
    friend class CReplaceDlg;
};

class CFindDlg final : public SearchWindow {
  public:
    CFindDlg(wxWindow* parent, std::unique_ptr<FindDialog> logic, KeyHandler onKey);

  private:
    std::unique_ptr<FindDialog> logic_;
};

class CReplaceDlg final : public SearchWindow {
  public:
    CReplaceDlg(wxWindow* parent, std::unique_ptr<ReplaceDialog> logic, KeyHandler onKey);

  private:
    void addButtons();
    void selectionOnlyToggled();
    std::string replacement() const;

    std::unique_ptr<ReplaceDialog> logic_;
    wxComboBox* replacement_ = nullptr;
    wxCheckBox* inSelection_ = nullptr;
    wxButton* next_ = nullptr;
    wxButton* previous_ = nullptr;
    wxButton* replace_ = nullptr;
};

}  // namespace korvant::ui
