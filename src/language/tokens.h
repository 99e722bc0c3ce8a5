// A script's text as words and signs: the one tokenizer of everything that reads scripts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace korvant {

struct ScriptToken {
    enum class Kind : std::uint8_t {
        word,  ///< names and reserved words, also those that only matter in places
        number,
        text,     ///< in quotes, quotes included
        mark,     ///< any sign, as the compiler takes it together: ">>=", "::", "!is"
        comment,  ///< only where asked for; without the line end that closes it
    };
    Kind kind = Kind::mark;
    bool reserved = false;  ///< a word that can be no name
    bool ended = true;      ///< false: a text or comment that nothing closes
    std::string_view text;
    int position = 0;  ///< in bytes from the beginning of what was read

    int end() const { return position + static_cast<int>(text.size()); }
    /// Most of them differ in their length or their first byte already.
    bool is(std::string_view what) const {
        return text.size() == what.size() && !text.empty() && text[0] == what[0] &&
               (kind == Kind::word || kind == Kind::mark) && text == what;
    }
    bool isWord() const { return kind == Kind::word; }
    bool isName() const { return kind == Kind::word && !reserved; }
};

enum class Comments : std::uint8_t { leaveOut, keep };

/// Reads anything, in time linear to its length. A text in simple quotes that its line does not
/// close ends with the line, so that a quote that is just being typed leaves the rest of the script
/// as it was; other texts and comments that do not end take the rest. The tokens point into `text`,
/// which may have up to 2 GiB.
std::vector<ScriptToken> scriptTokens(std::string_view text,
                                      Comments comments = Comments::leaveOut);

/// The same with the comments apart.
struct CodeAndRemarks {
    std::vector<ScriptToken> code, remarks;
};
CodeAndRemarks codeAndRemarks(std::string_view text);

/// The last one that begins before `offset`; null for none.
const ScriptToken* tokenBefore(const std::vector<ScriptToken>& tokens, std::size_t offset);

bool isWordByte(char byte) noexcept;

/// Words that begin a statement or an expression and so are never the name of a type or variable.
bool isStatementWord(std::string_view word) noexcept;

/// Names of methods that the language calls by itself: "opAdd" and its like.
bool isOperatorName(std::string_view name) noexcept;

/// Words that name a type of the language itself: "int", "uint8", "void", "auto" and their like.
bool isBuiltInType(std::string_view word) noexcept;

}  // namespace korvant
