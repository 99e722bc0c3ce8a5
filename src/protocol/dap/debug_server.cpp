#include "protocol/dap/debug_server.h"

#include <chrono>

#include "base/system/os_file.h"
#include "protocol/dap/run_outputs.h"

namespace korvant::dap {

namespace {

constexpr std::chrono::milliseconds kTurn{20};
/// Who has not shown the token by then makes room for others.
constexpr std::chrono::seconds kIntroduction{20};
constexpr std::chrono::seconds kIntroductionWhileOthersWait{1};

/// Takes as long for a wrong token as for a right one.
bool sameToken(const std::string& left, const std::string& right) {
    unsigned difference = left.size() == right.size() ? 0 : 1;
    for (std::size_t i = 0; i < left.size(); ++i)
        difference |= static_cast<unsigned char>(left[i]) ^
                      static_cast<unsigned char>(right[i % right.size()]);
    return difference == 0;
}

}  // namespace

/// One client and what belongs to it.
struct DebugServer::Peer {
    Peer(DebugServer& server, std::shared_ptr<rpc::Channel> channel)
        : client([this](const Json& message) { return stream && stream->send(message); }),
          output(client),
          conversation(server.session_, server, client, output),
          stream(std::make_unique<rpc::MessageStream>(std::move(channel))) {
        rpc::MessageStream::Listener listener;
        listener.onMessage = [this, &server](const Json& message) {
            if (rpc::textOf(message, "command") == "cancel") conversation.noteCancel(message);
            return server.onMessage(message);
        };
        listener.onEnd = [this] { conversation.noteGone(); };
        stream->begin(std::move(listener));
    }

