// What the sheet of pages and the single dialog have in common.
#pragma once

#include <wx/dialog.h>

#include "object/form/edit_session.h"
#include "object/form/form_texts.h"
#include "ui/form/form_host.h"
#include "ui/kit/guarded_window.h"

class wxBitmapButton;
class wxBoxSizer;
class wxSearchCtrl;

namespace korvant::ui {

class CListCtrlExPage;
class FormPageLinks;
class FormReport;

/// Search field, pages, and the buttons Check, OK and Cancel. OK is refused while a field holds a
/// refused text or an error stands anywhere; everything else only forwards to the session.
class FormWindow : public Guarded<wxDialog>, public FormHost {
  public:
    FormWindow(wxWindow* parent, EditSession& session);
    ~FormWindow() override;

    /// Shows the form until it is closed. True when the user confirmed.
    bool edit();

    void showChanges() override;
    void rowSelected(CListCtrlEx& list, std::int32_t property) override;
    bool goTo(const EditPlace& place) override;
    void undo() override;
    void redo() override;

  protected:
    /// Puts the body between the search field and the buttons.
    void layOut(wxWindow* body);
    /// The page was shown by the user or by showPage().
    void pageShown();
    /// What is on other pages.
    void updateLinks();

    virtual int activePage() const = 0;
    virtual CListCtrlExPage& page(int page) = 0;
    virtual void showPage(int page) = 0;
    virtual void showSeverity(int page, Severity severity) = 0;
    /// Some pages cannot be seen to have a mark.
    virtual bool hidesMarks() const { return false; }

    EditSession& session_;

  private:
    void makeSearch();
    wxSizer* makeButtons();
    wxBitmapButton* makeHistoryButton(FormText caption, const char* key);
    void drawHistoryButtons();
    CListCtrlEx* activeList();
    bool commit();

    void confirm();
    void cancel();
    void end(int result);
    bool changedByUser();
    bool showPageFound();
    void check();
    void turnPage(int by);
    void takeSearch();
    void clearSearch();
    void updateHistory();
    void onKey(wxKeyEvent& event);
    bool handleKey(const wxKeyEvent& key);
    bool handleSearchKey(const wxKeyEvent& key);
    bool handleEscape();
    bool inSearch() const;

    wxBoxSizer* column_;
    wxSearchCtrl* search_ = nullptr;
    wxString searched_;  ///< as the session has it
    wxBitmapButton* undo_ = nullptr;
    wxBitmapButton* redo_ = nullptr;
    FormPageLinks* links_ = nullptr;
    FormReport* report_ = nullptr;
};

}  // namespace korvant::ui
