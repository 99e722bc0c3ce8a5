// What a run executed and where it spent its time, counted, sampled and written to files.
#pragma once

#include <string>
#include <vector>

#include "debug/debug_session.h"

namespace korvant {

class RunObserver {
  public:
    /// Where it is written to; empty: not wanted.
    struct Files {
        std::string coverage;  ///< in lcov's form
        std::string profile;   ///< collapsed stacks
        bool wanted() const { return !coverage.empty() || !profile.empty(); }
    };
    struct Report {
        std::string summary;  ///< for people; lines
        std::vector<std::string> failures;
    };

    explicit RunObserver(Files files) : files_(std::move(files)) {}
    RunObserver(const RunObserver&) = delete;
    RunObserver& operator=(const RunObserver&) = delete;

    /// Counts and samples what is run under `session` from here on, which lives until finish().
    /// What was seen before is forgotten. Not while something runs.
    void watch(DebugSession& session);
    /// Writes what was seen, however the run ended; nothing where nothing was built. `mainPath`
    /// stands for the main text.
    Report finish(DebugSession& session, const std::string& mainPath);

  private:
    Files files_;
    Coverage coverage_{kMainSource};
    Profiler profiler_;
};

}  // namespace korvant
