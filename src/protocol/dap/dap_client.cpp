#include "protocol/dap/dap_client.h"

namespace korvant::dap {

void DapClient::answer(const Json& request, const Answer& answer) {
    Json message = {{"type", "response"},
                    {"request_seq", rpc::numberOf(request, "seq")},
                    {"command", rpc::textOf(request, "command")},
                    {"success", answer.done}};
    if (!answer.done) {
        message["message"] = answer.error;
        message["body"] = {{"error", {{"id", 1}, {"format", answer.error}, {"showUser", false}}}};
    } else if (!answer.body.is_null()) {
        message["body"] = answer.body;
    }
    pass(std::move(message));
}

void DapClient::event(const char* name, Json body) {
    Json message = {{"type", "event"}, {"event", name}};
    if (!body.is_null()) message["body"] = std::move(body);
    pass(std::move(message));
}

void DapClient::ask(const char* command, Json arguments) {
    pass({{"type", "request"}, {"command", command}, {"arguments", std::move(arguments)}});
}

void DapClient::pass(Json message) {
    const std::lock_guard lock(mutex_);
    message["seq"] = ++seq_;
    send_(message);
}

void DapClient::learn(const Json& arguments) {
    lineShift_ = rpc::truthOf(arguments, "linesStartAt1", true) ? 0 : -1;
    columnShift_ = rpc::truthOf(arguments, "columnsStartAt1", true) ? 0 : -1;
    runsInTerminal_ = rpc::truthOf(arguments, "supportsRunInTerminalRequest");
}

namespace {

Json filter(const char* name, const char* label, const char* description, bool usual) {
    return {{"filter", name},
            {"label", label},
            {"description", description},
            {"default", usual},
            {"supportsCondition", true},
            {"conditionDescription", "an expression of the script, where the exception is raised"}};
}

}  // namespace

Json capabilities() {
    Json able = Json::object();
    for (const char* name : {"supportsConfigurationDoneRequest",
                             "supportsFunctionBreakpoints",
                             "supportsConditionalBreakpoints",
                             "supportsHitConditionalBreakpoints",
                             "supportsLogPoints",
                             "supportsBreakpointLocationsRequest",
                             "supportsDataBreakpoints",
                             "supportsExceptionFilterOptions",
                             "supportsExceptionInfoRequest",
                             "supportsEvaluateForHovers",
                             "supportsClipboardContext",
                             "supportsSetVariable",
                             "supportsSetExpression",
                             "supportsCompletionsRequest",
                             "supportsValueFormattingOptions",
                             "supportsSteppingGranularity",
                             "supportsLoadedSourcesRequest",
                             "supportsDelayedStackTraceLoading",
                             "supportsRestartRequest",
                             "supportsTerminateRequest",
                             "supportTerminateDebuggee",
                             "supportsCancelRequest"})
        able[name] = true;
    able["completionTriggerCharacters"] = {"."};
    able["exceptionBreakpointFilters"] = {
        filter("unhandled", "Unhandled exceptions", "Stops where an exception ends the run", true),
        filter("all", "All exceptions", "Stops where any exception is raised", false),
        filter("lost", "Lost exceptions",
               "Stops where an exception is raised that the library ignores", false)};
    return able;
}

}  // namespace korvant::dap
