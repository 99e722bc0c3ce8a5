// Parts of a script's text that build while others are wrong.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "language/scope_index.h"

namespace korvant {

/// As the compiler counts: from 1, columns in bytes.
struct CompilerPlace {
    int row = 0;
    int column = 0;
};

/// The text with "private" and "protected" blanked, so that everything can be asked about.
std::string withoutAccess(const ScopeIndex& index);

/// The same text, or one of its length with parts blanked, with bodies of functions replaced by
/// ones that build whatever stood there: those that hold one of `rows` (from 1), or all of them
/// where there is none. Long values of variables go as well.
enum class Lines { keep, drop };  ///< whether lines keep their numbers
std::string withoutBodies(std::string_view text, const ScopeIndex& index,
                          const std::vector<int>& rows, Lines lines = Lines::keep);

/// What belongs to no declaration is blanked, such as a line that is just being written; a variable
/// gets its semicolon. The length stays.
std::string declarationsAlone(const std::string& text, const ScopeIndex& index);

/// Blanks the innermost declaration that the first message is about, or else its line; of the
/// others, which may follow from it, only what holds no declarations. `compiled` is what the
/// messages are about: `text` without bodies.
void blankPlaces(std::string& text, const ScopeIndex& index,
                 const std::vector<CompilerPlace>& errors, const TextDocument& compiled);

}  // namespace korvant
