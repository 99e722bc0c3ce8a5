// One debugged run: where it stops, how it goes on, and what can be seen while it stands still.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
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
    std::string text;         ///< of the exception, or what a data breakpoint saw
    std::vector<int> hitIds;  ///< breakpoints that stopped
    ExceptionKind exception = ExceptionKind::unhandled;
    std::string before;  ///< value of a data breakpoint before, and now
    std::string now;
};

/// Told what a session does, on the script's thread.
class DebugListener {
  public:
    virtual ~DebugListener() = default;
    /// A run is about to begin; its breakpoints are resolved. Global variables are not yet made.
    virtual void onBuilt() {}
    /// The run stands still. While it is held (state()), it goes on when this returns: by the last
    /// of goOn(), stepOver() ... that was called in it, or as goOn() when none was.
    virtual void onStopped(const StopInfo& info) = 0;
    virtual void onContinued() {}
    /// A log text of a breakpoint, or why one of its texts cannot be evaluated. Ends with a line
    /// feed.
    virtual void onOutput(const std::string& text, const ScriptPlace& place, int breakpointId) {
        (void)text, (void)place, (void)breakpointId;
    }
    /// Verified, moved or refused: state of breakpoints that changed without being asked for.
    virtual void onBreakpointsChanged(const std::vector<int>& ids) { (void)ids; }
    /// Between two statements of a run for which requestAttention() was called.
    virtual void onAttention() {}
    /// The run is over.
    virtual void onEnded(const RunFailure& failure) { (void)failure; }
};

/// How a session stops a run.
enum class StopStyle {
    hold,    ///< always inside the run
    suspend  ///< statements of the run itself suspend it, everything else is held
};

/// All functions are for the script's thread unless they say otherwise. While it is attached, every
/// run of the script session is debugged, whoever starts it.
class DebugSession {
  public:
    DebugSession(ScriptSession& session, DebugListener& listener);
    ~DebugSession();  ///< detaches
    DebugSession(const DebugSession&) = delete;
    DebugSession& operator=(const DebugSession&) = delete;

    void attach();
    void detach();
    bool attached() const noexcept;

    // What is wanted. May change at any time; call apply() when it changed while a run stands
    // still or in onAttention().
    BreakpointBook& breakpoints() noexcept;
    StopRules& rules() noexcept;
    void setStyle(StopStyle style);
    /// Not owned; null: none. Before a run.
    void setCoverage(Coverage* coverage);
    void setProfiler(Profiler* profiler);
    /// Resolves the breakpoints and makes the run look at them. Ids whose state has changed.
    std::vector<int> apply();

    /// Builds `text` as the main text and runs its int main(), attached meanwhile. Returns when the
    /// run is over or suspended. True when it finished or is suspended.
    bool start(asIScriptEngine* engine, asIScriptContext* context, const std::string& text);
    /// The same again with the text of the last start; from inside a stop the run is ended first
    /// and the new one begins when the old start() would have returned.
    bool restart();
    DebugState state() const noexcept;
    const StopInfo& stop() const noexcept;  ///< the last one; valid while it stands still

    // How it goes on. While held these are remembered until onStopped() returns. While suspended
    // they run on and return as start() does. False when nothing stands still.
    bool goOn();
    bool stepOver();
    bool stepInto();
    bool stepOut();
    bool runTo(const ScriptPlace& place);
    /// The run ends at its next statement. From any thread while it runs.
    void stopRun();

    /// The run stops before its next statement. From any thread.
    void requestPause() noexcept;
    /// onAttention() is called before the next statement, 20 ms later at most while statements run.
    /// From any thread.
    void requestAttention() noexcept;
    /// The native function that runs, "Input"; empty between statements. Any thread; only to show.
    std::string waitingIn() const;

    // What can be seen while it stands still.
    const Frames& frames() const;
    ValueTree& values();
    /// `frame` counts as Frames does.
    ValueNode scope(ValueScope which, unsigned frame);
    Evaluation evaluate(unsigned frame, std::string_view expression, EvaluationPurpose purpose);
    /// As text with children, or an error.
    struct Shown {
        std::string error;
        DebugValue value;
    };
    Shown show(unsigned frame, std::string_view expression, EvaluationPurpose purpose,
               const ValueFormat& format = {});
    /// Sets a child of a node, or what an expression names. The value then, or an error.
    Shown setChild(ValueNode parent, std::string_view child, unsigned frame,
                   std::string_view expression, const ValueFormat& format = {});
    Shown setExpression(unsigned frame, std::string_view target, std::string_view expression,
                        const ValueFormat& format = {});
    void cancelEvaluation() noexcept;  ///< from any thread

    /// What is built now; null before the first build. From any thread.
    std::shared_ptr<const CodeLines> code() const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvant
