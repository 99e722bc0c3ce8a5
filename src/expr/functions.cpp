#include "expr/functions.h"

#include <cstddef>

namespace korvant::expr {
namespace {

using Arguments = std::span<const std::uint32_t>;

enum class Function : std::uint8_t { Min, Max, Interval, Case, If, Not, OfOne, Unknown };

struct NamedFunction {
    Function function = Function::Unknown;
    Unary unary = Unary::Floor;  ///< of a function of one value
};

/// The bytes of a name of at most eight as one number; 0 for a longer one.
constexpr std::uint64_t packed(std::string_view name) noexcept {
    std::uint64_t word = 0;
    if (name.size() > 8) return 0;
    for (const char byte : name) word = word << 8 | static_cast<unsigned char>(byte);
    return word;
}

NamedFunction functionNamed(std::string_view name) noexcept {
    switch (packed(name)) {
        case packed("min"):
            return {Function::Min};
        case packed("max"):
            return {Function::Max};
        case packed("ind"):
            return {Function::Interval};
        case packed("cat"):
            return {Function::Case};
        case packed("if"):
        case packed("?"):
            return {Function::If};
        case packed("not"):
        case packed("!"):
        case packed("~"):
            return {Function::Not};
        case packed("floor"):
            return {Function::OfOne, Unary::Floor};
        case packed("ceil"):
            return {Function::OfOne, Unary::Ceil};
        case packed("abs"):
            return {Function::OfOne, Unary::Abs};
        case packed("log"):
            return {Function::OfOne, Unary::Log};
        case packed("exp"):
            return {Function::OfOne, Unary::Exp};
        case packed("log10"):
            return {Function::OfOne, Unary::Log10};
        case packed("sqrt"):
            return {Function::OfOne, Unary::Sqrt};
        case packed("sin"):
            return {Function::OfOne, Unary::Sin};
        case packed("cos"):
            return {Function::OfOne, Unary::Cos};
        case packed("tan"):
            return {Function::OfOne, Unary::Tan};
        case packed("asin"):
            return {Function::OfOne, Unary::Asin};
        case packed("acos"):
            return {Function::OfOne, Unary::Acos};
        case packed("atan"):
            return {Function::OfOne, Unary::Atan};
        case packed("sinh"):
            return {Function::OfOne, Unary::Sinh};
        case packed("cosh"):
            return {Function::OfOne, Unary::Cosh};
        case packed("tanh"):
            return {Function::OfOne, Unary::Tanh};
        default:
            return {};
    }
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

CallReading addWithOneParameter(StepList& steps, NamedFunction function, bool negated,
                                std::uint32_t argument) {
    if (function.function != Function::Not && function.function != Function::OfOne)
        return {CallFault::UnknownFunction};
    const std::uint32_t result = function.function == Function::Not
                                     ? steps.addNot(argument)
                                     : steps.addUnary(function.unary, argument);
    return {CallFault::None, negated ? steps.addNot(result) : result};
}

}  // namespace

CallReading addCall(StepList& steps, std::string_view name, bool negated, Arguments arguments) {
    const NamedFunction function = functionNamed(name);
    switch (function.function) {
        case Function::Min:
            return {CallFault::None, addExtreme(steps, Binary::Min, arguments)};
        case Function::Max:
            return {CallFault::None, addExtreme(steps, Binary::Max, arguments)};
        case Function::Interval:
            return addInterval(steps, arguments);
        case Function::Case:
            return addCase(steps, arguments);
        default:
            break;
    }
    if (arguments.size() == 1) return addWithOneParameter(steps, function, negated, arguments[0]);
    if (arguments.size() != 3 || function.function != Function::If)
        return {CallFault::UnknownFunction};
    return {CallFault::None, steps.addSelect(arguments[0], arguments[1], arguments[2])};
}

}  // namespace korvant::expr
