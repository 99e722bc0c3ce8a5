// The compile worker itself: what the program korvant-worker does.
#pragma once

#include <span>

#include "host/engine/engine_compat.h"
#include "host/engine/registration.h"

namespace korvant {

/// Serves the program that started this process until it is gone: builds texts with a mirror of its
/// engine and answers with the compiler's messages, or says what the names of a text mean. Nothing
/// of a text is executed. `configure` sets a new engine up with everything that scripts can call
/// (null on failure); `families` say what its functions do. Of texts that wait only the newest is
/// built, of questions the newest is answered.
int runCompileWorker(asIScriptContext* (*configure)(asIScriptEngine* engine),
                     std::span<const FunctionFamily> families);

}  // namespace korvant
