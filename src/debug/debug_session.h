// One debugged run: where it stops, how it goes on, and what can be seen while it stands still.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "debug/breakpoint_book.h"
#include "debug/code_lines.h"
#include "debug/coverage.h"
#include "debug/frames.h"
#include "debug/profiler.h"
#include "debug/script_evaluator.h"
#include "debug/stop_rules.h"
#include "debug/value_tree.h"
#include "host/run/script_session.h"

namespace korvant {

enum class DebugState {
    idle,       ///< nothing runs
    running,    ///< statements are executed, or a native function waits
    held,       ///< stands still inside the run: nobody but the listener has control
    suspended,  ///< stands still, and the call that ran it has returned
    ended       ///< ended with an exception; the stack can be looked at until the next start
};

struct StopInfo {
    StopReason reason = StopReason::step;
    ScriptPlace place;
    std::string text;         ///< of the exception, or the expression whose value changed
    std::vector<int> hitIds;  ///< breakpoints that stopped; the first one is that of `text`
    ExceptionKind exception = ExceptionKind::unhandled;
    bool always = false;  ///< stopped because every exception stops, not because it is unhandled
    std::string before;   ///< value of a data breakpoint before, and now
    std::string now;

    /// Back to the beginning, with the memory that it has.
    void clear() noexcept {
        reason = StopReason::step;
        place.source.clear();
        place.line = place.column = 0;
        text.clear();
        hitIds.clear();
        exception = ExceptionKind::unhandled;
        always = false;
        before.clear();
        now.clear();
    }
};

/// Told what a session does, on the script's thread. Nothing may be thrown.
class DebugListener {
  public:
    virtual ~DebugListener() = default;
    /// Held around all that the script's thread does with the session's parts, but not around
    /// onBuilt(); may be taken again inside. For one who changes breakpoints and rules on another
    /// thread too, and takes the same mutex there.
    virtual std::unique_lock<std::recursive_mutex> exclusive() { return {}; }
    /// A script is built and its breakpoints are resolved. Global variables are not yet made.
    virtual void onBuilt() {}
    /// The run stands still. While it is held (state()), it goes on when this returns: by the last
    /// of goOn(), stepOver() ... that was called in it, or as goOn() when none was. While it is
    /// suspended, it can be continued once the call that ran it has returned.
    virtual void onStopped(const StopInfo& info) = 0;
    virtual void onContinued() {}
    /// A log text of a breakpoint, or why one of its texts cannot be evaluated; ends with a line
    /// feed. `breakpointId` 0: of none.
    virtual void onOutput(const std::string& text, const ScriptPlace& place, int breakpointId) {
        (void)text, (void)place, (void)breakpointId;
    }
    /// Verified, moved or refused: breakpoints whose state changed without being asked for.
    virtual void onBreakpointsChanged(const std::vector<int>& ids) { (void)ids; }
    /// Between two statements of a run for which requestAttention() was called.
    virtual void onAttention() {}
    /// The same inside a native function that takes long: nothing of the run can be looked at.
    virtual void onWait() {}
    /// The run is over.
    virtual void onEnded(const RunFailure& failure) { (void)failure; }
};

/// How a session stops a run.
enum class StopStyle {
    hold,        ///< always inside the run
    suspend,     ///< statements of the run itself suspend it, everything else is held
    suspendOnly  ///< nothing is held: breakpoints stop where the run can be suspended, and no
                 ///< exception or limit does
};

enum class StepBy { line, statement };

/// A value as text with children, or why there is none.
struct ShownValue {
    std::string error;
    bool isVoid = false;
    DebugValue value;
};

/// All functions are for the script's thread unless they say otherwise. While it is attached, every
/// run of the script session is debugged, whoever starts it.
class DebugSession {
  public:
    /// Both must outlive it.
    DebugSession(ScriptSession& session, DebugListener& listener);
    /// Detaches. The engine of its last run must still be there.
    ~DebugSession();
    DebugSession(const DebugSession&) = delete;
    DebugSession& operator=(const DebugSession&) = delete;

