// What the operators and functions make of their values. Every way to run an expression uses
// these, so that all give the same bits.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace korvant::expr {

/// Two-value operations: the operators by meaning, and the steps of "min" and "max".
enum class Binary : std::uint8_t {
    Or,
    And,
    NotEqual,
    GreaterEqual,
    LessEqual,
    Equal,
    Greater,
    Less,
    Remainder,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    Min,
    Max,
};
inline constexpr std::size_t kBinaryCount = 16;

/// The mathematical functions of one value.
enum class Unary : std::uint8_t {
    Floor,
    Ceil,
    Abs,
    Log,
    Exp,
    Log10,
    Sqrt,
    Sin,
    Cos,
    Tan,
    Asin,
    Acos,
    Atan,
    Sinh,
    Cosh,
    Tanh,
};
inline constexpr std::size_t kUnaryCount = 16;

/// Truncated toward zero; beyond the 32-bit range its nearest end, 0 for not-a-number.
inline std::int32_t truncated(double value) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) return 0;
    if (value <= Limits::min()) return Limits::min();
    if (value >= Limits::max()) return Limits::max();
    return static_cast<std::int32_t>(value);
}

/// Whether a remainder by `divisor` does not exist.
inline bool dividesByZero(double divisor) noexcept {
    return truncated(divisor) == 0;
}

/// Remainder of the truncated values with the sign of the left one; 0 where none exists.
inline double remainderOf(double left, double right) noexcept {
    const std::int64_t divisor = truncated(right);
    return divisor == 0 ? 0.0 : static_cast<double>(truncated(left) % divisor);
}

/// Whether the square has no more digits than a double holds and lies well inside its range.
inline bool squaresExactly(double value) noexcept {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    constexpr std::uint64_t lowerHalf = (std::uint64_t{1} << 27) - 1;
    const std::uint64_t exponent = bits >> 52 & 0x7FF;
    return (bits & lowerHalf) == 0 && exponent - 523 < 1000;
}

/// The library's pow. Squares, the commonest powers, are taken by multiplication where that is
/// exact, since there the library's result is exact too; elsewhere the last bit may differ.
inline double powerOf(double base, double exponent) noexcept {
    if (exponent == 2 && squaresExactly(base)) return base * base;
    return std::pow(base, exponent);
}

inline double apply(Binary code, double left, double right) noexcept {
    switch (code) {
        case Binary::Or:
            return (left != 0) | (right != 0);
        case Binary::And:
            return (left != 0) & (right != 0);
        case Binary::NotEqual:
            return left != right;
        case Binary::GreaterEqual:
            return left >= right;
        case Binary::LessEqual:
            return left <= right;
        case Binary::Equal:
            return left == right;
        case Binary::Greater:
            return left > right;
        case Binary::Less:
            return left < right;
        case Binary::Remainder:
            return remainderOf(left, right);
        case Binary::Add:
            return left + right;
        case Binary::Subtract:
            return left - right;
        case Binary::Multiply:
            return left * right;
        case Binary::Divide:
            return left / right;
        case Binary::Power:
            return powerOf(left, right);
        case Binary::Min:
            return right < left ? right : left;
        case Binary::Max:
            return right > left ? right : left;
    }
    return 0;
}

inline double apply(Unary code, double value) noexcept {
    switch (code) {
        case Unary::Floor:
            return std::floor(value);
        case Unary::Ceil:
            return std::ceil(value);
        case Unary::Abs:
            return std::fabs(value);
        case Unary::Log:
            return std::log(value);
        case Unary::Exp:
            return std::exp(value);
        case Unary::Log10:
            return std::log10(value);
        case Unary::Sqrt:
            return std::sqrt(value);
        case Unary::Sin:
            return std::sin(value);
        case Unary::Cos:
            return std::cos(value);
        case Unary::Tan:
            return std::tan(value);
        case Unary::Asin:
            return std::asin(value);
        case Unary::Acos:
            return std::acos(value);
        case Unary::Atan:
            return std::atan(value);
        case Unary::Sinh:
            return std::sinh(value);
        case Unary::Cosh:
            return std::cosh(value);
        case Unary::Tanh:
            return std::tanh(value);
    }
    return 0;
}

}  // namespace korvant::expr
