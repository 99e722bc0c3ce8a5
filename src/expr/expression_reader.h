// Reads an expression text into steps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "expr/expression_text.h"
#include "expr/failure.h"
#include "expr/name_table.h"
#include "expr/operands.h"
#include "expr/operators.h"
#include "expr/scratch.h"
#include "expr/split_record.h"
#include "expr/step_list.h"

namespace korvant::expr {

/// The reading procedure. A piece of text splits at the operator that binds loosest, its left
/// operand is read before its right one, and a piece without an operator is a number, a name
/// or a call, whose parameters are read likewise. That is done in one walk from the left to the
/// right: an operator waits for its right operand until a looser one or the piece's end comes.
/// What waits is kept on stacks of our own, so that no text is too long or too deep for the
/// machine's. Time and memory are linear in the length of the text.
class ExpressionReader {
  public:
    explicit ExpressionReader(const NameTable& names) : names_(names) {}

    struct Bounds {
        std::size_t textBytes;
        std::uint32_t depth;
    };

    /// Reads `text`; false when failure() says why not. A `recorder` is told of every piece.
    bool read(std::string_view text, const Bounds& bounds, SplitRecorder* recorder = nullptr);

    /// The steps of the last reading, in the order of their application: of a reading that
    /// failed those that were complete before it did. They may be changed.
    StepList& steps() noexcept { return steps_; }
    /// The step whose value is that of the text.
    std::uint32_t result() const noexcept { return results_[0]; }

    const Failure& failure() const noexcept { return failure_; }
    /// The failure of a run of the steps at `step`, a remainder.
    Failure divisionByZero(std::size_t step) const;
    /// The wording of a failure of the last reading or of a run of its steps.
    std::string message(const Failure& failure) const;
    /// The last text as it was read: in lower case, without blanks, its parentheses paired.
    const PairedText& text() const noexcept { return text_; }

    /// Gives memory back that only a very long text needed.
    void releaseLargeBuffers();

  private:
    /// An operator that waits for its right operand.
    struct Waiting {
        std::uint32_t level;
        std::uint32_t start;
    };
    /// A region that is left for the inside of one of its operands.
    struct Frame {
        Region region;
        SplitPlace after;  ///< what follows the operand
        std::uint32_t firstOperator;
        bool isCall;
        bool negated;
        TextRange function;
        std::uint32_t count;  ///< parameters begun
        std::uint32_t context;
    };

    bool prepare(std::string_view text, const Bounds& bounds);
    void makeRoom(std::size_t textSize);
    bool readPieces();
    bool readOperand(const SplitPlace& after, bool& entered);
    bool enterCall(TextRange piece, const Operand& operand, const SplitPlace& after);
    Frame& enter(const Region& region, const SplitPlace& after);
    void enterParameter(Frame& call, std::uint32_t begin, std::uint32_t close);
    bool finishCall(const Frame& call);
    void addResult(std::uint32_t step, std::uint32_t parameters = 0);
    void reduce(const SplitPlace& place);
    bool fail(FailureKind kind, TextRange place, std::uint32_t count = 0);

    const NameTable& names_;
    PairedText text_;
    OperatorScan scan_;
    StepList steps_;
    Region region_;
    std::uint32_t from_ = 0;
    std::uint32_t firstOperator_ = 0;  ///< of those that wait, the first one of the region
    Scratch<Waiting> waiting_;
    Scratch<std::uint32_t> results_;  ///< steps whose values wait for their use
    Scratch<Frame> frames_;
    Scratch<ParameterContext> contexts_;
    std::uint32_t context_ = kNoContext;
    Failure failure_;
    SplitRecorder* recorder_ = nullptr;
};

}  // namespace korvant::expr