    /// Not while something runs. False when another session is attached.
    bool attach();
    void detach();
    bool attached() const noexcept;
    /// The one that is attached to `session`; null: none.
    static DebugSession* attachedTo(ScriptSession& session) noexcept;

    // What is wanted. It may change at any time; call apply() afterwards.
    BreakpointBook& breakpoints() noexcept;
    StopRules& rules() noexcept;
    void setStyle(StopStyle style);
    /// Not owned; null: none. Before a run.
    void setCoverage(Coverage* coverage);
    void setProfiler(Profiler* profiler);
    /// Makes a run that is under way look at what is wanted now; called on another thread, at one
    /// of its next statements.
    void apply();

    /// Builds `text` as the main text and runs its int main(), attached meanwhile. Returns when the
    /// run is over or suspended.
    RunOutcome start(asIScriptEngine* engine, asIScriptContext* context, const std::string& text);
    /// From inside a stop: the run is ended, and the same text is run again by the start() that is
    /// under way. False when start() does not run.
    bool restart();
    DebugState state() const noexcept;
    const StopInfo& stop() const noexcept;  ///< the last one

    /// While suspended: the breakpoints of whoever started the run, ascending, where they are
    /// others by now than those that it was started with.
    void setHostLines(std::vector<std::int32_t> lines);

    // How it goes on. While held these are remembered until onStopped() returns. While suspended
    // they run on and return as start() does. False when nothing stands still.
    bool goOn();
    bool stepOver(StepBy by = StepBy::line);
    bool stepInto(StepBy by = StepBy::line);
    /// Stops in the caller of `frame`, which counts as Frames does.
    bool stepOut(unsigned frame = 0);
    bool runTo(const ScriptPlace& place);
    /// The run ends: a held one when onStopped() returns, a suspended one now, one that runs at
    /// its next statement, also from another thread.
    void stopRun();

    /// The run stops before its next statement. From any thread.
    void requestPause() noexcept;
    /// onAttention() is called before the next statement, some 20 ms later at most while statements
    /// run. From any thread.
    void requestAttention() noexcept;
    /// The function of the library that runs now, "Input"; empty between statements and when
    /// nothing runs. From any thread while a run is under way; only to be shown.
    std::string waitingIn() const;

    // What can be seen while it stands still.
    const Frames& frames() const noexcept;
    /// How many calls lead to that of `frame`, itself included; 0 where there is none.
    unsigned callsOf(unsigned frame) const;
    ValueTree& values() noexcept;
    /// `frame` counts as Frames does; one beyond the last: global variables.
    ValueNode scope(ValueScope which, unsigned frame);
    bool hasThis(unsigned frame) const;
    /// What the names in a frame mean.
    FrameScope names(unsigned frame) const;
    Evaluation evaluate(unsigned frame, std::string_view expression, EvaluationPurpose purpose);
    ShownValue show(unsigned frame, std::string_view expression, EvaluationPurpose purpose,
                    const ValueFormat& format = {});
    /// Names of the methods that a value has for scripts, but for operators. Nothing is run.
    std::vector<std::string> methodsOf(unsigned frame, std::string_view expression);
    /// Sets a child of a node, or what an expression names; the value then.
    ShownValue setChild(ValueNode parent, std::string_view child, unsigned frame,
                        std::string_view expression, const ValueFormat& format = {});
    ShownValue setExpression(unsigned frame, std::string_view target, std::string_view expression,
                             const ValueFormat& format = {});
    /// Ends an evaluation, or one for the console that begins before forgetCancel(). From any
    /// thread.
    void cancelEvaluation() noexcept;
    void forgetCancel() noexcept;

    /// The main text of what is built now; empty before the first build.
    std::string mainText() const;
    /// What is built now; null before the first build. From any thread.
    std::shared_ptr<const CodeLines> code() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
