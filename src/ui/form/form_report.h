// The pop-up that says why a form cannot be confirmed yet.
#pragma once

#include <wx/eventfilter.h>
#include <wx/panel.h>

#include <string>

namespace korvant::ui {

class HtmlView;

/// Stands over its parent and takes no keyboard. Any click closes it, and so does any key; Escape
/// then does nothing else.
class FormReport : public wxPanel, private wxEventFilter {
  public:
    explicit FormReport(wxWindow* parent);
    ~FormReport() override;

    /// With its corner at `place` of the parent, moved so that all of it is seen.
    void show(std::string markup, wxPoint place);
    void close();

    bool AcceptsFocus() const override { return false; }
    bool AcceptsFocusRecursively() const override { return false; }

  private:
    int FilterEvent(wxEvent& event) override;

    HtmlView* view_;
    bool listening_ = false;
};

}  // namespace korvant::ui
