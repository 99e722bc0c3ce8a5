// A line below the search field: on which other pages there is something to look at.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <string>

#include "object/form/edit_session.h"

namespace korvant::ui {

class HtmlView;

/// Hidden while there is nothing to say. Each page is a link.
class FormPageLinks : public wxPanel {
  public:
    /// `choose` shows a page.
    FormPageLinks(wxWindow* parent, std::function<void(int page)> choose);

    /// `marked`: the marks of other pages are told too, for tabs that are out of sight. True when
    /// the line needs another height than before.
    bool update(const EditSession& session, int activePage, bool searching, bool marked);

    /// Fits the line to the width; true when that changed its height.
    bool fit(int width);

    /// What it says; for tests.
    wxString text() const;

  private:
    HtmlView* view_;
    std::string markup_;
    int height_ = 0;
};

}  // namespace korvant::ui
