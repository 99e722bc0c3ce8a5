#include "language/tokens.h"

#include <algorithm>
#include <iterator>

#include "host/engine/script_lexemes.h"

namespace korvant {

namespace {

constexpr std::string_view kStatementWords[] = {
    "and",       "break",   "case",      "cast",   "continue",  "default", "do",
    "else",      "for",     "from",      "if",     "import",    "in",      "inout",
    "is",        "not",     "null",      "or",     "out",       "return",  "switch",
    "this",      "true",    "false",     "while",  "xor",       "class",   "enum",
    "interface", "private", "protected", "mixin",  "namespace", "funcdef", "typedef",
    "override",  "final",   "abstract",  "shared", "external",  "get",     "set"};

constexpr std::string_view kBuiltInTypes[] = {"void",   "bool",   "int",   "int8",   "int16",
                                              "int32",  "int64",  "uint",  "uint8",  "uint16",
                                              "uint32", "uint64", "float", "double", "auto"};

constexpr std::string_view kTripleQuote = "\"\"\"";

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool startsWord(char byte) {
    return (isWordByte(byte) && !isDigit(byte)) || static_cast<unsigned char>(byte) >= 0x80;
}

template <std::size_t n>
bool contains(const std::string_view (&words)[n], std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

ScriptToken textToken(std::string_view text) {
    ScriptToken token{ScriptToken::Kind::text, false, true, text};
    if (text.starts_with(kTripleQuote)) {
        token.ended = text.size() >= 2 * kTripleQuote.size() && text.ends_with(kTripleQuote);
        return token;
    }
    if (token.text.ends_with('\r')) token.text.remove_suffix(1);
    token.ended = token.text.size() > 1 && token.text.back() == token.text.front();
    return token;
}

ScriptToken commentToken(std::string_view text) {
    ScriptToken token{ScriptToken::Kind::comment, false, true, text};
    if (text.starts_with("/*")) {
        token.ended = text.size() >= 4 && text.ends_with("*/");
        return token;
    }
    while (token.text.ends_with('\n') || token.text.ends_with('\r')) token.text.remove_suffix(1);
    return token;
}

ScriptToken tokenOf(Lexeme::Kind kind, std::string_view text) {
    if (kind == Lexeme::Kind::comment) return commentToken(text);
    if (kind == Lexeme::Kind::value) {
        if (isDigit(text[0]) || text[0] == '.')
            return {ScriptToken::Kind::number, false, true, text};
        return textToken(text);
    }
    const bool word = startsWord(text[0]);
    return {word ? ScriptToken::Kind::word : ScriptToken::Kind::mark,
            word && kind == Lexeme::Kind::keyword, true, text};
}

/// As the compiler reads it, but for a text in simple quotes, which its line bounds.
Lexeme nextLexeme(std::string_view text, std::size_t at) {
    const bool quote = text[at] == '"' || text[at] == '\'';
    if (!quote || text.substr(at).starts_with(kTripleQuote)) return lexemeAt(text, at);
    return lexemeAt(text.substr(0, text.find('\n', at)), at);
}

}  // namespace

bool isWordByte(char byte) noexcept {
    return isDigit(byte) || byte == '_' || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z');
}

bool isStatementWord(std::string_view word) noexcept {
    return contains(kStatementWords, word);
}

bool isOperatorName(std::string_view name) noexcept {
    return name.size() > 2 && name.starts_with("op") && name[2] >= 'A' && name[2] <= 'Z';
}

bool isBuiltInType(std::string_view word) noexcept {
    return contains(kBuiltInTypes, word);
}

namespace {

/// Gives all tokens, comments too, to `take`.
template <class Take>
void readTokens(std::string_view text, const Take& take) {
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme lexeme = nextLexeme(text, at);
        at += lexeme.size;
        const bool control = lexeme.kind == Lexeme::Kind::unknown &&
                             static_cast<unsigned char>(text[lexeme.begin]) <= ' ';
        if (lexeme.kind == Lexeme::Kind::blank || control) continue;
        ScriptToken token = tokenOf(lexeme.kind, text.substr(lexeme.begin, lexeme.size));
        token.position = static_cast<int>(lexeme.begin);
        take(token);
    }
}

}  // namespace

std::vector<ScriptToken> scriptTokens(std::string_view text, Comments comments) {
    std::vector<ScriptToken> tokens;
    tokens.reserve(text.size() / 4);
    readTokens(text, [&](const ScriptToken& token) {
        if (token.kind != ScriptToken::Kind::comment || comments == Comments::keep)
            tokens.push_back(token);
    });
    return tokens;
}

CodeAndRemarks codeAndRemarks(std::string_view text) {
    CodeAndRemarks all;
    all.code.reserve(text.size() / 4);
    readTokens(text, [&](const ScriptToken& token) {
        (token.kind == ScriptToken::Kind::comment ? all.remarks : all.code).push_back(token);
    });
    return all;
}

const ScriptToken* tokenBefore(const std::vector<ScriptToken>& tokens, std::size_t offset) {
    const auto behind = std::lower_bound(
        tokens.begin(), tokens.end(), offset, [](const ScriptToken& token, std::size_t place) {
            return static_cast<std::size_t>(token.position) < place;
        });
    return behind == tokens.begin() ? nullptr : &*(behind - 1);
}

}  // namespace korvant
