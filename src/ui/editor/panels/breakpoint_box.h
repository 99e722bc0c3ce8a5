// What one breakpoint does, under its line: stops every time, when, after some passes, or prints.
// It stands over the window's parts, and so has room where the text has little.
#pragma once

#include <functional>

#include "editor/stops/breakpoint_plan.h"
#include "ui/kit/painted_button.h"
#include "ui/kit/painted_check.h"

class wxStyledTextCtrl;
class wxTextCtrl;

namespace korvant::ui {

class BreakpointBox : public PaintedWindow {
  public:
    struct Actions {
        std::function<void(int line, const BreakpointWishes&)> done;
        std::function<void(int line)> remove;
        std::function<void()> closed;
    };

    BreakpointBox(wxWindow& frame, wxStyledTextCtrl& control, const Look& look, Actions actions);

    /// For the 1-based `line`.
    void open(int line, const BreakpointWishes& wishes);
    void close();
    /// Under its line, where the window is now.
    void place();
    PaintedButton* doneButton() const { return done_; }

  private:
    enum Choice { kEveryTime, kWhen, kAfter, kPrints, kChoices };

    void makeChoices();
    void makeEnd();
    void placeParts();
    void placeField(Choice choice, int y);
    wxRect fieldPlace(Choice choice) const;
    void colourFields();
    void choose(Choice choice, bool focus);
    void onKey(wxKeyEvent& event);
    void take();
    BreakpointWishes wishes() const;
    wxTextCtrl* fieldOf(Choice choice) const { return fields_[choice]; }
    void paint(wxGraphicsContext& context) override;

    wxStyledTextCtrl& control_;
    Actions actions_;
    PaintedCheck* choices_[kChoices] = {};
    wxTextCtrl* fields_[kChoices] = {};
    PaintedCheck* on_ = nullptr;
    PaintedButton *close_ = nullptr, *delete_ = nullptr, *done_ = nullptr;
    Choice choice_ = kEveryTime;
    int line_ = 0;
};

}  // namespace korvant::ui
