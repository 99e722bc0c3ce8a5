#include <windows.h>

#include "module/own_looks.h"

namespace korvant {
namespace {

constexpr int kManifestResource = 2;

HMODULE ownModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

/// Kept for the process; INVALID_HANDLE_VALUE where the manifest cannot be used.
HANDLE makeContext() {
    wchar_t path[32768];
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    context.hModule = ownModule();
    context.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
    context.lpSource = path;
    GetModuleFileNameW(context.hModule, path, 32768);
    return CreateActCtxW(&context);
}

int depth = 0;
ULONG_PTR cookie = 0;
bool active = false;

}  // namespace

void useOwnLooks(bool enter) noexcept {
    static const HANDLE context = makeContext();
    if (enter && depth++ == 0) active = ActivateActCtx(context, &cookie) != 0;
    if (!enter && depth > 0 && --depth == 0 && active) active = !DeactivateActCtx(0, cookie);
}

}  // namespace korvant
