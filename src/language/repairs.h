// Small changes that mend what the compiler complains about.
#pragma once

#include <string>
#include <vector>

#include "language/diagnostics.h"
#include "language/meanings.h"
#include "language/sentence.h"

namespace korvant {

struct Repair {
    Sentence title;   ///< "Write ';' here", "Change to \"total\""
    ByteRange range;  ///< what is replaced; empty: inserted
    std::string with;
};

/// What may mend a message; none for most.
std::vector<Repair> repairsFor(Meanings& meanings, const Diagnostic& diagnostic);

}  // namespace korvant
