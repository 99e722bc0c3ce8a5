// `korvant dap`: one client, one script, on standard input and output.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "debug/run_observer.h"
#include "protocol/dap/conversation.h"
#include "protocol/dap/dap_console.h"
#include "protocol/rpc/message_stream.h"

namespace korvant::dap {

/// What the program that serves does for it.
struct LaunchServices {
    /// The engine and its context, made once; null when it cannot be had.
    std::function<asIScriptEngine*(asIScriptContext*& context)> engine;
    /// The text of a script; false, and `error` says why, when it cannot be read.
    std::function<bool(const std::string& path, std::string& text, std::string& error)> readScript;
    /// Bounds by the names of the program's switches; empty, or what is wrong with them.
    std::function<std::string(const Json& limits)> setLimits;
    /// Console and dialogs of the script from here on.
    std::function<void(Console& console)> useConsole;
    /// What the program would exit with.
    std::function<int(const RunFailure& failure)> exitCode;
    /// The command line of a run that waits at `port` for a debugger, switches included.
    std::function<std::vector<std::string>(const Json& launch, std::uint16_t port)> runCommand;
    /// Starts it without a window of the client; empty, or why it cannot be.
    std::function<std::string(const std::vector<std::string>& command, const std::string& token,
                              const std::string& folder)>
        spawn;
    /// Called on a thread of its own some time after the client has left, while serve() has not
    /// returned: a function of the script cannot be ended. Empty: that is waited for.
    std::function<void()> giveUp;
};

class LaunchServer final : public DebuggedProgram, private DebugListener {
  public:
    LaunchServer(std::shared_ptr<rpc::Channel> channel, LaunchServices services);
    ~LaunchServer() override;

    /// Serves until the client has disconnected or is gone. The process's exit code.
    int serve();

  private:
    // DebuggedProgram
    Answer launch(const Json& request) override;
    Answer attach(const Json& request) override;
    Answer configurationDone() override { return {}; }
    Answer restart(const Json& arguments) override;
    Answer terminate() override;
    Answer disconnect(const Json& arguments) override;
    bool feed(const std::string& line) override;
    std::string sourcePath() const override { return path_; }
    const TextDocument& text() const override { return document_; }
    void nameSource(const std::string&) override {}

    // DebugListener
    void onBuilt() override;
    void onStopped(const StopInfo& info) override;
    void onOutput(const std::string& text, const ScriptPlace& place, int) override;
    void onBreakpointsChanged(const std::vector<int>& ids) override;
    void onAttention() override { serveWaiting(); }

    bool onMessage(const Json& message);
    void onGone();
    void serveWaiting();
    bool serveAWhile();
    Answer readProgram(const Json& arguments);
    Answer takeLimits(const Json& arguments);
    void takeLines(const Json& arguments);
    void takeObserver(const Json& arguments);
    void tellObserved();
    void run();
    bool readAgain();
    void finish(int exitCode);
    void answerLaunch();
    bool stopping() const { return disconnected_ || stream_->mailbox().ended(); }
    void endSoon();
    Answer runElsewhere(const Json& request);
    bool buildsHere(const Json& request);
    void noteTerminal(const Json& message);
    Answer passTo(std::uint16_t port, const std::string& token, std::chrono::seconds patience);
    int servePassing();

    LaunchServices services_;
    DapClient client_;
    OutputRelay output_;
    DapConsole console_;
    DebugSession session_;
    Conversation conversation_;
    std::string path_;
    std::string text_;
    TextDocument document_;  ///< the same, for places in it
    std::string refusal_;    ///< why the client's terminal does not run what it was asked to
    Json hello_;             ///< how the client introduced itself
    Json request_;           ///< the launch that has not been answered
    bool startWanted_ = false;
    bool noDebug_ = false;
    bool stopOnEntry_ = false;
    bool begun_ = false;
    bool restarting_ = false;
    std::atomic<bool> running_{false};
    bool disconnected_ = false;              ///< the client has been told good-bye
    std::atomic<bool> leaving_{false};       ///< it has asked for that, or is gone
    bool built_ = false;                     ///< the client knows the source
    std::unique_ptr<RunObserver> observer_;  ///< null: nothing is counted
    std::unique_ptr<class FramePasser> passer_;
    std::unique_ptr<rpc::MessageStream> stream_;  ///< last: its thread calls into all above
};

}  // namespace korvant::dap
