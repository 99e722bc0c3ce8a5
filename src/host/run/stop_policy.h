// Who decides where a run stands still.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/engine/engine_compat.h"
#include "host/run/run_outcome.h"

namespace korvant {

/// Asked by a run at the places where it may stand still. Without one a run is stopped by its
/// breakpoints and step mode alone. A policy that wants a run to stand still without leaving the
/// engine waits inside a call, in a HoldScope. Script's thread only. None may throw.
class StopPolicy {
  public:
    enum class Answer {
        goOn,     ///< not here
        suspend,  ///< here: the run is suspended, where the engine allows it
        usual,    ///< as if there were no policy
        pass      ///< as if there were neither a policy nor a breakpoint on the line: steps alone
    };

    virtual ~StopPolicy() = default;

    /// `module` is built from `text`; its global variables are not yet made.
    virtual void onBuilt(asIScriptModule& module, const std::string& text) noexcept = 0;
    /// `context` is about to execute. `goesOn`: a suspended run does.
    virtual void onBegin(asIScriptContext& context, bool goesOn) noexcept = 0;
    /// A statement is about to run, for which wantsEveryStatement() holds or whose line is among
    /// the run's breakpoints. Its context is any that runs script of this session. `again`: since
    /// the policy was last asked no statement on another line has run.
    virtual Answer atStatement(asIScriptContext& context, std::int32_t line,
                               bool again) noexcept = 0;
    /// After `usual` or `pass` the run would be suspended, inside a function of the library where
    /// the engine cannot. The run's own step is over.
    virtual void atNestedStop(asIScriptContext& context) noexcept { (void)context; }
    /// False: what cannot be suspended goes on as if there were no policy, and global variables are
    /// made without asking it.
    virtual bool mayHold() const noexcept { return true; }
    /// Between two statements, after ScriptSession::requestAttention() or every attentionEvery().
    virtual void atAttention(asIScriptContext& context) noexcept = 0;
    /// A native function that takes long, or waits, asks whether it should end. No context of the
    /// run may be touched.
    virtual void insideNative() noexcept {}
    /// An exception was raised; its context shows where.
    virtual void atException(asIScriptContext& context) noexcept = 0;
    /// The run is about to be ended by the limit of its time or its memory.
    virtual void beforeEnd(asIScriptContext& context, bool memory) noexcept = 0;
    /// The run is over or suspended, and `failure` says how; the stack of one that ended with an
    /// exception can still be read.
    virtual void onLeft(asIScriptContext* context, const RunOutcome& outcome,
                        const RunFailure& failure) noexcept = 0;

    virtual bool wantsEveryStatement() const noexcept = 0;
    /// Where it holds, count() is called for every statement, and once more at its place when
    /// execution leaves the context.
    virtual bool countsStatements() const noexcept { return false; }
    virtual void count(asIScriptContext& context) noexcept { (void)context; }
    /// Milliseconds; 0: only when asked for.
    virtual std::uint32_t attentionEvery() const noexcept { return 0; }
};

}  // namespace korvant
