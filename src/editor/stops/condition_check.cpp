#include "editor/stops/condition_check.h"

#include <algorithm>

#include "expr/evaluator.h"
#include "language/tokens.h"

namespace korvant {

namespace {

constexpr char kDependsOnValues[] = "Division by zero.";
constexpr char kCapitals[] =
    "\nConditions are read in lower case, so a variable whose name has capital letters is never "
    "found.";

bool hasCapitals(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char byte) { return byte >= 'A' && byte <= 'Z'; });
}

}  // namespace

std::string conditionProblem(std::string_view condition) {
    if (condition.empty()) return {};
    ExpressionEvaluator evaluator;
    bool capitals = false;
    for (const ScriptToken& token : scriptTokens(condition))
        if (token.isWord()) {
            capitals = capitals || hasCapitals(token.text);
            evaluator.setValue(token.text, 1.0);
        }
    std::string error = evaluator.evaluate(condition).error;
    if (error == kDependsOnValues) error.clear();
    if (!error.empty() && capitals) error += kCapitals;
    return error;
}

}  // namespace korvant
