#include "host/engine/script_calls.h"

#include "host/engine/active_context.h"
#include "host/engine/native_call.h"

namespace korvant {

bool runningScriptIsWell() noexcept {
    asIScriptContext* const context = activeContext();
    return context == nullptr || context->GetState() == asEXECUTION_ACTIVE;
}

ScriptCalls::~ScriptCalls() {
    if (context_ == nullptr) return;
    if (!nested_) {
        engine_.ReturnContext(context_);
        return;
    }
    context_->PopState();
    forward(*context_);
}

void ScriptCalls::forward(asIScriptContext& outer) noexcept {
    if (aborted_)
        outer.Abort();
    else if (failed_)
        outer.SetException(exception_.c_str());
    if (suspended_) outer.Suspend();
}

bool ScriptCalls::takeNew() noexcept {
    asIScriptContext* const running = activeContext();
    nested_ =
        running != nullptr && running->GetEngine() == &engine_ && running->PushState() == asSUCCESS;
    context_ = nested_ ? running : engine_.RequestContext();
    return context_ != nullptr;
}

asIScriptContext* ScriptCalls::refuse() noexcept {
    failed_ = true;
    exception_.assign("Out of memory");  // short enough to take none
    return nullptr;
}

/// Whoever suspends the context from a callback of the host's is obeyed after the native function:
/// what was called from inside it can only be run to its end.
bool ScriptCalls::endOtherwise(int result) noexcept {
    for (; result == asEXECUTION_SUSPENDED; result = context_->Execute()) suspended_ = true;
    if (result != asEXECUTION_FINISHED) keepFailure(result);
    return !failed_;
}

void ScriptCalls::keepFailure(int result) noexcept {
    failed_ = true;
    aborted_ = result == asEXECUTION_ABORTED;
    try {
        const char* const text =
            result == asEXECUTION_EXCEPTION ? context_->GetExceptionString() : nullptr;
        exception_ = text != nullptr ? text : "The call failed";
    } catch (...) {
        exception_.assign("Out of memory");
    }
}

}  // namespace korvant
