// One step of an expression: what a text reads as, and what the program for it is made of.
#pragma once

#include <cstddef>
#include <cstdint>

#include "expr/arithmetic.h"
#include "expr/scratch.h"

namespace korvant::expr {

/// The kinds of steps that a reading consists of. A step uses the results of earlier steps,
/// named by their numbers, and the steps stand in the order in which they are applied.
enum class StepKind : std::uint8_t {
    Number,  ///< payload.number
    Name,    ///< cell a
    Binary,  ///< `code` (a Binary) of step a and step payload.at.first
    Unary,   ///< `code` (a Unary) of step a
    Select,  ///< step payload.at.first when step a is not 0, else step payload.at.second
    Keep,    ///< step payload.at.first, which uses step a more than once
};

/// Sixteen bytes, used for both forms of an expression: as read and as a program.
struct Step {
    union Payload {
        double number;
        struct {
            std::int32_t first, second;
        } at;
    };
    struct Read {
        StepKind kind;
        std::uint8_t code;
    };
    struct Fused {
        std::uint16_t opcode;
        std::int16_t operand;  ///< what the opcode says: a scratch cell or a number of steps
    };
    union {
        Read read;
        Fused fused;
    };
    std::int32_t a;
    Payload payload;

    Binary binary() const noexcept { return static_cast<Binary>(read.code); }
    Unary unary() const noexcept { return static_cast<Unary>(read.code); }
};
static_assert(sizeof(Step) == 16);

using Steps = Scratch<Step>;

/// No step at all.
inline constexpr std::size_t kNoStep = ~std::size_t{0};

/// Runs steps as they were read, each after the ones it uses, as plain as can be. `values` has
/// room for all of them. The number of the first step that divides by zero, or kNoStep.
std::size_t runAsRead(const Step* steps, std::size_t count, const double* cells,
                      double* values) noexcept;

}  // namespace korvant::expr
