#include "protocol/dap/launch_server.h"

#include <filesystem>
#include <thread>
#include <utility>

#include "base/system/user_folders.h"
#include "protocol/dap/frame_passer.h"
#include "protocol/dap/run_outputs.h"

namespace korvant::dap {

namespace {

constexpr std::chrono::milliseconds kTurn{20};

rpc::MessageStream::Listener listenerOf(std::function<bool(const Json&)> onMessage,
                                        std::function<void()> onEnd, DapClient& client) {
    rpc::MessageStream::Listener listener;
    listener.onMessage = std::move(onMessage);
    listener.onEnd = std::move(onEnd);
    listener.forgives = true;
    listener.onBroken = [&client](const std::string& what) {
        client.event("output",
                     {{"category", "stderr"}, {"output", "not understood: " + what + "\n"}});
    };
    return listener;
}

}  // namespace

LaunchServer::LaunchServer(std::shared_ptr<rpc::Channel> channel, LaunchServices services)
    : services_(std::move(services)),
      client_([this](const Json& message) { return stream_ && stream_->send(message); }),
      output_(client_),
      console_(output_, [this] { return serveAWhile(); }),
      session_(moduleSession(), *this),
      conversation_(session_, *this, client_, output_) {
    stream_ = std::make_unique<rpc::MessageStream>(std::move(channel));
    stream_->begin(listenerOf([this](const Json& message) { return onMessage(message); },
                              [this] { onGone(); }, client_));
}

LaunchServer::~LaunchServer() = default;

int LaunchServer::serve() {
    while (!stopping()) {
        if (const auto message = stream_->mailbox().take(std::chrono::milliseconds(200)))
            conversation_.handle(*message);
        if (passer_) return servePassing();
        if (startWanted_ && !stopping()) run();
    }
    return 0;
}

/// On the reading thread: what cannot wait for the script's next statement.
bool LaunchServer::onMessage(const Json& message) {
    const std::string command = rpc::textOf(message, "command");
    if (command == "initialize") hello_ = message;
    if (command == "disconnect") endSoon();
    if (command == "cancel") conversation_.noteCancel(message);
    if (!running_) return false;
    if (command == "cancel" || command == "terminate" || command == "disconnect" ||
        command == "restart")
        session_.cancelEvaluation();
    if (command == "terminate" || command == "disconnect") session_.stopRun();
    session_.requestAttention();
    return false;
}

void LaunchServer::onGone() {
    endSoon();
    conversation_.noteGone();
    if (running_) session_.stopRun();
}

/// A native function that cannot be ended must not keep the process.
void LaunchServer::endSoon() {
    if (leaving_.exchange(true) || !services_.giveUp) return;
    std::thread([giveUp = services_.giveUp] {
        std::this_thread::sleep_for(std::chrono::milliseconds(2500));
        giveUp();
    }).detach();
}

void LaunchServer::serveWaiting() {
    while (const auto message = stream_->mailbox().take(std::chrono::milliseconds(0))) {
        noteTerminal(*message);
        conversation_.handle(*message);
    }
}

void LaunchServer::noteTerminal(const Json& message) {
    if (rpc::textOf(message, "type") != "response" || rpc::truthOf(message, "success", true))
        return;
    refusal_ = rpc::textOf(message, "message", "it is not to be had");
}

/// While the script waits for input. False when nobody is there to type it.
bool LaunchServer::serveAWhile() {
    if (const auto message = stream_->mailbox().take(kTurn)) conversation_.handle(*message);
    return !stopping();
}

Answer LaunchServer::readProgram(const Json& arguments) {
    const std::string program = rpc::textOf(arguments, "program");
    if (program.empty()) return Answer::refused("\"launch\" needs a program: the script's file");
    const std::string folder = rpc::textOf(arguments, "cwd");
    std::error_code error;
    if (!folder.empty()) std::filesystem::current_path(folder, error);
    if (error) return Answer::refused("cannot change to the folder " + folder);
    path_ = absolutePath(program);
    std::string why;
    if (!services_.readScript(path_, text_, why)) {
        path_.clear();
        return Answer::refused(why);
    }
    document_ = TextDocument(text_);
    return {};
}

Answer LaunchServer::takeLimits(const Json& arguments) {
    const Json& limits = rpc::memberOf(arguments, "limits");
    const std::string wrong = services_.setLimits(limits.is_null() ? Json::object() : limits);
    return wrong.empty() ? Answer{} : Answer::refused(wrong);
}

void LaunchServer::takeLines(const Json& arguments) {
    for (const char* name : {"answers", "args"}) {
        const Json& lines = rpc::memberOf(arguments, name);
        for (const Json& line : lines.is_null() ? Json::array() : lines)
            console_.feed(line.is_string() ? line.get<std::string>() : line.dump());
    }
}

/// The files are named as the program is: in the folder of the run.
void LaunchServer::takeObserver(const Json& arguments) {
    const auto fileOf = [&arguments](const char* name) {
        const std::string file = rpc::textOf(arguments, name);
        return file.empty() ? file : absolutePath(file);
    };
    RunObserver::Files files{fileOf("coverage"), fileOf("profile")};
    if (files.wanted()) observer_ = std::make_unique<RunObserver>(std::move(files));
}

Answer LaunchServer::launch(const Json& request) {
    const Json& arguments = rpc::memberOf(request, "arguments");
    Answer read = readProgram(arguments);
    if (!read.done) return read;
    Answer bounded = takeLimits(arguments);
    if (!bounded.done) return bounded;
    if (rpc::truthOf(arguments, "gui") ||
        (rpc::textOf(arguments, "console") == "integratedTerminal" && client_.runsInTerminal()))
        return runElsewhere(request);
    takeLines(arguments);
    takeObserver(arguments);
    services_.useConsole(console_);
    noDebug_ = rpc::truthOf(arguments, "noDebug");
    stopOnEntry_ = rpc::truthOf(arguments, "stopOnEntry") && !noDebug_;
    request_ = request;
    startWanted_ = true;
    return Answer::postponed();
}

/// Also when the client has left: the files are written.
void LaunchServer::tellObserved() {
    if (!observer_) return;
    const RunObserver::Report report = observer_->finish(session_, path_);
    output_.flush();
    output_.write("console", report.summary);
    for (const std::string& failure : report.failures) output_.write("stderr", failure + "\n");
}

void LaunchServer::answerLaunch() {
    if (request_.is_null()) return;
    client_.answer(request_, {});
    request_ = nullptr;
}

void LaunchServer::run() {
    startWanted_ = false;
    asIScriptContext* context = nullptr;
    asIScriptEngine* const engine = services_.engine(context);
    if (engine == nullptr) {
        client_.answer(request_, Answer::refused("the script engine could not be set up"));
        return;
    }
    running_ = true;
    do {
        restarting_ = false;
        session_.rules().entry = stopOnEntry_;
        if (observer_) observer_->watch(session_);
        session_.start(engine, context, text_);
    } while (!stopping() && restarting_ && readAgain());
    running_ = false;
    if (stopping()) return tellObserved();
    ScriptSession& script = moduleSession();
    answerLaunch();
    if (script.lastFailure().kind == RunFailure::Kind::build)
        sendBuildMessages(script.buildMessages(), path_, conversation_, output_);
    sendFailure(script.lastFailure(), path_, conversation_, output_);
    tellObserved();
    finish(services_.exitCode(script.lastFailure()));
}

/// Reads the text anew. False when it is gone.
bool LaunchServer::readAgain() {
    std::string error;
    if (services_.readScript(path_, text_, error)) {
        document_ = TextDocument(text_);
        return true;
    }
    output_.write("stderr", error + "\n");
    return false;
}

void LaunchServer::finish(int exitCode) {
    output_.flush();
    conversation_.end();
    client_.event("exited", {{"exitCode", exitCode}});
    client_.event("terminated");
}

/// The script is built and nothing of it has run: breakpoints can be answered truthfully.
void LaunchServer::onBuilt() {
    sendBuildMessages(moduleSession().buildMessages(), path_, conversation_, output_);
    answerLaunch();
    if (!begun_) {
        begun_ = true;
        conversation_.begin();
        client_.event("initialized");
        client_.event("thread", {{"reason", "started"}, {"threadId", 1}});
    }
    conversation_.tellSource(std::exchange(built_, true) ? "changed" : "new");
    while (!conversation_.configured() && !stopping()) serveAWhile();
    if (stopping()) session_.stopRun();
}

void LaunchServer::onStopped(const StopInfo& info) {
    if (noDebug_ || stopping() || restarting_) return;
    conversation_.stopped(info, stream_->mailbox(), {});
    if (stopping()) session_.stopRun();
}

void LaunchServer::onOutput(const std::string& text, const ScriptPlace& place, int) {
    conversation_.log(text, place);
}

void LaunchServer::onBreakpointsChanged(const std::vector<int>& ids) {
    conversation_.breakpointsChanged(ids);
}

/// With arguments of its own the client launches anew; the file is read again in any case.
Answer LaunchServer::restart(const Json&) {
    restarting_ = true;
    if (conversation_.standsStill()) conversation_.tellContinued();
    session_.stopRun();
    conversation_.letGo();
    return {};
}

Answer LaunchServer::terminate() {
    session_.stopRun();
    conversation_.letGo();
    return {};
}

Answer LaunchServer::disconnect(const Json&) {
    disconnected_ = true;
    if (running_) session_.stopRun();
    conversation_.letGo();
    output_.flush();
    return {};
}

bool LaunchServer::feed(const std::string& line) {
    if (!console_.waiting()) return false;
    console_.feed(line);
    return true;
}

}  // namespace korvant::dap
