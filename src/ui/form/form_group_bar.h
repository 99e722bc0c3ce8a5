// The elements of a group, above the rows of its page.
#pragma once

#include <wx/panel.h>

#include "object/form/edit_session.h"
#include "object/form/form_texts.h"
#include "ui/form/form_host.h"
#include "ui/kit/guarded_window.h"

class wxBoxSizer;
class wxButton;
class wxChoice;

namespace korvant::ui {

/// Chooses the element that the rows show, and adds, copies, removes and orders elements as far as
/// the script allows it.
class FormGroupBar : public Guarded<wxPanel> {
  public:
    FormGroupBar(wxWindow* parent, EditSession& session, CListCtrlEx& list, FormHost& host);

    /// Shows the elements as they are now.
    void update();

  private:
    wxButton* addButton(FormText caption, bool shown);
    void onSize(wxSizeEvent& event);
    bool run(bool (EditSession::*action)(int));
    void runAndFill(bool (EditSession::*action)(int));
    void chooseElement(int element);
    void order();
    void done();

    EditSession& session_;
    CListCtrlEx& list_;
    FormHost& host_;
    wxBoxSizer* parts_ = nullptr;  ///< choice and buttons: beside or below each other
    wxBoxSizer* buttons_ = nullptr;
    wxChoice* elements_ = nullptr;
    wxButton* add_ = nullptr;
    wxButton* copy_ = nullptr;
    wxButton* remove_ = nullptr;
    wxButton* order_ = nullptr;
};

}  // namespace korvant::ui
