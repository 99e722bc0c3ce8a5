// The reader behind readSyntax(). Only the files read_*.cpp see it.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "language/syntax.h"

namespace korvant {

/// Reads declarations, statements and expressions by descent over the tokens. Token indexes are
/// bounded by `end`, the first token that does not belong to what is read; every function moves
/// `at_` forward or the caller does.
class SyntaxReader {
  public:
    SyntaxReader(std::string_view text, const std::vector<ScriptToken>& tokens);
    Syntax read();

  private:
    using Kind = DeclarationKind;
    using Role = NameUse::Role;

    static constexpr int kDeepest = 200;

    /// What is written before the declared thing itself.
    struct Head {
        std::size_t begin = 0;  ///< token
        bool isPrivate = false;
        bool isProtected = false;
        bool mixin = false;
    };

    // Tokens.
    const ScriptToken& token(std::size_t i) const {
        return i < tokens_.size() ? tokens_[i] : none_;
    }
    bool is(std::size_t i, std::string_view what) const { return token(i).is(what); }
    bool isName(std::size_t i) const { return token(i).isName(); }
    std::size_t closing(std::size_t i) const { return closing_[i]; }
    std::size_t past(std::size_t i) const;

    // Brackets.
    struct OpenBracket {
        std::size_t token = 0;
        std::size_t indent = 0;             ///< of the line on which it stands, in bytes
        std::optional<std::size_t> inside;  ///< of the first line behind it
    };
    class Brackets;
    void pairBrackets();
    bool beginsHead(std::size_t i) const;
    bool beginsFunction(std::size_t i) const;
    std::size_t nameOfHead(std::size_t i) const;
    bool holdsDeclarations(std::size_t brace) const;
    bool isNamespace(std::size_t brace) const;
    std::size_t endOfText() const { return text_.size(); }
    std::size_t beginOf(std::size_t i) const;
    std::size_t endOf(std::size_t i) const;
    ByteRange rangeOf(std::size_t first, std::size_t behind) const;
    bool beginsLine(std::size_t i) const;

    // What is noted.
    int declare(Kind kind, std::size_t name, std::size_t first);
    int declareNameless(Kind kind, std::size_t first);
    Declaration& made(int i) { return syntax_.declarations[static_cast<std::size_t>(i)]; }
    void use(std::size_t i, Role role);
    void useTypes(std::size_t first, std::size_t behind);
    int openScope(Scope::Kind kind, ByteRange range, int owner);
    void closeScope() { scope_ = syntax_.scopes[static_cast<std::size_t>(scope_)].parent; }
    void statement(std::size_t first, std::size_t behind);

    // Types.
    std::size_t behindType(std::size_t i) const;
    std::size_t behindArguments(std::size_t i) const;
    bool mayNameType(std::size_t i) const;

    // Declarations.
    void readDeclarations(std::size_t end, int owner);
    void readDeclaration(std::size_t end, int owner);
    Head readHead(std::size_t end);
    bool readKeyword(const Head& head, std::size_t end);
    void readNamespace(const Head& head, std::size_t end);
    void readClass(const Head& head, std::size_t end, Kind kind);
    void readEnum(const Head& head, std::size_t end);
    void readTypeAlias(const Head& head, std::size_t end);
    bool readTyped(const Head& head, std::size_t end, int owner);
    bool looksLikeFunction(std::size_t open, std::size_t type, std::size_t end, int owner) const;
    int readFunction(Kind kind, std::size_t name, const Head& head, ByteRange type,
                     std::size_t end);
    void readParameters(std::size_t open);
    void readParameter(std::size_t end);
    void readBodyOf(int function, std::size_t end);
    void readProperty(const Head& head, std::size_t name, ByteRange type);
    void readVariables(Kind kind, const Head& head, ByteRange type, std::size_t end);
    void readInitialiser(std::size_t end);
    void apply(const Head& head, int declaration);
    void skipDirective();
    void skipOne(std::size_t end);

    // Statements.
    void readBlock(std::size_t open, std::size_t end);
    void readStatements(std::size_t end);
    void readStatement(std::size_t end);
    bool readControl(std::size_t end);
    void readFor(std::size_t end);
    void readForHead(std::size_t open, std::size_t close);
    void readSwitch(std::size_t end);
    void readBracketed(std::size_t end);
    void readSimple(std::size_t end);
    bool isLocalDeclaration(std::size_t i, std::size_t end) const;
    void findStops();
    std::size_t endOfStatement(std::size_t i, std::size_t end) const;
    bool breaksStatement(std::size_t i) const;
    bool beginsControl(std::size_t i) const;

    // Expressions.
    void readExpression(std::size_t end);
    void readName(std::size_t end);
    void readLambda(std::size_t end);
    Role roleAt(std::size_t i) const;

    std::string_view text_;
    const std::vector<ScriptToken>& tokens_;
    const ScriptToken none_;
    /// Of an opening bracket its partner, or the token where it loses its meaning; else itself.
    std::vector<std::size_t> closing_;
    std::vector<std::size_t> stops_;  ///< see findStops()
    Syntax syntax_;
    std::size_t at_ = 0;
    int scope_ = 0;
    int depth_ = 0;
};

}  // namespace korvant
