// How often the lines of a script ran, and in which functions its time went; for the margin.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "debug/debug_session.h"

namespace korvant {

class RunMeasures {
  public:
    /// `session` must outlive it.
    explicit RunMeasures(DebugSession& session) : session_(session) {}
    ~RunMeasures() { want(false, false); }
    RunMeasures(const RunMeasures&) = delete;
    RunMeasures& operator=(const RunMeasures&) = delete;

    /// What the next run measures. Not while one is under way.
    void want(bool hits, bool shares);
    bool wantsHits() const noexcept { return hits_; }
    bool wantsShares() const noexcept { return shares_; }
    /// A run begins; what was measured before is gone.
    void begin();
    /// Another number for each run.
    std::uint64_t runs() const noexcept { return runs_; }

    struct Line {
        std::int32_t line = 0;  ///< 1-based, in the text that ran
        std::string text;       ///< "12", "43 %", "12  43 %"
        bool neverRan = false;
    };
    /// Ascending; empty when nothing was measured.
    std::vector<Line> lines() const;

  private:
    DebugSession& session_;
    Coverage coverage_{"script"};
    Profiler profiler_;
    std::uint64_t runs_ = 0;
    bool hits_ = false, shares_ = false;
};

/// 950, "12k", "3M": what a margin has room for.
std::string shortCount(std::uint64_t count);

}  // namespace korvant
