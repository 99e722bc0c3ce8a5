// The part of the debugger that looks into a stopped script.
#include <algorithm>

#include "base/text/characters.h"
#include "editor/stops/debugger.h"
#include "editor/stops/value_format.h"
#include "host/run/inspect.h"

namespace korvant {

namespace {

constexpr std::size_t kLongestName = std::size_t{64} << 10;

/// Of several variables of one name the innermost that is in scope, else the first.
const VariableInfo* findVariable(const std::vector<VariableInfo>& variables,
                                 std::string_view name) {
    const VariableInfo* found = nullptr;
    for (const VariableInfo& variable : variables)
        if (variable.name == name && (found == nullptr || variable.inScope)) found = &variable;
    return found;
}

}  // namespace

std::string Debugger::variableText(std::string_view name) const {
    asIScriptContext* context = session_.currentContext();
    if (context == nullptr || busy_ || name.empty()) return {};
    const StoppedScript script(context);
    const std::vector<VariableInfo> variables =
        debugging_ ? script.variables(0) : script.declarations(0);
    const VariableInfo* variable = findVariable(variables, name);
    if (variable == nullptr) return {};
    if (!debugging_) return variable->declaration;
    const bool unset = notYetSet && notYetSet(name);
    return variable->declaration + " = " +
           (unset ? kUninitialised : formatValue(script, *variable));
}

void Debugger::displayVariable() {
    const std::string text =
        variableText(std::string(trimmed(editor_.selectedText(kLongestName), kAllBlanks)));
    if (text.empty()) return;
    editor_.showTip(editor_.selectionStart(), text);
    output_.showAbove(text);
}

/// Names keep their places while the same variables are in scope, so that a condition in a loop
/// is read once.
void Debugger::bindVariables() {
    const StoppedScript script(session_.currentContext());
    std::vector<std::pair<std::string, double>> values;
    for (const VariableInfo& variable : script.variables(0)) {
        double number = 0;
        if (!variable.inScope || variable.name.empty()) continue;
        const bool bound = numberOf(script.view(variable.typeId, variable.address), number);
        std::erase_if(values, [&](const auto& value) { return value.first == variable.name; });
        if (bound) values.emplace_back(variable.name, number);
    }
    std::vector<std::string> names;
    for (const auto& [name, number] : values) names.push_back(name);
    if (names != boundNames_) evaluator_.clearValues();
    boundNames_ = std::move(names);
    for (const auto& [name, number] : values) evaluator_.setValue(name, number);
}

}  // namespace korvant
