// What the debugger writes about builds that fail and runs that end.
#include <algorithm>

#include "base/system/file_io.h"
#include "base/text/number_text.h"
#include "base/text/text_encoding.h"
#include "editor/stops/debugger.h"

namespace korvant {

namespace {

constexpr char kFailed[] = "Application terminated in run time error.\n";
constexpr char kFinished[] = "Application finished normaly.\n";
constexpr unsigned kShownFrames = 20;

}  // namespace

/// The texts that everybody knows, and below them what can be said about a failure.
void Debugger::showEnd(bool failed) {
    std::string text = failed ? kFailed : kFinished;
    if (failed && window_.explains()) text += failureText();
    output_.show(text);
}

/// Each line is one that leads to its place, the innermost first.
std::string Debugger::failureText() const {
    const RunFailure& failure = session_.lastFailure();
    if (failure.kind == RunFailure::Kind::timeOut && failure.line > 0)
        return "The time was over" + placeText({}, failure.line) + "\n";
    if (failure.kind != RunFailure::Kind::exception || context_ == nullptr) return {};
    const char* description = context_->GetExceptionString();
    std::string text = description != nullptr ? decodeForDisplay(description) : "Exception";
    const unsigned known = static_cast<unsigned>(failure.stack.size());
    const unsigned count = std::min(known, kShownFrames);
    if (count == 0) return text + placeText({}, failure.line) + "\n";
    for (unsigned level = 0; level < count; ++level) {
        const RunFrame& frame = failure.stack[level];
        text += level == 0 ? "" : "  called";
        text +=
            placeText(frame.source, frame.line) + " in " + decodeForDisplay(frame.function) + "\n";
    }
    if (count < failure.calls) text += "  and so on\n";
    return text;
}

/// `source`: empty for the text that ran.
std::string Debugger::placeText(const std::string& source, std::int32_t line) const {
    if (source.empty()) return " at line " + formatInt(lines_.editorLine({line}).number);
    return " at line " + formatInt(line) + " of " + decodeForDisplay(nameOf(source));
}

std::string Debugger::messageTexts() const {
    std::string texts;
    for (const BuildMessage& message : session_.buildMessages().all()) texts += message.text;
    return decodeForDisplay(texts);
}

/// Of a failed build; what a message only goes on about ("Compiling ...") comes second.
std::optional<ScriptLine> Debugger::firstError() const {
    std::optional<ScriptLine> first;
    for (const BuildMessage& message : session_.buildMessages().all()) {
        if (message.row <= 0) continue;
        if (!first) first = ScriptLine{message.row};
        if (!window_.explains()) break;
        if (message.kind == BuildMessage::Kind::error) return ScriptLine{message.row};
    }
    return first;
}

std::vector<ScriptLine> Debugger::messageLines() const {
    std::vector<ScriptLine> lines;
    for (const BuildMessage& message : session_.buildMessages().all())
        if (message.row > 0) lines.push_back({message.row});
    return lines;
}

}  // namespace korvant
