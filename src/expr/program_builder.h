// Makes a flat program of the steps of a reading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "expr/program.h"
#include "expr/step.h"

namespace korvant::expr {

/// Orders and joins steps so that a run does as little as possible: operands are part of their
/// operations, what is on its way needs no place in memory, comparisons join the operation
/// that uses them, and of the branches of a selection only the one that is taken is run. That
/// is allowed because a program computes values only: steps that can divide by zero are run as
/// they were read. Its own stack stands in for recursion, so no text is too deep.
class ProgramBuilder {
  public:
    /// Builds the program for the value of step `result`. `steps` serves as a scratch list and
    /// is not usable afterwards. False when the steps need more scratch cells or longer jumps
    /// than a program has; they must then be run as they were read.
    bool build(Steps& steps, std::uint32_t result);
    const Steps& program() const noexcept { return program_; }

    void releaseLargeBuffers();

  private:
    struct Task {
        std::uint32_t step;
        std::uint8_t stage;
        bool last;              ///< the program ends with this step's value
        std::int32_t cell;      ///< scratch cell in use
        std::size_t jump;       ///< place in the program that waits for its target
        std::uint32_t partner;  ///< step that joins when the other one is done
    };
    /// A comparison of two cells or of a cell and a constant.
    struct Pair {
        Binary comparison;
        PairForm form;
        Step step;
    };

    const Step& at(std::uint32_t step) const noexcept { return (*steps_)[step]; }
    bool isLeaf(std::uint32_t step) const noexcept;
    bool isNumber(std::uint32_t step) const noexcept;
    bool isPair(std::uint32_t step) const noexcept;
    Pair pairOf(std::uint32_t step) const noexcept;

    void begin(std::uint32_t step, bool last);
    void finish();
    void advance();
    void advanceBinary(Task& task);
    bool joinsLogic(Task& task);
    void advanceUnary(Task& task);
    void advanceSelect(Task& task);
    void beginSelect(Task& task);
    void advanceKeep(Task& task);

    Step& emit(std::uint16_t code);
    void emitLoad(std::uint32_t step);
    void emitStore(std::int32_t cell);
    void emitLeaves(const Step& step);
    void emitWithLeaf(const Step& step, bool leafIsLeft);
    void emitWithCell(Binary code, std::int32_t cell, bool cellIsLeft);
    void emitPair(std::uint16_t family, std::uint32_t step);
    std::int32_t takeCell();
    void land(std::size_t jump);

    Steps* steps_ = nullptr;
    Steps program_;
    std::vector<Task> tasks_;
    std::size_t lastPause_ = 0;
    std::int32_t cellsInUse_ = 0;
    bool fits_ = true;
};

}  // namespace korvant::expr
