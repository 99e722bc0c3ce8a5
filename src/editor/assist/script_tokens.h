// A script's text as words and marks, comments and blanks left out.
#pragma once

#include <string_view>
#include <vector>

namespace korvant {

struct ScriptToken {
    enum class Kind { word, number, text, mark } kind = Kind::mark;
    std::string_view text;  ///< marks are one character each
    int position = 0;       ///< in bytes

    bool is(std::string_view what) const { return kind != Kind::text && text == what; }
    bool isWord() const { return kind == Kind::word; }
};

/// Reads anything; a comment or text that does not end takes the rest. The tokens point into
/// `text`.
std::vector<ScriptToken> scriptTokens(std::string_view text);

bool isWordByte(char byte) noexcept;

/// Words that begin a statement or an expression and so are never the name of a type or variable.
bool isStatementWord(std::string_view word) noexcept;

}  // namespace korvant
