#include "protocol/dap/run_outputs.h"

#include <algorithm>

#include "base/text/text_encoding.h"

namespace korvant::dap {

namespace {

const char* kindOf(BuildMessage::Kind kind) {
    switch (kind) {
        case BuildMessage::Kind::warning:
            return "warning";
        case BuildMessage::Kind::information:
            return "note";
        default:
            return "error";
    }
}

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
    for (const BuildMessage& message : messages.all()) {
        const std::string place = message.row < 1 ? path
                                                  : path + ":" + std::to_string(message.row) + ":" +
                                                        std::to_string(std::max(message.column, 1));
        send(place + ": " + kindOf(message.kind) + ": " + message.plain,
             {{}, message.row, message.column}, conversation, output);
    }
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
