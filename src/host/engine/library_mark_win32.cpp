#include <windows.h>

#include "host/engine/library_mark.h"

namespace korvant {

/// Engines are part of the program there, or a library that the program's folder has anyway.
std::string libraryFileAt(const void*) {
    return {};
}

bool libraryAtExports(const void* address, const char* name) noexcept {
    constexpr DWORD kWhere =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = nullptr;
    // Nowhere would be the program.
    return address != nullptr &&
           GetModuleHandleExA(kWhere, static_cast<LPCSTR>(address), &module) != 0 &&
           GetProcAddress(module, name) != nullptr;
}

}  // namespace korvant
