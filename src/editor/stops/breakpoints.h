// Breakpoints are markers on the editor's lines, and the conditions that belong to them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "editor/control/line_number.h"
#include "editor/control/text_control.h"

namespace korvant {

/// While a script is stopped or did not build, the one marker shows the current line or the
/// errors instead; the breakpoint lines are then kept aside.
class Breakpoints {
  public:
    static constexpr std::size_t kLongestCondition = std::size_t{64} << 10;

    explicit Breakpoints(const TextControl& editor) : editor_(editor) {}

    /// The lines kept aside, 1-based, ascending.
    const std::vector<std::int32_t>& kept() const noexcept { return kept_; }
    bool markersAreArrows() const noexcept { return arrows_; }

    /// Keeps the lines with a marker aside. Deliberate: the caret goes to each of them and stays
    /// on the last.
    void keep();
    /// Brings the lines kept aside back as markers, in place of any arrows.
    void restore();
    /// Before a script is built or goes on: breakpoints are kept aside unless they are already,
    /// and every marker goes.
    void prepareRun();
    /// How breakpoints look that are shown beside marker 0.
    void setUp();
    /// The control shows this text again, after another one: marker 0 looks as it did.
    void shown() const;
    /// The marker becomes the arrow of the current line, or of errors.
    void becomeCurrentLine();
    void becomeErrors();
    void markErrors(const std::vector<ScriptLine>& lines);
    void markCurrent(ControlLine line);

    void toggle(ControlLine line);
    void remove(ControlLine line);
    /// Makes sure that `line` has a breakpoint, arrows cleared away first where it has none.
    void ensure(ControlLine line);
    /// The same, and an arrow on the line counts for nothing.
    void set(ControlLine line);
    /// Next breakpoint below or above the caret's line, without starting again at the other end.
    void gotoNext();
    void gotoPrevious();
    void deleteAll();

    /// Empty for a breakpoint without a condition.
    std::string condition(ScriptLine line) const;
    void setCondition(ScriptLine line, std::string condition);
    void clearConditions() { conditions_.clear(); }
    /// Forgets everything, for another document.
    void reset();

    /// The text has changed: conditions, and the lines kept aside, follow their lines.
    void follow(const LineShift& shift);

  private:
    enum class Look { breakpoint, currentLine, error };
    void setLook(Look look);
    void showBeside();
    bool isShown(ControlLine line) const;
    void gotoFound(std::optional<ControlLine> line);

    const TextControl& editor_;
    std::vector<std::int32_t> kept_;
    std::map<std::int32_t, std::string> conditions_;
    bool arrows_ = false;
    Look look_ = Look::breakpoint;
};

}  // namespace korvant
