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

/// Type arguments and dimensions whose time doubles, and names, qualified names and type arguments
/// of more than `longest` bytes. An engine that is not ours words its messages in a buffer of 1,023
/// bytes and reads beyond it when they are longer; the bounds on bytes keep a message with two such
/// names below that.
ScanResult checkNames(const TokenList& tokens, const Outline& outline, std::size_t longest);

/// Declarations and calls that would make such a message too long, where `bounded`; otherwise those
/// that would keep the compiler wording messages for long.
ScanResult checkMessages(const TokenList& tokens, const Outline& outline, bool bounded);

/// What is nested deeper than the compiler's recursion holds on a stack of 1 MiB.
ScanResult checkNesting(const TokenList& tokens, const Outline& outline, const Limits& limits);

/// Default arguments that call functions with default arguments, which the compiler writes out at
/// every call: doubling, or without end.
ScanResult checkDefaultArguments(const TokenList& tokens, const Outline& outline);

/// Handles that are assigned to themselves, and handles that came by reference and are assigned on
/// or called: builds of the engine that are not ours do not survive them.
ScanResult checkHandles(const TokenList& tokens, const Outline& outline);

/// What the compiler takes more than some ten seconds for, by its own costs: the square of a
/// function's variables, jumps and operators, of a class's members, of all declarations.
ScanResult checkWork(const TokenList& tokens, const Outline& outline);

}  // namespace korvant
