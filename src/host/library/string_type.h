// The script type `string` as scripts see it.
#pragma once

#include <span>

#include "host/engine/registration.h"

namespace korvant {

/// The type, its factories, its literals, its operators and conversions, in their order.
int registerStringType(asIScriptEngine* engine);

/// Its methods, for the manual and completion.
std::span<const FunctionRow> stringTypeRows();

}  // namespace korvant
