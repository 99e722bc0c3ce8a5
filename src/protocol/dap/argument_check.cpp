#include "protocol/dap/argument_check.h"

#include <algorithm>
#include <map>
#include <vector>

namespace korvant::dap {

namespace {

using rpc::Json;

enum class Type {
    text,
    number,
    truth,
    object,
    lines,  ///< a list of texts and numbers, each a line that is typed
    texts,
    objects
};

struct Field;
using Fields = std::vector<Field>;

struct Field {
    std::string name;
    Type type;
    bool needed = false;
    Fields inside = {};                     ///< of the object, or of each one in the list
    std::vector<std::string> choices = {};  ///< of a text; empty: any
};

Field needed(std::string name, Type type, Fields inside = {}) {
    return {std::move(name), type, true, std::move(inside), {}};
}

using Commands = std::map<std::string, Fields>;

/// What sets a run up.
Commands preparations() {
    const Field source = needed("source", Type::object, {needed("path", Type::text)});
    const Field frame = {"frameId", Type::number};
    const Field condition = {"condition", Type::text};
    const Field hits = {"hitCondition", Type::text};
    const Field console = {
        "console", Type::text, false, {}, {"internalConsole", "integratedTerminal"}};
    return {
        {"launch",
         {needed("program", Type::text),
          {"cwd", Type::text},
          {"args", Type::lines},
          {"answers", Type::lines},
          {"stopOnEntry", Type::truth},
          {"noDebug", Type::truth},
          console,
          {"gui", Type::truth},
          {"limits", Type::object},
          {"coverage", Type::text},
          {"profile", Type::text}}},
        {"attach",
         {needed("port", Type::number), needed("token", Type::text), {"program", Type::text}}},
        {"source", {source}},
        {"cancel", {{"requestId", Type::number}, {"progressId", Type::text}}},
        {"disconnect", {{"terminateDebuggee", Type::truth}, {"restart", Type::truth}}},
        {"setBreakpoints",
         {source,
          {"breakpoints",
           Type::objects,
           false,
           {needed("line", Type::number), condition, hits, {"logMessage", Type::text}}}}},
        {"setFunctionBreakpoints",
         {needed("breakpoints", Type::objects, {needed("name", Type::text), condition, hits})}},
        {"setDataBreakpoints",
         {needed("breakpoints", Type::objects, {needed("dataId", Type::text), condition, hits})}},
        {"dataBreakpointInfo",
         {needed("name", Type::text), {"variablesReference", Type::number}, frame}},
        {"setExceptionBreakpoints",
         {needed("filters", Type::texts),
          {"filterOptions", Type::objects, false, {needed("filterId", Type::text), condition}}}},
        {"breakpointLocations", {source, needed("line", Type::number), {"endLine", Type::number}}}};
}

/// What moves a run, and looks into it.
Commands questions() {
    const Field thread = needed("threadId", Type::number);
    const Field frame = {"frameId", Type::number};
    const Field format = {"format", Type::object, false, {{"hex", Type::truth}}};
    const Field granularity = {
        "granularity", Type::text, false, {}, {"statement", "line", "instruction"}};
    const Field filter = {"filter", Type::text, false, {}, {"indexed", "named"}};
    return {
        {"continue", {thread}},
        {"next", {thread, granularity}},
        {"stepIn", {thread, granularity}},
        {"stepOut", {thread, granularity}},
        {"pause", {thread}},
        {"stackTrace", {thread, {"startFrame", Type::number}, {"levels", Type::number}}},
        {"exceptionInfo", {thread}},
        {"scopes", {needed("frameId", Type::number)}},
        {"variables",
         {needed("variablesReference", Type::number),
          filter,
          {"start", Type::number},
          {"count", Type::number},
          format}},
        {"setVariable",
         {needed("variablesReference", Type::number), needed("name", Type::text),
          needed("value", Type::text), format}},
        {"setExpression",
         {needed("expression", Type::text), needed("value", Type::text), frame, format}},
        {"evaluate", {needed("expression", Type::text), frame, {"context", Type::text}, format}},
        {"completions",
         {needed("text", Type::text),
          needed("column", Type::number),
          {"line", Type::number},
          frame}}};
}

const Commands& table() {
    static const Commands commands = [] {
        Commands all = preparations();
        all.merge(questions());
        return all;
    }();
    return commands;
}

bool isLine(const Json& value) {
    return value.is_string() || value.is_number();
}

bool is(const Json& value, Type type) {
    const auto all = [&value](auto&& test) {
        return value.is_array() && std::all_of(value.begin(), value.end(), test);
    };
    switch (type) {
        case Type::text:
            return value.is_string();
        case Type::number:
            return value.is_number();
        case Type::truth:
            return value.is_boolean();
        case Type::object:
            return value.is_object();
        case Type::lines:
            return all(isLine);
        case Type::texts:
            return all([](const Json& one) { return one.is_string(); });
        case Type::objects:
            return all([](const Json& one) { return one.is_object(); });
    }
    return false;
}

const char* wordsFor(Type type) {
    switch (type) {
        case Type::text:
            return "text";
        case Type::number:
            return "number";
        case Type::truth:
            return "true or false";
        case Type::object:
            return "object";
        case Type::lines:
        case Type::texts:
            return "list of texts";
        case Type::objects:
            break;
    }
    return "list of objects";
}

std::string wrongIn(const Fields& fields, const Json& object);

std::string wrongField(const Field& field, const Json& value) {
    if (value.is_null()) return field.needed ? "\"" + field.name + "\" is missing" : "";
    if (!is(value, field.type))
        return "\"" + field.name + "\" is not the " + wordsFor(field.type) + " that it must be";
    if (!field.choices.empty() && std::find(field.choices.begin(), field.choices.end(),
                                            value.get<std::string>()) == field.choices.end())
        return "\"" + value.get<std::string>() + "\" is no \"" + field.name + "\"";
    if (field.type == Type::object) return wrongIn(field.inside, value);
    if (field.type != Type::objects) return {};
    for (const Json& one : value)
        if (std::string wrong = wrongIn(field.inside, one); !wrong.empty()) return wrong;
    return {};
}

std::string wrongIn(const Fields& fields, const Json& object) {
    for (const Field& field : fields) {
        std::string wrong = wrongField(field, rpc::memberOf(object, field.name.c_str()));
        if (!wrong.empty()) return wrong;
    }
    return {};
}

}  // namespace

std::string wrongArgument(const std::string& command, const Json& arguments) {
    const auto known = table().find(command);
    return known == table().end() ? std::string() : wrongIn(known->second, arguments);
}

}  // namespace korvant::dap
