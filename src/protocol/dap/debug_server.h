// A host that lets a debugging client look at the scripts it runs.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "host/library/script_console.h"
#include "protocol/dap/conversation.h"
#include "protocol/rpc/message_stream.h"

namespace korvant::dap {

/// Listens on the loopback from construction to destruction; one client at a time, who must know
/// the token. Made and destroyed on the script's thread while nothing runs. Between runs the client
/// is served on a thread of the server's own, in a run on the script's.
class DebugServer final : private DebuggedProgram, private DebugListener, private PrintListener {
  public:
    struct Options {
        std::uint16_t port = 0;  ///< 0: any free one
        std::string token;       ///< never empty
        std::string
            sourcePath;  ///< the file of the scripts that will run; empty: the client's word
        bool waitForClient = false;  ///< the first run begins when a client has said what it wants
        std::function<void()> whileStopped;  ///< every 50 ms at a stop; may be empty
        std::function<void()> endProcess;    ///< a client wants the process to end; may be empty
    };
    /// Null, and `error` says why, when the port cannot be had.
    static std::unique_ptr<DebugServer> start(Options options, std::string& error);
    ~DebugServer() override;

    std::uint16_t port() const { return listener_->port(); }
    /// The process will run no more: the client is told `exitCode`.
    void tellExit(int exitCode);
    bool hasClient() const noexcept { return attached_; }

  private:
    DebugServer(Options options, std::unique_ptr<rpc::LoopbackListener> listener);

    // DebuggedProgram
    Answer launch(const Json& request) override;
    Answer attach(const Json& request) override;
    Answer configurationDone() override { return {}; }
    Answer restart(const Json& arguments) override;
    Answer terminate() override;
    Answer disconnect(const Json& arguments) override;
    bool feed(const std::string&) override { return false; }
    std::string sourcePath() const override { return options_.sourcePath; }
    const TextDocument& text() const override { return document_; }
    void nameSource(const std::string& path) override { options_.sourcePath = path; }

    // DebugListener
    std::unique_lock<std::recursive_mutex> exclusive() override {
        return std::unique_lock(serving_);
    }
    void onBuilt() override;
    void onStopped(const StopInfo& info) override;
    void onOutput(const std::string& text, const ScriptPlace& place, int) override;
    void onBreakpointsChanged(const std::vector<int>& ids) override;
    void onAttention() override;
    void onEnded(const RunFailure& failure) override;

    void printed(std::string_view bytes) override;

    struct Peer;
    void listen();
    void serveClient(std::shared_ptr<rpc::Channel> channel);
    void serveIdle(Peer& peer);
    bool placeBecomesFree();
    void refuseClient(std::shared_ptr<rpc::Channel> channel);
    void serveWaiting();
    void clientGone();
    bool onMessage(const Json& message);

    Options options_;
    std::unique_ptr<rpc::LoopbackListener> listener_;
    TextDocument document_;  ///< the script that was built last; guarded by serving_
    DebugSession session_;
    std::recursive_mutex serving_;  ///< whoever answers the client, or uses session_, has it
    std::shared_ptr<Peer> peer_;    ///< the client; guarded by serving_
    std::atomic<bool> attached_{false};
    std::atomic<bool> inRun_{false};
    std::atomic<bool> closing_{false};
    bool waited_ = false;
    std::thread accepting_;
    std::thread client_;
    std::atomic<bool> clientBusy_{false};
    std::atomic<bool> someoneWaits_{false};  ///< for the place of a client without a token
};

}  // namespace korvant::dap
