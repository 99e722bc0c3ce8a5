// What a debugging client asks, answered from a debug session.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "debug/debug_session.h"
#include "language/text_document.h"
#include "protocol/dap/dap_client.h"
#include "protocol/dap/output_relay.h"
#include "protocol/rpc/mailbox.h"

namespace korvant::dap {

/// Whoever has the script: started it for this client, or lets it look.
class DebuggedProgram {
  public:
    virtual ~DebuggedProgram() = default;
    virtual Answer launch(const Json& request) = 0;
    virtual Answer attach(const Json& request) = 0;
    virtual Answer configurationDone() = 0;
    virtual Answer restart(const Json& arguments) = 0;
    virtual Answer terminate() = 0;
    virtual Answer disconnect(const Json& arguments) = 0;
    /// A line for the script's Input; false when it does not wait for one.
    virtual bool feed(const std::string& line) = 0;
    /// The script's file as its user spells it; empty when there is none yet.
    virtual std::string sourcePath() const = 0;
    /// The main text as it was read or built last; empty: none yet.
    virtual const TextDocument& text() const = 0;
    /// A client has named its file; only told while sourcePath() is empty.
    virtual void nameSource(const std::string& path) = 0;
};

/// One client. Everything happens on the thread that serves it, which is the script's while a run
/// is under way.
class Conversation {
  public:
    enum class Phase { greeting, told, ready, ended };

    Conversation(DebugSession& session, DebuggedProgram& program, DapClient& client,
                 OutputRelay& output);

    /// Answers one message.
    void handle(const Json& message);
    /// A request to cancel another one has arrived, which may wait still. From any thread.
    void noteCancel(const Json& message);
    /// The client has gone: what it has asked for, and is being worked out, is wanted no more. From
    /// any thread.
    void noteGone() noexcept;

    /// Launched or attached: breakpoints are welcome from here on.
    void begin();
    void end() { phase_ = Phase::ended; }
    Phase phase() const noexcept { return phase_; }
    bool configured() const noexcept { return configured_; }
    void forgetConfigured() noexcept { configured_ = false; }

    // What the session tells, handed on by its listener.
    /// Tells the client, and serves it until the run shall go on.
    void stopped(const StopInfo& info, rpc::Mailbox& mailbox, const std::function<void()>& idle);
    void log(const std::string& text, const ScriptPlace& place);
    /// The script's text is there: "new", or "changed".
    void tellSource(const char* reason);
    /// It goes on without having been asked to.
    void tellContinued();
    void breakpointsChanged(const std::vector<int>& ids);
    /// Ends the wait in stopped().
    void letGo() noexcept { goesOn_ = true; }
    bool standsStill() const noexcept { return standsStill_; }
    /// No breakpoint of this client is left.
    void forgetWishes();

    /// The place as protocol fields "source" and "line" of an object.
    void addPlace(Json& body, const ScriptPlace& place) const;

  private:
    using Handler = Answer (Conversation::*)(const Json& arguments);
    enum class When { always, ready, still };
    struct Row {
        Handler handler;
        When when;
    };
    static const std::map<std::string, Row>& table();
    Answer serve(const std::string& command, const Json& message);
    bool takeCancelled(const Json& message);

    // conversation.cpp
    Answer initialize(const Json& arguments);
    Answer threads(const Json& arguments);
    Answer loadedSources(const Json& arguments);
    Answer sourceText(const Json& arguments);
    Answer configurationDone(const Json& arguments);
    Answer restart(const Json& arguments);
    Answer terminate(const Json& arguments);
    Answer disconnect(const Json& arguments);
    Answer cancel(const Json& arguments);

    // conversation_breakpoints.cpp
    Answer setBreakpoints(const Json& arguments);
    Answer setFunctionBreakpoints(const Json& arguments);
    Answer setDataBreakpoints(const Json& arguments);
    Answer dataBreakpointInfo(const Json& arguments);
    Answer setExceptionBreakpoints(const Json& arguments);
    Answer breakpointLocations(const Json& arguments);
    Json breakpointOf(int id) const;
    Answer listOf(const std::vector<int>& ids) const;
    std::string sourceOf(const Json& source);
    Json sourceAt(const ScriptPlace& place) const;
    std::int32_t unitColumn(const ScriptPlace& place) const;

    // conversation_running.cpp
    Answer goOn(const Json& arguments);
    Answer stepOver(const Json& arguments);
    Answer stepInto(const Json& arguments);
    Answer stepOut(const Json& arguments);
    Answer pause(const Json& arguments);
    Answer stackTrace(const Json& arguments);
    Answer exceptionInfo(const Json& arguments);
    template <class How>
    Answer resumed(const Json& arguments, How how);
    Json stoppedBody(const StopInfo& info) const;
    Json frameAt(unsigned index) const;
    std::string stackText() const;

    // conversation_values.cpp
    Answer scopes(const Json& arguments);
    Answer variables(const Json& arguments);
    Answer setVariable(const Json& arguments);
    Answer setExpression(const Json& arguments);
    Answer evaluate(const Json& arguments);
    Answer completions(const Json& arguments);
    void tellChanged();
    static ValueNode nodeOf(const Json& arguments);
    bool frameOf(const Json& arguments, unsigned& frame) const;
    Json scopeBody(const char* name, const char* hint, ValueScope which, unsigned frame);
    Json valueBody(const DebugValue& value, const char* textName);
    void noteFrame(ValueNode node, unsigned frame);

    DebugSession& session_;
    DebuggedProgram& program_;
    DapClient& client_;
    OutputRelay& output_;
    Phase phase_ = Phase::greeting;
    bool configured_ = false;
    bool standsStill_ = false;
    bool goesOn_ = false;
    std::int64_t frameBase_ = 1;  ///< the innermost frame's number at this stop
    std::map<ValueNode, unsigned> frameOfNode_;
    std::atomic<bool> gone_{false};
    std::mutex cancelling_;
    std::set<std::int64_t> cancelled_;  ///< numbers of requests; guarded by cancelling_
};

}  // namespace korvant::dap
