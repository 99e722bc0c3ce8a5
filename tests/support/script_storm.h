// Many scripts through the compiler, in child processes, so that one that ends the process is found
// and named.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace korvant::test {

struct StormOptions {
    std::size_t perProcess = 250;
    std::size_t perEngine = 60;  ///< then a fresh engine
    bool run = true;             ///< what builds is run under strict limits
    unsigned secondsForOne = 20;
};

struct StormResult {
    struct Finding {
        std::size_t index;
        std::string what;  ///< "signal 11", "no message with a place", ...
        std::string script;
    };
    std::size_t scripts = 0, built = 0, finished = 0;
    std::vector<Finding> findings;

    /// Counts in one line, then each finding with its script.
    std::string text() const;
};

/// Compiles script(0) to script(count - 1), and runs what builds. Each must give messages with
/// places, or build and end; behind every few the next good script must build and run.
StormResult storm(std::size_t count, const std::function<std::string(std::size_t)>& script,
                  const StormOptions& options = {});

/// How many scripts of each kind a test tries: `usual`, or as KORVANT_STORM says.
std::size_t stormCount(std::size_t usual);
/// The seeds: one that is always the same, or 1 to KORVANT_STORM_SEEDS.
std::vector<std::uint64_t> stormSeeds();

}  // namespace korvant::test
