#include "debug/coverage.h"

#include <algorithm>
#include <set>

namespace korvant {

Coverage::Coverage(std::string mainSource) : mainSource_(std::move(mainSource)) {
    findRegisters();
}

void Coverage::learn(asIScriptContext& context, Statement& statement) noexcept {
    if (!asksInVain(context)) statement.line = currentLine(context);
}

/// Another function runs. Without memory, or where the engine's registers are not known, nothing is
/// counted.
void Coverage::enter(asIScriptContext& context, const asDWORD* position) noexcept {
    asIScriptFunction* const function = currentFunction(context);
    if (function == nullptr || position == nullptr) return;
    asUINT length = 0;
    const asDWORD* const code = function->GetByteCode(&length);
    // Where execution leaves the context it may stand anywhere.
    if (code == nullptr || position < code || position >= code + length) return;
    try {
        statements_ = countedOf(*function, length)->statements.data();
    } catch (...) {
        return;
    }
    code_ = code;
    length_ = length;
    before_ = nullptr;
    count(context);
}

Coverage::Counted* Coverage::countedOf(asIScriptFunction& function, std::size_t length) {
    Counted*& known = ofFunction_[&function];
    if (known != nullptr) return known;
    const char* const section = function.GetScriptSectionName();
    auto counted = std::make_unique<Counted>();
    counted->source = section != nullptr ? section : "";
    if (counted->source == mainSource_) counted->source.clear();
    counted->statements.resize(length);
    counted_.push_back(std::move(counted));
    return known = counted_.back().get();
}

void Coverage::forgetFunctions() noexcept {
    ofFunction_.clear();
    code_ = before_ = nullptr;
    length_ = 0;
    statements_ = nullptr;
    second_ = false;
}

Coverage::Hits Coverage::hitsOf(const std::string& source) const {
    Hits hits;
    for (const auto& counted : counted_) {
        if (counted->source != source) continue;
        for (const Statement& statement : counted->statements) {
            if (statement.line <= 0) continue;
            const auto line = static_cast<std::size_t>(statement.line);
            if (line >= hits.size()) hits.resize(line + 1);
            hits[line] += statement.hits;
        }
    }
    return hits;
}

std::vector<Coverage::Line> Coverage::lines(const CodeLines& code,
                                            const std::string& source) const {
    const Hits hits = hitsOf(source);
    std::vector<Line> lines;
    for (const std::int32_t line : code.lines(source)) {
        const auto index = static_cast<std::size_t>(line);
        lines.push_back({line, index < hits.size() ? hits[index] : 0});
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
    std::set<std::string> sources;
    for (const auto& counted : counted_) sources.insert(counted->source);
    std::string text;
    for (const std::string& source : sources) {
        const Hits hits = hitsOf(source);
        for (std::size_t line = 1; line < hits.size(); ++line)
            if (hits[line] > 0 && !code.hasCode(source, static_cast<std::int32_t>(line)))
                text += source + ":" + std::to_string(line) + " ";
    }
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
    counted_.clear();
    forgetFunctions();
}

}  // namespace korvant
