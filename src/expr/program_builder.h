// Makes a flat program of the steps of a reading.
#pragma once

#include <cstddef>
#include <cstdint>

#include "expr/program.h"
#include "expr/step.h"

namespace korvant::expr {

/// Orders and joins steps so that a run does as little as possible: operands are part of their
/// operations, comparisons and simple operations are part of the one that uses them, and of the
/// branches of a selection only the one that is taken is run. That is allowed because a program
/// computes values only: steps that can divide by zero are run as they were read. Its own stack
/// stands in for recursion, so no text is too deep.
class ProgramBuilder {
  public:
    /// Builds the program for the value of step `result`. `steps` serves as a scratch list and
    /// is not usable afterwards. False when the steps need more scratch cells or longer jumps
    /// than a program has; they must then be run as they were read.
    bool build(Steps& steps, std::uint32_t result);
    const Steps& program() const noexcept { return program_; }

    void releaseLargeBuffers();

  private:
    /// What is done when the step below has been built.
    enum class Stage : std::uint8_t {
        JoinLeaf,
        JoinPair,
        FirstOfTwo,
        SecondOfTwo,
        UnaryValue,
        SelectCondition,
        SelectYes,
        SelectNo,
        KeptValue,
        KeepBody,
    };
    struct Task {
        std::uint32_t step;
        std::uint32_t partner;  ///< the other operand of two, or a place that waits for a jump
        Stage stage;
        bool last;  ///< the program ends with this step's value
        std::int16_t cell;
    };
    /// The step to build next, below the topmost task.
    struct Next {
        std::uint32_t step;
        bool last;
    };

    const Step& at(std::uint32_t step) const noexcept { return (*steps_)[step]; }
    bool isLeaf(std::uint32_t step) const noexcept;
    bool isNumber(std::uint32_t step) const noexcept;
    bool isPair(std::uint32_t step, Binary first, Binary last) const noexcept;
    bool isComparisonPair(std::uint32_t step) const noexcept;
    bool joins(Binary outer, std::uint32_t pair) const noexcept;

    bool descend(Next& next);
    bool descendBinary(Next& next);
    bool descendUnary(Next& next);
    bool descendSelect(Next& next);
    bool ascend(Next& next);
    bool finish(Task& task, Next& next);
    Task& push(Stage stage, const Next& next, std::uint32_t partner = 0);

    Step& emit(int code);
    Step& emitFresh(int code);
    void emitLoad(std::uint32_t step);
    void emitLeaves(const Step& step);
    void emitWithLeaf(const Step& step, bool leafIsLeft);
    void emitWithCell(Binary code, std::int32_t cell, bool cellIsLeft);
    void emitPair(int family, std::uint32_t step);
    void emitJoined(const Step& outer, std::uint32_t pair);
    std::uint32_t emitJump(int code);
    Form placeLeaves(const Step& step, Step& emitted) const noexcept;
    void keepResult(Task& task);
    void land(std::uint32_t jump);

    Steps* steps_ = nullptr;
    Steps program_;
    Scratch<Task> tasks_;
    std::size_t lastPause_ = 0;
    std::int16_t cellsInUse_ = 0;
    std::int16_t keepIn_ = kUnwanted;  ///< where the next fresh step puts the result before it
    bool fits_ = true;
};

}  // namespace korvant::expr
