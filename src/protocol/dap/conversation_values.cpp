// Variables and expressions, as a debugging client sees them.
#include <algorithm>
#include <set>

#include "protocol/dap/conversation.h"

namespace korvant::dap {

namespace {

ValueFormat formatOf(const Json& arguments) {
    ValueFormat format;
    format.hex = rpc::truthOf(rpc::memberOf(arguments, "format"), "hex");
    return format;
}

ValueTree::Filter filterOf(const Json& arguments) {
    const std::string name = rpc::textOf(arguments, "filter");
    return name == "indexed" ? ValueTree::Filter::indexed
           : name == "named" ? ValueTree::Filter::named
                             : ValueTree::Filter::all;
}

bool isWordByte(char c) {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::uint64_t countOf(const Json& arguments, const char* name) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(0, rpc::numberOf(arguments, name)));
}

}  // namespace

/// One that is too large for a node is none.
ValueNode Conversation::nodeOf(const Json& arguments) {
    const std::int64_t number = rpc::numberOf(arguments, "variablesReference");
    const auto node = static_cast<ValueNode>(number);
    return node == number ? node : 0;
}

/// The frame that is named, or the one beyond the last, where only global variables are seen.
/// False for a frame that does not exist.
bool Conversation::frameOf(const Json& arguments, unsigned& frame) const {
    const unsigned count = standsStill_ ? session_.frames().count() : 0;
    frame = count;
    const Json& member = rpc::memberOf(arguments, "frameId");
    if (member.is_null()) return true;
    const std::int64_t index = rpc::numberOf(arguments, "frameId", -1) - frameBase_;
    if (!member.is_number() || index < 0 || index >= static_cast<std::int64_t>(count)) return false;
    frame = static_cast<unsigned>(index);
    return true;
}

void Conversation::noteFrame(ValueNode node, unsigned frame) {
    if (node != 0) frameOfNode_.emplace(node, frame);
}

Json Conversation::scopeBody(const char* name, const char* hint, ValueScope which, unsigned frame) {
    const ValueNode node = session_.scope(which, frame);
    noteFrame(node, frame);
    Json body = {{"name", name}, {"variablesReference", node}, {"expensive", false}};
    if (hint != nullptr) body["presentationHint"] = hint;
    return body;
}

Answer Conversation::scopes(const Json& arguments) {
    unsigned frame = 0;
    if (!frameOf(arguments, frame) || rpc::memberOf(arguments, "frameId").is_null())
        return Answer::refused("there is no such frame");
    Json list = Json::array();
    list.push_back(scopeBody("Locals", "locals", ValueScope::locals, frame));
    if (session_.hasThis(frame))
        list.push_back(scopeBody("This", nullptr, ValueScope::thisObject, frame));
    list.push_back(scopeBody("Globals", nullptr, ValueScope::globals, frame));
    return Answer::with({{"scopes", std::move(list)}});
}

Json Conversation::valueBody(const DebugValue& value, const char* textName) {
    Json body = {{textName, value.value}, {"type", value.type}, {"variablesReference", value.node}};
    if (value.named > 0) body["namedVariables"] = value.named;
    if (value.indexed > 0) body["indexedVariables"] = value.indexed;
    return body;
}

Answer Conversation::variables(const Json& arguments) {
    const ValueNode node = nodeOf(arguments);
    if (!session_.values().knows(node)) return Answer::refused("there are no such variables");
    const auto frame = frameOfNode_.find(node);
    Json list = Json::array();
    for (const DebugValue& value :
         session_.values().children(node, countOf(arguments, "start"), countOf(arguments, "count"),
                                    formatOf(arguments), filterOf(arguments))) {
        if (frame != frameOfNode_.end()) noteFrame(value.node, frame->second);
        Json body = valueBody(value, "value");
        body["name"] = value.name;
        body["evaluateName"] = value.evaluateName.empty() ? value.name : value.evaluateName;
        if (value.heading) body["presentationHint"] = {{"kind", "baseClass"}};
        if (!value.settable) body["presentationHint"]["attributes"] = {"readOnly"};
        list.push_back(std::move(body));
    }
    return Answer::with({{"variables", std::move(list)}});
}

/// What the client shows may be another by now.
void Conversation::tellChanged() {
    client_.event("invalidated", {{"areas", {"variables"}}});
}

