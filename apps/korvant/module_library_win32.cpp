#include "module_library.h"

#include <windows.h>

#include <string>

#include "base/system/user_folders.h"
#include "base/system/wide_text_win32.h"
#include "source_report.h"

namespace korvant_app {
namespace {

constexpr char kName[] = "KorvantIDE.dll";

}  // namespace

/// By its full path, and nothing of another folder in its place.
void* openModule() {
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

ModuleAddress addressInModule(void* library, const char* name) {
    return reinterpret_cast<ModuleAddress>(GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace korvant_app
