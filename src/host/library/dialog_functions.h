// What scripts call to talk to the user, to show progress, and to measure time.
#pragma once

#include <span>

#include "host/engine/registration.h"
#include "host/run/script_session.h"
#include "host/services/frontend.h"

namespace korvant {

/// Dialogs and progress: Prompt, Question, Information, Warning, Error, Progress.
int registerDialogFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> dialogFunctionRows();

/// Run time: SetMaxRunTime, GetSystemTime.
int registerTimingFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> timingFunctionRows();

/// Shows a box for the running script with the framework switched to the module and the console's
/// text handed over first, and counts it: after Limits::boxesBeforeStopButton boxes in a run it
/// offers one more button that stops the script. Answers 0 when that is chosen, and from then on
/// without showing anything. Whether waiting counts against the run time is the caller's business
/// (InteractionScope).
int showScriptBox(MessageBoxRequest request);

/// For as long as it lives the framework is switched to the module's resources.
class UiScopeGuard {
  public:
    UiScopeGuard();
    ~UiScopeGuard();
    UiScopeGuard(const UiScopeGuard&) = delete;
    UiScopeGuard& operator=(const UiScopeGuard&) = delete;

  private:
    void (*scope_)(bool enter);
};

/// What every prompt needs around it: what was printed is handed over, waiting does not count
/// against the run time, the framework is switched to the module's resources.
class PromptScope {
  public:
    PromptScope();
    ~PromptScope();
    PromptScope(const PromptScope&) = delete;
    PromptScope& operator=(const PromptScope&) = delete;
    Frontend& frontend();

  private:
    InteractionScope waiting_;
    UiScopeGuard resources_;
};

}  // namespace korvant