Answer Conversation::setVariable(const Json& arguments) {
    const ValueNode node = nodeOf(arguments);
    const Json& name = rpc::memberOf(arguments, "name");
    const Json& value = rpc::memberOf(arguments, "value");
    if (!session_.values().knows(node)) return Answer::refused("there are no such variables");
    const auto frame = frameOfNode_.find(node);
    const auto shown = session_.setChild(node, name.get<std::string>(),
                                         frame == frameOfNode_.end() ? 0 : frame->second,
                                         value.get<std::string>(), formatOf(arguments));
    if (!shown.error.empty()) return Answer::refused(shown.error);
    tellChanged();
    return Answer::with(valueBody(shown.value, "value"));
}

Answer Conversation::setExpression(const Json& arguments) {
    const Json& target = rpc::memberOf(arguments, "expression");
    const Json& value = rpc::memberOf(arguments, "value");
    unsigned frame = 0;
    if (!frameOf(arguments, frame)) return Answer::refused("there is no such frame");
    const auto shown = session_.setExpression(frame, target.get<std::string>(),
                                              value.get<std::string>(), formatOf(arguments));
    if (!shown.error.empty()) return Answer::refused(shown.error);
    tellChanged();
    return Answer::with(valueBody(shown.value, "value"));
}

/// While the script waits for a line, what is typed is that line; nothing stands still there, but
/// for an expression that asks.
Answer Conversation::evaluate(const Json& arguments) {
    const Json& expression = rpc::memberOf(arguments, "expression");
    const std::string context = rpc::textOf(arguments, "context");
    const std::string text = expression.get<std::string>();
    if (context == "repl" && program_.feed(text))
        return Answer::with({{"result", ""}, {"variablesReference", 0}});
    if (!standsStill_) return Answer::refused("the script is running");
    unsigned frame = 0;
    if (!frameOf(arguments, frame)) return Answer::refused("there is no such frame");
    const EvaluationPurpose purpose = context == "hover"  ? EvaluationPurpose::hover
                                      : context == "repl" ? EvaluationPurpose::console
                                                          : EvaluationPurpose::watch;
    ValueFormat format = formatOf(arguments);
    if (context == "clipboard") format.longest = ValueFormat::whole().longest;
    const auto shown = session_.show(frame, text, purpose, format);
    output_.flush();
    if (!shown.error.empty()) return Answer::refused(shown.error);
    noteFrame(shown.value.node, frame);
    if (purpose == EvaluationPurpose::console) tellChanged();
    return Answer::with(valueBody(shown.value, "result"));
}

/// Members behind a dot, else the names that can be seen.
Answer Conversation::completions(const Json& arguments) {
    const Json& text = rpc::memberOf(arguments, "text");
    unsigned frame = 0;
    if (!frameOf(arguments, frame)) return Answer::refused("there is no such frame");
    const TextDocument typed(text.get<std::string>());
    const std::int64_t line = client_.scriptLine(rpc::numberOf(arguments, "line", client_.line(1)));
    const std::int64_t column = client_.scriptColumn(rpc::numberOf(arguments, "column", 1)) - 1;
    constexpr std::int64_t kMost = 1 << 30;
    const std::size_t caret = typed.offsetOfUtf16(
        {static_cast<std::uint32_t>(std::clamp<std::int64_t>(line - 1, 0, kMost)),
         static_cast<std::uint32_t>(std::clamp<std::int64_t>(column, 0, kMost))});
    const std::string before = typed.text().substr(0, caret);
    std::size_t begin = before.size();
    while (begin > 0 && isWordByte(before[begin - 1])) --begin;
    const std::string word = before.substr(begin);
    std::set<std::string> names;
    const auto addAll = [&](ValueNode node) {
        if (node == 0) return;
        for (const DebugValue& value : session_.values().children(node, 0, 1000))
            if (value.name.rfind(word, 0) == 0 && value.name[0] != '[') names.insert(value.name);
    };
    if (begin > 0 && before[begin - 1] == '.') {
        std::size_t head = begin - 1;
        while (head > 0 && (isWordByte(before[head - 1]) ||
                            std::string("[].:").find(before[head - 1]) != std::string::npos))
            --head;
        const std::string object = before.substr(head, begin - 1 - head);
        addAll(session_.show(frame, object, EvaluationPurpose::hover).value.node);
        for (const std::string& method : session_.methodsOf(frame, object))
            if (method.rfind(word, 0) == 0) names.insert(method);
    } else {
        for (const ValueScope scope :
             {ValueScope::locals, ValueScope::thisObject, ValueScope::globals})
            addAll(session_.scope(scope, frame));
        if (const auto code = session_.code())
            for (const auto& function : code->functions())
                if (function.name.rfind(word, 0) == 0) names.insert(function.name);
    }
    Json targets = Json::array();
    for (const std::string& name : names) targets.push_back({{"label", name}});
    return Answer::with({{"targets", std::move(targets)}});
}

}  // namespace korvant::dap
