// korvant run --debug=PORT: a debugging client may look at the run.
#pragma once

#include <string>

#include "korvantide/host_interface.h"

namespace korvant_app {

/// Listens with the functions of the program or of the module, says on standard error where, and
/// makes the run wait for a client. The token is KORVANT_DEBUG_TOKEN of the environment; without
/// one it is made and said as well. False, with the reason on standard error, when the port cannot
/// be had.
bool openDebugPort(int port, const std::string& script,
                   decltype(&StartScriptDebugServer) startDebugServer);

}  // namespace korvant_app
