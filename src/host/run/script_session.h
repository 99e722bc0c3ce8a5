// Compiling and running scripts: the one owner of everything that a run touches.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/system/clock.h"
#include "host/engine/engine_compat.h"
#include "host/engine/limits.h"
#include "host/engine/registration.h"
#include "host/run/build_guard.h"
#include "host/run/build_messages.h"
#include "host/run/run_outcome.h"
#include "host/run/run_participant.h"
#include "host/run/side_run.h"
#include "host/run/stop_policy.h"
#include "host/services/console.h"
#include "host/services/frontend.h"

namespace korvant {

/// Whom a session talks to. Nothing is owned; each must outlive the session or be replaced.
/// A null console or front end means the do-nothing one.
struct SessionServices {
    Console* console = nullptr;
    Frontend* frontend = nullptr;
    Clock* clock = nullptr;
    /// Switches the framework to the module's resources (true) and back (false); may be null.
    void (*uiScope)(bool enter) = nullptr;
};

/// Registers one family of types or functions. Returns the first negative engine result, else 0.
using RegisterFamily = int (*)(asIScriptEngine* engine);

class ScriptSession {
  public:
    ScriptSession();
    ~ScriptSession();
    ScriptSession(const ScriptSession&) = delete;
    ScriptSession& operator=(const ScriptSession&) = delete;

    void setServices(const SessionServices& services);
    const SessionServices& services() const noexcept;  ///< no null among them but uiScope
    /// From now on `cover` is the front end of the services, whichever that is, and may ask it;
    /// null: nobody stands before it. Not owned. Must not change during a run.
    void coverFrontend(Frontend* cover) noexcept;
    Frontend& coveredFrontend() const noexcept;  ///< the one of the services themselves
    void setLimits(const Limits& limits);
    const Limits& limits() const noexcept;

    /// Sets the engine up and creates the context of the module, which the caller keeps with one
    /// reference of its own; null on failure. A second call for the same engine returns the same
    /// context. Families register in the order given. `services` replace those of before; null:
    /// the session keeps what it has.
    asIScriptContext* configure(asIScriptEngine* engine, std::span<const RegisterFamily> families,
                                const SessionServices* services = nullptr);
    /// From now on `participant`, which must outlive the session, is told of runs. Once more for
    /// the same one changes nothing.
    void join(RunParticipant& participant);
    /// Discards the module "main" and everything that the session holds of `engine`, within a
    /// bounded time. The engine may be released afterwards.
    void release(asIScriptEngine* engine);

    /// 1 when the text built as the module "main", else 0 and the messages say why.
    std::int32_t compile(asIScriptEngine* engine, const std::string& text);
    /// The same without executing anything of the script: nothing is left of the module, which
    /// cannot be run.
    std::int32_t check(asIScriptEngine* engine, const std::string& text);
    /// The compiler of this engine was left in the middle of a build: nothing builds with it.
    bool broken(const asIScriptEngine* engine) const noexcept;
    /// Asked ahead of every build, where limits().guardBuilds is set; must outlive the session or
    /// be replaced. Null: nobody.
    void setBuildGuard(BuildGuard* guard) noexcept;
    /// Executes a context that the host prepared.
    RunOutcome run(asIScriptContext* context);
    /// Builds `text` and runs its int main(). `breakpoints`: 1-based lines, null for none.
    RunOutcome runApplication(asIScriptEngine* engine, asIScriptContext* context,
                              const std::string& text,
                              const std::vector<std::int32_t>* breakpoints);
    RunOutcome continueApplication(asIScriptEngine* engine, asIScriptContext* context,
                                   const std::vector<std::int32_t>* breakpoints, StepMode mode);
    /// Ends a suspended run and lets go of its objects.
    void abandon(asIScriptContext* context);
    /// No context is the current one until the next run, so that no other may be told from it.
    void forgetContext() noexcept;
    /// A suspended run that is continued after all may stop at the line where it stands.
    void forgetLine() noexcept;

    /// The context that runs or ran last; null when it was destroyed or forgotten. Not counted.
    asIScriptContext* currentContext() const noexcept;
    BuildMessages& buildMessages() noexcept;
    const RunFailure& lastFailure() const noexcept;
    bool running() const noexcept;  ///< a compile or an execution is under way

