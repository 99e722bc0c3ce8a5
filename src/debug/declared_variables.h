// Which variables of a function are known at a place, by the text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "language/scope_index.h"

namespace korvant {

/// The engine goes by the code: it sees a variable of a block whose code is over, above all that of
/// a loop's head, and misses one that is declared where a block has ended.
class DeclaredVariables {
  public:
    explicit DeclaredVariables(std::string text) : index_(std::move(text)) {}

    /// Whether a statement that begins at a place, counted from 1 in bytes, sees a variable: the
    /// `nth` of `count` with this name in the function there, in the order of their declarations.
    /// Nothing where the text has another number of them.
    enum class Seen { no, yes, declaredThere };
    std::optional<Seen> seenAt(std::int32_t line, std::int32_t column, std::string_view name,
                               std::size_t nth, std::size_t count);

  private:
    const std::vector<int>& ofFunction(int function);

    ScopeIndex index_;
    std::unordered_map<int, std::vector<int>> byFunction_;  ///< locals and parameters, in order
};

}  // namespace korvant
