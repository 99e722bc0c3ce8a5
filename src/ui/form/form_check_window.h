// Everything that is wrong with a form, and the way to it.
#pragma once

#include <wx/dialog.h>

#include <string>
#include <vector>

#include "object/form/edit_session.h"
#include "ui/kit/guarded_window.h"

namespace korvant::ui {

class HtmlView;

/// Closes when a link is followed. The arrows and Tab walk along the links, Return follows.
class FormCheckWindow : public Guarded<wxDialog> {
  public:
    FormCheckWindow(wxWindow* parent, EditSession& session);

    /// The link that was followed; empty when the window was just closed.
    std::string ask();

  private:
    void show();
    void step(int by);
    void follow(const std::string& link);
    void onKey(wxKeyEvent& event);

    const std::string summary_;
    std::vector<std::string> links_;
    int chosen_ = -1;  ///< index in links_
    std::string followed_;
    HtmlView* view_;
};

}  // namespace korvant::ui
