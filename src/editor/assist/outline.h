// The classes, enums and functions of a script, as a list of what stands where.
#pragma once

#include <string>
#include <vector>

#include "language/scope_index.h"

namespace korvant {

struct OutlineEntry {
    enum class Kind { enumType, classType, function } kind = Kind::function;
    std::string name;  ///< of a function with "()" or "(...)"
    std::string path;  ///< "Hole::grade"
    std::string type;  ///< what a function gives; else empty
    int depth = 0;
    std::size_t begin = 0, end = 0;  ///< bytes
    std::size_t nameBegin = 0;
};

std::vector<OutlineEntry> outlineEntries(const ScopeIndex& index);
/// The entry around a place, the innermost; -1 for none.
int entryAt(const std::vector<OutlineEntry>& entries, std::size_t position);
/// Names of variables and members that the script declares, parted by blanks.
std::string valueNamesOf(const ScopeIndex& index);
/// Names of types that the script declares, parted by blanks.
std::string typeNamesOf(const ScopeIndex& index);

}  // namespace korvant
