// What is wrong with a line, told at its end where there is room.
#pragma once

#include <vector>

#include "language/diagnostics.h"
#include "ui/kit/look.h"

class wxFocusEvent;
class wxRect;
class wxStyledTextCtrl;

namespace korvant::ui {

class LineNote;

class LineNotes {
  public:
    LineNotes(wxStyledTextCtrl& control, const Look& look);
    ~LineNotes();
    LineNotes(const LineNotes&) = delete;
    LineNotes& operator=(const LineNotes&) = delete;

    /// The first problem of each line.
    void show(const std::vector<Diagnostic>& problems);
    /// Puts them where their lines are now; none on the caret's line and none in a box's place.
    void place();
    void relook();

  private:
    bool boxStandsIn(const wxRect& place) const;
    void onFocus(wxFocusEvent& event);

    wxStyledTextCtrl& control_;
    const Look& look_;
    std::vector<Diagnostic> problems_;  ///< one a line, ascending
    std::vector<LineNote*> notes_;      ///< children of the control, made when needed
};

}  // namespace korvant::ui
