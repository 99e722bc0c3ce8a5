// A page of a form: the bar of a group, the rows, and what the selected row means.
#pragma once

#include <wx/panel.h>

#include <cstdint>

#include "object/form/edit_session.h"
#include "ui/form/form_host.h"

class wxSplitterEvent;
class wxSplitterWindow;

namespace korvant::ui {

class FormGroupBar;
class FormHeader;
class HtmlView;

/// Empty until it is first shown.
class CListCtrlExPage : public wxPanel {
  public:
    CListCtrlExPage(wxWindow* parent, EditSession& session, int page, FormHost& host);

    /// Null until the page is first shown.
    CListCtrlEx* list() { return list_; }
    /// To be called when the page is shown; makes the rows the first time.
    void activate();
    void apply(const EditChanges& changes);
    void describe(std::int32_t property);
    /// Gives the keyboard to the description, or back to the rows.
    void switchToDescription();
    bool inDescription() const;

  private:
    void makeContent();
    wxWindow* makeUpper(wxWindow* parent);
    void fitDescription();
    int sashPosition(int room);
    int descriptionHeight(int room);
    void onSash(wxSplitterEvent& event);

    EditSession& session_;
    const int page_;
    FormHost& host_;
    FormGroupBar* bar_ = nullptr;
    FormHeader* header_ = nullptr;
    CListCtrlEx* list_ = nullptr;
    wxSplitterWindow* splitter_ = nullptr;
    int draggedHeight_ = 0;  ///< of the description, as the user wants it; 0: as its text needs
    HtmlView* description_ = nullptr;
};

}  // namespace korvant::ui
