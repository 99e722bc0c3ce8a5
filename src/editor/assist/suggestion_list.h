// The names offered while one writes: those that fit what has been written, and which is chosen.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "language/suggestions.h"

namespace korvant {

/// A declaration taken apart: "string@ StrChr(int code)" gives the type "string@", the name
/// "StrChr" and the rest "(int code)".
struct DeclarationParts {
    std::string type;
    std::string name;
    std::string rest;
};
/// `label` is the name that is looked for; where it does not stand, everything is type.
DeclarationParts partsOf(std::string_view declaration, std::string_view label);

/// Where the letters of `wanted` stand in `name`, ignoring case: at its beginning, else together
/// anywhere, else in this order with others between them. Each better than the next.
struct NameMatch {
    enum class Rank { exact, prefix, inside, scattered, none };
    Rank rank = Rank::none;
    std::vector<std::size_t> letters;  ///< positions in the name
};
NameMatch matchName(std::string_view name, std::string_view wanted);

class SuggestionList {
  public:
    struct Row {
        Suggestion suggestion;
        DeclarationParts parts;
        std::size_t forms = 1;  ///< how many functions share the name
        NameMatch match;
    };

    /// Functions of one name become one row.
    void set(std::vector<Suggestion> suggestions);
    void clear();
    /// The rows that fit `word`; the choice goes to the best.
    void filter(const std::string& word);
    const std::string& word() const noexcept { return word_; }

    std::size_t count() const noexcept { return shown_.size(); }
    const Row& row(std::size_t index) const { return rows_[shown_[index]]; }
    std::size_t chosen() const noexcept { return chosen_; }
    /// Null when nothing is shown.
    const Row* chosenRow() const { return shown_.empty() ? nullptr : &row(chosen_); }
    /// Moves by so many rows, no further than the ends; by one from an end goes to the other.
    void move(int rows);
    void choose(std::size_t index);
    /// The user has chosen with the arrows, and not the list by itself.
    bool chosenByHand() const noexcept { return byHand_; }
    /// Enter takes what is chosen, and does not end a line behind a word as it stands: one that is
    /// written out, or of which no name has more than the letters somewhere.
    bool enterTakes() const;
    /// Nothing would change: the word is the one name that fits.
    bool isWritten() const;

  private:
    std::vector<Row> rows_;
    std::vector<std::size_t> shown_;
    std::string word_;
    std::size_t chosen_ = 0;
    bool byHand_ = false;
};

}  // namespace korvant
