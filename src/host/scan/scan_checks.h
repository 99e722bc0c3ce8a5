// The single checks of the scan ahead of the compiler.
#pragma once

#include <optional>
#include <string>

#include "host/engine/limits.h"
#include "host/scan/source_outline.h"
#include "host/scan/source_tokens.h"

namespace korvant {

struct ScanFinding {
    std::size_t token;  ///< where
    std::string text;   ///< what is wrong
};

using ScanResult = std::optional<ScanFinding>;

/// Names, qualified names and type arguments. The compiler words its messages in a buffer of
/// 1,023 bytes and reads beyond it when they are longer; all the bounds on bytes keep a message
/// with two such names below that.
ScanResult checkNames(const TokenList& tokens, const Outline& outline, const Limits& limits);

/// Declarations and calls that would make such a message too long.
ScanResult checkMessages(const TokenList& tokens, const Outline& outline);

/// What is nested deeper than the compiler's recursion holds on a stack of 1 MiB.
ScanResult checkNesting(const TokenList& tokens, const Outline& outline, const Limits& limits);

/// Default arguments that call functions with default arguments, which the compiler writes out at
/// every call: doubling, or without end.
ScanResult checkDefaultArguments(const TokenList& tokens, const Outline& outline);

/// Handles that are assigned to themselves, which the engine does not survive.
ScanResult checkHandles(const TokenList& tokens);

/// What the compiler takes more than some ten seconds for, by its own costs: the square of a
/// function's variables, jumps and operators, of a class's members, of all declarations.
ScanResult checkWork(const TokenList& tokens, const Outline& outline);

}  // namespace korvant
