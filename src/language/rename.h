// New names for what a script declares, proved by the compiler.
#pragma once

#include <string>
#include <vector>

#include "language/meanings.h"
#include "language/sentence.h"

namespace korvant {

struct RenameResult {
    Sentence refusal;              ///< why not; empty when it can be done
    std::vector<ByteRange> edits;  ///< every place of the old name, in the order of the text
};

/// Why there is no declaration of a name to lead to.
Sentence undeclared(const Meaning& meaning, const std::string& name);

/// What can be renamed at a place: the name's range, or why it cannot.
struct RenamePlace {
    Sentence refusal;
    ByteRange range;
    std::vector<int> family;
};
RenamePlace renamePlace(Meanings& meanings, std::size_t offset);

/// Replaces the name at `offset` everywhere. Refused where the new name is none or is taken, and
/// where anything else of the script would mean something else afterwards: the code that the
/// compiler makes must be the same but for the name. `engine` is that of the meanings.
RenameResult renameAt(OracleEngine& engine, Meanings& meanings, std::size_t offset,
                      const std::string& newName);

/// The code of all functions of a module, with names in place of addresses; `oldName` and `newName`
/// count as one name. Equal for modules that do the same.
std::vector<std::string> codeOf(asIScriptModule& module, const std::string& oldName,
                                const std::string& newName);

/// `text` with `name` in the place of each edit.
std::string withEdits(const std::string& text, const std::vector<ByteRange>& edits,
                      const std::string& name);

}  // namespace korvant
