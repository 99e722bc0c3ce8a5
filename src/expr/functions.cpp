#include "expr/functions.h"

#include <array>
#include <cstddef>

namespace korvant::expr {
namespace {

using Arguments = std::span<const std::uint32_t>;

constexpr std::array<std::string_view, kUnaryCount> kUnaryNames = {
    "floor", "ceil", "abs",  "log",  "exp",  "log10", "sqrt", "sin",
    "cos",   "tan",  "asin", "acos", "atan", "sinh",  "cosh", "tanh"};

bool isNot(std::string_view name) {
    return name == "not" || name == "!" || name == "~";
}

/// The earliest of equal ones: each step replaces the result only by a better one.
std::uint32_t addExtreme(StepList& steps, Binary code, Arguments arguments) {
    std::uint32_t best = arguments[0];
    for (const std::uint32_t next : arguments.subspan(1)) best = steps.addBinary(code, best, next);
    return best;
}

/// ind(x; y0; b1; y1; ...): from the last bound to the first, so that the first one that x
/// lies below decides.
CallReading addInterval(StepList& steps, Arguments arguments) {
    if (arguments.size() % 2 != 0) return {CallFault::OddParameters};
    const std::uint32_t x = arguments[0];
    std::uint32_t result = arguments.back();
    if (arguments.size() == 2) return {CallFault::None, result};
    for (std::size_t bound = arguments.size() - 2; bound >= 2; bound -= 2) {
        const std::uint32_t below = steps.addBinary(Binary::Less, x, arguments[bound]);
        result = steps.addSelect(below, arguments[bound - 1], result);
    }
    return {CallFault::None, steps.isLeaf(x) ? result : steps.addKeep(x, result)};
}

/// cat(y1; c1; y2; c2; ...; d).
CallReading addCase(StepList& steps, Arguments arguments) {
    if (arguments.size() % 2 == 0) return {CallFault::EvenParameters};
    std::uint32_t result = arguments.back();
    for (std::size_t left = arguments.size(); left >= 3; left -= 2)
        result = steps.addSelect(arguments[left - 2], arguments[left - 3], result);
    return {CallFault::None, result};
}

CallReading addWithOneParameter(StepList& steps, std::string_view name, bool negated,
                                std::uint32_t argument) {
    std::uint32_t result = 0;
    if (isNot(name)) {
        result = steps.addNot(argument);
    } else {
        std::size_t code = 0;
        while (code < kUnaryCount && kUnaryNames[code] != name) ++code;
        if (code == kUnaryCount) return {CallFault::UnknownFunction};
        result = steps.addUnary(static_cast<Unary>(code), argument);
    }
    return {CallFault::None, negated ? steps.addNot(result) : result};
}

}  // namespace

CallReading addCall(StepList& steps, std::string_view name, bool negated, Arguments arguments) {
    if (name == "min") return {CallFault::None, addExtreme(steps, Binary::Min, arguments)};
    if (name == "max") return {CallFault::None, addExtreme(steps, Binary::Max, arguments)};
    if (name == "ind") return addInterval(steps, arguments);
    if (name == "cat") return addCase(steps, arguments);
    if (arguments.size() == 3 && (name == "if" || name == "?"))
        return {CallFault::None, steps.addSelect(arguments[0], arguments[1], arguments[2])};
    if (arguments.size() == 1) return addWithOneParameter(steps, name, negated, arguments[0]);
    return {CallFault::UnknownFunction};
}

}  // namespace korvant::expr
