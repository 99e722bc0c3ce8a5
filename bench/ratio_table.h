// The table that the benchmarks end in: each row is a ratio of two measurements of one run.
#pragma once

#include <benchmark/benchmark.h>

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace korvant_bench {

/// One line of the table: median time of the benchmarks whose names begin with `numerator`
/// over that of `denominator`, as the geometric mean over the cases.
///
/// A prefix that ends with "/" is followed by the name of the case, and both sides are
/// matched by case; a denominator without "/" names one benchmark that stands for every
/// case. Time is processor time, of all threads where the benchmark says so, or wall-clock time
/// where it uses real time.
struct RatioRow {
    const char* section;
    const char* figure;
    double goal;  ///< met when the ratio is not above it; 0 when there is no goal
    const char* numerator;
    const char* denominator;
    const char* limitedBy = "";  ///< shown where the goal is missed: what stands in the way
};

/// One line whose figure is not a ratio: the median of a user counter, the worst over the
/// benchmarks whose names begin with `prefix`.
struct CounterRow {
    const char* section;
    const char* figure;
    double goal;  ///< met when the counter is not above it; 0 when there is no goal
    const char* prefix;
    const char* counter;
    const char* limitedBy = "";
};

/// Rows appear in the order of their declaration within a file; sections stay together.
bool addRow(const RatioRow& row);
bool addRow(const CounterRow& row);

#define KORVANT_BENCH_JOIN2(a, b) a##b
#define KORVANT_BENCH_JOIN(a, b) KORVANT_BENCH_JOIN2(a, b)
#define RATIO_ROW(...)                                                     \
    [[maybe_unused]] static const bool KORVANT_BENCH_JOIN(row, __LINE__) = \
        ::korvant_bench::addRow(::korvant_bench::RatioRow{__VA_ARGS__})
#define COUNTER_ROW(...)                                                   \
    [[maybe_unused]] static const bool KORVANT_BENCH_JOIN(row, __LINE__) = \
        ::korvant_bench::addRow(::korvant_bench::CounterRow{__VA_ARGS__})

/// Gathers every repetition and prints the table at the end: figure, goal, and whether it is met
/// or what stands in the way.
class RatioReporter : public benchmark::BenchmarkReporter {
  public:
    /// With `details`, the median of every benchmark follows the table.
    explicit RatioReporter(bool details) : details_(details) {}

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    struct Samples {
        std::vector<double> nanoseconds;
        std::map<std::string, std::vector<double>> counters;
        std::string error;
    };
    struct Outcome {
        double figure = 0;
        int cases = 0;
        std::string error;
    };

    Outcome outcomeOf(const RatioRow& row) const;
    Outcome outcomeOf(const CounterRow& row) const;
    const Samples* partnerOf(const RatioRow& row, const std::string& caseName) const;
    template <class AnyRow>
    void printRow(std::ostream& out, const AnyRow& row, const Outcome& outcome) const;
    void printDetails(std::ostream& out) const;

    bool details_;
    std::map<std::string, Samples> samples_;
};

}  // namespace korvant_bench
