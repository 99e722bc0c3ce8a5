// The form of an object with one class or none.
#pragma once

#include "ui/form/form_window.h"

namespace korvant::ui {

class CListCtrlExDialog : public FormWindow {
  public:
    CListCtrlExDialog(wxWindow* parent, EditSession& session);

  protected:
    int activePage() const override { return 0; }
    CListCtrlExPage& page(int) override { return *page_; }
    void showPage(int) override {}
    /// The rows themselves say it.
    void showSeverity(int, Severity) override {}

  private:
    CListCtrlExPage* page_;
};

}  // namespace korvant::ui
