// A page of a form: the bar of a group, the rows, and what the selected row means.
#pragma once

#include <wx/panel.h>

#include <cstdint>

#include "object/form/edit_session.h"
#include "ui/form/form_host.h"

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

  private:
    void makeContent();
    wxWindow* makeUpper(wxWindow* parent);

    EditSession& session_;
    const int page_;
    FormHost& host_;
    FormGroupBar* bar_ = nullptr;
    FormHeader* header_ = nullptr;
    CListCtrlEx* list_ = nullptr;
    HtmlView* description_ = nullptr;
};

}  // namespace korvant::ui