    /// Safe from any thread and from a signal handler. The run ends before its next statement, and
    /// natives that ask shouldStop() end early.
    void requestStop() noexcept;
    /// In a copy of the process, which has none of the threads of this one: runs that go on there
    /// look at their limit themselves.
    void loseThreads() noexcept;
    /// True when a native function that takes long should end: stop request, time-out while not
    /// interacting, or the hard ceiling. The line callback then ends the run. Looks at the clock
    /// (some 20 ns), so a tight loop asks every few thousand steps.
    bool shouldStop();
    bool stopRequested() const noexcept;
    /// The maximum as an unsigned number; -1 is 2^32 - 1. Restarts the deadline.
    void setMaxRunTime(std::int32_t milliseconds);
    std::uint32_t maxRunTime() const noexcept;  ///< milliseconds
    std::uint32_t limitBegan() const noexcept;  ///< the tick at which the limit last began anew
    /// Deadline := now + maximum run time: a value was read from a file.
    void restartLimit();
    /// While a built-in waits for the user the time limit stands still, and begins anew when they
    /// have answered. May stand inside each other.
    void beginInteraction();
    void endInteraction();
    /// Of the interactions under way: nobody was there, and nothing was read. They are over without
    /// the limit beginning anew, or a loop around such a question would never end.
    void noteUnattended() noexcept;
    bool interacting() const noexcept;

    /// Sets a script exception on the context that runs; nothing outside a script.
    void raise(const char* description);
    /// Remembers a failed write for the report at the end of the run; once per file.
    void noteWriteFailure(const std::string& file, int systemError);
    /// A message box of the module: its caption is the module's; returns the button.
    int messageBox(const std::string& text, std::uint32_t style);

    // For debuggers.

    /// Asked from now on by every run, and by the making of global variables; null: nobody. Not
    /// owned. Must not change during a run.
    void setStopPolicy(StopPolicy* policy);
    StopPolicy* stopPolicy() const noexcept;
    /// The lines at which the policy is asked, whatever the source; null: none. Also during a run.
    /// Looks again at what the policy wants.
    void setStopLines(const std::vector<std::int32_t>* lines);
    const std::vector<std::int32_t>& stopLines() const noexcept;
    /// The policy's atAttention() is called before the next statement, some 20 ms later at most
    /// while statements run. Safe from any thread.
    void requestAttention() noexcept;
    /// Messages of compilers go there, from now on, instead of to buildMessages(); null: back
    /// again. The sink of before.
    BuildMessages* setMessageSink(BuildMessages* sink) noexcept;
    /// Between these the script stands still inside a call: no limit counts. See HoldScope.
    void beginHold();
    void endHold();
    bool held() const noexcept;
    /// Executes a prepared context, which is not the run's, under limits of its own.
    SideRunResult runAside(asIScriptContext& context, const SideRunLimits& limits);
    /// Ends what runAside() executes. Safe from any thread while it does.
    void cancelAside() noexcept;
    /// Nobody may be asked anything now: raise an exception instead.
    bool quiet() const noexcept;
    /// A function for runAside(), with one reference for the caller, compiled in a namespace of
    /// `module` and seeing what is registered under `accessBits` as well. Its first line is line 0.
    /// Null, and the messages say why.
    asIScriptFunction* compileFunction(asIScriptModule& module, const std::string& text,
                                       const std::string& nameSpace, std::uint32_t accessBits,
                                       BuildMessages& messages);

  private:
    struct Impl;
    int show(const MessageBoxRequest& request);
    Impl* impl_;
};

/// The one session of the module. Never destroyed, so that nothing of it runs at exit.
ScriptSession& moduleSession();

/// moduleSession().shouldStop(), for whoever takes a plain function.
bool runShouldStop();

/// Waiting for the user does not count against the run time.
class InteractionScope {
  public:
    InteractionScope() { moduleSession().beginInteraction(); }
    ~InteractionScope() { moduleSession().endInteraction(); }
    InteractionScope(const InteractionScope&) = delete;
    InteractionScope& operator=(const InteractionScope&) = delete;
};

/// The script stands still inside a call of a stop policy: its limits do too.
class HoldScope {
  public:
    explicit HoldScope(ScriptSession& session) : session_(session) { session_.beginHold(); }
    ~HoldScope() { session_.endHold(); }
    HoldScope(const HoldScope&) = delete;
    HoldScope& operator=(const HoldScope&) = delete;

  private:
    ScriptSession& session_;
};

/// The section of a script's main text.
inline constexpr char kMainSource[] = "script";

}  // namespace korvant
