// Values as a form shows them, and what users type as values.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "expr/evaluator.h"

namespace korvant {

/// "." and the fewest digits that read back exactly; of a value that is exactly a float the
/// digits of the float.
std::string realText(double value);
/// The same with ten significant digits at most.
std::string roundedText(double value);
/// "#RRGGBB" of 0x00BBGGRR.
std::string colourText(std::int32_t colour);

/// A typed value, or why it is refused.
template <class Value>
struct FormValue {
    bool accepted = false;
    Value value{};
    std::string message;
};

/// Evaluates a text that is no plain number.
using Evaluate = std::function<ExpressionResult(std::string_view)>;

/// A decimal number with "." or ",", or an expression in which a comma is a decimal mark too. Empty
/// and everything that is not finite is refused. Messages are in the language of `locale`.
FormValue<double> readReal(std::string_view typed, const Evaluate& evaluate, std::int32_t locale);
/// The same for a whole number of 32 bits.
FormValue<std::int32_t> readInteger(std::string_view typed, const Evaluate& evaluate,
                                    std::int32_t locale);
/// "#RRGGBB", "r,g,b" of 0 to 255 each, or a decimal.
FormValue<std::int32_t> readColour(std::string_view typed, std::int32_t locale);
/// Yes or no in the language of `locale` or in English, true, false, 1, 0; whatever the case.
FormValue<bool> readBoolean(std::string_view typed, std::int32_t locale);
/// The index of exactly that option.
FormValue<std::int32_t> readOption(std::string_view typed, const std::vector<std::string>& options,
                                   std::int32_t locale);

}  // namespace korvant
