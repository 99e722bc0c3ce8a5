// What scripts call to print, read, colour and open files.
#pragma once

#include <span>

#include "host/engine/registration.h"

namespace korvant {

/// Files: open, append to and close the one input and the one output file of a run.
int registerFileFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> fileFunctionRows();

/// Console: print, read values and keys, clear, colours, cursor.
int registerConsoleFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> consoleFunctionRows();

}  // namespace korvant
