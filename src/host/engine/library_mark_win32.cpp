#include <windows.h>

#include "host/engine/library_mark.h"

namespace korvant {

bool libraryAtExports(const void* address, const char* name) noexcept {
    constexpr DWORD kWhere =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = nullptr;
    return GetModuleHandleExA(kWhere, static_cast<LPCSTR>(address), &module) != 0 &&
           GetProcAddress(module, name) != nullptr;
}

}  // namespace korvant
