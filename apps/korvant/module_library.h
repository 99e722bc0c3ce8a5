// The module as a library that is loaded when it is needed, so that the program runs on machines
// without the toolkit.
#pragma once

#include <memory>

#include "korvantide/host_interface.h"
#include "korvantide/korvantide.h"

namespace korvant_app {

/// What the module exports.
struct ModuleFunctions {
    decltype(&ConfigureScriptEngine) configure = nullptr;
    decltype(&RunApplication) runApplication = nullptr;
    decltype(&RunScriptEditor) runEditor = nullptr;
    decltype(&SetEditedFile) setEditedFile = nullptr;
    decltype(&GetEditedFile) editedFile = nullptr;
    decltype(&ReleaseScriptEngine) release = nullptr;
    decltype(&SetScriptLimits) setLimits = nullptr;
    decltype(&SetScriptCallbacks) setCallbacks = nullptr;
    decltype(&FeedScriptInput) feedInput = nullptr;
    decltype(&GetLastRunResult) lastRunResult = nullptr;
    decltype(&GetUnwrittenFile) unwrittenFile = nullptr;
    decltype(&CountBuildMessages) countMessages = nullptr;
    decltype(&GetBuildMessage) message = nullptr;
    decltype(&StartScriptDebugServer) startDebugServer = nullptr;
    decltype(&TellScriptDebugExit) tellDebugExit = nullptr;
    decltype(&RequestScriptStop) requestStop = nullptr;
};

/// Looks beside the program and then in the library folder beside its own. Null when the module is
/// not there; the reason was given on standard error. It stays loaded.
const ModuleFunctions* loadModule();

// What each system does in its own way.
using ModuleAddress = void (*)();
/// The module's handle; null when it cannot be loaded, with the reason given on standard error.
void* openModule();
/// Null when the module exports no function of that name.
ModuleAddress addressInModule(void* library, const char* name);

}  // namespace korvant_app
