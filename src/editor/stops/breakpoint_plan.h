// What breakpoints can do beyond stopping every time: conditions of the script's language, passes,
// printing, being switched off. Beside the classic ones, which are lines with a marker.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "debug/debug_session.h"
#include "editor/stops/breakpoints.h"
#include "editor/stops/line_shift.h"

namespace korvant {

/// The wishes for one line. At most one of the texts is used: what it prints, else the condition,
/// else the passes.
struct BreakpointWishes {
    bool enabled = true;
    std::string condition;
    std::int32_t passes = 0;  ///< stops at this pass and all later ones; 0: at every one
    std::string prints;       ///< with {expressions} in it
    bool plain() const { return enabled && condition.empty() && passes == 0 && prints.empty(); }
    bool operator==(const BreakpointWishes&) const = default;
};

/// One line with a breakpoint, as lists and margins show it.
struct PlannedBreakpoint {
    std::int32_t line = 0;  ///< 1-based, in the text as it is now
    BreakpointWishes wishes;
    std::string classicCondition;
    bool verified = true;  ///< there is code on the line, as far as is known
};

class BreakpointPlan {
  public:
    BreakpointPlan(const TextControl& editor, Breakpoints& breakpoints)
        : editor_(editor), breakpoints_(breakpoints) {}

    /// Ascending. `code` may be null: nothing is built. `source`: what that calls this text.
    std::vector<PlannedBreakpoint> all(const CodeLines* code, const std::string& source = {}) const;
    BreakpointWishes wishesAt(std::int32_t line) const;
    /// Makes a breakpoint there if there is none.
    void change(std::int32_t line, const BreakpointWishes& wishes);
    void remove(std::int32_t line);
    void toggle(std::int32_t line);
    void switchOnOff(std::int32_t line);
    /// All on, or all off when all are on.
    void switchAll();
    void removeAll();
    bool has(std::int32_t line) const;

    /// The ones that are more than a stop at a line, for a run.
    std::vector<BreakpointWish> refined() const;
    /// All that stop or print, for a run of another text that this one belongs to.
    std::vector<BreakpointWish> active() const;
    void follow(const LineShift& shift);
    void reset() { planned_.clear(); }

  private:
    struct Planned {
        std::int32_t line = 0;
        BreakpointWishes wishes;
    };
    std::vector<std::int32_t> classicLines() const;
    const Planned* find(std::int32_t line) const;
    void put(std::int32_t line, const BreakpointWishes& wishes);

    const TextControl& editor_;
    Breakpoints& breakpoints_;
    std::vector<Planned> planned_;
};

}  // namespace korvant
