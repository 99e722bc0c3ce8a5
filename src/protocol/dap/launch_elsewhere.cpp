// Runs that another process makes: with windows, in the client's terminal, or one that is under
// way already.
#include "protocol/dap/frame_passer.h"
#include "protocol/dap/launch_server.h"
#include "protocol/dap/run_outputs.h"

namespace korvant::dap {

Answer LaunchServer::attach(const Json& request) {
    const Json& arguments = rpc::memberOf(request, "arguments");
    const std::int64_t port = rpc::numberOf(arguments, "port");
    if (port < 1 || port > 65535) return Answer::refused("\"attach\" needs a port");
    request_ = request;
    return passTo(static_cast<std::uint16_t>(port), rpc::textOf(arguments, "token"),
                  std::chrono::seconds(0));
}

Answer LaunchServer::runElsewhere(const Json& request) {
    const Json& arguments = rpc::memberOf(request, "arguments");
    if (rpc::truthOf(arguments, "gui"))
        for (const char* name : {"coverage", "profile"})
            if (!rpc::textOf(arguments, name).empty())
                return Answer::refused("a run with windows has no \"" + std::string(name) + "\"");
    if (!buildsHere(request)) return Answer::postponed();
    const std::uint16_t port = freePort();
    const std::string token = newToken();
    if (port == 0) return Answer::refused("there is no free port on this machine");
    const std::vector<std::string> command = services_.runCommand(arguments, port);
    const std::string folder = rpc::textOf(arguments, "cwd");
    if (rpc::textOf(arguments, "console") == "integratedTerminal" && client_.runsInTerminal()) {
        client_.ask("runInTerminal", {{"kind", "integrated"},
                                      {"title", "korvant"},
                                      {"cwd", folder},
                                      {"args", command},
                                      {"env", {{"KORVANT_DEBUG_TOKEN", token}}}});
    } else {
        const std::string wrong = services_.spawn(command, token, folder);
        if (!wrong.empty()) return Answer::refused(wrong);
    }
    request_ = request;
    return passTo(port, token, std::chrono::seconds(15));
}

/// What is wrong with the text is told here: the other process would end before anybody listens.
/// False when that has answered the launch.
bool LaunchServer::buildsHere(const Json& request) {
    asIScriptContext* context = nullptr;
    asIScriptEngine* const engine = services_.engine(context);
    ScriptSession& script = moduleSession();
    const bool built = engine != nullptr && script.check(engine, text_) != 0;
    if (built) return true;
    client_.answer(request, {});
    sendBuildMessages(script.buildMessages(), path_, conversation_, output_);
    RunFailure failure;
    failure.kind = RunFailure::Kind::build;
    finish(services_.exitCode(failure));
    return false;
}

/// The server may need some time to open its port.
Answer LaunchServer::passTo(std::uint16_t port, const std::string& token,
                            std::chrono::seconds patience) {
    const auto until = std::chrono::steady_clock::now() + patience;
    std::string error;
    std::unique_ptr<rpc::Channel> channel = rpc::connectToLoopback(port, error);
    refusal_.clear();
    while (!channel && refusal_.empty() && std::chrono::steady_clock::now() < until &&
           !stopping()) {
        serveWaiting();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        channel = rpc::connectToLoopback(port, error);
    }
    if (!refusal_.empty()) return Answer::refused("the client's terminal: " + refusal_);
    if (!channel) return Answer::refused("nobody listens at port " + std::to_string(port));
    auto passer = std::make_unique<FramePasser>(std::move(channel), client_);
    const std::string refusal = passer->attach(hello_, request_, port, token);
    if (!refusal.empty()) return Answer::refused(refusal);
    answerLaunch();
    passer_ = std::move(passer);
    return Answer::postponed();
}

/// Until the client leaves; when the other process is gone first, we answer in its place.
int LaunchServer::servePassing() {
    bool alone = false;
    while (!stream_->mailbox().ended() && !disconnected_) {
        const auto message = stream_->mailbox().take(std::chrono::milliseconds(50));
        if (message && alone) conversation_.handle(*message);
        if (message && !alone) passer_->pass(*message);
        if (alone || !passer_->gone()) continue;
        alone = true;
        conversation_.end();
        if (!passer_->sawEnd() && !leaving_) client_.event("terminated");
        for (const Json& request : passer_->takeUnanswered()) conversation_.handle(request);
    }
    return 0;
}

}  // namespace korvant::dap
