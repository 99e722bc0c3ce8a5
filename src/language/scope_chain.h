// What scopes alone tell of an expression, without asking the compiler.
#pragma once

#include "language/meanings.h"

namespace korvant {

/// The class or interface of this script that the chain of names in `range` gives: "this",
/// variables with a written type, calls of functions and methods without overloads, and members of
/// what they give. kNoIndex for everything else, which the compiler may still know.
int classByScopes(const Meanings& meanings, ByteRange range);

}  // namespace korvant
