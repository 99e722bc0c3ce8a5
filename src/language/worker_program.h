// The compile worker itself: what the program korvant-worker does.
#pragma once

#include "host/engine/engine_compat.h"

namespace korvant {

/// Serves the program that started this process until it is gone: builds texts with a mirror of its
/// engine and answers with the compiler's messages. Nothing of a text is executed. `configure` sets
/// a new engine up with everything that scripts can call (null on failure). Of texts that wait only
/// the newest is built.
int runCompileWorker(asIScriptContext* (*configure)(asIScriptEngine* engine));

}  // namespace korvant
