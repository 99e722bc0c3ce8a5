#include "debug/code_lines.h"

#include <algorithm>
#include <set>

#include "debug/frames.h"
#include "debug/statement_starts.h"
#include "host/engine/program_position.h"

namespace korvant {

namespace {

/// A source whose text is not at hand is no longer.
constexpr int kLastLine = (1 << 20) - 1;
constexpr int kLastOfOthers = 1 << 17;
/// So many numbers of the engine without a function behind the last known one end the search.
constexpr int kGap = 4096;

using Functions = std::vector<asIScriptFunction*>;

std::string_view sectionOf(const asIScriptFunction& function) {
    const char* const section = function.GetScriptSectionName();
    return section != nullptr ? section : "";
}

/// Whether the engine asks anywhere in it: what it makes itself has no statements.
bool hasStatements(asIScriptFunction& function) {
    asUINT length = 0;
    const asDWORD* const code = function.GetByteCode(&length);
    for (asUINT at = 0; code != nullptr && at < length; at += codeSizeAt(code + at))
        if (asksAt(code + at)) return true;
    return false;
}

/// The engine numbers its functions; lambdas and the initialisers of global variables can be
/// reached in no other way. With those of the host's own modules that stand in other sources.
Functions functionsAround(asIScriptModule& module, std::string_view mainSource) {
    asIScriptEngine& engine = *module.GetEngine();
    Functions found;
    for (int id = 1, empty = 0; empty < kGap; ++id) {
        asIScriptFunction* const function = engine.GetFunctionById(id);
        empty = function == nullptr ? empty + 1 : 0;
        if (function == nullptr || function->GetFuncType() != asFUNC_SCRIPT) continue;
        const bool own = function->GetModule() == &module;
        const bool others = function->GetModule() != nullptr && !sectionOf(*function).empty() &&
                            sectionOf(*function) != mainSource && hasStatements(*function);
        if (own || others) found.push_back(function);
    }
    return found;
}

/// The first line from which the function finds code; 0: none. `hint` is where functions that
/// follow each other begin.
int firstLine(const asIScriptFunction& function, int hint, int lastLine) {
    const auto finds = [&function](int line) { return function.FindNextLineWithCode(line) >= 0; };
    const int longest = std::max(hint, lastLine - hint);
    for (int away = 0; away <= longest; ++away) {
        const int behind = hint + away;
        int line = behind <= lastLine && finds(behind) ? behind : hint - away;
        if (line < 1 || !finds(line)) continue;
        while (line > 1 && finds(line - 1)) --line;
        return line;
    }
    return 0;
}

std::vector<std::int32_t> linesOf(const asIScriptFunction& function, int first, int lastLine) {
    std::vector<std::int32_t> lines;
    for (int line = first; line <= lastLine; ++line) {
        const int found = function.FindNextLineWithCode(line);
        if (found < 0) break;
        if (found >= line) lines.push_back(found);
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

}  // namespace

std::shared_ptr<const CodeLines> CodeLines::of(asIScriptModule& module,
                                               const StatementStarts& mainText,
                                               std::string_view mainSource) {
    auto code = std::make_shared<CodeLines>();
    int hint = 1;
    for (asIScriptFunction* const function : functionsAround(module, mainSource)) {
        Function added;
        added.source = sectionOf(*function);
        added.foreign = function->GetModule() != &module;
        const bool isMain = added.source == mainSource;
        if (isMain) added.source.clear();
        const int lastLine = isMain ? std::min(mainText.lineCount(), kLastLine) : kLastOfOthers;
        added.begin = firstLine(*function, hint, lastLine);
        if (added.begin == 0) continue;
        added.lines = linesOf(*function, added.begin, lastLine);
        hint = added.lines.empty() ? added.begin : added.lines.back();
        added.name = qualifiedName(*function);
        added.declaration = declarationOf(*function);
        added.id = function->GetId();
        if (!added.lines.empty()) code->functions_.push_back(std::move(added));
    }
    code->addHeads(mainText);
    code->finish();
    return code;
}

/// Conditions and increments of loops whose head takes several lines: the engine reports those
/// lines when they run, and knows nothing of them when asked.
void CodeLines::addHeads(const StatementStarts& mainText) {
    for (const std::int32_t line : mainText.loopHeadLines())
        if (Function* const function = innermost({}, line)) {
            auto& lines = function->lines;
            lines.insert(std::upper_bound(lines.begin(), lines.end(), line), line);
        }
}

void CodeLines::finish() {
    for (Function& function : functions_) {
        function.lines.erase(std::unique(function.lines.begin(), function.lines.end()),
                             function.lines.end());
        auto& lines = lines_[function.source];
        lines.insert(lines.end(), function.lines.begin(), function.lines.end());
    }
    for (auto& [source, lines] : lines_) {
        std::sort(lines.begin(), lines.end());
        lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    }
}

const std::vector<std::int32_t>& CodeLines::lines(const std::string& source) const {
    static const std::vector<std::int32_t> none;
    const auto found = lines_.find(source);
    return found == lines_.end() ? none : found->second;
}

std::vector<std::string> CodeLines::otherSources() const {
    std::vector<std::string> names;
    for (const auto& [source, lines] : lines_)
        if (!source.empty()) names.push_back(source);
    return names;
}

bool CodeLines::hasCode(const std::string& source, std::int32_t line) const {
    const std::vector<std::int32_t>& known = lines(source);
    return std::binary_search(known.begin(), known.end(), line);
}

/// Of the functions around a line the one with the fewest lines: a lambda stands in a function.
CodeLines::Function* CodeLines::innermost(const std::string& source, std::int32_t line) {
    Function* best = nullptr;
    for (Function& function : functions_) {
        if (function.source != source || line < function.begin || line > function.lines.back())
            continue;
        if (best == nullptr ||
            function.lines.back() - function.begin < best->lines.back() - best->begin)
            best = &function;
    }
    return best;
}

CodeLines::Resolved CodeLines::resolve(const std::string& source, std::int32_t line) const {
    const auto found = lines_.find(source);
    if (found == lines_.end()) return {false, 0, "This file is no part of the script."};
    if (line < 1) return {false, 0, "There is no such line."};
    const auto next = std::lower_bound(found->second.begin(), found->second.end(), line);
    if (next == found->second.end()) return {false, 0, "There is no code at or after this line."};
    return {true, *next, {}};
}

std::vector<const CodeLines::Function*> CodeLines::find(std::string_view name) const {
    std::vector<const Function*> found;
    for (const Function& function : functions_) {
        const std::string& full = function.name;
        const bool tail = full.size() > name.size() + 1 && full.ends_with(name) &&
                          full[full.size() - name.size() - 1] == ':';
        if (!name.empty() && (full == name || tail)) found.push_back(&function);
    }
    return found;
}

}  // namespace korvant
