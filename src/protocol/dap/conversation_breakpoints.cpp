// Breakpoints of a debugging client.
#include <charconv>
#include <filesystem>

#include "base/system/file_io.h"
#include "protocol/dap/conversation.h"

namespace korvant::dap {

namespace {

/// Whether two spellings lead to one file. Links stay as the client spells them.
bool sameFile(const std::string& left, const std::string& right) {
    if (left == right) return true;
    std::error_code error;
    const bool same = std::filesystem::equivalent(left, right, error);
    return !error && same;
}

/// What all kinds have in common.
BreakpointWish wishOf(const Json& asked, BreakpointKind kind) {
    BreakpointWish wish;
    wish.kind = kind;
    wish.condition = rpc::textOf(asked, "condition");
    wish.hitCondition = rpc::textOf(asked, "hitCondition");
    wish.logText = rpc::textOf(asked, "logMessage");
    return wish;
}

/// What is watched in a call that is not the innermost one has its number before it.
std::string dataId(const std::string& expression, unsigned calls) {
    return calls > 0 ? "@" + std::to_string(calls) + " " + expression : expression;
}

void takeCalls(BreakpointWish& wish) {
    const char* const end = wish.name.data() + wish.name.size();
    if (!wish.name.starts_with('@')) return;
    const auto [stopped, error] = std::from_chars(wish.name.data() + 1, end, wish.calls);
    if (error != std::errc() || stopped == end || *stopped != ' ') {
        wish.calls = 0;
        return;
    }
    wish.name.erase(0, static_cast<std::size_t>(stopped - wish.name.data()) + 1);
}

std::vector<BreakpointWish> wishesOf(const Json& list, const char* name, BreakpointKind kind) {
    std::vector<BreakpointWish> wishes;
    for (const Json& asked : list) {
        wishes.push_back(wishOf(asked, kind));
        wishes.back().name = rpc::textOf(asked, name);
        if (kind == BreakpointKind::data) takeCalls(wishes.back());
    }
    return wishes;
}

/// A line of any size becomes one that a script may have, or 0.
std::int32_t boundedLine(std::int64_t line) {
    return line < 0 || line > 100'000'000 ? 0 : static_cast<std::int32_t>(line);
}

}  // namespace

/// The session's name of a source that the client names: empty for the main text.
std::string Conversation::sourceOf(const Json& source) {
    const std::string path = rpc::textOf(source, "path");
    if (program_.sourcePath().empty() && !path.empty()) program_.nameSource(path);
    return sameFile(path, program_.sourcePath()) ? std::string() : path;
}

Json Conversation::sourceAt(const ScriptPlace& place) const {
    const std::string path = place.source.empty() ? program_.sourcePath() : place.source;
    if (path.empty()) return {{"name", "script"}};
    return {{"name", nameOf(path)}, {"path", path}};
}

Json Conversation::breakpointOf(int id) const {
    Json body = {{"id", id}, {"verified", false}};
    const Breakpoint* const breakpoint = session_.breakpoints().find(id);
    if (breakpoint == nullptr) return body;
    body["verified"] = breakpoint->verified;
    if (!breakpoint->reason.empty()) body["message"] = breakpoint->reason;
    const ScriptPlace& place = breakpoint->verified ? breakpoint->resolved : breakpoint->wish.place;
    addPlace(body, place);
    body.erase("column");
    return body;
}

Answer Conversation::listOf(const std::vector<int>& ids) const {
    Json list = Json::array();
    for (const int id : ids) list.push_back(breakpointOf(id));
    return Answer::with({{"breakpoints", std::move(list)}});
}

Answer Conversation::setBreakpoints(const Json& arguments) {
    const Json& list = rpc::memberOf(arguments, "breakpoints");
    const std::string name = sourceOf(rpc::memberOf(arguments, "source"));
    std::vector<BreakpointWish> wishes;
    for (const Json& asked : list.is_null() ? Json::array() : list) {
        wishes.push_back(wishOf(asked, BreakpointKind::line));
        const std::int64_t line = client_.scriptLine(rpc::numberOf(asked, "line"));
        wishes.back().place = {name, boundedLine(line), 0};
    }
    const std::vector<int> ids = session_.breakpoints().setLines(name, std::move(wishes));
    session_.apply();
    return listOf(ids);
}

Answer Conversation::setFunctionBreakpoints(const Json& arguments) {
    const auto ids = session_.breakpoints().setOthers(
        BreakpointKind::function,
        wishesOf(rpc::memberOf(arguments, "breakpoints"), "name", BreakpointKind::function));
    session_.apply();
    return listOf(ids);
}

Answer Conversation::setDataBreakpoints(const Json& arguments) {
    const auto ids = session_.breakpoints().setOthers(
        BreakpointKind::data,
        wishesOf(rpc::memberOf(arguments, "breakpoints"), "dataId", BreakpointKind::data));
    session_.apply();
    return listOf(ids);
}

/// The expression is the name of what is watched.
Answer Conversation::dataBreakpointInfo(const Json& arguments) {
    const std::string name = rpc::textOf(arguments, "name");
    std::string expression = name;
    const ValueNode node = nodeOf(arguments);
    unsigned frame = 0;
    if (!frameOf(arguments, frame)) return Answer::refused("there is no such frame");
    // The innermost frame is where a watch begins to look for what its name means.
    if (rpc::memberOf(arguments, "frameId").is_null()) frame = 0;
    std::string wrong;
    if (standsStill_ && node > 0) {
        DebugValue value;
        expression = session_.values().child(node, name, value) ? value.evaluateName : "";
    } else if (standsStill_) {
        wrong = session_.show(frame, name, EvaluationPurpose::watch).error;
    }
    if (expression.empty()) wrong = "there is no such variable";
    if (!wrong.empty())
        return Answer::with(
            {{"dataId", nullptr}, {"description", name + " cannot be watched: " + wrong}});
    const auto owner = frameOfNode_.find(node);
    if (owner != frameOfNode_.end()) frame = owner->second;
    return Answer::with({{"dataId", dataId(expression, frame > 0 ? session_.callsOf(frame) : 0)},
                         {"description", expression},
                         {"accessTypes", {"write"}},
                         {"canPersist", false}});
}

Answer Conversation::setExceptionBreakpoints(const Json& arguments) {
    const Json& plain = rpc::memberOf(arguments, "filters");
    const Json& options = rpc::memberOf(arguments, "filterOptions");
    StopRules rules;
    rules.entry = session_.rules().entry;
    const auto enable = [&rules](const std::string& name, const std::string& condition) {
        StopRules::Filter* const filter = name == "unhandled" ? &rules.unhandled
                                          : name == "all"     ? &rules.all
                                          : name == "lost"    ? &rules.lost
                                                              : nullptr;
        if (filter != nullptr) *filter = {true, condition};
        return filter != nullptr;
    };
    Json list = Json::array();
    const auto note = [&list](bool known) {
        Json entry = {{"verified", known}};
        if (!known) entry["message"] = "there is no such filter";
        list.push_back(std::move(entry));
    };
    for (const Json& filter : plain) note(enable(filter.get<std::string>(), {}));
    for (const Json& option : options.is_null() ? Json::array() : options)
        note(enable(rpc::textOf(option, "filterId"), rpc::textOf(option, "condition")));
    session_.rules() = rules;
    session_.apply();
    return Answer::with({{"breakpoints", std::move(list)}});
}

Answer Conversation::breakpointLocations(const Json& arguments) {
    const Json& source = rpc::memberOf(arguments, "source");
    const std::int64_t first = client_.scriptLine(rpc::numberOf(arguments, "line"));
    const std::int64_t last =
        client_.scriptLine(rpc::numberOf(arguments, "endLine", rpc::numberOf(arguments, "line")));
    Json list = Json::array();
    if (const auto code = session_.code())
        for (const std::int32_t line : code->lines(sourceOf(source)))
            if (line >= first && line <= last) list.push_back({{"line", client_.line(line)}});
    return Answer::with({{"breakpoints", std::move(list)}});
}

void Conversation::breakpointsChanged(const std::vector<int>& ids) {
    if (phase_ != Phase::ready) return;
    for (const int id : ids)
        client_.event("breakpoint", {{"reason", "changed"}, {"breakpoint", breakpointOf(id)}});
}

}  // namespace korvant::dap
