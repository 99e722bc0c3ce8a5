// Scripts that go wrong, or nearly: what people type while they write, and what nobody would.
// None of them opens a file. Each text is the work of the choices alone.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/choices.h"

namespace korvant::test {

/// Expressions of every operator over every kind of operand, where they fit and where they do not.
std::string faultyExpressions(Choices& choices);

/// A whole program of classes, accessors, mixins, lambdas, lists, named arguments and handlers,
/// with one token broken.
std::string brokenProgram(Choices& choices);

/// One token of `script` left out, doubled, exchanged or replaced, or all behind it cut off.
std::string editedScript(std::string_view script, Choices& choices);

/// What builds and runs arrays, strings and property objects at their edges.
std::string edgeProgram(Choices& choices);

/// Every type, in every way it can come into a function or out of one, in every use. Number `index`
/// of systematicScripts(); no choices.
std::size_t systematicScripts();
std::string systematicScript(std::size_t index);

/// The parts of a script that a compiler tells apart, blanks and comments as parts of their own.
std::vector<std::string> tokenTexts(std::string_view script);

}  // namespace korvant::test
