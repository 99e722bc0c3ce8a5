// What the benchmarks of windows share.
#pragma once

#include <benchmark/benchmark.h>

#include <ctime>

namespace korvant_bench {

/// Ends a benchmark that cannot run. Its loop is begun all the same: where one repetition began and
/// another did not, the library sees different counts of iterations and ends the process.
void giveUp(benchmark::State& state, const char* why);

/// Starts the toolkit; gives the benchmark up where there is no display, or no longer.
bool onScreen(benchmark::State& state);

/// Of this process's time, so that a busy machine and a slow display do not count.
double millisecondsSince(std::clock_t start);

/// Settings and kept files of the editor in a folder that goes with this.
class OwnFolders {
  public:
    OwnFolders();
    ~OwnFolders();
    OwnFolders(const OwnFolders&) = delete;
    OwnFolders& operator=(const OwnFolders&) = delete;
};

}  // namespace korvant_bench
