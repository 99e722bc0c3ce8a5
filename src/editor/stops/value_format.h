// Values of a stopped script as the debugger shows them.
#pragma once

#include <string>

#include "host/run/inspect.h"

namespace korvant {

/// What a value is called that does not exist yet.
inline constexpr char kUninitialised[] = "Unitialized";

/// Bounds of one text. What lies beyond is "...".
struct ValueLimits {
    int depth = 16;  ///< arrays inside each other
    std::uint32_t elements = 1000;
    std::size_t bytes = std::size_t{64} << 10;
};

/// The value of a variable as text: numbers in decimal, strings in double quotes, arrays as
/// "{[0] = 1, [1] = 2}", "???" for what cannot be shown. Integers of 8, 16 and 64 bits are read as
/// 32 bits. UTF-8.
std::string formatValue(const StoppedScript& script, const VariableInfo& variable,
                        const ValueLimits& limits = {});

/// The number that an expression may use for a value; nothing for other types.
bool numberOf(const ValueView& value, double& number);

}  // namespace korvant
