#include "editor/assist/problems.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/text/characters.h"

namespace korvant {

namespace {

constexpr std::string_view kContext = "Compiling ";

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

std::int32_t endOfWord(std::string_view line, std::int32_t column) {
    auto end = static_cast<std::size_t>(std::max(column - 1, 0));
    if (end >= line.size()) return column;
    const std::size_t begin = end;
    while (end < line.size() && (isWordByte(line[end]) || isBeyondAscii(line[end]))) ++end;
    return static_cast<std::int32_t>(end == begin ? end + 1 : end) + 1;
}

std::string counted(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

auto placeOf(const Diagnostic& one) {
    return std::tuple(one.line, one.column);
}

}  // namespace

namespace {

/// "Expected ';'", "Instead found '}'" is one mistake.
bool explains(const Diagnostic& one, const Diagnostic& before) {
    return one.text.starts_with("Instead found ") && before.text.starts_with("Expected ");
}

/// By place; what explains a message stays behind it.
std::vector<Diagnostic> sorted(std::vector<Diagnostic> diagnostics) {
    std::vector<std::vector<Diagnostic>> groups;
    for (Diagnostic& one : diagnostics) {
        if (!groups.empty() && explains(one, groups.back().back()))
            one.kind = Diagnostic::Kind::information;
        if (groups.empty() || one.kind != Diagnostic::Kind::information) groups.emplace_back();
        groups.back().push_back(std::move(one));
    }
    std::stable_sort(groups.begin(), groups.end(), [](const auto& a, const auto& b) {
        return placeOf(a.front()) < placeOf(b.front());
    });
    std::vector<Diagnostic> all;
    for (auto& group : groups)
        for (Diagnostic& one : group) all.push_back(std::move(one));
    return all;
}

}  // namespace

void Problems::set(std::vector<Diagnostic> diagnostics) {
    ++generation_;
    all_ = sorted(std::move(diagnostics));
    byPlace_.clear();
    errors_ = warnings_ = 0;
    for (const Diagnostic& one : all_) {
        if (one.kind == Diagnostic::Kind::information) continue;
        ++(one.kind == Diagnostic::Kind::error ? errors_ : warnings_);
        byPlace_.push_back(&one);
    }
    std::stable_sort(byPlace_.begin(), byPlace_.end(),
                     [](const auto* a, const auto* b) { return placeOf(*a) < placeOf(*b); });
}

void Problems::setBuilt(std::vector<Diagnostic> diagnostics) {
    ++builds_;
    set(std::move(diagnostics));
}

void Problems::follow(const LineShift& shift) {
    if (all_.empty()) return;
    if (shift.everything) return clear();
    std::vector<Diagnostic> moved = all_;
    for (Diagnostic& one : moved)
        if (one.line > 0) one.line = one.endLine = shifted(one.line, shift);
    set(std::move(moved));
}

const Diagnostic* Problems::next(std::int32_t line, std::int32_t column) const {
    for (const Diagnostic* one : byPlace_)
        if (placeOf(*one) > std::tuple(line, column)) return one;
    return byPlace_.empty() ? nullptr : byPlace_.front();
}

const Diagnostic* Problems::previous(std::int32_t line, std::int32_t column) const {
    for (auto one = byPlace_.rbegin(); one != byPlace_.rend(); ++one)
        if (placeOf(**one) < std::tuple(line, column)) return *one;
    return byPlace_.empty() ? nullptr : byPlace_.back();
}

const Diagnostic* Problems::onLine(std::int32_t line) const {
    const Diagnostic* found = nullptr;
    for (const Diagnostic* one : byPlace_) {
        if (one->line != line) continue;
        if (one->kind == Diagnostic::Kind::error) return one;
        if (!found) found = one;
    }
    return found;
}

std::string Problems::summary() const {
    if (empty()) return "No problems found";
    std::string text = errors_ > 0 ? counted(errors_, "error") : "";
    if (warnings_ > 0) text += (text.empty() ? "" : ", ") + counted(warnings_, "warning");
    return text;
}

std::vector<Diagnostic> diagnosticsOf(const std::vector<BuildMessage>& messages,
                                      const std::string& text) {
    const std::vector<std::string_view> lines = linesOf(text);
    std::vector<Diagnostic> found;
    std::string context;
    for (const BuildMessage& message : messages) {
        if (message.kind == BuildMessage::Kind::information &&
            message.plain.rfind(kContext, 0) == 0) {
            context = message.plain;
            continue;
        }
        Diagnostic one;
        one.kind = static_cast<Diagnostic::Kind>(message.kind);
        one.line = one.endLine = std::max(message.row, 0);
        one.column = one.endColumn = std::max(message.column, 1);
        const auto index = static_cast<std::size_t>(one.line) - 1;
        if (one.line > 0 && index < lines.size())
            one.endColumn = endOfWord(lines[index], one.column);
        one.text = message.plain;
        one.context = std::exchange(context, {});
        found.push_back(std::move(one));
    }
    return found;
}

}  // namespace korvant
