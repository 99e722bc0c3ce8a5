#include "protocol/dap/frame_passer.h"

#include <random>

namespace korvant::dap {

FramePasser::FramePasser(std::shared_ptr<rpc::Channel> server, DapClient& client)
    : client_(client), stream_(std::move(server)) {
    rpc::MessageStream::Listener listener;
    listener.onMessage = [this](const Json& message) { return onMessage(message); };
    stream_.begin(std::move(listener));
}

/// Before the server has let us in, its messages are ours.
bool FramePasser::onMessage(const Json& message) {
    if (!attached_) {
        // The answer to our attach; what follows in the same piece is the client's already.
        attached_ = rpc::textOf(message, "command") == "attach" && rpc::truthOf(message, "success");
        return false;
    }
    if (rpc::textOf(message, "event") == "terminated") sawEnd_ = true;
    if (rpc::textOf(message, "type") == "response") {
        const std::lock_guard lock(waiting_);
        unanswered_.erase(rpc::numberOf(message, "request_seq"));
    }
    client_.pass(message);
    return true;
}

void FramePasser::pass(const Json& message) {
    if (rpc::textOf(message, "type") == "request") {
        const std::lock_guard lock(waiting_);
        unanswered_.insert_or_assign(rpc::numberOf(message, "seq"), message);
    }
    stream_.send(message);
}

std::vector<Json> FramePasser::takeUnanswered() {
    const std::lock_guard lock(waiting_);
    std::vector<Json> all;
    for (auto& [number, message] : unanswered_) all.push_back(std::move(message));
    unanswered_.clear();
    return all;
}

std::string FramePasser::refusalOf(const char* command) {
    for (int tries = 0; tries < 100; ++tries) {
        const auto message = stream_.mailbox().take(std::chrono::milliseconds(100));
        if (!message && stream_.mailbox().ended()) break;
        if (!message || rpc::textOf(*message, "command") != command) continue;
        if (rpc::truthOf(*message, "success")) return {};
        return rpc::textOf(*message, "message", "the debug server refused");
    }
    return "the debug server does not answer";
}

std::string FramePasser::attach(const Json& initialize, const Json& request, std::uint16_t port,
                                const std::string& token) {
    Json hello = initialize;
    if (!hello.is_object()) hello = {{"type", "request"}, {"command", "initialize"}, {"seq", 1}};
    stream_.send(hello);
    std::string refusal = refusalOf("initialize");
    if (!refusal.empty()) return refusal;
    Json arguments = rpc::memberOf(request, "arguments");
    arguments["port"] = port;
    arguments["token"] = token;
    stream_.send({{"type", "request"},
                  {"command", "attach"},
                  {"seq", rpc::numberOf(request, "seq")},
                  {"arguments", std::move(arguments)}});
    return refusalOf("attach");
}

std::uint16_t freePort() {
    std::string error;
    const auto listener = rpc::listenOnLoopback(0, error);
    return listener ? listener->port() : 0;
}

std::string newToken() {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::random_device device;
    std::string token;
    for (int i = 0; i < 32; ++i) token.push_back(kDigits[device() & 15u]);
    return token;
}

}  // namespace korvant::dap
