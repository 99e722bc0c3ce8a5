// Breakpoints: what is wanted, where they stand in the built script, and when they stop.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "debug/code_lines.h"
#include "debug/stop_rules.h"

namespace korvant {

enum class BreakpointKind { line, function, data };

/// What a user wants.
struct BreakpointWish {
    BreakpointKind kind = BreakpointKind::line;
    ScriptPlace place;   ///< of a line breakpoint
    std::string name;    ///< the function, or the expression whose value is watched
    unsigned calls = 0;  ///< of an expression: its names are those of the call that so many, itself
                         ///< included, lead to; 0: of the innermost one
    bool enabled = true;
    std::string condition;     ///< a script expression; empty: none
    std::string hitCondition;  ///< "N", "==N", ">=N", ">N", "<N", "<=N", "%N"; empty: none
    std::string logText;       ///< {expressions} in it; not empty: logs and does not stop
};

/// What became of it.
struct Breakpoint {
    int id = 0;  ///< unique in its book, from 1
    BreakpointWish wish;
    bool verified = false;
    ScriptPlace resolved;    ///< where it stops
    std::string reason;      ///< why it is not verified, or what is wrong with its texts
    std::uint32_t hits = 0;  ///< passes with a true condition since the run began
    std::string lastValue;   ///< of a data breakpoint
    bool hasLastValue = false;
};

/// A hit condition that has been read.
class HitCondition {
  public:
    /// False when the text is none.
    static bool read(std::string_view text, HitCondition& condition);
    bool holds(std::uint32_t hits) const;

  private:
    enum class Kind { none, equal, atLeast, more, atMost, less, every };
    Kind kind_ = Kind::none;
    std::uint32_t number_ = 0;
};

/// Script's thread only.
class BreakpointBook {
  public:
    /// Replaces all line breakpoints of one source; ids in the order of the wishes.
    std::vector<int> setLines(const std::string& source, std::vector<BreakpointWish> wishes);
    /// Replaces all breakpoints of functions, or of data.
    std::vector<int> setOthers(BreakpointKind kind, std::vector<BreakpointWish> wishes);
    int add(BreakpointWish wish);
    bool remove(int id);
    bool change(int id, BreakpointWish wish);
    void clear();

    const std::vector<Breakpoint>& all() const noexcept { return breakpoints_; }
    const Breakpoint* find(int id) const;
    Breakpoint* find(int id);

    /// Where they stand in what was built; null: nothing is built, none is verified. Ids whose
    /// state has changed.
    std::vector<int> resolve(std::shared_ptr<const CodeLines> code);
    const std::shared_ptr<const CodeLines>& code() const noexcept { return code_; }
    /// Hits start at 0 again, data breakpoints forget what they saw.
    void beginRun();

    /// Lines of enabled breakpoints, of every source together, ascending: what a run must look at.
    std::vector<std::int32_t> lines() const;
    bool watchesData() const;
    /// Enabled and verified breakpoints at a line.
    std::vector<Breakpoint*> at(const std::string& source, std::int32_t line);
    /// The same into a list that is used again and again.
    void findAt(const std::string& source, std::int32_t line, std::vector<Breakpoint*>& found);
    /// Breakpoints of the function with the engine's number `functionId`.
    std::vector<Breakpoint*> atEntry(int functionId);
    std::vector<Breakpoint*> ofData();

  private:
    template <class Which>
    std::vector<Breakpoint> take(Which which);
    std::vector<int> replace(std::vector<Breakpoint> old, std::vector<BreakpointWish> wishes);
    Breakpoint make(BreakpointWish wish);
    bool resolveOne(Breakpoint& breakpoint) const;
    void resolveLine(Breakpoint& breakpoint) const;
    void resolveFunction(Breakpoint& breakpoint) const;

    std::vector<Breakpoint> breakpoints_;
    std::shared_ptr<const CodeLines> code_;
    int lastId_ = 0;
};

}  // namespace korvant
