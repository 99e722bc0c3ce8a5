#include "module_library.h"

#include <windows.h>

#include <cstring>
#include <string>

#include "editor/user_folders.h"
#include "host/wide_text_win32.h"
#include "source_report.h"

namespace korvant_app {
namespace {

constexpr char kName[] = "KorvantIDE.dll";

/// By its full path, and nothing of another folder in its place.
HMODULE open() {
    const std::string path = korvant::programFolder() + "\\" + kName;
    const HMODULE library =
        LoadLibraryExW(korvant::wideOfUtf8(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (library) return library;
    const DWORD error = GetLastError();
    const bool missing = error == ERROR_MOD_NOT_FOUND || error == ERROR_FILE_NOT_FOUND;
    complain(missing ? std::string(kName) + " is not beside the program"
                     : "cannot load " + path + ": error " + std::to_string(error));
    return nullptr;
}

template <class Function>
bool find(HMODULE library, const char* name, Function& function) {
    const FARPROC address = GetProcAddress(library, name);
    static_assert(sizeof function == sizeof address);
    std::memcpy(&function, &address, sizeof function);
    if (!function) complain(std::string("the module has no ") + name);
    return function != nullptr;
}

bool findAll(HMODULE library, ModuleFunctions& functions) {
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
    const HMODULE library = open();
    return library && findAll(library, functions) ? &functions : nullptr;
}

}  // namespace korvant_app
