// What the library keeps for the length of a run, all of it.
#pragma once

#include "host/engine/engine_compat.h"

namespace korvant {

/// Console, files, dialogs and strings of the library join the runs of the module's session. To
/// stand in the registration order; nothing is registered with the engine. 0.
int joinRuns(asIScriptEngine* engine);

}  // namespace korvant
