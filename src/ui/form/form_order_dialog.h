// Puts the elements of a group in another order.
#pragma once

#include <wx/arrstr.h>
#include <wx/dialog.h>

#include <cstdint>
#include <vector>

#include "object/form/form_texts.h"
#include "ui/kit/guarded_window.h"

class wxButton;
class wxListBox;
class wxSizer;

namespace korvant::ui {

/// Alt with the arrows, Home and End moves the chosen element.
class CListOrderDialog : public Guarded<wxDialog> {
  public:
    CListOrderDialog(wxWindow* parent, const wxArrayString& elements, int current,
                     std::int32_t locale);

    /// For each new place the index of the element that goes there.
    const std::vector<std::int32_t>& order() const { return order_; }

  private:
    wxButton* addButton(wxSizer& column, FormText caption, void (CListOrderDialog::*move)());
    void up() { moveTo(chosen() - 1); }
    void down() { moveTo(chosen() + 1); }
    void first() { moveTo(0); }
    void last() { moveTo(static_cast<int>(order_.size()) - 1); }
    int chosen() const;
    void moveTo(int place);
    void update();
    void onKey(wxKeyEvent& event);

    const std::int32_t locale_;
    std::vector<std::int32_t> order_;
    wxListBox* list_;
    wxButton* up_;
    wxButton* down_;
    wxButton* first_;
    wxButton* last_;
};

}  // namespace korvant::ui
