#include "language/repairs.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "language/documentation.h"
#include "language/suggestions.h"

namespace korvant {

namespace {

/// How many letters differ, are missing, too many or swapped with the next: swapped ones are the
/// commonest slip. Source: Levenshtein's distance with Damerau's exchange, by rows.
std::size_t distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> before, last(right.size() + 1), row(right.size() + 1);
    for (std::size_t i = 0; i < last.size(); ++i) last[i] = i;
    for (std::size_t i = 0; i < left.size(); ++i) {
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t changed = last[j] + (left[i] == right[j] ? 0 : 1);
            row[j + 1] = std::min({last[j + 1] + 1, row[j] + 1, changed});
            if (i > 0 && j > 0 && left[i] == right[j - 1] && left[i - 1] == right[j])
                row[j + 1] = std::min(row[j + 1], before[j - 1] + 1);
        }
        before = std::exchange(last, row);
    }
    return last.back();
}

/// What stands in simple quotes.
std::vector<std::string> quotedIn(std::string_view text) {
    std::vector<std::string> found;
    for (auto begin = text.find('\''); begin != std::string_view::npos;) {
        const auto end = text.find('\'', begin + 1);
        if (end == std::string_view::npos) break;
        found.emplace_back(text.substr(begin + 1, end - begin - 1));
        begin = text.find('\'', end + 1);
    }
    return found;
}

/// "Expected ',' or ';'": the end of the statement first.
std::vector<std::string> missingSigns(std::string_view text) {
    std::vector<std::string> signs;
    if (!text.starts_with("Expected ")) return signs;
    const std::vector<std::string> quoted = quotedIn(text);
    for (const char* const sign : {";", ")", "]", "}", ","})
        if (std::find(quoted.begin(), quoted.end(), sign) != quoted.end()) signs.push_back(sign);
    return signs;
}

void addMissingSign(const ScopeIndex& index, std::size_t offset, const std::string& sign,
                    std::vector<Repair>& repairs) {
    // Behind the last word or sign before the place.
    const std::string_view text = index.document().text();
    std::size_t end = std::min(offset, text.size());
    while (end > 0 && static_cast<unsigned char>(text[end - 1]) <= ' ') --end;
    repairs.push_back({{sentences::kWriteHere, {sign}}, {end, end}, sign});
}

void addSimilarNames(Meanings& meanings, std::size_t offset, const std::string& wrong,
                     std::vector<Repair>& repairs) {
    const NameUse* use = meanings.index().useAt(offset);
    const auto uses = meanings.index().usesOf(wrong);
    if (use == nullptr || meanings.nameOf(*use) != wrong)
        for (const NameUse* const other : uses)
            if (other->begin >= offset) {
                use = other;
                break;
            }
    if (use == nullptr || meanings.nameOf(*use) != wrong) return;
    // Of equally near ones a name of the script's or the library's before a word of the language.
    std::vector<std::tuple<std::size_t, bool, std::string>> near;
    for (const Suggestion& known : suggestionsAt(meanings, Documentation(), use->begin)) {
        const std::size_t far = distance(known.label, wrong);
        if (!known.snippet && far > 0 && far <= std::max<std::size_t>(1, wrong.size() / 3))
            near.emplace_back(far, known.kind == Suggestion::Kind::keyword, known.label);
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    near.resize(std::min<std::size_t>(3, near.size()));
    for (const auto& [far, isWord, name] : near)
        repairs.push_back({{sentences::kChangeTo, {name}}, use->range(), name});
}

}  // namespace

std::vector<Repair> repairsFor(Meanings& meanings, const Diagnostic& diagnostic) {
    std::vector<Repair> repairs;
    if (diagnostic.line < 1) return repairs;
    const std::size_t offset = meanings.index().document().offsetOf(
        {static_cast<std::uint32_t>(diagnostic.line - 1),
         static_cast<std::uint32_t>(std::max(0, diagnostic.column - 1))});
    const std::string_view text = diagnostic.text;
    for (const std::string& sign : missingSigns(text))
        addMissingSign(meanings.index(), offset, sign, repairs);
    const bool unknown = text.starts_with("No matching symbol") ||
                         text.find("is not declared") != std::string_view::npos ||
                         text.find("is not a member of") != std::string_view::npos ||
                         text.find("is not a data type") != std::string_view::npos ||
                         text.starts_with("No matching signatures to");
    const std::vector<std::string> quoted = quotedIn(text);
    if (unknown && !quoted.empty()) {
        std::string name = quoted.front();
        if (const auto call = name.find('('); call != std::string::npos) name.resize(call);
        if (const auto path = name.rfind("::"); path != std::string::npos) name.erase(0, path + 2);
        addSimilarNames(meanings, offset, name, repairs);
    }
    return repairs;
}

}  // namespace korvant
