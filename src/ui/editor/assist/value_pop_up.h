// The value under the pointer while a script stands still, as a small tree.
#pragma once

#include "editor/stops/inspection.h"
#include "editor/stops/value_rows.h"
#include "ui/editor/assist/pop_up.h"
#include "ui/kit/painted_button.h"
#include "ui/kit/row_list.h"

namespace korvant::ui {

class ValueCard;

class ValuePopUp : public PopUp {
  public:
    ValuePopUp(wxWindow* parent, const Look& look, Inspection& inspection);

    /// False when the expression has no value here.
    bool show(const std::string& expression, const wxRect& line);
    const ValueRows& rows() const { return rows_; }
    RowList* list() const { return list_; }
    PaintedButton* watchLink() const { return watch_; }

  private:
    void layOut(const wxRect& line);
    ListRow rowOf(int index) const;

    Inspection& inspection_;
    ValueRows rows_;
    ValueCard* card_;
    RowList* list_;
    PaintedButton *watch_, *copy_;
    std::string expression_;
    wxRect line_;
    int mostRows_ = 0;  ///< more once one was opened
};

}  // namespace korvant::ui
