// Reads an expression text into steps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expr/expression_text.h"
#include "expr/failure.h"
#include "expr/name_table.h"
#include "expr/operands.h"
#include "expr/operators.h"
#include "expr/split_record.h"
#include "expr/step_list.h"

namespace korvant::expr {

/// The reading procedure: a piece of text is stripped of its outer parentheses and split at
/// the operator that binds loosest; its left operand is read before its right one, and a piece
/// without an operator is a number, a name or a call, whose parameters are read likewise.
/// Pieces that wait are kept on a stack of our own, so that no text is too long or too deep for
/// the machine's. Time and memory are linear in the length of the text.
class ExpressionReader {
  public:
    explicit ExpressionReader(const NameTable& names) : names_(names) {}

    struct Bounds {
        std::size_t textBytes;
        std::uint32_t depth;
    };

    /// Reads `text` afresh; false when failure() says why not. A `record` is filled with the
    /// splits unless a name looks like a call: then the splits depend on the names, and the
    /// record is left empty.
    bool read(std::string_view text, const Bounds& bounds, SplitRecord* record = nullptr);

    enum class Replay : std::uint8_t { Read, Failed, Mismatch };
    /// Reads `text` again with the splits of `record`. Mismatch when they do not fit; the text
    /// must then be read afresh.
    Replay replay(std::string_view text, const Bounds& bounds, SplitRecord& record);

    /// The steps of the last reading that gave any, in the order of their application; they
    /// may be changed by who takes them over.
    StepList& steps() noexcept { return steps_; }
    /// The step whose value is that of the text.
    std::uint32_t result() const noexcept { return results_.front(); }

    const Failure& failure() const noexcept { return failure_; }
    /// The failure of a run of the steps at `step`, a remainder.
    Failure divisionByZero(std::size_t step) const;
    /// The first step of an unfinished reading that divides by zero is an earlier failure than
    /// the one that ended it; the wording of whichever it was.
    std::string message(const Failure& failure) const;

    /// Gives memory back that only a very long text needed.
    void releaseLargeBuffers();

  private:
    enum class Action : std::uint8_t { ReadPiece, ApplyOperator, NextParameter };
    struct Task {
        Action action;
        std::uint8_t row;     ///< of the operator to apply
        std::uint32_t split;  ///< of a piece: its first split, if it was scanned
        TextRange piece;
    };
    struct Call {
        TextRange function;
        std::uint32_t next;   ///< where the next parameter begins
        std::uint32_t close;  ///< the call's ")"
        std::uint32_t count;
        std::uint32_t context;
        bool negated;
    };
    struct Cut {
        bool found = false;
        OperatorScan::Split split;
    };

    bool prepare(std::string_view text, const Bounds& bounds);
    bool readPieces();
    bool readPiece(Task task);
    bool nextCut(const Task& task, Cut& cut);
    bool replayedCut(TextRange piece, Cut& cut);
    void pushPiece(TextRange piece, std::uint32_t split);
    void applyOperator(std::uint8_t row);
    bool readOperand(TextRange piece);
    void readNumber(const Operand& operand);
    void readName(const Operand& operand);
    bool openCall(TextRange piece, const Operand& operand);
    bool nextParameter();
    bool finishCall();
    bool fail(FailureKind kind, TextRange place, std::uint32_t count = 0);

    const NameTable& names_;
    PairedText text_;
    OperatorScan scan_;
    StepList steps_;
    std::vector<Task> tasks_;
    std::vector<std::uint32_t> results_;  ///< steps whose values wait for their use
    std::vector<Call> calls_;             ///< calls that are open
    std::vector<ParameterContext> contexts_;
    std::uint32_t context_ = kNoContext;
    Failure failure_;
    SplitRecord* record_ = nullptr;
    bool replaying_ = false;
    bool mismatch_ = false;
};

}  // namespace korvant::expr
