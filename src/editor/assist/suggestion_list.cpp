#include "editor/assist/suggestion_list.h"

#include <algorithm>
#include <map>

#include "base/text/characters.h"
#include "language/tokens.h"

namespace korvant {

namespace {

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool sameLetters(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool before(std::string_view left, std::string_view right) {
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char a, char b) { return lower(a) < lower(b); });
}

/// The place of a whole word; npos for none.
std::size_t wordIn(std::string_view text, std::string_view word) {
    if (word.empty()) return std::string_view::npos;
    for (std::size_t at = text.find(word); at != std::string_view::npos;
         at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool begins = at == 0 || !isWordByte(text[at - 1]);
        if (begins && (end == text.size() || !isWordByte(text[end]))) return at;
    }
    return std::string_view::npos;
}

bool isCalled(const Suggestion& one) {
    return one.kind == Suggestion::Kind::function || one.kind == Suggestion::Kind::method;
}

}  // namespace

/// A constructor's name is its type's: of several places the one before the bracket counts.
DeclarationParts partsOf(std::string_view declaration, std::string_view label) {
    DeclarationParts parts;
    const std::size_t bracket = declaration.find('(');
    std::size_t at = wordIn(declaration.substr(0, bracket), label);
    if (at == std::string_view::npos) return {std::string(declaration), {}, {}};
    if (const std::size_t again = wordIn(declaration.substr(at + 1, bracket - at - 1), label);
        bracket != std::string_view::npos && again != std::string_view::npos)
        at += 1 + again;
    std::string_view type = declaration.substr(0, at);
    // What it belongs to is no part of the type.
    while (type.ends_with("::")) {
        type.remove_suffix(2);
        while (!type.empty() && isWordByte(type.back())) type.remove_suffix(1);
    }
    return {std::string(trimmed(type, " ")), std::string(label),
            std::string(declaration.substr(at + label.size()))};
}

NameMatch matchName(std::string_view name, std::string_view wanted) {
    NameMatch match;
    const auto together = [&](std::size_t begin) {
        for (std::size_t i = 0; i < wanted.size(); ++i) match.letters.push_back(begin + i);
    };
    for (std::size_t at = 0; at + wanted.size() <= name.size(); ++at) {
        if (!sameLetters(name.substr(at, wanted.size()), wanted)) continue;
        together(at);
        match.rank = at > 0                                    ? NameMatch::Rank::inside
                     : name.substr(0, wanted.size()) == wanted ? NameMatch::Rank::exact
                                                               : NameMatch::Rank::prefix;
        return match;
    }
    std::size_t next = 0;
    for (std::size_t i = 0; i < name.size() && next < wanted.size(); ++i)
        if (lower(name[i]) == lower(wanted[next])) {
            match.letters.push_back(i);
            ++next;
        }
    if (next < wanted.size()) return {};
    match.rank = NameMatch::Rank::scattered;
    return match;
}

void SuggestionList::set(std::vector<Suggestion> suggestions) {
    clear();
    std::map<std::string, std::size_t> functions;
    for (Suggestion& one : suggestions) {
        if (isCalled(one)) {
            const auto [known, isNew] = functions.emplace(one.label, rows_.size());
            if (!isNew) {
                ++rows_[known->second].forms;
                continue;
            }
        }
        DeclarationParts parts = partsOf(one.detail, one.label);
        rows_.push_back({std::move(one), std::move(parts), 1, {}});
    }
    std::stable_sort(rows_.begin(), rows_.end(), [](const Row& left, const Row& right) {
        return before(left.suggestion.label, right.suggestion.label);
    });
}

void SuggestionList::clear() {
    rows_.clear();
    shown_.clear();
    chosen_ = 0;
    byHand_ = false;
}

/// Names that hold the letters somewhere are only offered where none begins with them.
void SuggestionList::filter(const std::string& word) {
    word_ = word;
    shown_.clear();
    chosen_ = 0;
    byHand_ = false;
    auto best = NameMatch::Rank::none;
    for (Row& row : rows_) {
        row.match = matchName(row.suggestion.label, word);
        best = std::min(best, row.match.rank);
    }
    if (best == NameMatch::Rank::none) return;
    const auto worst = std::max(best, NameMatch::Rank::prefix);
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (rows_[i].match.rank <= worst) shown_.push_back(i);
    // The word as it stands, or else with its own capitals, comes first.
    const auto rank = [&](std::size_t i) {
        const Row& one = rows_[i];
        if (word.empty()) return 1;
        return one.suggestion.label == word ? 0 : one.match.rank == NameMatch::Rank::exact ? 1 : 2;
    };
    std::stable_sort(shown_.begin(), shown_.end(),
                     [&](std::size_t left, std::size_t right) { return rank(left) < rank(right); });
}

void SuggestionList::move(int rows) {
    if (shown_.empty()) return;
    byHand_ = true;
    const auto last = static_cast<int>(shown_.size()) - 1;
    const auto at = static_cast<int>(chosen_);
    if (rows == 1 && at == last)
        chosen_ = 0;
    else if (rows == -1 && at == 0)
        chosen_ = static_cast<std::size_t>(last);
    else
        chosen_ = static_cast<std::size_t>(std::clamp(at + rows, 0, last));
}

void SuggestionList::choose(std::size_t index) {
    if (index >= shown_.size()) return;
    byHand_ = true;
    chosen_ = index;
}

bool SuggestionList::enterTakes() const {
    const Row* const one = chosenRow();
    if (one == nullptr || byHand_) return true;
    return one->suggestion.label != word_ && one->match.rank != NameMatch::Rank::scattered;
}

bool SuggestionList::isWritten() const {
    return shown_.size() == 1 && row(0).suggestion.label == word_ && !row(0).suggestion.snippet;
}

}  // namespace korvant
