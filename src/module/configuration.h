// Setting an engine up with everything that scripts can call.
#pragma once

#include "host/run/script_session.h"

namespace korvant {

/// The context of the module for `engine`, which the caller keeps with one reference of its own;
/// null on failure and while another thread is inside an entry point. `services` tells whom the
/// module's session talks to from now on; null: it goes on with whom it has.
asIScriptContext* configureEngine(asIScriptEngine* engine,
                                  SessionServices (*services)() = nullptr) noexcept;

}  // namespace korvant