    DapClient client;
    OutputRelay output;
    Conversation conversation;
    std::atomic<bool> leaving{false};            ///< set with serving_
    std::unique_ptr<rpc::MessageStream> stream;  ///< last: its thread calls into the server
};

std::unique_ptr<DebugServer> DebugServer::start(Options options, std::string& error) {
    if (options.token.empty()) {
        error = "a debug server needs a token";
        return nullptr;
    }
    auto listener = rpc::listenOnLoopback(options.port, error);
    if (!listener) return nullptr;
    return std::unique_ptr<DebugServer>(new DebugServer(std::move(options), std::move(listener)));
}

DebugServer::DebugServer(Options options, std::unique_ptr<rpc::LoopbackListener> listener)
    : options_(std::move(options)),
      listener_(std::move(listener)),
      session_(moduleSession(), *this) {
    session_.attach();
    scriptConsole().addListener(*this);
    accepting_ = std::thread([this] { listen(); });
}

DebugServer::~DebugServer() {
    closing_ = true;
    scriptConsole().removeListener(*this);
    listener_->close();
    {
        const std::lock_guard lock(serving_);
        if (peer_) peer_->stream->close();
    }
    accepting_.join();
    if (client_.joinable()) client_.join();
}

void DebugServer::listen() {
    keepSignalsAway();
    while (!closing_) {
        std::shared_ptr<rpc::Channel> channel = listener_->accept();
        if (!channel) break;
        const bool free = placeBecomesFree();
        if (closing_) break;
        if (!free) {
            refuseClient(std::move(channel));
            continue;
        }
        if (client_.joinable()) client_.join();
        clientBusy_ = true;
        client_ = std::thread([this, channel] {
            keepSignalsAway();
            serveClient(channel);
            clientBusy_ = false;
        });
    }
}

/// One who has not shown the token keeps nobody away for long.
bool DebugServer::placeBecomesFree() {
    someoneWaits_ = true;
    while (clientBusy_ && !attached_ && !closing_) std::this_thread::sleep_for(kTurn);
    someoneWaits_ = false;
    return !clientBusy_;
}

/// A second client learns why, within two seconds.
void DebugServer::refuseClient(std::shared_ptr<rpc::Channel> channel) {
    rpc::MessageStream stream(std::move(channel));
    stream.begin(rpc::MessageStream::Listener());
    DapClient client([&stream](const Json& message) { return stream.send(message); });
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    while (!stream.mailbox().ended() && std::chrono::steady_clock::now() < until) {
        const auto message = stream.mailbox().take(std::chrono::milliseconds(100));
        if (!message) continue;
        if (rpc::textOf(*message, "command") == "initialize") {
            client.answer(*message, Answer::with(capabilities()));
            continue;
        }
        client.answer(*message, Answer::refused("another client is being served"));
        break;
    }
}

void DebugServer::serveClient(std::shared_ptr<rpc::Channel> channel) {
    const auto peer = std::make_shared<Peer>(*this, std::move(channel));
    {
        const std::lock_guard lock(serving_);
        peer_ = peer;
    }
    const auto begun = std::chrono::steady_clock::now();
    while (!closing_ && !peer->stream->mailbox().ended() && !peer->leaving) {
        serveIdle(*peer);
        const auto patience = someoneWaits_ ? kIntroductionWhileOthersWait : kIntroduction;
        if (!attached_ && std::chrono::steady_clock::now() - begun > patience) break;
    }
    {
        const std::lock_guard lock(serving_);
        peer->leaving = true;
    }
    // A run lets go of the client first.
    while (!closing_ && inRun_) {
        session_.requestAttention();
        {
            const std::lock_guard lock(serving_);
            if (!peer_) break;
        }
        std::this_thread::sleep_for(kTurn);
    }
    const std::lock_guard lock(serving_);
    if (peer_ && !inRun_) clientGone();
    peer_.reset();
}

/// While nothing runs it is this thread that answers.
void DebugServer::serveIdle(Peer& peer) {
    if (inRun_) {
        session_.requestAttention();
        std::this_thread::sleep_for(kTurn);
        return;
    }
    peer.stream->mailbox().await(kTurn);
    const std::lock_guard lock(serving_);
    if (inRun_) return;
    while (!peer.leaving) {
        const auto message = peer.stream->mailbox().take(std::chrono::milliseconds(0));
        if (!message) break;
        peer.conversation.handle(*message);
    }
}

/// On the thread that reads the client.
bool DebugServer::onMessage(const Json& message) {
    if (!inRun_) return false;
    const std::string command = rpc::textOf(message, "command");
    if (attached_ && (command == "cancel" || command == "terminate" || command == "disconnect"))
        session_.cancelEvaluation();
    if (attached_ && command == "terminate") session_.stopRun();
    session_.requestAttention();
    return false;
}

/// With the lock. The script goes on as if nobody had ever looked.
void DebugServer::clientGone() {
    if (!peer_) return;
    if (attached_) peer_->conversation.forgetWishes();
    attached_ = false;
    peer_->leaving = true;
    peer_->conversation.letGo();
}

void DebugServer::serveWaiting() {
    const std::lock_guard lock(serving_);
    if (!peer_) return;
    const std::shared_ptr<Peer> peer = peer_;
    while (auto message = peer->stream->mailbox().take(std::chrono::milliseconds(0)))
        peer->conversation.handle(*message);
    if (peer->stream->mailbox().ended() || peer->leaving) {
        clientGone();
        peer_.reset();
    }
}

Answer DebugServer::launch(const Json&) {
    return Answer::refused("this script is running already: attach to it");
}

Answer DebugServer::attach(const Json& request) {
    const Json& arguments = rpc::memberOf(request, "arguments");
    if (!sameToken(rpc::textOf(arguments, "token"), options_.token)) {
        peer_->leaving = true;
        return Answer::refused("the token is wrong");
    }
    const std::string program = rpc::textOf(arguments, "program");
    if (options_.sourcePath.empty()) options_.sourcePath = program;
    attached_ = true;
    peer_->conversation.begin();
    peer_->client.answer(request, {});
    // Whoever runs the script would have to run it again.
    peer_->client.event("capabilities", {{"capabilities", {{"supportsRestartRequest", false}}}});
    peer_->client.event("initialized");
    peer_->client.event("thread", {{"reason", "started"}, {"threadId", 1}});
    if (!options_.sourcePath.empty()) peer_->conversation.tellSource("new");
    return Answer::postponed();
}

Answer DebugServer::restart(const Json&) {
    return Answer::refused("a script that was attached to cannot be started again from here");
}

Answer DebugServer::terminate() {
    session_.stopRun();
    peer_->conversation.letGo();
    return {};
}

Answer DebugServer::disconnect(const Json& arguments) {
    const bool end = attached_ && rpc::truthOf(arguments, "terminateDebuggee");
    clientGone();
    if (end) session_.stopRun();
    if (end && options_.endProcess) options_.endProcess();
    return {};
}

/// With waitForClient the first run waits here: it is built, and nothing of it has happened.
void DebugServer::onBuilt() {
    TextDocument built(session_.mainText());
    {
        const std::lock_guard lock(serving_);
        document_ = std::move(built);
        inRun_ = true;
    }
    bool seen = false;
    while (options_.waitForClient && !waited_ && !closing_ && !moduleSession().shouldStop()) {
        serveWaiting();
        const std::lock_guard lock(serving_);
        seen = seen || attached_;
        waited_ = attached_ ? peer_->conversation.configured() : seen;
        if (!waited_) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

void DebugServer::onStopped(const StopInfo& info) {
    const std::lock_guard lock(serving_);
    if (!peer_ || !attached_) return;
    const std::shared_ptr<Peer> peer = peer_;
    peer->conversation.stopped(info, peer->stream->mailbox(), options_.whileStopped);
    if (!peer->stream->mailbox().ended() && !peer->leaving) return;
    clientGone();
    peer_.reset();
}

void DebugServer::onOutput(const std::string& text, const ScriptPlace& place, int) {
    const std::lock_guard lock(serving_);
    if (peer_ && attached_) peer_->conversation.log(text, place);
}

void DebugServer::onBreakpointsChanged(const std::vector<int>& ids) {
    const std::lock_guard lock(serving_);
    if (peer_ && attached_) peer_->conversation.breakpointsChanged(ids);
}

void DebugServer::onAttention() {
    serveWaiting();
}

void DebugServer::onEnded(const RunFailure& failure) {
    const std::lock_guard lock(serving_);
    if (peer_ && attached_)
        sendFailure(failure, options_.sourcePath, peer_->conversation, peer_->output);
    if (peer_) peer_->output.flush();
    inRun_ = false;
}

/// The client is told beside where it goes anyway.
void DebugServer::printed(std::string_view bytes) {
    if (!attached_) return;
    const std::lock_guard lock(serving_);
    if (peer_) peer_->output.write("stdout", bytes);
}

void DebugServer::tellExit(int exitCode) {
    const std::lock_guard lock(serving_);
    if (!peer_ || !attached_) return;
    peer_->output.flush();
    peer_->conversation.end();
    peer_->client.event("exited", {{"exitCode", exitCode}});
    peer_->client.event("terminated");
}

}  // namespace korvant::dap
