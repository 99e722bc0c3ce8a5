// Names that fit where a user writes, with what is to be said about them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "language/documentation.h"
#include "language/meanings.h"

namespace korvant {

struct Suggestion {
    enum class Kind {
        keyword,
        snippet,
        nameSpace,
        classType,
        interfaceType,
        enumType,
        enumValue,
        function,
        method,
        field,
        variable
    };
    Kind kind = Kind::variable;
    std::string label;
    std::string detail;         ///< its type or declaration
    std::string documentation;  ///< Markdown; may be empty
    std::string insert;         ///< what is written; with `snippet` $1, $0 are places to fill
    bool snippet = false;
};

/// Everything that may stand at `offset`: members behind a dot, what a namespace or enum holds
/// behind "::", else locals, members of the class around, everything global, and words of the
/// language. Nothing in remarks and texts. The client filters by what has been written.
std::vector<Suggestion> suggestionsAt(Meanings& meanings, const Documentation& library,
                                      std::size_t offset);

}  // namespace korvant
