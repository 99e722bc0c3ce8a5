// What happens before each statement of a script.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "host/engine/engine_compat.h"
#include "host/engine/object_count.h"
#include "host/engine/program_position.h"
#include "host/run/breakpoint_table.h"
#include "host/run/run_limit.h"
#include "host/run/run_watch.h"
#include "host/run/stop_policy.h"

namespace korvant {

/// What tells the user how a run is ended. Called on the script's thread.
class RunEndReport {
  public:
    virtual ~RunEndReport() = default;
    virtual void onStopped() = 0;   ///< the stop request was seen
    virtual void onTimedOut() = 0;  ///< the limit has passed
};

/// Suspends a run at breakpoints and steps, and aborts it on a stop request or when its limit has
/// passed. While a run has neither breakpoints nor a step mode the callback is taken off its
/// context and a watch thread puts it back when something is due.
///
/// A callback costs a few nanoseconds and is called for every statement, so all but the rare is
/// decided by one flag and the place in the code, or where that is not known the function that
/// runs.
class LineCallback final : public WatchTarget {
  public:
    LineCallback(RunState& state, const RunLimit& limit, RunEndReport& report)
        : state_(state), limit_(limit), report_(report) {}

    BreakpointTable& breakpoints() noexcept { return breakpoints_; }
    RunWatch& watch() noexcept { return watch_; }

    /// Negative when the engine refuses.
    int install(asIScriptContext& context);
    /// For contexts that initialise global variables: ends them, and never suspends. A policy may
    /// hold them.
    int installForGlobals(asIScriptContext& context);

    /// See ScriptSession. Must not change while something executes.
    void setPolicy(StopPolicy* policy) noexcept { policy_ = policy; }
    /// The policy wants other statements than before, or other lines.
    void policyChanged();
    /// Safe from any thread and signal handler.
    void requestAttention() noexcept {
        attentionWanted_ = true;
        attend();
    }
    /// Inside a native function, on the script's thread: what is wanted is due behind it.
    void seeAttention();
    /// Nobody watches in between.
    void beginHold();
    void endHold();

    /// Executes and gives the engine's result. `ours`: the context bears this callback; any other
    /// keeps the one that its maker gave it, and is aborted from outside when the run must end.
    int execute(asIScriptContext& context, bool ours);

    enum class Ending { none, stopped, timedOut, outOfMemory };
    /// How the last execution was ended. Latched, because the engine swallows the end of a nested
    /// execution: the outer one is then ended at its next statement.
    Ending ending() const noexcept { return ending_; }
    void forgetEnding() noexcept { ending_ = Ending::none; }
    /// The line that an ended context was ended at; of any other the line at which it stands. The
    /// engine leaves an ended one a step further.
    std::int32_t lineAtEnd(asIScriptContext& context) const;

    /// Ends `context` when the run must end; false when it goes on.
    bool checkEnd(asIScriptContext& context);
    /// The same for a context that is called for every statement beside the run's own: asks only
    /// when somebody has said that something is due, or nobody would.
    void checkEndIfDue(asIScriptContext& context) {
        if ((attention_.load() & (kDue | kUnwatched)) != 0) checkEnd(context);
    }
    /// Makes the next statement look at the limit. Safe from any thread and signal handler.
    void attend() noexcept { attention_.fetch_or(kDue); }
    /// The limit has moved, or what it is about: the run ends before its next statement when it
    /// must. Script's thread.
    void lookNow();
    /// The limit has moved away from now, which happens a million times where a script reads as
    /// many numbers. The watch thread finds that out when it looks next.
    void limitMovedAway() {
        if (state_.stopRequest || (limit_.hasCeiling() && limit_.expired())) lookNow();
    }
    /// In a copy of the process: nobody else looks any more.
    void loseWatch() noexcept;

  private:
    int installEndOnly(asIScriptContext& context);
    static void entry(asIScriptContext* context, void* self) noexcept;
    static void endOnlyEntry(asIScriptContext* context, void* self) noexcept;

