#include "module_library.h"

#include <string>

#include "source_report.h"

namespace korvant_app {
namespace {

template <class Function>
bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(addressInModule(library, name));
    if (!function) complain(std::string("the module has no ") + name);
    return function != nullptr;
}

bool findAll(void* library, ModuleFunctions& functions) {
    return find(library, "ConfigureScriptEngine", functions.configure) &&
           find(library, "RunApplication", functions.runApplication) &&
           find(library, "RunScriptEditor", functions.runEditor) &&
           find(library, "SetEditedFile", functions.setEditedFile) &&
           find(library, "GetEditedFile", functions.editedFile) &&
           find(library, "ReleaseScriptEngine", functions.release) &&
           find(library, "SetScriptLimits", functions.setLimits) &&
           find(library, "SetScriptCallbacks", functions.setCallbacks) &&
           find(library, "FeedScriptInput", functions.feedInput) &&
           find(library, "GetLastRunResult", functions.lastRunResult) &&
           find(library, "GetUnwrittenFile", functions.unwrittenFile) &&
           find(library, "CountBuildMessages", functions.countMessages) &&
           find(library, "GetBuildMessage", functions.message) &&
           find(library, "StartScriptDebugServer", functions.startDebugServer) &&
           find(library, "TellScriptDebugExit", functions.tellDebugExit) &&
           find(library, "RequestScriptStop", functions.requestStop);
}

}  // namespace

const ModuleFunctions* loadModule() {
    static ModuleFunctions functions;
    if (functions.requestStop) return &functions;
    void* const library = openModule();
    return library && findAll(library, functions) ? &functions : nullptr;
}

}  // namespace korvant_app
