// The form of an object with two or more classes: a page for each.
#pragma once

#include <vector>

#include "ui/form/form_window.h"

class wxBookCtrlEvent;
class wxNotebook;

namespace korvant::ui {

class CListCtrlExSheet : public FormWindow {
  public:
    CListCtrlExSheet(wxWindow* parent, EditSession& session);

  protected:
    int activePage() const override;
    CListCtrlExPage& page(int page) override { return *pages_[static_cast<std::size_t>(page)]; }
    void showPage(int page) override;
    void showSeverity(int page, Severity severity) override;
    bool hidesMarks() const override;

  private:
    void onChanging(wxBookCtrlEvent& event);

    wxNotebook* book_;
    std::vector<CListCtrlExPage*> pages_;
};

}  // namespace korvant::ui
