#include "host/scan/source_tokens.h"

#include "base/text/characters.h"
#include "host/engine/script_lexemes.h"

namespace korvant {

namespace {

bool startsName(char c) {
    return isLetter(c) || c == '_' || isBeyondAscii(c);
}

Token::Kind kindOf(const Lexeme& lexeme, std::string_view text) {
    if (lexeme.kind == Lexeme::Kind::value)
        return isDigit(text[0]) || text[0] == '.' ? Token::Kind::number : Token::Kind::text;
    return startsName(text[0]) ? Token::Kind::name : Token::Kind::symbol;
}

/// Of a sign that the scan takes as one; 0 for all others.
char wholeSign(std::string_view sign) {
    if (sign == "::") return kScope;
    if (sign == "==" || sign == "!=" || sign == "<=" || sign == ">=") return kCompare;
    return sign.back() == '=' ? kAssign : '\0';
}

}  // namespace

void TokenList::add(std::uint32_t begin, std::size_t size, Token::Kind kind, char symbol) {
    tokens_.push_back({begin, static_cast<std::uint32_t>(size), kind, symbol});
}

/// Signs of several bytes are taken apart, except for those that are asked for.
void TokenList::addSigns(std::uint32_t begin, std::string_view sign) {
    if (const char whole = wholeSign(sign); whole != '\0')
        return add(begin, sign.size(), Token::Kind::symbol, whole);
    for (std::size_t i = 0; i < sign.size(); ++i) {
        const auto at = static_cast<std::uint32_t>(begin + i);
        if (startsName(sign[i])) return add(at, sign.size() - i, Token::Kind::name, '\0');
        add(at, 1, Token::Kind::symbol, sign[i]);
    }
}

std::optional<TokenList> TokenList::of(std::string_view text, std::size_t most) {
    TokenList list(text);
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme lexeme = lexemeAt(text, at);
        at += lexeme.size;
        if (lexeme.kind == Lexeme::Kind::blank || lexeme.kind == Lexeme::Kind::comment) continue;
        const std::string_view bytes = text.substr(lexeme.begin, lexeme.size);
        const Token::Kind kind = kindOf(lexeme, bytes);
        if (kind == Token::Kind::symbol)
            list.addSigns(lexeme.begin, bytes);
        else
            list.add(lexeme.begin, lexeme.size, kind, '\0');
        if (list.size() > most) return std::nullopt;
    }
    return list;
}

}  // namespace korvant
