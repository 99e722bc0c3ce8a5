#include "language/repairs.h"

#include <algorithm>

#include "language/documentation.h"
#include "language/suggestions.h"

namespace korvant {

namespace {

/// How many letters differ, are missing or too many. Source: Levenshtein's distance, by rows.
std::size_t distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = i;
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t above = row[j + 1];
            const std::size_t changed = diagonal + (left[i] == right[j] ? 0 : 1);
            row[j + 1] = std::min({above + 1, row[j] + 1, changed});
            diagonal = above;
        }
    }
    return row.back();
}

/// The text between the first two simple quotes.
std::string quotedIn(std::string_view text) {
    const auto begin = text.find('\'');
    if (begin == std::string_view::npos) return {};
    const auto end = text.find('\'', begin + 1);
    if (end == std::string_view::npos) return {};
    return std::string(text.substr(begin + 1, end - begin - 1));
}

void addMissingSign(const ScopeIndex& index, std::size_t offset, const std::string& sign,
                    std::vector<Repair>& repairs) {
    // Behind the last word or sign before the place.
    const std::string_view text = index.document().text();
    std::size_t end = std::min(offset, text.size());
    while (end > 0 && static_cast<unsigned char>(text[end - 1]) <= ' ') --end;
    repairs.push_back({"Write '" + sign + "' here", {end, end}, sign});
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
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const Suggestion& known : suggestionsAt(meanings, Documentation(), use->begin)) {
        const std::size_t far = distance(known.label, wrong);
        if (!known.snippet && far > 0 && far <= std::max<std::size_t>(1, wrong.size() / 3))
            near.emplace_back(far, known.label);
    }
    std::sort(near.begin(), near.end());
    near.erase(std::unique(near.begin(), near.end()), near.end());
    for (std::size_t i = 0; i < std::min<std::size_t>(3, near.size()); ++i)
        repairs.push_back({"Change to \"" + near[i].second + "\"", use->range(), near[i].second});
}

}  // namespace

std::vector<Repair> repairsFor(Meanings& meanings, const Diagnostic& diagnostic) {
    std::vector<Repair> repairs;
    if (diagnostic.line < 1) return repairs;
    const std::size_t offset = meanings.index().document().offsetOf(
        {static_cast<std::uint32_t>(diagnostic.line - 1),
         static_cast<std::uint32_t>(std::max(0, diagnostic.column - 1))});
    const std::string quoted = quotedIn(diagnostic.text);
    const std::string_view text = diagnostic.text;
    if (text.starts_with("Expected ") &&
        (quoted == ";" || quoted == ")" || quoted == "]" || quoted == "}" || quoted == ","))
        addMissingSign(meanings.index(), offset, quoted, repairs);
    const bool unknown = text.starts_with("No matching symbol") ||
                         text.find("is not declared") != std::string_view::npos ||
                         text.find("is not a member of") != std::string_view::npos ||
                         text.find("is not a data type") != std::string_view::npos ||
                         text.starts_with("No matching signatures to");
    if (unknown) {
        std::string name = quoted;
        if (const auto call = name.find('('); call != std::string::npos) name.resize(call);
        if (const auto path = name.rfind("::"); path != std::string::npos) name.erase(0, path + 2);
        addSimilarNames(meanings, offset, name, repairs);
    }
    return repairs;
}

}  // namespace korvant
