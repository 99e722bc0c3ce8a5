#include "editor/assist/problems.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace korvant {

namespace {

std::string counted(int number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

auto placeOf(const Diagnostic& one) {
    return std::tuple(one.line, one.column);
}

}  // namespace

namespace {

/// By place; what explains a message stays behind it.
std::vector<Diagnostic> sorted(std::vector<Diagnostic> diagnostics) {
    std::vector<std::vector<Diagnostic>> groups;
    for (Diagnostic& one : diagnostics) {
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

std::string Problems::summary() const {
    if (empty()) return "No problems found";
    std::string text = errors_ > 0 ? counted(errors_, "error") : "";
    if (warnings_ > 0) text += (text.empty() ? "" : ", ") + counted(warnings_, "warning");
    return text;
}

}  // namespace korvant
