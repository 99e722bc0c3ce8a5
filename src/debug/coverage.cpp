#include "debug/coverage.h"

#include <algorithm>
#include <set>

namespace korvant {

namespace {

constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

}  // namespace

void Coverage::count(asIScriptContext& context) noexcept {
    asIScriptFunction* const function = currentFunction(context);
    if (function == nullptr) return;
    if (function != last_) {
        lastSlot_ = slotOf(*function);
        last_ = function;
    }
    if (lastSlot_ == kNoSlot) return;
    int column = 0;
    const std::int32_t line = context.GetLineNumber(0, &column);
    if (line <= 0) return;
    // The engine calls twice for the first statement of a function, and for the last of a run.
    const Place here{function, line, column};
    // A function that calls itself in its first statement comes in pairs.
    second_ = !second_ && here == counted_;
    if (second_) return;
    counted_ = here;
    std::vector<std::uint64_t>& hits = counts_[lastSlot_].hits;
    const auto index = static_cast<std::size_t>(line);
    if (index >= hits.size() && !grow(hits, index)) return;
    ++hits[index];
}

bool Coverage::grow(std::vector<std::uint64_t>& hits, std::size_t index) noexcept {
    try {
        hits.resize(std::max(index + 1, hits.size() * 2));
        return true;
    } catch (...) {
        return false;  // without memory a line is not counted
    }
}

std::size_t Coverage::slotOf(asIScriptFunction& function) noexcept {
    try {
        const char* const section = function.GetScriptSectionName();
        std::string source = section != nullptr ? section : "";
        if (source == mainSource_) source.clear();
        const auto found = std::find_if(counts_.begin(), counts_.end(),
                                        [&](const Counts& c) { return c.source == source; });
        if (found != counts_.end()) return static_cast<std::size_t>(found - counts_.begin());
        counts_.push_back({std::move(source), {}});
        return counts_.size() - 1;
    } catch (...) {
        return kNoSlot;
    }
}

std::vector<Coverage::Line> Coverage::lines(const CodeLines& code,
                                            const std::string& source) const {
    const auto found = std::find_if(counts_.begin(), counts_.end(),
                                    [&](const Counts& c) { return c.source == source; });
    std::vector<Line> lines;
    for (const std::int32_t line : code.lines(source)) {
        const auto index = static_cast<std::size_t>(line);
        const bool ran = found != counts_.end() && index < found->hits.size();
        lines.push_back({line, ran ? found->hits[index] : 0});
    }
    return lines;
}

std::string Coverage::lcov(const CodeLines& code, const std::string& mainPath) const {
    std::set<std::string> sources;
    for (const CodeLines::Function& function : code.functions()) sources.insert(function.source);
    std::string text = "TN:\n";
    for (const std::string& source : sources) {
        text += "SF:" + (source.empty() ? mainPath : source) + "\n";
        text += functionRecords(code, source);
        std::size_t hit = 0;
        const std::vector<Line> all = lines(code, source);
        for (const Line& line : all) {
            text += "DA:" + std::to_string(line.line) + "," + std::to_string(line.hits) + "\n";
            hit += line.hits > 0 ? 1 : 0;
        }
        text += "LF:" + std::to_string(all.size()) + "\nLH:" + std::to_string(hit) +
                "\nend_of_record\n";
    }
    return text;
}

/// A function ran when its first line did.
std::string Coverage::functionRecords(const CodeLines& code, const std::string& source) const {
    std::string text;
    std::size_t found = 0;
    std::size_t hit = 0;
    const std::vector<Line> all = lines(code, source);
    for (const CodeLines::Function& function : code.functions()) {
        if (function.source != source) continue;
        const auto line = std::find_if(all.begin(), all.end(), [&](const Line& l) {
            return l.line == function.lines.front();
        });
        const std::uint64_t hits = line == all.end() ? 0 : line->hits;
        text += "FN:" + std::to_string(function.begin) + "," + function.name +
                "\nFNDA:" + std::to_string(hits) + "," + function.name + "\n";
        ++found;
        hit += hits > 0 ? 1 : 0;
    }
    return text + "FNF:" + std::to_string(found) + "\nFNH:" + std::to_string(hit) + "\n";
}

std::string Coverage::unknownLines(const CodeLines& code) const {
    std::string text;
    for (const Counts& counts : counts_)
        for (std::size_t line = 0; line < counts.hits.size(); ++line)
            if (counts.hits[line] > 0 &&
                !code.hasCode(counts.source, static_cast<std::int32_t>(line)))
                text += counts.source + ":" + std::to_string(line) + " ";
    return text;
}

std::string Coverage::summary(const CodeLines& code) const {
    std::size_t found = 0;
    std::size_t hit = 0;
    std::set<std::string> sources;
    for (const CodeLines::Function& function : code.functions()) sources.insert(function.source);
    for (const std::string& source : sources)
        for (const Line& line : lines(code, source)) {
            ++found;
            hit += line.hits > 0 ? 1 : 0;
        }
    const std::size_t percent = found == 0 ? 100 : hit * 100 / found;
    return std::to_string(hit) + " of " + std::to_string(found) + " lines (" +
           std::to_string(percent) + " %)";
}

void Coverage::clear() {
    counts_.clear();
    forgetFunctions();
}

}  // namespace korvant
