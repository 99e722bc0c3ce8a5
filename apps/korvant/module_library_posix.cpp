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

}  // namespace

void* openModule() {
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

ModuleAddress addressInModule(void* library, const char* name) {
    return reinterpret_cast<ModuleAddress>(dlsym(library, name));
}

}  // namespace korvant_app
