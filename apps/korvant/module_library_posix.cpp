#include <dlfcn.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "module_library.h"
#include "source_report.h"

namespace fs = std::filesystem;

namespace korvant_app {
namespace {

constexpr char kName[] = "libkorvantide.so";

void* open() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    std::string reason;
    for (const fs::path& place : {folder, folder / ".." / "lib", folder / KORVANT_LIBRARY_FOLDER}) {
        if (!fs::exists(place / kName, error)) continue;
        if (void* library = dlopen((place / kName).c_str(), RTLD_NOW | RTLD_LOCAL)) return library;
        reason = dlerror();
    }
    complain(reason.empty() ? std::string(kName) + " is not beside the program" : reason);
    return nullptr;
}

template <class Function>
bool find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (!function) complain(std::string("the module has no ") + name);
    return function != nullptr;
}

bool findAll(void* library, ModuleFunctions& functions) {
    return find(library, "ConfigureScriptEngine", functions.configure) &&
           find(library, "RunApplication", functions.runApplication) &&
           find(library, "RunScriptEditor", functions.runEditor) &&
           find(library, "GetEditedFile", functions.editedFile) &&
           find(library, "ReleaseScriptEngine", functions.release) &&
           find(library, "SetScriptLimits", functions.setLimits) &&
           find(library, "FeedScriptInput", functions.feedInput) &&
           find(library, "GetLastRunResult", functions.lastRunResult) &&
           find(library, "GetUnwrittenFile", functions.unwrittenFile) &&
           find(library, "CountBuildMessages", functions.countMessages) &&
           find(library, "GetBuildMessage", functions.message) &&
           find(library, "RequestScriptStop", functions.requestStop);
}

}  // namespace

const ModuleFunctions* loadModule() {
    static ModuleFunctions functions;
    if (functions.requestStop) return &functions;
    void* library = open();
    return library && findAll(library, functions) ? &functions : nullptr;
}

}  // namespace korvant_app
