// Calls of script functions from inside a native function.
#pragma once

#include <string>

#include "host/engine/engine_compat.h"

namespace korvant {

/// Calls functions on the context that runs on this thread, nested, or else on one of the engine's.
/// It is taken at the first call and given back at the end. How a call failed reaches the script
/// that runs: an exception with its description, an abortion, a suspension when the native function
/// has returned.
class ScriptCalls {
  public:
    explicit ScriptCalls(asIScriptEngine& engine) : engine_(engine) {}
    ~ScriptCalls();
    ScriptCalls(const ScriptCalls&) = delete;
    ScriptCalls& operator=(const ScriptCalls&) = delete;

    /// The context with `function` prepared, for its arguments; null when that failed or an earlier
    /// call did.
    asIScriptContext* prepare(asIScriptFunction& function) noexcept {
        if (failed_) return nullptr;
        if (takeContext() && context_->Prepare(&function) == asSUCCESS) return context_;
        return refuse();
    }
    /// Runs what was prepared. False when it did not come to its end.
    bool execute() noexcept {
        const int result = context_->Execute();
        return result == asEXECUTION_FINISHED || endOtherwise(result);
    }
    bool failed() const noexcept { return failed_; }

  private:
    bool takeContext() noexcept { return context_ != nullptr || takeNew(); }
    bool takeNew() noexcept;
    asIScriptContext* refuse() noexcept;
    bool endOtherwise(int result) noexcept;
    void keepFailure(int result) noexcept;
    void forward(asIScriptContext& outer) noexcept;

    asIScriptEngine& engine_;
    asIScriptContext* context_ = nullptr;
    bool nested_ = false;
    bool failed_ = false;
    bool aborted_ = false;
    bool suspended_ = false;
    std::string exception_;
};

/// True while the script that runs on this thread can go on: it has met no exception and is not
/// ended. Also true where none runs.
bool runningScriptIsWell() noexcept;

}  // namespace korvant
