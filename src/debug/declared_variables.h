// Which variables of a function are known at a place, by the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "language/scope_index.h"

namespace korvant {

/// Of numbers and truth values, by its word.
bool isPlainType(std::string_view word);

/// The engine goes by the code: it sees a variable of a block whose code is over, above all that of
/// a loop's head, and misses one that is declared where a block has ended. Places count from 1, in
/// bytes.
class DeclaredVariables {
  public:
    explicit DeclaredVariables(std::string text);

    /// Whether a statement that begins at a place sees a variable: the `nth` of `count` with this
    /// name in the function there, in the order of their declarations. Nothing where the text has
    /// another number of them.
    enum class Seen { no, yes, declaredThere };
    std::optional<Seen> seenAt(std::int32_t line, std::int32_t column, std::string_view name,
                               std::size_t nth, std::size_t count) const;

    /// The variable that a name at an offset means or declares; kNoIndex: none that is known.
    int meantBy(std::string_view name, std::size_t offset) const;

    /// A variable of a plain type that is declared without a value. It is doubtful when only some
    /// of the ways through its block set it.
    struct Valueless {
        std::string_view name;
        std::size_t nth = 0;  ///< of `count` with this name in its function
        std::size_t count = 0;
    };
    /// The doubtful ones of the function at a place.
    const std::vector<Valueless>& doubtfulAt(std::int32_t line, std::int32_t column) const;
    /// Which of them, by their numbers there, the statement at a place may set.
    const std::vector<std::size_t>& setAt(std::int32_t line, std::int32_t column) const;
    /// Those that are declared right before the statement at a place, and have no value there,
    /// whatever an earlier pass of a loop has set.
    const std::vector<Valueless>& declaredBefore(std::int32_t line, std::int32_t column) const;
    /// Lines at which calls with doubtful ones begin, and of their setters; ascending.
    std::vector<std::int32_t> doubtfulLines() const;
    /// Lines of the statements right behind declarations; ascending.
    std::vector<std::int32_t> linesBehindDeclarations(bool ofDoubtfulAlone) const;

  private:
    std::size_t placeOf(std::int32_t line, std::int32_t column) const;
    const Declaration& declaration(int index) const {
        return index_.declarations()[static_cast<std::size_t>(index)];
    }
    struct Variables {
        std::vector<int> all;  ///< locals and parameters, in order
        std::unordered_map<std::string_view, std::vector<int>> named;
    };
    const Variables& ofFunction(int function) const;
    bool isPlain(const Declaration& variable) const;
    bool maySet(const NameUse& use) const;
    const Statement* statementAround(std::size_t place) const;
    bool setsAlways(const Statement& statement, const NameUse& use, int scope) const;
    Valueless namedIn(int function, int variable) const;
    void collectDoubtful(int function, int variable);
    bool isRepeated(std::size_t begin) const;
    void collectDeclaredBefore();
    void noteDeclaredBefore(std::size_t place, int variable);
    std::int32_t lineOf(std::size_t place) const;
    std::string_view text() const { return index_.document().text(); }

    ScopeIndex index_;
    std::map<int, Variables> byFunction_;
    std::map<int, std::vector<Valueless>> doubtful_;           ///< by function
    std::map<std::size_t, std::vector<std::size_t>> setters_;  ///< by where the statement begins
    std::map<std::size_t, std::vector<Valueless>> declaredBefore_;  ///< the same
    std::set<std::size_t> doubtfulBefore_;  ///< where a doubtful one is declared before
    std::map<std::size_t, const Statement*> begins_;
};

}  // namespace korvant
