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
    std::uint32_t addNumber(double value);
    std::uint32_t addName(std::uint32_t slot);
    /// `context` is kept with a remainder, so that a division by zero can say where it stands.
    std::uint32_t addBinary(Binary code, std::uint32_t left, std::uint32_t right,
                            std::uint32_t context = 0);
    std::uint32_t addUnary(Unary code, std::uint32_t value);
    std::uint32_t addSelect(std::uint32_t condition, std::uint32_t yes, std::uint32_t no);
    std::uint32_t addKeep(std::uint32_t kept, std::uint32_t body);
    /// 1 when `value` is 0, else 0.
    std::uint32_t addNot(std::uint32_t value);

    Steps& steps() noexcept { return steps_; }
    const Steps& steps() const noexcept { return steps_; }
    bool isLeaf(std::uint32_t step) const noexcept {
        return steps_[step].read.kind <= StepKind::Name;
    }
    /// Whether running the steps can divide by zero.
    bool mayFail() const noexcept { return mayFail_; }

  private:
    std::uint32_t add(StepKind kind, std::uint8_t code, std::uint32_t a, Step::Payload payload,
                      int need);
    int needOf(std::uint32_t step) const noexcept { return steps_[step].read.need; }

    Steps steps_;
    bool mayFail_ = false;
};

}  // namespace korvant::expr
