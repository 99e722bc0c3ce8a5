#include "protocol/dap/conversation.h"

#include <algorithm>

#include "base/system/file_io.h"
#include "base/text/text_encoding.h"
#include "protocol/dap/argument_check.h"

namespace korvant::dap {

namespace {

constexpr std::size_t kLongestSource = std::size_t{64} << 20;

}  // namespace

Conversation::Conversation(DebugSession& session, DebuggedProgram& program, DapClient& client,
                           OutputRelay& output)
    : session_(session), program_(program), client_(client), output_(output) {}

const std::map<std::string, Conversation::Row>& Conversation::table() {
    using C = Conversation;
    static const std::map<std::string, Row> rows = {
        {"initialize", {&C::initialize, When::always}},
        {"threads", {&C::threads, When::always}},
        {"loadedSources", {&C::loadedSources, When::always}},
        {"terminate", {&C::terminate, When::always}},
        {"disconnect", {&C::disconnect, When::always}},
        {"cancel", {&C::cancel, When::ready}},
        {"source", {&C::sourceText, When::ready}},
        {"configurationDone", {&C::configurationDone, When::ready}},
        {"restart", {&C::restart, When::ready}},
        {"setBreakpoints", {&C::setBreakpoints, When::ready}},
        {"setFunctionBreakpoints", {&C::setFunctionBreakpoints, When::ready}},
        {"setDataBreakpoints", {&C::setDataBreakpoints, When::ready}},
        {"dataBreakpointInfo", {&C::dataBreakpointInfo, When::ready}},
        {"setExceptionBreakpoints", {&C::setExceptionBreakpoints, When::ready}},
        {"breakpointLocations", {&C::breakpointLocations, When::ready}},
        {"pause", {&C::pause, When::ready}},
        {"continue", {&C::goOn, When::still}},
        {"next", {&C::stepOver, When::still}},
        {"stepIn", {&C::stepInto, When::still}},
        {"stepOut", {&C::stepOut, When::still}},
        {"stackTrace", {&C::stackTrace, When::still}},
        {"exceptionInfo", {&C::exceptionInfo, When::still}},
        {"scopes", {&C::scopes, When::still}},
        {"variables", {&C::variables, When::still}},
        {"setVariable", {&C::setVariable, When::still}},
        {"setExpression", {&C::setExpression, When::still}},
        {"completions", {&C::completions, When::still}},
        {"evaluate", {&C::evaluate, When::ready}},
    };
    return rows;
}

void Conversation::handle(const Json& message) {
    const std::string type = rpc::textOf(message, "type");
    if (type == "response" || type == "event") return;
    const std::string command = rpc::textOf(message, "command");
    if (type != "request" || command.empty()) {
        client_.answer(message, Answer::refused("this is no request: it has no type or command"));
        return;
    }
    const Answer answer = serve(command, message);
    if (!answer.later) client_.answer(message, answer);
}

void Conversation::noteCancel(const Json& message) {
    constexpr std::size_t kMost = 1000;
    const std::int64_t request =
        rpc::numberOf(rpc::memberOf(message, "arguments"), "requestId", -1);
    const std::lock_guard lock(cancelling_);
    if (cancelled_.size() < kMost) cancelled_.insert(request);
}

void Conversation::noteGone() noexcept {
    gone_ = true;
    session_.cancelEvaluation();
}

bool Conversation::takeCancelled(const Json& message) {
    const std::lock_guard lock(cancelling_);
    return cancelled_.erase(rpc::numberOf(message, "seq")) > 0;
}

Answer Conversation::serve(const std::string& command, const Json& message) {
    const Json& arguments = rpc::memberOf(message, "arguments");
    if (!arguments.is_null() && !arguments.is_object())
        return Answer::refused("the arguments of \"" + command + "\" are no object");
    const std::string wrong = wrongArgument(command, arguments);
    if (command == "launch" || command == "attach") {
        if (phase_ != Phase::told)
            return Answer::refused("\"" + command + "\" comes once, after \"initialize\"");
        if (!wrong.empty()) return Answer::refused(wrong);
        return command == "launch" ? program_.launch(message) : program_.attach(message);
    }
    const auto row = table().find(command);
    if (row == table().end()) return Answer::refused("\"" + command + "\" is not supported");
    const When when = row->second.when;
    if (when != When::always && phase_ != Phase::ready)
        return Answer::refused(phase_ == Phase::ended ? "the script has ended"
                                                      : "no script has been launched");
    if (when == When::still && !standsStill_) return Answer::refused("the script is running");
    if (!wrong.empty()) return Answer::refused(wrong);
    // In this order nothing that arrives in between is lost.
    session_.forgetCancel();
    const bool inVain = gone_ && when != When::always;
    if (inVain || takeCancelled(message)) return Answer::refused("cancelled");
    return (this->*row->second.handler)(arguments);
}

void Conversation::begin() {
    phase_ = Phase::ready;
}

Answer Conversation::initialize(const Json& arguments) {
    if (phase_ != Phase::greeting) return Answer::refused("\"initialize\" comes once");
    client_.learn(arguments);
    phase_ = Phase::told;
    return Answer::with(capabilities());
}

Answer Conversation::threads(const Json&) {
    return Answer::with({{"threads", {{{"id", 1}, {"name", "script"}}}}});
}

Answer Conversation::loadedSources(const Json&) {
    Json sources = Json::array();
    if (!program_.sourcePath().empty()) sources.push_back(sourceAt({}));
    return Answer::with({{"sources", std::move(sources)}});
}

Answer Conversation::sourceText(const Json& arguments) {
    const Json& source = rpc::memberOf(arguments, "source");
    const std::string path = rpc::textOf(source, "path");
    if (path.empty()) return Answer::refused("a source is named by its path");
    // Other files are nobody's business, even for a client that may evaluate expressions.
    const auto code = session_.code();
    const std::string name = sourceOf(source);
    if (!name.empty() && (code == nullptr || !code->hasSource(name)))
        return Answer::refused("this file is no part of the script");
    std::string text;
    if (readFile(systemFiles(), path, kLongestSource, text) != 0)
        return Answer::refused("cannot read " + path);
    return Answer::with({{"content", decodeForDisplay(text)}});
}

Answer Conversation::configurationDone(const Json&) {
    configured_ = true;
    return program_.configurationDone();
}

Answer Conversation::restart(const Json& arguments) {
    return program_.restart(arguments);
}

Answer Conversation::terminate(const Json&) {
    if (phase_ != Phase::ready) return {};
    return program_.terminate();
}

Answer Conversation::disconnect(const Json& arguments) {
    return program_.disconnect(arguments);
}

/// What was running has been cancelled when the request arrived.
Answer Conversation::cancel(const Json&) {
    return {};
}

void Conversation::forgetWishes() {
    session_.breakpoints().clear();
    session_.rules() = {};
    session_.apply();
}

void Conversation::log(const std::string& text, const ScriptPlace& place) {
    Json body = {{"category", "console"}, {"output", text}};
    addPlace(body, place);
    output_.event(std::move(body));
}

void Conversation::tellSource(const char* reason) {
    client_.event("loadedSource", {{"reason", reason}, {"source", sourceAt({})}});
}

void Conversation::tellContinued() {
    client_.event("continued", {{"threadId", 1}, {"allThreadsContinued", true}});
}

/// The protocol counts UTF-16 units. Of other sources there is no text at hand.
std::int32_t Conversation::unitColumn(const ScriptPlace& place) const {
    const TextDocument& text = program_.text();
    if (!place.source.empty() || place.line > static_cast<std::int32_t>(text.lineCount()))
        return place.column;
    const TextPosition at{static_cast<std::uint32_t>(place.line - 1),
                          static_cast<std::uint32_t>(place.column - 1)};
    // Behind the line end, where a block closes without its brace.
    const std::uint32_t beyond =
        at.column - std::min<std::uint32_t>(
                        at.column, static_cast<std::uint32_t>(text.lineText(at.line).size()));
    return static_cast<std::int32_t>(text.utf16PositionOf(text.offsetOf(at)).column + beyond) + 1;
}

void Conversation::addPlace(Json& body, const ScriptPlace& place) const {
    if (place.line < 1) return;
    body["source"] = sourceAt(place);
    body["line"] = client_.line(place.line);
    if (place.column > 0) body["column"] = client_.column(unitColumn(place));
}

}  // namespace korvant::dap
