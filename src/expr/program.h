// The flat program that an expression becomes, and its run.
#pragma once

#include <cstddef>
#include <cstdint>

#include "expr/step.h"

namespace korvant::expr {

/// Where an operation of two values takes them from: the result so far, a cell (a named value
/// or a scratch cell) or a constant in the step.
enum class Form : std::uint8_t {
    ResultCell,
    ResultConstant,
    CellResult,
    ConstantResult,
    CellCell,
    CellConstant,
    ConstantCell,
};
inline constexpr std::size_t kFormCount = 7;

/// Where comparisons that are part of a larger step take their values from.
enum class PairForm : std::uint8_t { CellCell, CellConstant };

/// A program's steps by number. Cells are addressed by `a` and payload.at.first, a constant is
/// payload.number. Every opcode exists twice: the odd one ends the program with its result.
namespace opcode {
inline constexpr std::size_t kComparisons = 6;
inline constexpr std::uint16_t kBinary = 0;
inline constexpr std::uint16_t kUnary = kBinary + kBinaryCount * kFormCount;  ///< of the result
inline constexpr std::uint16_t kUnaryCell = kUnary + kUnaryCount;
/// Result or/and a comparison of a pair.
inline constexpr std::uint16_t kOrPair = kUnaryCell + kUnaryCount;
inline constexpr std::uint16_t kAndPair = kOrPair + kComparisons * 2;
/// Goes on `skip` steps further when the comparison of a pair does not hold.
inline constexpr std::uint16_t kUnlessPair = kAndPair + kComparisons * 2;
/// Goes on `a` steps further when the result is 0.
inline constexpr std::uint16_t kUnlessResult = kUnlessPair + kComparisons * 2;
inline constexpr std::uint16_t kJump = kUnlessResult + 1;  ///< goes on `a` steps further
inline constexpr std::uint16_t kLoadCell = kJump + 1;
inline constexpr std::uint16_t kLoadConstant = kLoadCell + 1;
inline constexpr std::uint16_t kStore = kLoadConstant + 1;  ///< the result into a cell
inline constexpr std::uint16_t kPause = kStore + 1;
inline constexpr std::uint16_t kCount = kPause + 1;

constexpr std::uint16_t binary(Binary code, Form form) noexcept {
    return static_cast<std::uint16_t>(kBinary + static_cast<int>(code) * int{kFormCount} +
                                      static_cast<int>(form));
}
/// One of the three families that compare a pair.
constexpr std::uint16_t pair(std::uint16_t family, Binary comparison, PairForm form) noexcept {
    const int number = static_cast<int>(comparison) - static_cast<int>(Binary::NotEqual);
    return static_cast<std::uint16_t>(family + number * 2 + static_cast<int>(form));
}
}  // namespace opcode

/// Steps from one pause to the next at most. A step hands on to the next one; where the
/// compiler makes a call of that and no jump, this bounds the depth of the machine's stack.
inline constexpr std::size_t kStepsBetweenPauses = 64;

/// The value of a program. Cells may be written below 0 only.
double runProgram(const Step* program, double* cells) noexcept;

}  // namespace korvant::expr
