#include "protocol/dap/run_outputs.h"

#include "base/text/text_encoding.h"
#include "host/run/message_line.h"

namespace korvant::dap {

namespace {

std::string oneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text + "\n";
}

void send(const std::string& text, const ScriptPlace& place, const Conversation& conversation,
          OutputRelay& output) {
    Json body = {{"category", "stderr"}, {"output", decodeForDisplay(oneLine(text))}};
    conversation.addPlace(body, place);
    output.event(std::move(body));
}

}  // namespace

void sendBuildMessages(const BuildMessages& messages, const std::string& path,
                       const Conversation& conversation, OutputRelay& output) {
    for (const BuildMessage& message : messages.all())
        send(messageLine(path, message), {{}, message.row, message.column}, conversation, output);
}

void sendFailure(const RunFailure& failure, const std::string& path,
                 const Conversation& conversation, OutputRelay& output) {
    using Kind = RunFailure::Kind;
    if (failure.kind != Kind::none && failure.kind != Kind::build) {
        std::string text = failure.kind == Kind::stopped ? "The Script is stopped.\n" : "";
        text += oneLine(failure.text);
        if (failure.line > 0) text += path + ":" + std::to_string(failure.line) + "\n";
        send(text, {{}, failure.line, 0}, conversation, output);
    }
    for (const std::string& file : failure.unwritten) send(file, {}, conversation, output);
}

}  // namespace korvant::dap
