// What is shown beside a name of a script: its meaning, and the parameters of a call.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "language/documentation.h"
#include "language/meanings.h"

namespace korvant {

struct HoverText {
    ByteRange range;
    std::string declaration;    ///< one line of the script language
    std::string documentation;  ///< Markdown; may be empty
};

/// Nothing in remarks, in texts and where no name is known.
std::optional<HoverText> hoverAt(Meanings& meanings, const Documentation& library,
                                 std::size_t offset);

struct SignatureText {
    std::string label;
    std::string documentation;          ///< Markdown
    std::vector<ByteRange> parameters;  ///< bytes of the label
};

struct Signatures {
    std::vector<SignatureText> all;
    std::size_t active = 0;     ///< the first that has the parameter
    std::size_t parameter = 0;  ///< in which the caret is
};

/// Of the call around `offset`; none outside of calls.
Signatures signaturesAt(Meanings& meanings, const Documentation& library, std::size_t offset);

/// The number behind an enum value or a constant of this text, as it is read; empty when it cannot
/// be told without running something.
std::string constantValue(Meanings& meanings, int declaration);

/// Whether `offset` lies inside a remark or a text in quotes.
bool inRemarkOrText(const ScopeIndex& index, std::size_t offset);

}  // namespace korvant
