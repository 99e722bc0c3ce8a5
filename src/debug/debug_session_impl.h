// What a debug session consists of. Only the files debug_session*.cpp see it.
#pragma once

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "debug/data_watch.h"
#include "debug/debug_session.h"
#include "debug/set_variables.h"
#include "debug/step_rule.h"
#include "host/run/stop_policy.h"

namespace korvant {

struct DebugSession::Impl final : StopPolicy {
    Impl(DebugSession& owner, ScriptSession& ownSession, DebugListener& ownListener)
        : self(owner), session(ownSession), listener(ownListener) {}

    DebugSession& self;
    ScriptSession& session;
    DebugListener& listener;
    BreakpointBook book;
    std::vector<Breakpoint*> found;  ///< of one statement
    StopRules rules;
    StopStyle style = StopStyle::hold;
    Coverage* coverage = nullptr;
    Profiler* profiler = nullptr;

    // The run.
    std::atomic<DebugState> state{DebugState::idle};
    std::atomic<std::thread::id> scriptThread{};
    std::atomic<bool> applyWanted{false};  ///< by another thread
    asIScriptEngine* engine = nullptr;
    asIScriptContext* runContext = nullptr;
    std::string startText;
    bool starting = false;
    bool restartWanted = false;
    StopInfo info;
    StepRule step;
    LinePass pass;
    StatementPlace lastSeen;    ///< of the last statement that was asked about
    bool entry = false;         ///< it is the first one of its call
    bool entrySeen = false;     ///< it has been
    bool entryPending = false;  ///< a call begins; its first statement is asked about next
    bool entryAsked = false;    ///< breakpoints of its function have been asked
    bool newCall = false;       ///< a call begins
    std::unordered_map<const asDWORD*, bool> loops;  ///< places at which functions begin
    ScriptPlace target;                              ///< of runTo(); line 0: none
    std::vector<std::int32_t> hostLines;             ///< breakpoints of whoever runs the script
    std::atomic<bool> pauseWanted{false};
    std::atomic<bool> attentionWanted{false};
    std::atomic<asIScriptContext*> watched{nullptr};  ///< for waitingIn()
    bool pauseNow = false;
    bool entryWanted = false;
    bool everyStatement = false;
    int inside = 0;            ///< code of ours runs script: nothing of it stops
    unsigned passedDepth = 0;  ///< of the call to which an exception that stopped is passed on
    std::string passedText;
    unsigned lostDepth = 0;  ///< of the call whose comparator or the like has raised; 0: none

    // How a held run goes on.
    enum class Action { goOn, over, into, out, to, stop };
    std::atomic<Action> action{Action::goOn};
    StepBy stepBy = StepBy::line;
    unsigned outOf = 0;  ///< the engine's number of the frame that is left, with Action::out

    // What is built, and what can be seen.
    mutable std::mutex codeMutex;
    std::shared_ptr<const CodeLines> codeLines;
    asIScriptModule* module = nullptr;
    std::unique_ptr<StatementStarts> text;
    SetVariables setVariables;
    std::vector<std::int32_t> asked;  ///< lines at which it may stop, ascending
    std::set<int> held;  ///< breakpoints whose conditions did when they were last asked
    ValueTree values;
    ScriptEvaluator evaluator{session, values};
    Frames frames{nullptr, kMainSource};
    ValueTree asideValues;  ///< for log texts and data breakpoints
    ScriptEvaluator asideEvaluator{session, asideValues};
    DataWatch data;

    void apply();
    std::vector<std::int32_t> wantedLines();
    template <class Body>
    void exclusively(Body body) noexcept;
    std::vector<int> useText(asIScriptModule& built, const std::string& builtText);

    // Where it stops.
    void notePlace(const StatementPlace& here, std::int32_t line);
    Answer passedOver(asIScriptContext& context, std::int32_t line);
    void forgetWays();
    void noteSet(asIScriptContext& context, const StatementPlace& here);
    bool mayStop(std::int32_t line) const;
    bool stopsAt(asIScriptContext& context, std::int32_t line, const StatementPlace& here,
                 bool newPass);
    bool breaksAt(asIScriptContext& context, const StatementPlace& here, bool newPass);
    void noteSeen(asIScriptContext& context, const StatementPlace& here, bool again);
    bool callBegins(asIScriptContext& context);
    bool passes(Breakpoint& breakpoint, const FrameScope& scope, bool newPass = true);
    bool conditionHolds(const Breakpoint& breakpoint, const FrameScope& scope, bool newPass);
    void writeLog(const Breakpoint& breakpoint, asIScriptContext& context);
    std::string logText(std::string_view text);
    bool dataChanged(asIScriptContext& context);
    void lookAtData(asIScriptContext& context);
    void report(const Breakpoint& breakpoint, const std::string& said);
    ExceptionKind kindOf(asIScriptContext& context) const;
    bool passedOn(asIScriptContext& context);
    bool filterHolds(const StopRules::Filter& filter, asIScriptContext& context);
    bool repeatsLost(asIScriptContext& context);
    FrameScope innermost(asIScriptContext& context) const;
    ScriptPlace placeOf(asIScriptContext& context) const;

    // Standing still.
    void hold(asIScriptContext& context, StopInfo stopped);
    void beginLooking(asIScriptContext* context);
    void endLooking();
    void takeAction(asIScriptContext& context);
    bool decide(Action wanted, StepBy by = StepBy::line);
    RunOutcome runOnce();
    unsigned levelOf(unsigned frame) const;
    ShownValue shown(const Evaluation& evaluation, std::string_view name,
                     const ValueFormat& format);

    // The policy.
    void onBuilt(asIScriptModule& built, const std::string& builtText) noexcept override;
    void onBegin(asIScriptContext& context, bool goesOn) noexcept override;
    Answer atStatement(asIScriptContext& context, std::int32_t line, bool again) noexcept override;
    void atNestedStop(asIScriptContext& context) noexcept override;
    void atAttention(asIScriptContext& context) noexcept override;
    void insideNative() noexcept override;
    void atException(asIScriptContext& context) noexcept override;
    void beforeEnd(asIScriptContext& context, bool memory) noexcept override;
    void onLeft(asIScriptContext* context, const RunOutcome& outcome,
                const RunFailure& failure) noexcept override;
    bool mayHold() const noexcept override { return style != StopStyle::suspendOnly; }
    bool wantsEveryStatement() const noexcept override { return everyStatement; }
    bool countsStatements() const noexcept override { return coverage != nullptr; }
    void count(asIScriptContext& context) noexcept override { coverage->count(context); }
    std::uint32_t attentionEvery() const noexcept override {
        return profiler != nullptr ? Profiler::kEveryMs : 0;
    }
};

/// No exception leaves a callback of the engine; without memory a stop is missed.
template <class Body>
void guarded(Body body) noexcept {
    try {
        body();
    } catch (const std::exception&) {
    }
}

template <class Body>
void DebugSession::Impl::exclusively(Body body) noexcept {
    guarded([&] {
        const auto lock = listener.exclusive();
        body();
    });
}

/// Code of ours runs script.
class Inside {
  public:
    explicit Inside(int& depth) : depth_(depth) { ++depth_; }
    ~Inside() { --depth_; }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

  private:
    int& depth_;
};

}  // namespace korvant
