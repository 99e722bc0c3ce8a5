#include "expr/grouping.h"

#include "expr/operands.h"
#include "expr/operators.h"

namespace korvant::expr {
namespace {

/// Pieces that wait are kept on a stack of our own, as when the text is read.
class GroupWriter {
  public:
    GroupWriter(const PairedText& text, const NameTable& names, SplitRecord& record,
                std::string& to)
        : text_(text), names_(names), record_(record), to_(to) {}

    bool write() {
        record_.rewind();
        to_.clear();
        push({Task::kWhole, text_.all()});
        bool fits = true;
        while (fits && !tasks_.empty()) {
            const Task task = tasks_.back();
            tasks_.pop();
            switch (task.kind) {
                case Task::kWhole:
                case Task::kOperand:
                    fits = writePiece(task);
                    break;
                case Task::kBytes:
                    to_ += text_.bytes(task.range);
                    break;
                case Task::kClose:
                    to_ += ')';
                    break;
            }
        }
        return fits && record_.atEnd();
    }

  private:
    /// A piece that stands by itself, an operand, bytes to be copied, or a ")".
    struct Task {
        enum Kind : std::uint8_t { kWhole, kOperand, kBytes, kClose };
        Kind kind;
        TextRange range;
    };

    void push(const Task& task) { tasks_.push() = task; }

    bool writePiece(const Task& task) {
        TextRange piece = task.range;
        while (text_.isEnclosed(piece)) piece = {piece.begin + 1, piece.end - 1};
        const bool stripped = piece.begin != task.range.begin;
        std::uint32_t start = 0, right = 0;
        const SplitRecord::Entry entry = record_.next(start, right);
        if (entry == SplitRecord::Entry::Broken) return false;
        const bool split = entry == SplitRecord::Entry::Split;
        if (task.kind == Task::kOperand && (split || (stripped && holdsOperatorBytes(piece)))) {
            to_ += '(';
            push({Task::kClose, {}});
        }
        if (!split) return writeOperand(piece);
        if (start <= piece.begin || right <= start || right >= piece.end) return false;
        if (!isOperator(text_.bytes({start, right}))) return false;
        push({Task::kOperand, {right, piece.end}});
        push({Task::kBytes, {start, right}});
        push({Task::kOperand, {piece.begin, start}});
        return true;
    }

    /// Whether something in an operand could be taken for part of an operator beside it: the
    /// minus sign of 2*(-5) needs its parentheses.
    bool holdsOperatorBytes(TextRange piece) const {
        for (std::uint32_t at = piece.begin; at < piece.end; ++at) {
            const std::uint8_t found = scanByte(text_.bytes()[at]);
            if (isOperatorByte(found)) return true;
            if (found == kOpeningByte) at = text_.closing(at);
        }
        return false;
    }

    bool writeOperand(TextRange piece) {
        const Operand operand = classifyOperand(text_.bytes(piece), names_);
        if (operand.form != OperandForm::Call) {
            to_ += text_.bytes(piece);
            return true;
        }
        const std::uint32_t open = piece.begin + (operand.negated ? 1 : 0) + operand.open;
        const std::uint32_t close = text_.closing(open);
        if (close >= piece.end) return false;
        to_ += text_.bytes({piece.begin, open + 1});
        push({Task::kBytes, {close, piece.end}});
        pushParameters(open + 1, close);
        return true;
    }

    /// The first one is to be written first, so it goes on top.
    void pushParameters(std::uint32_t from, std::uint32_t close) {
        Scratch<TextRange> parameters;
        while (from <= close) {
            parameters.push() = {from, parameterEnd(text_, from, close)};
            from = parameters.back().end + 1;
        }
        for (std::size_t i = parameters.size(); i-- > 0;) {
            push({Task::kWhole, parameters[i]});
            if (i > 0) push({Task::kBytes, {parameters[i].begin - 1, parameters[i].begin}});
        }
    }

    const PairedText& text_;
    const NameTable& names_;
    SplitRecord& record_;
    std::string& to_;
    Scratch<Task> tasks_;
};

}  // namespace

bool writeGrouped(const PairedText& text, const NameTable& names, SplitRecord& record,
                  std::string& grouped) {
    return GroupWriter(text, names, record, grouped).write();
}

}  // namespace korvant::expr
