// Where the lines of the script that runs are in a text that was edited since it started.
#pragma once

#include <cstdint>
#include <vector>

#include "editor/control/line_number.h"

namespace korvant {

/// Running lines are those that the script engine counts, editor lines those that the user sees.
class RunLineMap {
  public:
    /// Of a text of `lines` lines that has just been started.
    void begin(int lines);
    void follow(const LineShift& shift);
    /// The text is again what was started; true if lines had moved meanwhile.
    bool undo();

    ScriptLine editorLine(ScriptLine running) const;
    /// The running lines of breakpoints; one on a line that was added since is left out.
    std::vector<std::int32_t> runningLines(const std::vector<std::int32_t>& editorLines) const;

  private:
    int lines_ = 0;
    std::vector<std::int32_t> moved_;  ///< by running line; empty while nothing has moved
};

}  // namespace korvant
