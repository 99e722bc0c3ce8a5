#include "debug/coverage.h"

#include <algorithm>
#include <set>

#include "debug/frames.h"

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
        Counted& counted = *countedOf(*function, length);
        statements_ = counted.statements.data();
        calls_ = &counted.calls;
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
    counted->declaration = declarationOf(function);
    counted->statements.resize(length);
    counted_.push_back(std::move(counted));
    return known = counted_.back().get();
}

void Coverage::forgetFunctions() noexcept {
    ofFunction_.clear();
    code_ = before_ = nullptr;
    length_ = 0;
    statements_ = nullptr;
    calls_ = nullptr;
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
    std::vector<std::int32_t> known = code.lines(source);
    for (std::size_t line = 1; line < hits.size(); ++line)
        if (hits[line] > 0) known.push_back(static_cast<std::int32_t>(line));
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    std::vector<Line> lines;
    for (const std::int32_t line : known) {
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

/// Several functions without a name may have one declaration: their lines tell them apart.
std::uint64_t Coverage::callsOf(const CodeLines::Function& function) const {
    std::uint64_t calls = 0;
    for (const auto& counted : counted_) {
        if (counted->source != function.source || counted->declaration != function.declaration)
            continue;
        const auto ran =
            std::find_if(counted->statements.begin(), counted->statements.end(),
                         [](const Statement& statement) { return statement.line > 0; });
        const bool here = ran == counted->statements.end() ||
                          (ran->line >= function.begin && ran->line <= function.lines.back());
        if (here) calls += counted->calls;
    }
    return calls;
}

/// The tools take functions of one name for one.
std::string Coverage::functionRecords(const CodeLines& code, const std::string& source) const {
    std::map<std::string, int> names;
    for (const CodeLines::Function& function : code.functions())
        if (function.source == source) ++names[function.name];
    std::string text;
    std::size_t found = 0;
    std::size_t hit = 0;
    for (const CodeLines::Function& function : code.functions()) {
        if (function.source != source) continue;
        const std::string line = std::to_string(function.begin);
        const std::string name =
            names[function.name] == 1 ? function.name : function.declaration + ":" + line;
        const std::uint64_t calls = callsOf(function);
        text += "FN:" + line + "," + name + "\nFNDA:" + std::to_string(calls) + "," + name + "\n";
        ++found;
        hit += calls > 0 ? 1 : 0;
    }
    return text + "FNF:" + std::to_string(found) + "\nFNH:" + std::to_string(hit) + "\n";
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
