// The part of the debugger that looks into a stopped script.
#include <algorithm>

#include "base/text/characters.h"
#include "editor/stops/debugger.h"
#include "editor/stops/value_format.h"
#include "host/run/inspect.h"

namespace korvant {

namespace {

constexpr std::size_t kLongestName = std::size_t{64} << 10;

}  // namespace

/// Of the innermost frame. Where somebody else debugs this run, as the engine alone knows them.
FrameScope Debugger::names() const {
    if (core_.attached() && core_.state() == DebugState::suspended) return core_.names(0);
    return {session_.currentContext(), 0, nullptr, nullptr, {}};
}

std::string Debugger::variableText(std::string_view name) const {
    asIScriptContext* context = session_.currentContext();
    if (context == nullptr || busy_ || name.empty()) return {};
    const StoppedScript script(context);
    std::vector<VariableInfo> variables = script.declarations(0);
    NamedValue known;
    const bool seen = debugging_ && script.readable() && names().findLocal(name, known);
    auto variable = std::find_if(variables.begin(), variables.end(),
                                 [name](const VariableInfo& one) { return one.name == name; });
    if (seen && known.index < variables.size()) variable = variables.begin() + known.index;
    if (variable == variables.end()) return {};
    if (!debugging_) return variable->declaration;
    variable->inScope = seen && known.value.address != nullptr && !known.value.unset;
    if (variable->inScope) variable->address = known.value.address;
    return variable->declaration + " = " + formatValue(script, *variable);
}

void Debugger::displayVariable() {
    const std::string text =
        variableText(std::string(trimmed(editor_.selectedText(kLongestName), kAllBlanks)));
    if (text.empty()) return;
    editor_.showTip(editor_.selectionStart(), text);
    output_.showAbove(text);
}

/// Those that the condition may name, which is read in lower case without blanks. Names keep their
/// places while the same variables are in scope, so that a condition in a loop is read once.
void Debugger::bindVariables(std::string_view condition) {
    const StoppedScript script(session_.currentContext());
    const FrameScope scope = names();
    std::string read = lowerCase(condition);
    std::erase_if(read, [](char c) { return kAllBlanks.find(c) != std::string_view::npos; });
    std::vector<std::pair<std::string, double>> values;
    for (const NamedValue& variable : scope.locals(read)) {
        double number = 0;
        const TypedValue& value = variable.value;
        if (!value.unset && numberOf(script.view(value.typeId, value.address), number))
            values.emplace_back(variable.name, number);
    }
    std::vector<std::string> names;
    for (const auto& [name, number] : values) names.push_back(name);
    if (names != boundNames_) evaluator_.clearValues();
    boundNames_ = std::move(names);
    for (const auto& [name, number] : values) evaluator_.setValue(name, number);
}

}  // namespace korvant
