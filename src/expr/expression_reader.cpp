#include "expr/expression_reader.h"

#include "expr/functions.h"

namespace korvant::expr {
namespace {

constexpr std::size_t kLargeCount = 4096;
constexpr std::uint32_t kUnscanned = OperatorScan::kNone - 1;

Binary meaningOf(Operator op) noexcept {
    switch (op) {
        case Operator::Or:
            return Binary::Or;
        case Operator::And:
            return Binary::And;
        case Operator::NotEqual:
            return Binary::NotEqual;
        case Operator::GreaterEqual:
            return Binary::GreaterEqual;
        case Operator::LessEqual:
            return Binary::LessEqual;
        case Operator::EqualEqual:
        case Operator::Equal:
            return Binary::Equal;
        case Operator::Greater:
            return Binary::Greater;
        case Operator::Less:
            return Binary::Less;
        case Operator::Remainder:
            return Binary::Remainder;
        case Operator::Add:
            return Binary::Add;
        case Operator::Subtract:
            return Binary::Subtract;
        case Operator::Multiply:
            return Binary::Multiply;
        case Operator::Divide:
            return Binary::Divide;
        case Operator::Power:
            return Binary::Power;
    }
    return Binary::Or;
}

FailureKind kindOf(CallFault fault) noexcept {
    switch (fault) {
        case CallFault::None:
            return FailureKind::None;
        case CallFault::OddParameters:
            return FailureKind::OddParameters;
        case CallFault::EvenParameters:
            return FailureKind::EvenParameters;
        case CallFault::UnknownFunction:
            return FailureKind::UnknownFunction;
    }
    return FailureKind::None;
}

template <class Vector>
void releaseIfLarge(Vector& vector) {
    if (vector.capacity() > kLargeCount) vector = {};
}

}  // namespace

bool ExpressionReader::read(std::string_view text, const Bounds& bounds, SplitRecord* record) {
    if (record) record->clear();
    record_ = names_.hasCallLikeNames() ? nullptr : record;
    replaying_ = false;
    return prepare(text, bounds) && readPieces();
}

ExpressionReader::Replay ExpressionReader::replay(std::string_view text, const Bounds& bounds,
                                                  SplitRecord& record) {
    if (record.empty() || names_.hasCallLikeNames()) return Replay::Mismatch;
    record.rewind();
    record_ = &record;
    replaying_ = true;
    mismatch_ = false;
    const bool done = prepare(text, bounds) && readPieces();
    if (mismatch_ || (done && !record.atEnd())) return Replay::Mismatch;
    return done ? Replay::Read : Replay::Failed;
}

/// Cleans the text and makes the checks that concern all of it.
bool ExpressionReader::prepare(std::string_view text, const Bounds& bounds) {
    steps_.clear();
    scan_.clear();
    tasks_.clear();
    results_.clear();
    calls_.clear();
    contexts_.clear();
    context_ = kNoContext;
    failure_ = {};
    if (text.empty()) return fail(FailureKind::EmptyText, {});
    if (text.size() > bounds.textBytes) return fail(FailureKind::TextTooLong, {});
    text_.assignCleaned(text);
    // Pieces of a balanced text that splits leave over are balanced, so this is asked once.
    if (!text_.balanced()) return fail(FailureKind::Unbalanced, text_.all());
    if (text_.depth() > bounds.depth) return fail(FailureKind::TooDeep, {});
    return true;
}

bool ExpressionReader::fail(FailureKind kind, TextRange place, std::uint32_t count) {
    failure_ = {kind, place, count, context_};
    return false;
}

bool ExpressionReader::readPieces() {
    pushPiece(text_.all(), kUnscanned);
    bool done = true;
    while (done && !tasks_.empty()) {
        const Task task = tasks_.back();
        tasks_.pop_back();
        switch (task.action) {
            case Action::ReadPiece:
                done = readPiece(task);
                break;
            case Action::ApplyOperator:
                applyOperator(task.row);
                break;
            case Action::NextParameter:
                done = nextParameter();
                break;
        }
    }
    return done;
}

void ExpressionReader::pushPiece(TextRange piece, std::uint32_t split) {
    tasks_.push_back({Action::ReadPiece, 0, split, piece});
}

bool ExpressionReader::readPiece(Task task) {
    while (text_.isEnclosed(task.piece)) {
        task.piece = {task.piece.begin + 1, task.piece.end - 1};
        task.split = kUnscanned;
    }
    Cut cut;
    if (!nextCut(task, cut)) return false;
    if (!cut.found) return readOperand(task.piece);
    tasks_.push_back({Action::ApplyOperator, cut.split.row, 0, {}});
    pushPiece({cut.split.right, task.piece.end}, cut.split.rightSplit);
    pushPiece({task.piece.begin, cut.split.start}, cut.split.leftSplit);
    return true;
}

/// How a piece splits: as the record says, or else as the scan finds, which is recorded.
bool ExpressionReader::nextCut(const Task& task, Cut& cut) {
    if (replaying_) return replayedCut(task.piece, cut);
    const std::uint32_t split =
        task.split == kUnscanned ? scan_.scan(text_, task.piece) : task.split;
    cut.found = split != OperatorScan::kNone;
    if (cut.found) cut.split = scan_[split];
    if (!record_) return true;
    if (cut.found)
        record_->addSplit(cut.split.start, cut.split.right);
    else
        record_->addOperand();
    return true;
}

bool ExpressionReader::replayedCut(TextRange piece, Cut& cut) {
    OperatorScan::Split& split = cut.split;
    const SplitRecord::Entry entry = record_->next(split.start, split.right);
    cut.found = entry == SplitRecord::Entry::Split;
    if (entry == SplitRecord::Entry::Operand) return true;
    const bool inside = cut.found && piece.begin < split.start && split.start < split.right &&
                        split.right < piece.end;
    if (inside) split.row = rowOf(text_.bytes({split.start, split.right}));
    mismatch_ = !inside || split.row == kNoRow;
    return !mismatch_;
}

void ExpressionReader::applyOperator(std::uint8_t row) {
    const std::uint32_t right = results_.back();
    results_.pop_back();
    results_.back() =
        steps_.addBinary(meaningOf(kOperatorRows[row].canonical), results_.back(), right, context_);
}

bool ExpressionReader::readOperand(TextRange piece) {
    const Operand operand = classifyOperand(text_.bytes(piece), names_);
    const TextRange rest = {piece.begin + (operand.negated ? 1 : 0), piece.end};
    switch (operand.form) {
        case OperandForm::Number:
            readNumber(operand);
            return true;
        case OperandForm::Name:
            readName(operand);
            return true;
        case OperandForm::Call:
            return openCall(rest, operand);
        case OperandForm::Neither:
            break;
    }
    if (operand.text.empty()) return fail(FailureKind::EmptyOperand, rest);
    return fail(
        holdsOnlyNameBytes(operand.text) ? FailureKind::UnknownName : FailureKind::BadOperand,
        rest);
}

void ExpressionReader::readNumber(const Operand& operand) {
    const double value = numberValue(operand.text);
    results_.push_back(steps_.addNumber(operand.negated ? value == 0 : value));
}

void ExpressionReader::readName(const Operand& operand) {
    const std::uint32_t name = steps_.addName(operand.slot);
    results_.push_back(operand.negated ? steps_.addNot(name) : name);
}

/// Deliberate: what stands between the ")" that closes the first "(" and the operand's end is
/// never looked at, so sin(0)x reads as sin(0).
bool ExpressionReader::openCall(TextRange piece, const Operand& operand) {
    const std::uint32_t open = piece.begin + operand.open;
    const std::uint32_t close = text_.closing(open);
    const TextRange function = {piece.begin, open};
    if (close >= piece.end) {
        mismatch_ = true;  // only where a record cut through parentheses
        return false;
    }
    if (close == open + 1) return fail(FailureKind::NoParameters, function);
    calls_.push_back({function, open + 1, close, 0, context_, operand.negated});
    tasks_.push_back({Action::NextParameter, 0, 0, {}});
    return true;
}

bool ExpressionReader::nextParameter() {
    Call& call = calls_.back();
    if (call.next > call.close) return finishCall();
    const TextRange parameter = {call.next, parameterEnd(text_, call.next, call.close)};
    call.next = parameter.end + 1;
    ++call.count;
    context_ = static_cast<std::uint32_t>(contexts_.size());
    contexts_.push_back({call.context, call.function, parameter});
    tasks_.push_back({Action::NextParameter, 0, 0, {}});
    pushPiece(parameter, kUnscanned);
    return true;
}

bool ExpressionReader::finishCall() {
    const Call call = calls_.back();
    calls_.pop_back();
    context_ = call.context;
    const std::size_t before = results_.size() - call.count;
    const CallReading reading = addCall(steps_, text_.bytes(call.function), call.negated,
                                        {results_.data() + before, call.count});
    if (reading.fault != CallFault::None)
        return fail(kindOf(reading.fault), call.function, call.count);
    results_.resize(before);
    results_.push_back(reading.step);
    return true;
}

Failure ExpressionReader::divisionByZero(std::size_t step) const {
    const std::int32_t context = steps_.steps()[step].payload.at.second;
    return {FailureKind::DivisionByZero, {}, 0, static_cast<std::uint32_t>(context)};
}

std::string ExpressionReader::message(const Failure& failure) const {
    return wordFailure(failure, text_.bytes(), contexts_);
}

void ExpressionReader::releaseLargeBuffers() {
    text_.releaseLargeBuffers();
    scan_.releaseLargeBuffers();
    releaseIfLarge(steps_.steps());
    releaseIfLarge(tasks_);
    releaseIfLarge(results_);
    releaseIfLarge(calls_);
    releaseIfLarge(contexts_);
}

}  // namespace korvant::expr
