// Building, running and stepping the script in the editor, and looking at its variables.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "debug/debug_session.h"
#include "editor/control/editor_window.h"
#include "editor/control/output_pane.h"
#include "editor/control/text_control.h"
#include "editor/stops/breakpoints.h"
#include "editor/stops/run_line_map.h"
#include "expr/evaluator.h"
#include "host/run/script_session.h"

namespace korvant {

/// What the debugger works on; each must outlive it.
struct DebuggerParts {
    ScriptSession& session;
    DebugSession& core;  ///< what it debugs with, where nobody else debugs
    EditorWindow& window;
    const TextControl& editor;
    OutputPane& output;
    Breakpoints& breakpoints;
};

class Debugger {
  public:
    /// The bytes to compile; nothing when there is no memory for them.
    using ScriptText = std::function<std::optional<std::string>()>;

    Debugger(const DebuggerParts& parts, ScriptText scriptText);

    void setHost(asIScriptEngine* engine, asIScriptContext* context);
    /// Nothing is debugged, and no variable is shown until a run has started.
    void setUp();

    /// A script is suspended and waits for the user.
    bool debugging() const noexcept { return debugging_; }
    /// Where it is suspended, in the text as it is now; 0: nowhere.
    std::int32_t stoppedAt() const { return debugging_ ? lineInText(stoppedAt_) : 0; }
    /// Where a line of the script that runs is in its text as that is now.
    std::int32_t lineInText(std::int32_t running) const {
        return lines_.editorLine({running}).number;
    }
    /// A build or a run is under way; every command but stop() does nothing then.
    bool busy() const noexcept { return busy_; }

    void build();
    /// Starts a run, or lets a suspended one go on.
    void execute();
    void stepOver();
    void stepInto();
    /// Lets a suspended run go on in another way; `goOn` returns when it is over or suspended.
    void resume(const std::function<RunOutcome()>& goOn);
    /// Gives a suspended run up, which keeps its context until the next run or close(); asks a
    /// script that runs to stop.
    void stop();
    /// Lets go of a suspended run and its objects.
    void close();

    /// The breakpoints of the text that the control shows now, which the next run is of. Not while
    /// one is suspended, unless stop() comes next.
    void use(Breakpoints& breakpoints) noexcept { breakpoints_ = &breakpoints; }
    /// A run stands still at a line of another text than its own, which this has shown. Empty or
    /// false: at one of its own.
    std::function<bool()> showsElsewhere;
    /// What a line of another text has where a run stands.
    struct Elsewhere {
        std::string file;       ///< its name, UTF-8
        std::string condition;  ///< of its breakpoint
    };
    /// Nothing: a run that stands still is in its own text. Empty: it always is.
    std::function<std::optional<Elsewhere>(ScriptLine line)> elsewhere;

    void addCondition(Breakpoints& breakpoints, ControlLine line);
    /// Shows the variable whose name is selected as a tip, and puts it on top of the output pane.
    void displayVariable();
    /// Declaration and value of a variable, the declaration alone when nothing is being debugged;
    /// empty when there is no such variable.
    std::string variableText(std::string_view name) const;

    /// The breakpoints as the text that runs has them, ascending.
    std::vector<std::int32_t> runningLines() const;
    /// The same for a run that was held: breakpoints may have been changed meanwhile.
    std::vector<std::int32_t> linesBehindHold();

    void follow(const LineShift& shift);
    /// The text is again the one that runs; true if lines had moved meanwhile.
    bool undoLines() { return lines_.undo(); }

  private:
    class BusyMark;
    std::optional<std::string> beginRun();
    void startRun();
    void continueRun(StepMode mode);
    void endDebugging();
    void finishRun(bool failed);
    void showEnd(bool failed);
    std::string failureText() const;
    std::string placeText(const std::string& source, std::int32_t line) const;
    std::optional<ScriptLine> firstError() const;
    void failedBuild(bool showFirst);
    void beginDebugging(ScriptLine line);
    bool shouldStop(ScriptLine line);
    bool conditionHolds(const std::string& condition);
    FrameScope names() const;
    void bindVariables(std::string_view condition);
    void showAt(ScriptLine line);
    void scrollTo(ControlLine line);
    void toStart();
    void setRunMenu();
    bool giveWindowTime();
    bool outOfTime(std::uint32_t startTick);
    std::string messageTexts() const;
    std::vector<ScriptLine> messageLines() const;

    ScriptSession& session_;
    DebugSession& core_;
    EditorWindow& window_;
    const TextControl& editor_;
    OutputPane& output_;
    Breakpoints* breakpoints_;  ///< of the text that runs
    ScriptText scriptText_;
    asIScriptEngine* engine_ = nullptr;
    asIScriptContext* context_ = nullptr;
    ExpressionEvaluator evaluator_;
    std::vector<std::string> boundNames_;
    RunLineMap lines_;
    bool debugging_ = false;
    bool busy_ = false;
    std::int32_t stoppedAt_ = 0;
    bool ran_ = false;  ///< the context has been used here, so that it is ours to let go of
    std::uint64_t lastPump_ = 0;
    std::uint32_t usedTime_ = 0;  ///< of the run limit, by continuations that nobody asked for
};

}  // namespace korvant
