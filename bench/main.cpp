// Runs every benchmark, repeated and in random order, and prints one table of ratios.
// Options of our own: --details also prints each median. The library's options, such as
// --benchmark_filter=REGEX, are passed on and win over the defaults given here.
#include <cstdio>
#include <string>
#include <vector>

#include "ratio_table.h"

int main(int argc, char** argv) {
    std::vector<std::string> words = {argv[0], "--benchmark_repetitions=9",
                                      "--benchmark_min_time=0.02",
                                      "--benchmark_enable_random_interleaving=true"};
    bool details = false;
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--details")
            details = true;
        else
            words.emplace_back(argv[i]);
    }
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    int count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) return 64;
    korvant_bench::RatioReporter reporter(details);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
}
