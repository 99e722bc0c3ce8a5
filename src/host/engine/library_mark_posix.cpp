#include <dlfcn.h>

#include "host/engine/library_mark.h"

namespace korvant {

std::string libraryFileAt(const void* address) {
    Dl_info holder{};
    return dladdr(address, &holder) != 0 && holder.dli_fname ? holder.dli_fname : "";
}

bool libraryAtExports(const void* address, const char* name) noexcept {
    Dl_info holder{}, found{};
    if (dladdr(address, &holder) == 0) return false;
    // A program cannot be opened by its name; what it exports itself comes first among all names.
    void* const library = dlopen(holder.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    const void* const symbol = dlsym(library ? library : RTLD_DEFAULT, name);
    const bool own = symbol && dladdr(symbol, &found) != 0 && found.dli_fbase == holder.dli_fbase;
    if (library) dlclose(library);
    return own;
}

}  // namespace korvant
