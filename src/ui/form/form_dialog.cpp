#include "ui/form/form_dialog.h"

#include "ui/form/form_page.h"

namespace korvant::ui {

CListCtrlExDialog::CListCtrlExDialog(wxWindow* parent, EditSession& session)
    : FormWindow(parent, session), page_(new CListCtrlExPage(this, session, 0, *this)) {
    layOut(page_);
}

}  // namespace korvant::ui
