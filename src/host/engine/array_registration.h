// The script type `array<T>`.
#pragma once

#include "host/engine/registration.h"

namespace korvant {

/// What scripts call on arrays, for the manual and for completion. The type is called "array<T>".
std::span<const FunctionRow> arrayMethodRows();

/// Registers the type and makes it what `T[]` means. Returns the first negative engine result,
/// else 0.
int registerArrayType(asIScriptEngine* engine);

/// Has what is kept with types of arrays go with them.
void keepArrayRecords(asIScriptEngine& engine);

}  // namespace korvant
