// Makes the steps of a reading, one after the other.
#pragma once

#include <cstdint>

#include "expr/step.h"

namespace korvant::expr {

/// Appends steps; each function gives the new step's number.
class StepList {
  public:
    void clear() noexcept {
        steps_.clear();
        mayFail_ = false;
    }

    std::uint32_t addNumber(double value) {
        add(StepKind::Number).payload.number = value;
        return last();
    }

    std::uint32_t addName(std::uint32_t slot) {
        add(StepKind::Name).a = static_cast<std::int32_t>(slot);
        return last();
    }

    /// `context` is kept with a remainder, so that a division by zero can say where it stands.
    std::uint32_t addBinary(Binary code, std::uint32_t left, std::uint32_t right,
                            std::uint32_t context = 0) {
        if (code == Binary::Remainder) noteDivisor(steps_[right]);
        return addOperation(StepKind::Binary, static_cast<std::uint8_t>(code), left, right,
                            context);
    }

    std::uint32_t addUnary(Unary code, std::uint32_t value) {
        return addOperation(StepKind::Unary, static_cast<std::uint8_t>(code), value, 0, 0);
    }

    std::uint32_t addSelect(std::uint32_t condition, std::uint32_t yes, std::uint32_t no) {
        return addOperation(StepKind::Select, 0, condition, yes, no);
    }

    std::uint32_t addKeep(std::uint32_t kept, std::uint32_t body) {
        return addOperation(StepKind::Keep, 0, kept, body, 0);
    }

    /// 1 when `value` is 0, else 0.
    std::uint32_t addNot(std::uint32_t value) {
        return addBinary(Binary::Equal, value, addNumber(0));
    }

    Steps& steps() noexcept { return steps_; }
    const Steps& steps() const noexcept { return steps_; }
    bool isLeaf(std::uint32_t step) const noexcept {
        return steps_[step].read.kind <= StepKind::Name;
    }
    /// Whether running the steps can divide by zero.
    bool mayFail() const noexcept { return mayFail_; }

  private:
    std::uint32_t last() const noexcept { return static_cast<std::uint32_t>(steps_.size() - 1); }
    void noteDivisor(const Step& divisor) noexcept {
        if (divisor.read.kind != StepKind::Number || dividesByZero(divisor.payload.number))
            mayFail_ = true;
    }

    Step& add(StepKind kind, std::uint8_t code = 0) {
        Step& step = steps_.push();
        step.read.kind = kind;
        step.read.code = code;
        return step;
    }

    std::uint32_t addOperation(StepKind kind, std::uint8_t code, std::uint32_t a,
                               std::uint32_t first, std::uint32_t second) {
        Step& step = add(kind, code);
        step.a = static_cast<std::int32_t>(a);
        step.payload.at.first = static_cast<std::int32_t>(first);
        step.payload.at.second = static_cast<std::int32_t>(second);
        return last();
    }

    Steps steps_;
    bool mayFail_ = false;
};

}  // namespace korvant::expr
