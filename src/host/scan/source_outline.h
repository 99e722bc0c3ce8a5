// Which brackets belong together in a script's text, and what is declared where.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/scan/source_tokens.h"

namespace korvant {

/// Token indexes; `end` is the first one that does not belong to it.
struct TokenRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// A function, method, constructor, accessor or function type outside of code.
struct FunctionOutline {
    std::size_t name = 0;    ///< the token before the parameter list
    TokenRange declaration;  ///< from its first word to behind the parameter list
    TokenRange parameters;   ///< inside the parentheses
    TokenRange body;         ///< inside the braces; empty for none
    std::size_t owner = 0;   ///< index of its class, or kNone
};

struct ClassOutline {
    std::size_t name = 0;
    std::vector<std::size_t> bases;  ///< tokens
    std::size_t members = 0;
};

/// A variable outside of functions.
struct GlobalOutline {
    std::size_t name = 0;
    TokenRange value;  ///< its initialiser; empty for none
};

/// What a text declares, as far as that can be told without understanding it. A wrong text gives
/// some outline too.
struct Outline {
    static constexpr std::size_t kNone = ~std::size_t{0};

    explicit Outline(const TokenList& tokens);

    /// For each opening bracket the token that closes it, or the one where an unclosed bracket
    /// loses its meaning; for all other tokens themselves.
    std::vector<std::uint32_t> closing;
    std::vector<FunctionOutline> functions;
    std::vector<ClassOutline> classes;
    std::vector<GlobalOutline> globals;
    std::size_t namespaces = 0;
    std::size_t enumValues = 0;
    std::size_t functionTypes = 0;
    std::size_t longestPath = 0;   ///< bytes of the longest namespace prefix, "::" included
    std::size_t longestType = 0;   ///< bytes of the longest name of a declared type
    std::size_t deepestNames = 0;  ///< a token inside the longest namespace prefix
};

}  // namespace korvant
