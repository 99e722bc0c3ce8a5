// What a script's text says without being compiled: declarations, scopes, statements, names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "language/text_document.h"
#include "language/tokens.h"

namespace korvant {

enum class DeclarationKind : std::uint8_t {
    nameSpace,
    classType,
    mixinType,
    interfaceType,
    enumType,
    enumValue,
    functionType,  ///< funcdef
    typeAlias,     ///< typedef
    function,      ///< outside of classes; imported ones too
    method,
    constructor,
    destructor,
    accessor,  ///< "get" or "set" of a property
    lambda,    ///< a function without a name
    globalVariable,
    memberVariable,
    property,  ///< a member or global variable with accessors in braces
    local,
    parameter,
};

bool isVariable(DeclarationKind kind) noexcept;
bool isCallable(DeclarationKind kind) noexcept;
bool isType(DeclarationKind kind) noexcept;

inline constexpr int kNoIndex = -1;

/// All ranges are bytes of the text; an empty one says that there is none.
struct Declaration {
    DeclarationKind kind = DeclarationKind::local;
    std::string_view name;  ///< empty for a lambda or a parameter without one
    ByteRange nameRange;
    ByteRange whole;       ///< from its first word to its ";" or "}"
    ByteRange type;        ///< of a variable; what a function returns; of an enum its integer type
    ByteRange parameters;  ///< with the parentheses
    ByteRange body;        ///< with the braces
    std::size_t setFrom =
        0;                 ///< of a local: where its statement, and so its initialiser, has ended
    int scope = 0;         ///< in which its name is known
    int inner = kNoIndex;  ///< the scope that it opens
    bool isPrivate = false;
    bool isProtected = false;
    std::vector<std::string_view> bases;  ///< of a class or interface, as written
};

struct Scope {
    enum class Kind : std::uint8_t { file, nameSpace, type, function, block };
    Kind kind = Kind::block;
    ByteRange range;
    int parent = kNoIndex;
    int owner = kNoIndex;  ///< the declaration that opens it; none for the file and for blocks
};

struct NameUse {
    enum class Role : std::uint8_t {
        declares,
        reads,
        writes,   ///< "name ="
        changes,  ///< "name +=", "name++"
        calls,
        type,
        qualifies,  ///< stands before "::"
        labels,     ///< "name:" of an argument
    };
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
    int scope = 0;               ///< in which it stands
    int declaration = kNoIndex;  ///< with `declares`: which
    Role role = Role::reads;
    bool member = false;     ///< stands behind "."
    bool qualified = false;  ///< stands behind "::"
    ByteRange range() const { return {begin, begin + std::size_t{size}}; }
};

/// Where the compiled code can stop. The parts of the head of a `for` are statements of their own.
struct Statement {
    ByteRange range;
    int scope = 0;
};

/// Everything in the order of the text; a declaration stands before what it contains.
struct Syntax {
    std::vector<Declaration> declarations;
    std::vector<Scope> scopes;  ///< the first one is the file's
    std::vector<NameUse> uses;
    std::vector<Statement> statements;
};

/// Reads any text, however broken, in time linear to its length for all texts that the compiler
/// takes. What is nested deeper than 200 levels is read as names only. `tokens` are those of the
/// text, comments left out. Names point into `text`.
Syntax readSyntax(std::string_view text, const std::vector<ScriptToken>& tokens);

}  // namespace korvant
