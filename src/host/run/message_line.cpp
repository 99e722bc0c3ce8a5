#include "host/run/message_line.h"

#include <algorithm>

namespace korvant {

namespace {

const char* wordFor(BuildMessage::Kind kind) {
    switch (kind) {
        case BuildMessage::Kind::warning:
            return "warning";
        case BuildMessage::Kind::information:
            return "note";
        default:
            return "error";
    }
}

}  // namespace

std::string messageLine(const std::string& name, const BuildMessage& message) {
    std::string line = name;
    if (message.row >= 1)
        line +=
            ":" + std::to_string(message.row) + ":" + std::to_string(std::max(message.column, 1));
    line += std::string(": ") + wordFor(message.kind) + ": " + message.plain;
    while (line.ends_with('\n')) line.pop_back();
    return line;
}

}  // namespace korvant
