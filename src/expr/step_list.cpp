#include "expr/step_list.h"

#include <algorithm>

namespace korvant::expr {
namespace {

Step::Payload numbered(double number) {
    Step::Payload payload;
    payload.number = number;
    return payload;
}

Step::Payload pointing(std::uint32_t first, std::uint32_t second = 0) {
    Step::Payload payload;
    payload.at = {static_cast<std::int32_t>(first), static_cast<std::int32_t>(second)};
    return payload;
}

}  // namespace

std::uint32_t StepList::add(StepKind kind, std::uint8_t code, std::uint32_t a,
                            Step::Payload payload, int need) {
    Step step;
    step.read = {kind, code, static_cast<std::uint8_t>(std::min(need, 255))};
    step.a = static_cast<std::int32_t>(a);
    step.payload = payload;
    steps_.push_back(step);
    return static_cast<std::uint32_t>(steps_.size() - 1);
}

std::uint32_t StepList::addNumber(double value) {
    return add(StepKind::Number, 0, 0, numbered(value), 0);
}

std::uint32_t StepList::addName(std::uint32_t slot) {
    return add(StepKind::Name, 0, slot, numbered(0), 0);
}

// The side that needs more cells is run first, and its result is kept while the other side
// runs; so a text with n operands needs no more than the logarithm of n (Sethi and Ullman,
// "The generation of optimal code for arithmetic expressions", 1970).
std::uint32_t StepList::addBinary(Binary code, std::uint32_t left, std::uint32_t right,
                                  std::uint32_t context) {
    if (code == Binary::Remainder) {
        const Step& divisor = steps_[right];
        if (divisor.read.kind != StepKind::Number || dividesByZero(divisor.payload.number))
            mayFail_ = true;
    }
    const int one = needOf(left), other = needOf(right);
    const int need = one == other ? one + 1 : std::max(one, other);
    return add(StepKind::Binary, static_cast<std::uint8_t>(code), left, pointing(right, context),
               need);
}

std::uint32_t StepList::addUnary(Unary code, std::uint32_t value) {
    return add(StepKind::Unary, static_cast<std::uint8_t>(code), value, numbered(0),
               std::max(needOf(value), 1));
}

std::uint32_t StepList::addSelect(std::uint32_t condition, std::uint32_t yes, std::uint32_t no) {
    const int need = std::max({needOf(condition), needOf(yes), needOf(no), 1});
    return add(StepKind::Select, 0, condition, pointing(yes, no), need);
}

std::uint32_t StepList::addKeep(std::uint32_t kept, std::uint32_t body) {
    const int need = std::max(needOf(kept), needOf(body) + 1);
    return add(StepKind::Keep, 0, kept, pointing(body), need);
}

std::uint32_t StepList::addNot(std::uint32_t value) {
    return addBinary(Binary::Equal, value, addNumber(0));
}

}  // namespace korvant::expr
