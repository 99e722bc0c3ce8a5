// What went wrong with an expression, where, and its wording.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "expr/expression_text.h"

namespace korvant::expr {

enum class FailureKind : std::uint8_t {
    None,
    EmptyText,
    TextTooLong,
    TooDeep,
    Unbalanced,
    EmptyOperand,
    BadOperand,
    UnknownName,
    NoParameters,
    OddParameters,
    EvenParameters,
    UnknownFunction,
    DivisionByZero,
};

inline constexpr std::uint32_t kNoContext = ~std::uint32_t{0};

/// One parameter of a call that is being read; a failure inside it is told with the call.
struct ParameterContext {
    std::uint32_t outer = kNoContext;  ///< the parameter that the call itself stands in
    TextRange function;                ///< the function's name
    TextRange parameter;
};

/// A failure and, if it stands inside calls, the innermost parameter that it stands in.
struct Failure {
    FailureKind kind = FailureKind::None;
    TextRange place;          ///< of the operand or the function's name
    std::uint32_t count = 0;  ///< parameters of an unknown function
    std::uint32_t context = kNoContext;
};

/// Longest message in bytes; of a longer one the middle is replaced by "...".
inline constexpr std::size_t kLongestMessage = std::size_t{64} << 10;

/// The English message for a failure in `text`, the cleaned text that places point into.
/// `contexts` are the parameters that it stands in, the innermost first.
std::string wordFailure(const Failure& failure, std::string_view text,
                        std::span<const ParameterContext> contexts);

}  // namespace korvant::expr
