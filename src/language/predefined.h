// What an engine offers, as declarations in the form "as.predefined" of AngelScript tools.
#pragma once

#include <span>
#include <string>

#include "host/engine/registration.h"

namespace korvant {

/// Types with their members, enums, function types, functions and variables, with the library's
/// sentences as remarks above them.
std::string predefinedText(asIScriptEngine& engine, std::span<const FunctionFamily> families);

}  // namespace korvant
