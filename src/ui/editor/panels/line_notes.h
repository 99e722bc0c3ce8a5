// What is wrong with a line, told at its end where there is room.
#pragma once

#include <vector>

#include "language/diagnostics.h"
#include "ui/kit/look.h"

class wxStyledTextCtrl;

namespace korvant::ui {

class LineNote;

class LineNotes {
  public:
    LineNotes(wxStyledTextCtrl& control, const Look& look) : control_(control), look_(look) {}

    /// The first problem of each line.
    void show(const std::vector<Diagnostic>& problems);
    /// Puts them where their lines are now; none on the caret's line.
    void place();
    void relook();

  private:
    wxStyledTextCtrl& control_;
    const Look& look_;
    std::vector<Diagnostic> problems_;  ///< one a line, ascending
    std::vector<LineNote*> notes_;      ///< children of the control, made when needed
};

}  // namespace korvant::ui
