// What is wrong with the text of a condition, before a script ever stops at it.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// The evaluator's message for a condition that cannot be read whatever its variables are; empty
/// when it can, or when it is empty.
std::string conditionProblem(std::string_view condition);

}  // namespace korvant
