// The flat program that an expression becomes, and its run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "expr/step.h"

namespace korvant::expr {

/// Where an operation of two values takes them from: the result so far, a cell (a named value
/// or a scratch cell) or a constant in the step. A cell's number is `a` of the step, a second
/// one is payload.at.first, a constant is payload.number.
enum class Form : std::uint8_t {
    CellCell,
    CellConstant,
    ConstantCell,
    ResultCell,
    ResultConstant,
    CellResult,
    ConstantResult,
};
inline constexpr std::size_t kFormCount = 7;

/// A form that does not use the result so far. Such a step puts that result into the scratch
/// cell `operand` first, so that it is there when it is wanted.
constexpr bool isFresh(Form form) noexcept {
    return form <= Form::ConstantCell;
}

/// The scratch cell for results that nobody wants.
inline constexpr std::int16_t kUnwanted = -64;

/// A program's steps by number. Every opcode exists twice: the odd one ends the program with
/// its result. A pair is a comparison (of the first two forms) or one of the four arithmetic
/// operations (of the first three), twelve of either sort, that is part of a larger step.
namespace opcode {
inline constexpr int kPairs = 12;
inline constexpr int kBinary = 0;
inline constexpr int kUnary = kBinary + int{kBinaryCount} * int{kFormCount};  ///< of the result
inline constexpr int kUnaryCell = kUnary + int{kUnaryCount};                  ///< fresh
inline constexpr int kOrPair = kUnaryCell + int{kUnaryCount};  ///< result or comparison
inline constexpr int kAndPair = kOrPair + kPairs;              ///< result and comparison
/// Result and arithmetic pair: + - * / with the pair on the right, then with it on the left.
inline constexpr int kArithmeticPair = kAndPair + kPairs;
/// Goes on `operand` steps further when the comparison does not hold.
inline constexpr int kUnlessPair = kArithmeticPair + 8 * kPairs;
inline constexpr int kUnlessResult = kUnlessPair + kPairs;  ///< `a` steps when the result is 0
inline constexpr int kJump = kUnlessResult + 1;             ///< `a` steps
inline constexpr int kLoadCell = kJump + 1;                 ///< fresh
inline constexpr int kLoadConstant = kLoadCell + 1;         ///< fresh
inline constexpr int kStore = kLoadConstant + 1;            ///< the result into cell a
inline constexpr int kPause = kStore + 1;
inline constexpr int kCount = kPause + 1;

constexpr int binary(Binary code, Form form) noexcept {
    return kBinary + static_cast<int>(code) * int{kFormCount} + static_cast<int>(form);
}
/// Number of a comparison among the pairs.
constexpr int comparison(Binary code, Form form) noexcept {
    return (static_cast<int>(code) - static_cast<int>(Binary::NotEqual)) * 2 +
           static_cast<int>(form);
}
/// Number of an arithmetic operation among the pairs.
constexpr int arithmetic(Binary code, Form form) noexcept {
    return (static_cast<int>(code) - static_cast<int>(Binary::Add)) * 3 + static_cast<int>(form);
}
}  // namespace opcode

/// Steps from one pause to the next at most. A step hands on to the next one; where the
/// compiler makes a call of that and no jump, this bounds the depth of the machine's stack.
inline constexpr std::size_t kStepsBetweenPauses = 64;

/// What the runs of one evaluator share.
struct ProgramRun {
    double* cells = nullptr;         ///< where cell 0 stands
    const Step* resume = nullptr;    ///< set by a step that does not hand on: where to go on
    std::uint64_t namesVersion = 0;  ///< tells sets of names apart; 0 when it is not known
};

/// One step's work and that of those after it; `result` is the result so far, the value
/// returned the one after them.
using StepHandler = double (*)(const Step*, double* cells, double result, ProgramRun&);

inline constexpr std::size_t kHandlerCount = std::size_t{opcode::kCount} * 2;
[[gnu::visibility("hidden")]] extern const std::array<StepHandler, kHandlerCount> kStepHandlers;

/// Runs on from run.resume.
double resumeProgram(double result, ProgramRun& run);

/// The value of a program. Only cells below 0 are written.
inline double runProgram(const Step* program, ProgramRun& run) {
    const double result = kStepHandlers[program->fused.opcode](program, run.cells, 0, run);
    return run.resume ? resumeProgram(result, run) : result;
}

}  // namespace korvant::expr
