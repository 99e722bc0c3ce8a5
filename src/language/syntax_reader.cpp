#include "language/syntax_reader.h"

#include <algorithm>

namespace korvant {

bool isVariable(DeclarationKind kind) noexcept {
    using Kind = DeclarationKind;
    return kind == Kind::globalVariable || kind == Kind::memberVariable || kind == Kind::property ||
           kind == Kind::local || kind == Kind::parameter;
}

bool isCallable(DeclarationKind kind) noexcept {
    using Kind = DeclarationKind;
    return kind == Kind::function || kind == Kind::method || kind == Kind::constructor ||
           kind == Kind::destructor || kind == Kind::accessor || kind == Kind::lambda;
}

bool isType(DeclarationKind kind) noexcept {
    using Kind = DeclarationKind;
    return kind == Kind::classType || kind == Kind::mixinType || kind == Kind::interfaceType ||
           kind == Kind::enumType || kind == Kind::functionType || kind == Kind::typeAlias;
}

Syntax readSyntax(std::string_view text, const std::vector<ScriptToken>& tokens) {
    return SyntaxReader(text, tokens).read();
}

SyntaxReader::SyntaxReader(std::string_view text, const std::vector<ScriptToken>& tokens)
    : text_(text), tokens_(tokens) {
    pairBrackets();
    findStops();
}

Syntax SyntaxReader::read() {
    syntax_.scopes.push_back({Scope::Kind::file, {0, text_.size()}, kNoIndex, kNoIndex});
    syntax_.uses.reserve(tokens_.size() / 3);
    readDeclarations(tokens_.size(), kNoIndex);
    return std::move(syntax_);
}

/// The token behind `i`; of an opening bracket the one behind all that it holds.
std::size_t SyntaxReader::past(std::size_t i) const {
    const std::size_t close = closing_[i];
    if (close == i) return i + 1;
    const bool closed = is(close, ")") || is(close, "]") || (is(close, "}") && is(i, "{"));
    return closed ? close + 1 : close;
}

std::size_t SyntaxReader::beginOf(std::size_t i) const {
    return i < tokens_.size() ? static_cast<std::size_t>(tokens_[i].position) : text_.size();
}

std::size_t SyntaxReader::endOf(std::size_t i) const {
    return i < tokens_.size() ? static_cast<std::size_t>(tokens_[i].end()) : text_.size();
}

ByteRange SyntaxReader::rangeOf(std::size_t first, std::size_t behind) const {
    if (behind <= first) return {beginOf(first), beginOf(first)};
    return {beginOf(first), endOf(behind - 1)};
}

bool SyntaxReader::beginsLine(std::size_t i) const {
    if (i == 0) return true;
    const std::size_t before = endOf(i - 1);
    return text_.substr(before, beginOf(i) - before).find('\n') != std::string_view::npos;
}

int SyntaxReader::declareNameless(Kind kind, std::size_t first) {
    Declaration declaration;
    declaration.kind = kind;
    declaration.whole = {beginOf(first), beginOf(first)};
    declaration.nameRange = declaration.whole;
    declaration.scope = scope_;
    syntax_.declarations.push_back(std::move(declaration));
    return static_cast<int>(syntax_.declarations.size()) - 1;
}

int SyntaxReader::declare(Kind kind, std::size_t name, std::size_t first) {
    const int index = declareNameless(kind, first);
    Declaration& declaration = made(index);
    declaration.name = token(name).text;
    declaration.nameRange = rangeOf(name, name + 1);
    declaration.whole.end = declaration.nameRange.end;
    use(name, Role::declares);
    syntax_.uses.back().declaration = index;
    return index;
}

void SyntaxReader::use(std::size_t i, Role role) {
    NameUse found;
    found.begin = static_cast<std::uint32_t>(beginOf(i));
    found.size = static_cast<std::uint32_t>(token(i).text.size());
    found.scope = scope_;
    found.role = role;
    found.member = i > 0 && is(i - 1, ".");
    found.qualified = i > 0 && is(i - 1, "::");
    syntax_.uses.push_back(found);
}

void SyntaxReader::useTypes(std::size_t first, std::size_t behind) {
    for (std::size_t i = first; i < behind; ++i)
        if (isName(i)) use(i, is(i + 1, "::") ? Role::qualifies : Role::type);
}

int SyntaxReader::openScope(Scope::Kind kind, ByteRange range, int owner) {
    syntax_.scopes.push_back({kind, range, scope_, owner});
    scope_ = static_cast<int>(syntax_.scopes.size()) - 1;
    if (owner != kNoIndex) made(owner).inner = scope_;
    return scope_;
}

void SyntaxReader::statement(std::size_t first, std::size_t behind) {
    if (behind > first) syntax_.statements.push_back({rangeOf(first, behind), scope_});
}

bool SyntaxReader::mayNameType(std::size_t i) const {
    return token(i).isWord() && (isBuiltInType(token(i).text) || isName(i));
}

/// The token behind the type that begins at `i`, the mark of a reference not included; `i` when
/// there is none.
std::size_t SyntaxReader::behindType(std::size_t i) const {
    const std::size_t begin = i;
    if (is(i, "const")) ++i;
    if (is(i, "::")) ++i;
    if (!mayNameType(i)) return begin;
    constexpr int kLongestPath = 64;
    ++i;
    for (int parts = 0; parts < kLongestPath && is(i, "::") && isName(i + 1); ++parts) i += 2;
    if (is(i, "<")) {
        const std::size_t behind = behindArguments(i);
        if (behind == i) return begin;
        i = behind;
    }
    for (;;) {
        if (is(i, "[") && is(i + 1, "]"))
            i += 2;
        else if (is(i, "@"))
            i += is(i + 1, "const") ? 2 : 1;
        else
            return i;
    }
}

/// The token behind the list of types that opens at `i`; `i` when it is none.
std::size_t SyntaxReader::behindArguments(std::size_t i) const {
    constexpr std::size_t kMostTokens = 128;
    constexpr std::string_view kInside = "[]@,::const";
    const std::size_t end = std::min(tokens_.size(), i + kMostTokens);
    int depth = 0;
    for (std::size_t at = i; at < end; ++at) {
        const ScriptToken& found = tokens_[at];
        if (found.is("<"))
            ++depth;
        else if (found.is(">") || found.is(">>") || found.is(">>>"))
            depth -= static_cast<int>(found.text.size());
        else if (!mayNameType(at) && (found.kind == ScriptToken::Kind::text ||
                                      kInside.find(found.text) == std::string_view::npos))
            return i;
        if (depth == 0) return at + 1;
        if (depth < 0) return i;
    }
    return i;
}

}  // namespace korvant
