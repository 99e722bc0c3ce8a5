// The function at the caret, as a button that opens the outline below it.
#pragma once

#include "ui/kit/painted_window.h"

namespace korvant::ui {

class FunctionChooser : public PaintedWindow {
  public:
    FunctionChooser(wxWindow* parent, const Look& look, std::function<void()> open);

    /// Empty: the caret is in none.
    void setFunction(const wxString& function);
    const wxString& function() const { return function_; }
    int wantedWidth() const;
    /// The left arrow: to the tabs.
    std::function<void()> onLeft;

  private:
    void paint(wxGraphicsContext& context) override;
    void onKey(wxKeyEvent& event);
    wxString shownText() const;
    void refreshName();

    std::function<void()> open_;
    wxString function_;
};

}  // namespace korvant::ui
