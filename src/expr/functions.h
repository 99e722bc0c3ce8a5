// The functions: which name with how many parameters means what.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "expr/step_list.h"

namespace korvant::expr {

enum class CallFault : std::uint8_t { None, OddParameters, EvenParameters, UnknownFunction };

struct CallReading {
    CallFault fault = CallFault::None;
    std::uint32_t step = 0;  ///< the call's result
};

/// Adds the steps of a call whose parameters are the steps `arguments`, one at least. "min",
/// "max", "ind" and "cat" are found by name with any number of parameters, the others by their
/// number too. `negated` turns the result of a one-parameter function into 1 if it is 0 and
/// into 0 otherwise; it is without effect on "min", "max", "ind", "cat", "if" and "?".
CallReading addCall(StepList& steps, std::string_view name, bool negated,
                    std::span<const std::uint32_t> arguments);

}  // namespace korvant::expr
