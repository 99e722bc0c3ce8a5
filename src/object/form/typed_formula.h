// Whether what was typed into a number field can be read as a formula.
#pragma once

#include <string>
#include <string_view>

namespace korvant {

/// With a decimal comma, a comma between two digits, as a point.
std::string withDecimalPoints(std::string_view typed);

/// False for texts that expressions read in some way although nobody means it: an operator
/// without a number on each side, two numbers in a row, "1.2.3", and a comparison whose outcome is
/// no number ("5=5"; inside brackets it may be a condition). Otherwise the expression itself says
/// what is wrong with it.
bool looksLikeFormula(std::string_view text);

}  // namespace korvant
