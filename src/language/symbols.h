// Names that can be written in a script, for completion and call tips.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine_compat.h"
#include "host/engine/registration.h"

namespace korvant {

struct Symbol {
    enum class Kind { keyword, type, function, variable, value } kind = Kind::variable;
    std::string name;
    std::string type;         ///< of a variable, or what a function returns; "int[]", "Object"
    std::string owner;        ///< the type whose member it is; empty for none
    std::string declaration;  ///< of a function: "int f(int a, string b)"
    int position = -1;        ///< where the script declares it; negative: not in the script
    std::string help;         ///< one sentence; may be empty
};

/// What `engine` offers to every script: functions, types with their members, values. `families`
/// gives the help for those of the run-time library.
std::vector<Symbol> engineSymbols(asIScriptEngine* engine,
                                  std::span<const FunctionFamily> families = {});

/// What a script declares itself, as far as it can be told from a text that may be half written.
/// `offset` is added to the positions.
std::vector<Symbol> scriptSymbols(std::string_view text, int offset = 0);

/// The words of the language itself.
const std::vector<Symbol>& languageWords();

/// A type without what says how it is passed: "const string &in" is "string".
std::string plainType(std::string_view type);
/// The type of an element: of "int[][]" it is "int[]"; empty for a type without elements.
std::string elementType(const std::string& type);
/// The name that the members of a type are registered under: all arrays share one.
std::string memberOwner(const std::string& type);

}  // namespace korvant
