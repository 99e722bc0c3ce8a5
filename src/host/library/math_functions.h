// Mathematical functions of scripts.
#pragma once

#include <cstdint>
#include <span>

#include "host/engine/registration.h"

namespace korvant {

int registerMathFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> mathFunctionRows();

/// Bessel functions of integer order in bounded time: the C library's values, which it computes
/// by a recurrence of as many steps as the order's magnitude. Ends early with 0 when `shouldStop`
/// answers true; null: never.
double besselJn(std::int32_t order, double x, bool (*shouldStop)());
double besselYn(std::int32_t order, double x, bool (*shouldStop)());

}  // namespace korvant
