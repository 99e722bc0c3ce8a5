#include "expr/expression_reader.h"

#include <array>
#include <vector>

#include "expr/functions.h"

namespace korvant::expr {
namespace {

/// Texts of more bytes get all room at once, so that nothing is moved.
constexpr std::size_t kRoomAtOnce = std::size_t{64} << 10;

constexpr Binary meaningOf(Operator op) noexcept {
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

constexpr auto kMeaningOfRow = [] {
    std::array<Binary, kOperatorRows.size()> meanings{};
    for (std::size_t row = 0; row < meanings.size(); ++row)
        meanings[row] = meaningOf(kOperatorRows[row].canonical);
    return meanings;
}();

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

}  // namespace

bool ExpressionReader::read(std::string_view text, const Bounds& bounds, SplitRecorder* recorder) {
    recorder_ = recorder;
    return prepare(text, bounds) && readPieces();
}

/// Cleans the text and makes the checks that concern all of it.
bool ExpressionReader::prepare(std::string_view text, const Bounds& bounds) {
    steps_.clear();
    scan_.begin();
    waiting_.clear();
    results_.clear();
    frames_.clear();
    contexts_.clear();
    context_ = kNoContext;
    failure_ = {};
    if (text.empty()) return fail(FailureKind::EmptyText, {});
    if (text.size() > bounds.textBytes) return fail(FailureKind::TextTooLong, {});
    text_.assignCleaned(text);
    if (text.size() > kRoomAtOnce) makeRoom(text.size());
    // Pieces of a balanced text that splits leave over are balanced, so this is asked once.
    if (!text_.balanced()) return fail(FailureKind::Unbalanced, text_.all());
    if (text_.depth() > bounds.depth) return fail(FailureKind::TooDeep, {});
    return true;
}

/// For the most that texts of this size need; others may still need more.
void ExpressionReader::makeRoom(std::size_t textSize) {
    steps_.steps().reserve(textSize);
    waiting_.reserve(textSize / 2);
    results_.reserve(textSize / 2);
    contexts_.reserve(textSize / 2);
}

bool ExpressionReader::fail(FailureKind kind, TextRange place, std::uint32_t count) {
    failure_ = {kind, place, count, context_};
    return false;
}

/// An operand is complete; so are the operators before it that bind tighter than the one that
/// follows. Those of its own level wait: everything groups from the right.
[[gnu::always_inline]] inline void ExpressionReader::reduce(const SplitPlace& place) {
    while (waiting_.size() > firstOperator_ && waiting_.back().level > place.level) {
        const Waiting done = waiting_.back();
        waiting_.pop();
        const std::uint32_t right = results_.back();
        results_.pop();
        const OperatorRow& row = kOperatorRows[done.level - 1];
        results_.back() =
            steps_.addBinary(kMeaningOfRow[done.level - 1], results_.back(), right, context_);
        if (recorder_) [[unlikely]]
            recorder_->addSplit(done.start,
                                done.start + static_cast<std::uint32_t>(row.spelling.size()));
    }
}

inline void ExpressionReader::addResult(std::uint32_t step, std::uint32_t parameters) {
    results_.push() = step;
    if (recorder_) [[unlikely]]
        recorder_->addOperand(parameters);
}

/// Reads the operand from from_ to the place `after` it, or enters its inside.
[[gnu::always_inline]] inline bool ExpressionReader::readOperand(const SplitPlace& after,
                                                                 bool& entered) {
    const TextRange piece = {from_, after.start};
    if (text_.isEnclosed(piece)) {
        entered = true;
        enter({piece.begin + 1, piece.end - 1, false}, after).isCall = false;
        return true;
    }
    const Operand operand = classifyReadableOperand(text_.bytes(piece), names_);
    if (operand.form == OperandForm::Name) {
        const std::uint32_t name = steps_.addName(operand.slot);
        addResult(operand.negated ? steps_.addNot(name) : name);
        return true;
    }
    if (operand.form == OperandForm::Number) {
        const double value = numberValue(operand.text);
        addResult(steps_.addNumber(operand.negated ? value == 0 : value));
        return true;
    }
    const TextRange rest = {piece.begin + (operand.negated ? 1 : 0), piece.end};
    entered = operand.form == OperandForm::Call;
    if (entered) return enterCall(rest, operand, after);
    if (operand.text.empty()) return fail(FailureKind::EmptyOperand, rest);
    return fail(
        holdsOnlyNameBytes(operand.text) ? FailureKind::UnknownName : FailureKind::BadOperand,
        rest);
}

bool ExpressionReader::readPieces() {
    region_ = {0, text_.all().end, false};
    from_ = 0;
    firstOperator_ = 0;
    for (;;) {
        SplitPlace place = scan_.next(text_, region_, from_);
        bool entered = false;
        if (!readOperand(place, entered)) return false;
        if (entered) continue;
        reduce(place);
        while (place.level == SplitPlace::kEnd) {
            if (frames_.empty()) return true;
            Frame& frame = frames_.back();
            entered = frame.isCall && place.start != region_.end;
            if (entered) {
                enterParameter(frame, place.start + 1, region_.end);
                break;
            }
            if (frame.isCall && !finishCall(frame)) return false;
            region_ = frame.region;
            firstOperator_ = frame.firstOperator;
            place = frame.after;
            frames_.pop();
            reduce(place);
        }
        if (entered) continue;
        Waiting& waiting = waiting_.push();
        waiting.level = place.level;
        waiting.start = place.start;
        from_ = place.right;
    }
}

ExpressionReader::Frame& ExpressionReader::enter(const Region& region, const SplitPlace& after) {
    Frame& frame = frames_.push();
    frame.region = region_;
    frame.after = after;
    frame.firstOperator = firstOperator_;
    region_ = region;
    from_ = region.begin;
    firstOperator_ = static_cast<std::uint32_t>(waiting_.size());
    return frame;
}

/// Deliberate: what stands between the ")" that closes the first "(" and the operand's end is
/// never looked at, so sin(0)x reads as sin(0).
bool ExpressionReader::enterCall(TextRange piece, const Operand& operand, const SplitPlace& after) {
    const std::uint32_t open = piece.begin + operand.open;
    const std::uint32_t close = text_.closing(open);
    const TextRange function = {piece.begin, open};
    if (close == open + 1) return fail(FailureKind::NoParameters, function);
    Frame& call = enter({open + 1, close, true}, after);
    call.isCall = true;
    call.negated = operand.negated;
    call.function = function;
    call.count = 0;
    call.context = context_;
    enterParameter(call, open + 1, close);
    return true;
}

void ExpressionReader::enterParameter(Frame& call, std::uint32_t begin, std::uint32_t close) {
    region_ = {begin, close, true};
    from_ = begin;
    ++call.count;
    context_ = static_cast<std::uint32_t>(contexts_.size());
    ParameterContext& context = contexts_.push();
    context.outer = call.context;
    context.function = call.function;
    context.parameter = {begin, close};
}

/// All parameters of a call have been read.
bool ExpressionReader::finishCall(const Frame& call) {
    context_ = call.context;
    const std::size_t before = results_.size() - call.count;
    const CallReading reading = addCall(steps_, text_.bytes(call.function), call.negated,
                                        {results_.data() + before, call.count});
    if (reading.fault != CallFault::None)
        return fail(kindOf(reading.fault), call.function, call.count);
    results_.shrinkTo(before);
    addResult(reading.step, call.count);
    return true;
}

Failure ExpressionReader::divisionByZero(std::size_t step) const {
    const std::int32_t context = steps_.steps()[step].payload.at.second;
    return {FailureKind::DivisionByZero, {}, 0, static_cast<std::uint32_t>(context)};
}

/// Where a parameter ends was not looked for while it was read.
std::string ExpressionReader::message(const Failure& failure) const {
    std::vector<ParameterContext> contexts;
    for (std::uint32_t at = failure.context; at != kNoContext; at = contexts_[at].outer) {
        ParameterContext context = contexts_[at];
        context.parameter.end = parameterEnd(text_, context.parameter.begin, context.parameter.end);
        contexts.push_back(context);
    }
    return wordFailure(failure, text_.bytes(), contexts);
}

void ExpressionReader::releaseLargeBuffers() {
    text_.releaseLargeBuffers();
    scan_.releaseLargeBuffers();
    steps_.steps().releaseIfLarge();
    waiting_.releaseIfLarge();
    results_.releaseIfLarge();
    frames_.releaseIfLarge();
    contexts_.releaseIfLarge();
}

}  // namespace korvant::expr
