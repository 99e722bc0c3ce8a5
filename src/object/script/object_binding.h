// The script type `Object`.
#pragma once

#include <span>

#include "host/engine/registration.h"

namespace korvant {

/// Registers the type, its two factories, its reference counting and its methods, in this order,
/// and sets the hooks around waiting for the user. The type `string` must be registered. Returns
/// the first negative engine result, else 0.
int registerObjectType(asIScriptEngine* engine);

/// The 52 methods in order of registration.
std::span<const FunctionRow> objectMethodRows();

}  // namespace korvant
