#include "editor/stops/run_measures.h"

#include <map>

namespace korvant {

std::string shortCount(std::uint64_t count) {
    static constexpr const char* kUnits[] = {"", "k", "M", "G", "T"};
    std::size_t unit = 0;
    while (count >= 10'000 && unit + 1 < std::size(kUnits)) {
        count /= 1000;
        ++unit;
    }
    return std::to_string(count) + kUnits[unit];
}

void RunMeasures::want(bool hits, bool shares) {
    hits_ = hits;
    shares_ = shares;
    coverage_.clear();
    profiler_.clear();
    session_.setCoverage(hits ? &coverage_ : nullptr);
    session_.setProfiler(shares ? &profiler_ : nullptr);
}

void RunMeasures::begin() {
    ++runs_;
    if (hits_) coverage_.clear();
    if (shares_) profiler_.clear();
}

std::vector<RunMeasures::Line> RunMeasures::lines() const {
    const auto code = session_.code();
    if (!code || (!hits_ && !shares_)) return {};
    std::map<std::int32_t, Line> byLine;
    if (hits_)
        for (const Coverage::Line& line : coverage_.lines(*code, {}))
            byLine[line.line] = {line.line, shortCount(line.hits), line.hits == 0};
    if (shares_) {
        const auto shares = profiler_.shares();
        for (const CodeLines::Function& function : code->functions()) {
            const auto found = shares.find(function.name);
            if (found == shares.end() || !function.source.empty()) continue;
            Line& line = byLine[function.begin];
            line.line = function.begin;
            if (!line.text.empty()) line.text += "  ";
            line.text += std::to_string(static_cast<int>(found->second * 100 + 0.5)) + " %";
        }
    }
    std::vector<Line> lines;
    for (auto& [number, line] : byLine) lines.push_back(std::move(line));
    return lines;
}

}  // namespace korvant