    void begin(asIScriptContext& context, bool ours);
    void end();
    void decideSlowly(asIScriptContext& context) noexcept;
    void pass(asIScriptContext& context, asIScriptFunction* function) noexcept;
    bool passByLine(asIScriptContext& context) noexcept;
    void lookForStops(asIScriptContext& context, const asDWORD* place) noexcept;
    void lookAtEnd(asIScriptContext& context);
    bool findEnding(asIScriptContext* context);
    void decide(asIScriptContext& context, std::int32_t line);
    bool isAnother(asIScriptContext& context, std::int32_t line) const;
    bool inStoppedSource(asIScriptContext& context) const;
    bool isOver(asIScriptContext& context, std::int32_t line) const;
    void stopAt(asIScriptContext& context, std::int32_t line);
    void noteStop(asIScriptContext& context, std::int32_t line);
    bool passedByPolicy(asIScriptContext& context, std::int32_t line, bool& breakpoint);
    void giveAttention(asIScriptContext& context);
    bool attentionDue();
    static void exceptionEntry(asIScriptContext* context, void* self) noexcept;
    unsigned wantedAttention() const noexcept;
    bool counts() const noexcept { return policy_ != nullptr && policy_->countsStatements(); }
    bool everyStatement() const noexcept {
        return policy_ != nullptr && policy_->wantsEveryStatement();
    }
    bool mayBeOff() const noexcept;
    /// Suspending is for the context of the run; any other is only ended.
    bool isRun(const asIScriptContext& context) const {
        return state_.currentContext == nullptr || state_.currentContext == &context;
    }
    bool outOfMemory() const noexcept;

    std::uint32_t millisecondsLeft(std::uint32_t longest) override;
    void alert() override;
    void insist() override;

    RunState& state_;
    const RunLimit& limit_;
    RunEndReport& report_;
    BreakpointTable breakpoints_;
    RunWatch watch_;
    ObjectCount objects_;
    Ending ending_ = Ending::none;
    struct EndPlace {
        const asIScriptFunction* function = nullptr;
        asUINT depth = 0;
        std::int32_t line = 0;
    } endedAt_;
    StopPolicy* policy_ = nullptr;
    // Of the line that was stopped at last.
    const asIScriptFunction* stoppedFunction_ = nullptr;
    std::size_t stoppedIn_ = 0;  ///< its source
    asUINT stoppedDepth_ = 0;    ///< calls that had not returned
    std::atomic<bool> attentionWanted_{false};
    std::atomic<std::int64_t> attendedAt_{0};  ///< steady milliseconds of the last atAttention()
    asIScriptContext* run_ = nullptr;          ///< what execute() executes, bearing this callback
    asIScriptContext* off_ = nullptr;  ///< the context whose callback is taken off during its run
    asIScriptContext* foreign_ = nullptr;  ///< one without this callback, during its run
    bool outsideLately_ = false;           ///< watch thread only: between statements when last seen
    bool executing_ = false;
    bool held_ = false;
    bool watched_ = false;  ///< a watch thread tells when something is due

    /// Why statements are not passed over quickly; none for most of a run.
    enum Attention : unsigned {
        kDue = 1,        ///< the limit or a stop is to be looked at
        kStepping = 2,   ///< every line decides
        kUnwatched = 4,  ///< nobody tells when something is due
        kByLine = 8,     ///< no function is asked for; see passByLine()
        kCounting = 16,  ///< the policy counts statements
    };
    static constexpr int kStatementsByLine = 64;
    static_assert(std::atomic<unsigned>::is_always_lock_free);
    std::atomic<unsigned> attention_{kUnwatched};
    asIScriptFunction* clear_ = nullptr;  ///< the last function seen without a breakpoint

    /// Whether nothing stops at the statement that the run's own context stands at, because that
    /// was found out before.
    bool seenClear(const asIScriptContext& context, const asDWORD* place) const noexcept {
        return place != nullptr && clearPlaces_[slotOf(place)] == place && isRun(context);
    }
    void noteClear(const asIScriptContext& context, const asDWORD* place) noexcept {
        if (isRun(context)) clearPlaces_[slotOf(place)] = place;
    }
    void forgetClear() noexcept {
        clear_ = nullptr;
        clearPlaces_.fill(nullptr);
        breakpoints_.forgetFunctions();
    }
    static constexpr std::size_t kClearPlaces = 512;
    static std::size_t slotOf(const asDWORD* place) noexcept {
        return reinterpret_cast<std::uintptr_t>(place) / sizeof *place % kClearPlaces;
    }
    std::array<const asDWORD*, kClearPlaces> clearPlaces_{};  ///< in the code of this execution
    int byLineLeft_ = 0;
};

}  // namespace korvant
