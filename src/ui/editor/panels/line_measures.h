// What was measured of a run, in a margin of the text.
#pragma once

#include <vector>

#include "editor/stops/run_measures.h"
#include "ui/kit/look.h"

class wxStyledTextCtrl;

namespace korvant::ui {

class LineMeasures {
  public:
    LineMeasures(wxStyledTextCtrl& control, const Look& look) : control_(control), look_(look) {}

    /// Nothing to show takes the margin away.
    void show(const std::vector<RunMeasures::Line>& lines);

  private:
    wxStyledTextCtrl& control_;
    const Look& look_;
    bool shown_ = false;
};

}  // namespace korvant::ui
