#include "host/engine/native_call.h"

#include "host/engine/active_context.h"

namespace korvant {

namespace {

void raiseOnActive(const char* description) {
    if (asIScriptContext* const context = activeContext()) context->SetException(description);
}

void (*raiseHook)(const char*) = raiseOnActive;

}  // namespace

void setRaiseHook(void (*hook)(const char* description)) noexcept {
    raiseHook = hook;
}

void raiseInScript(const char* description) noexcept {
    try {
        raiseHook(description);
    } catch (...) {
        // There is no memory to say so.
    }
}

}  // namespace korvant
