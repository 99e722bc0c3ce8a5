// Stops, steps and the stack, as a debugging client sees them.
#include <algorithm>

#include "protocol/dap/conversation.h"

namespace korvant::dap {

namespace {

const char* reasonOf(StopReason reason) {
    switch (reason) {
        case StopReason::entry:
            return "entry";
        case StopReason::breakpoint:
            return "breakpoint";
        case StopReason::functionBreakpoint:
            return "function breakpoint";
        case StopReason::dataBreakpoint:
            return "data breakpoint";
        case StopReason::step:
            return "step";
        case StopReason::pause:
            return "pause";
        case StopReason::exception:
        case StopReason::timeOut:
        case StopReason::memory:
            break;
    }
    return "exception";
}

bool wrongThread(const Json& arguments) {
    return rpc::numberOf(arguments, "threadId") != 1;
}

StepBy stepOf(const Json& arguments) {
    const std::string by = rpc::textOf(arguments, "granularity", "line");
    return by == "line" ? StepBy::line : StepBy::statement;
}

Answer noSuchThread() {
    return Answer::refused("there is one thread, number 1");
}

}  // namespace

Json Conversation::stoppedBody(const StopInfo& info) const {
    Json body = {{"reason", reasonOf(info.reason)},
                 {"description", info.text.empty() ? reasonOf(info.reason) : info.text.c_str()},
                 {"threadId", 1},
                 {"allThreadsStopped", true},
                 {"hitBreakpointIds", info.hitIds}};
    if (!info.text.empty()) body["text"] = info.text;
    return body;
}

void Conversation::stopped(const StopInfo& info, rpc::Mailbox& mailbox,
                           const std::function<void()>& idle) {
    output_.flush();
    frameOfNode_.clear();
    goesOn_ = false;
    standsStill_ = true;
    client_.event("stopped", stoppedBody(info));
    while (!goesOn_) {
        if (const auto message = mailbox.take(std::chrono::milliseconds(50))) handle(*message);
        if (mailbox.ended()) break;
        if (idle) idle();
    }
    standsStill_ = false;
    frameBase_ += std::max(1u, session_.frames().count());
}

template <class How>
Answer Conversation::resumed(const Json& arguments, How how) {
    if (wrongThread(arguments)) return noSuchThread();
    if (!how()) return Answer::refused("the script does not stand still");
    letGo();
    return {};
}

Answer Conversation::goOn(const Json& arguments) {
    Answer answer = resumed(arguments, [this] { return session_.goOn(); });
    if (answer.done) answer.body = {{"allThreadsContinued", true}};
    return answer;
}

Answer Conversation::stepOver(const Json& arguments) {
    return resumed(arguments, [&] { return session_.stepOver(stepOf(arguments)); });
}

Answer Conversation::stepInto(const Json& arguments) {
    return resumed(arguments, [&] { return session_.stepInto(stepOf(arguments)); });
}

Answer Conversation::stepOut(const Json& arguments) {
    return resumed(arguments, [this] { return session_.stepOut(); });
}

Answer Conversation::pause(const Json& arguments) {
    if (wrongThread(arguments)) return noSuchThread();
    if (!standsStill_) session_.requestPause();
    return {};
}

Json Conversation::frameAt(unsigned index) const {
    const DebugFrame frame = session_.frames().frame(index);
    Json body = {{"id", frameBase_ + index},
                 {"name", frame.function.empty() ? frame.name : frame.function},
                 {"line", 0},
                 {"column", 0}};
    if (frame.native) body["presentationHint"] = "subtle";
    addPlace(body, frame.place);
    if (frame.place.line > 0 && frame.place.column < 1) body["column"] = client_.column(1);
    return body;
}

Answer Conversation::stackTrace(const Json& arguments) {
    if (wrongThread(arguments)) return noSuchThread();
    const std::int64_t total = session_.frames().count();
    const std::int64_t start =
        std::clamp<std::int64_t>(rpc::numberOf(arguments, "startFrame"), 0, total);
    const std::int64_t levels = rpc::numberOf(arguments, "levels");
    const std::int64_t end = levels > 0 ? std::min(total, start + levels) : total;
    Json frames = Json::array();
    for (std::int64_t i = start; i < end; ++i) frames.push_back(frameAt(static_cast<unsigned>(i)));
    return Answer::with({{"stackFrames", std::move(frames)}, {"totalFrames", total}});
}

std::string Conversation::stackText() const {
    std::string text;
    for (unsigned i = 0; i < session_.frames().count(); ++i) {
        const DebugFrame frame = session_.frames().frame(i);
        text += frame.function + ", line " + std::to_string(frame.place.line) + "\n";
    }
    return text;
}

Answer Conversation::exceptionInfo(const Json& arguments) {
    if (wrongThread(arguments)) return noSuchThread();
    const StopInfo& stop = session_.stop();
    const bool caught = stop.exception == ExceptionKind::caught;
    if (stop.reason != StopReason::exception)
        return Answer::refused("the script has not stopped at an exception");
    return Answer::with({{"exceptionId", stop.text},
                         {"description", stop.text},
                         {"breakMode", caught ? "always" : "unhandled"},
                         {"details", {{"message", stop.text}, {"stackTrace", stackText()}}}});
}

}  // namespace korvant::dap
