// What a user sees first: how a script is run, stopped and stepped through, and where to begin.
#pragma once

#include <functional>
#include <vector>

#include "ui/kit/painted_button.h"
#include "ui/kit/painted_check.h"

namespace korvant::ui {

class WelcomePane : public PaintedWindow {
  public:
    struct Actions {
        std::function<void()> create, open, examples, manual;
        std::function<void(bool)> showAtStart;
        std::function<void()> closed;
    };

    /// `tour`: the script beside it is the tour.
    WelcomePane(wxWindow* parent, const Look& look, bool showAtStart, bool tour, Actions actions);

    /// Another script stands beside it.
    void leaveTour();
    bool isOfTour() const { return tour_; }

  private:
    void place();
    void addLink(Icon icon, const wxString& label, const wxString& key, std::function<void()> act);
    void paintStep(wxGraphicsContext& context, int step, int y);
    void paint(wxGraphicsContext& context) override;

    std::vector<PaintedButton*> links_;
    PaintedButton* close_;
    PaintedCheck* atStart_;
    bool tour_;
};

}  // namespace korvant::ui
