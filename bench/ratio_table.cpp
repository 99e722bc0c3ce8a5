#include "ratio_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <variant>

namespace korvant_bench {
namespace {

using Row = std::variant<RatioRow, CounterRow>;

/// Rows are declared by static objects of several files, so the list makes itself.
std::vector<Row>& rows() {
    static std::vector<Row> all;
    return all;
}

const char* sectionOf(const Row& row) {
    return std::visit([](const auto& each) { return each.section; }, row);
}

double medianOf(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1) return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

bool beginsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::string formatted(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void printLine(std::ostream& out, const char* figure, const std::string& value,
               const std::string& goal, const std::string& verdict) {
    char line[128];
    std::snprintf(line, sizeof line, "  %-72.72s %10s %8s  ", figure, value.c_str(), goal.c_str());
    out << line << verdict << '\n';
}

std::string verdictOn(double figure, double goal, const char* limitedBy) {
    if (goal <= 0) return "";
    if (figure <= goal) return "met";
    return *limitedBy == '\0' ? "missed" : std::string("missed: ") + limitedBy;
}

/// The sections in the order in which they were first declared.
std::vector<std::string> sections() {
    std::vector<std::string> names;
    for (const Row& row : rows())
        if (std::find(names.begin(), names.end(), sectionOf(row)) == names.end())
            names.emplace_back(sectionOf(row));
    return names;
}

}  // namespace

bool addRow(const RatioRow& row) {
    rows().emplace_back(row);
    return true;
}

bool addRow(const CounterRow& row) {
    rows().emplace_back(row);
    return true;
}

bool RatioReporter::ReportContext(const Context&) {
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration) continue;
        std::string name = run.run_name.function_name;
        if (!run.run_name.args.empty()) name += "/" + run.run_name.args;
        Samples& samples = samples_[name];
        if (run.error_occurred) samples.error = run.error_message;
        const std::string& kind = run.run_name.time_type;
        const bool wallClock = !kind.empty() && kind != "process_time";
        const double seconds = wallClock ? run.real_accumulated_time : run.cpu_accumulated_time;
        if (run.iterations > 0)
            samples.nanoseconds.push_back(seconds * 1e9 / static_cast<double>(run.iterations));
        for (const auto& [counter, value] : run.counters)
            samples.counters[counter].push_back(value.value);
    }
}

const RatioReporter::Samples* RatioReporter::partnerOf(const RatioRow& row,
                                                       const std::string& caseName) const {
    std::string name = row.denominator;
    if (!name.empty() && name.back() == '/') name += caseName;
    const auto found = samples_.find(name);
    return found == samples_.end() ? nullptr : &found->second;
}

RatioReporter::Outcome RatioReporter::outcomeOf(const RatioRow& row) const {
    Outcome outcome;
    double logarithms = 0;
    const std::string prefix = row.numerator;
    for (const auto& [name, samples] : samples_) {
        if (!beginsWith(name, prefix)) continue;
        const Samples* partner = partnerOf(row, name.substr(prefix.size()));
        if (!partner) continue;
        if (!samples.error.empty()) outcome.error = name + ": " + samples.error;
        if (!partner->error.empty()) outcome.error = row.denominator + (": " + partner->error);
        logarithms += std::log(medianOf(samples.nanoseconds) / medianOf(partner->nanoseconds));
        ++outcome.cases;
    }
    if (outcome.cases > 0) outcome.figure = std::exp(logarithms / outcome.cases);
    return outcome;
}

RatioReporter::Outcome RatioReporter::outcomeOf(const CounterRow& row) const {
    Outcome outcome;
    for (const auto& [name, samples] : samples_) {
        if (!beginsWith(name, row.prefix)) continue;
        if (!samples.error.empty()) outcome.error = name + ": " + samples.error;
        const auto counter = samples.counters.find(row.counter);
        if (counter == samples.counters.end()) continue;
        const double median = medianOf(counter->second);
        outcome.figure = outcome.cases++ == 0 ? median : std::max(outcome.figure, median);
    }
    return outcome;
}

template <class AnyRow>
void RatioReporter::printRow(std::ostream& out, const AnyRow& row, const Outcome& outcome) const {
    const std::string goal = row.goal > 0 ? formatted("%.4g", row.goal) : "-";
    if (outcome.cases == 0 || !outcome.error.empty())
        printLine(out, row.figure, "-", goal, outcome.error.empty() ? "not run" : outcome.error);
    else
        printLine(out, row.figure, formatted("%.4g", outcome.figure), goal,
                  verdictOn(outcome.figure, row.goal, row.limitedBy));
}

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    for (const std::string& section : sections()) {
        out << section << '\n';
        for (const Row& row : rows()) {
            if (section != sectionOf(row)) continue;
            const Outcome outcome =
                std::visit([this](const auto& each) { return outcomeOf(each); }, row);
            std::visit([&](const auto& each) { printRow(out, each, outcome); }, row);
        }
    }
    if (details_) printDetails(out);
    out.flush();
}

void RatioReporter::printDetails(std::ostream& out) const {
    out << "Medians in nanoseconds\n";
    for (const auto& [name, samples] : samples_)
        printLine(out, name.c_str(), formatted("%.2f", medianOf(samples.nanoseconds)), "",
                  samples.error.c_str());
}

}  // namespace korvant_bench
