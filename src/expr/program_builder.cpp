#include "expr/program_builder.h"

#include <limits>
#include <utility>

namespace korvant::expr {
namespace {

/// The comparison that holds for (right, left) where `code` holds for (left, right).
constexpr Binary mirrored(Binary code) noexcept {
    switch (code) {
        case Binary::GreaterEqual:
            return Binary::LessEqual;
        case Binary::LessEqual:
            return Binary::GreaterEqual;
        case Binary::Greater:
            return Binary::Less;
        case Binary::Less:
            return Binary::Greater;
        default:
            return code;
    }
}

std::uint32_t leftOf(const Step& step) {
    return static_cast<std::uint32_t>(step.a);
}
std::uint32_t rightOf(const Step& step) {
    return static_cast<std::uint32_t>(step.payload.at.first);
}
std::uint32_t otherwiseOf(const Step& step) {
    return static_cast<std::uint32_t>(step.payload.at.second);
}

bool isLogic(Binary code) {
    return code == Binary::Or || code == Binary::And;
}
bool isArithmetic(Binary code) {
    return code >= Binary::Add && code <= Binary::Divide;
}

}  // namespace

inline bool ProgramBuilder::isNumber(std::uint32_t step) const noexcept {
    return at(step).read.kind == StepKind::Number;
}

inline bool ProgramBuilder::isLeaf(std::uint32_t step) const noexcept {
    return at(step).read.kind <= StepKind::Name;
}

/// An operation of two leaves, one of them a cell.
[[gnu::always_inline]] inline bool ProgramBuilder::isPair(std::uint32_t step, Binary first,
                                                          Binary last) const noexcept {
    const Step& found = at(step);
    if (found.read.kind != StepKind::Binary || found.binary() < first || found.binary() > last)
        return false;
    const std::uint32_t left = leftOf(found), right = rightOf(found);
    return isLeaf(left) && isLeaf(right) && !(isNumber(left) && isNumber(right));
}

[[gnu::always_inline]] inline bool ProgramBuilder::isComparisonPair(
    std::uint32_t step) const noexcept {
    return isPair(step, Binary::NotEqual, Binary::Less);
}

/// Whether a step can be part of the operation that uses it.
[[gnu::always_inline]] inline bool ProgramBuilder::joins(Binary outer,
                                                         std::uint32_t pair) const noexcept {
    if (isLogic(outer)) return isComparisonPair(pair);
    return isArithmetic(outer) && isPair(pair, Binary::Add, Binary::Divide);
}

[[gnu::always_inline]] inline ProgramBuilder::Task& ProgramBuilder::push(Stage stage,
                                                                         const Next& next,
                                                                         std::uint32_t partner) {
    Task& task = tasks_.push();
    task.step = next.step;
    task.partner = partner;
    task.stage = stage;
    task.last = next.last;
    return task;
}

[[gnu::always_inline]] inline Step& ProgramBuilder::emit(int code) {
    if (program_.size() - lastPause_ >= kStepsBetweenPauses) {
        lastPause_ = program_.size();
        program_.push().fused.opcode = opcode::kPause * 2;
    }
    Step& step = program_.push();
    step.fused.opcode = static_cast<std::uint16_t>(code * 2);
    return step;
}

[[gnu::always_inline]] inline Step& ProgramBuilder::emitFresh(int code) {
    Step& step = emit(code);
    step.fused.operand = std::exchange(keepIn_, kUnwanted);
    return step;
}

void ProgramBuilder::emitLoad(std::uint32_t step) {
    const Step& leaf = at(step);
    if (isNumber(step))
        emitFresh(opcode::kLoadConstant).payload.number = leaf.payload.number;
    else
        emitFresh(opcode::kLoadCell).a = leaf.a;
}

/// Puts the two leaves of an operation into `emitted`; how they stand there.
[[gnu::always_inline]] inline Form ProgramBuilder::placeLeaves(const Step& step,
                                                               Step& emitted) const noexcept {
    const Step& left = at(leftOf(step));
    const Step& right = at(rightOf(step));
    if (left.read.kind == StepKind::Number) {
        emitted.a = right.a;
        emitted.payload.number = left.payload.number;
        return Form::ConstantCell;
    }
    emitted.a = left.a;
    if (right.read.kind == StepKind::Number) {
        emitted.payload.number = right.payload.number;
        return Form::CellConstant;
    }
    emitted.payload.at.first = right.a;
    return Form::CellCell;
}

void ProgramBuilder::emitLeaves(const Step& step) {
    if (isNumber(leftOf(step)) && isNumber(rightOf(step))) {
        emitLoad(leftOf(step));
        return emitWithLeaf(step, false);
    }
    Step& emitted = emitFresh(0);
    const Form form = placeLeaves(step, emitted);
    emitted.fused.opcode = static_cast<std::uint16_t>(opcode::binary(step.binary(), form) * 2);
}

/// An operation of the result so far and a leaf.
void ProgramBuilder::emitWithLeaf(const Step& step, bool leafIsLeft) {
    const std::uint32_t leaf = leafIsLeft ? leftOf(step) : rightOf(step);
    if (!isNumber(leaf)) return emitWithCell(step.binary(), at(leaf).a, leafIsLeft);
    const Form form = leafIsLeft ? Form::ConstantResult : Form::ResultConstant;
    emit(opcode::binary(step.binary(), form)).payload.number = at(leaf).payload.number;
}

void ProgramBuilder::emitWithCell(Binary code, std::int32_t cell, bool cellIsLeft) {
    emit(opcode::binary(code, cellIsLeft ? Form::CellResult : Form::ResultCell)).a = cell;
}

/// A step of one of the families that compare; a constant always stands on the right there.
void ProgramBuilder::emitPair(int family, std::uint32_t step) {
    Step& emitted = emit(family);
    Binary code = at(step).binary();
    Form form = placeLeaves(at(step), emitted);
    if (form == Form::ConstantCell) {
        code = mirrored(code);
        form = Form::CellConstant;
    }
    const int number = family + opcode::comparison(code, form);
    emitted.fused.opcode = static_cast<std::uint16_t>(number * 2);
}

bool ProgramBuilder::build(Steps& steps, std::uint32_t result) {
    steps_ = &steps;
    program_.clear();
    tasks_.clear();
    lastPause_ = 0;
    cellsInUse_ = 0;
    keepIn_ = kUnwanted;
    fits_ = true;
    Next next{result, true};
    do {
        while (descend(next)) {
        }
        if (next.last) program_.back().fused.opcode |= 1;
    } while (fits_ && ascend(next));
    return fits_;
}

[[gnu::always_inline]] inline bool ProgramBuilder::descendBinary(Next& next) {
    const Step& step = at(next.step);
    const std::uint32_t left = leftOf(step), right = rightOf(step);
    if (isLeaf(left) && isLeaf(right)) {
        emitLeaves(step);
        return false;
    }
    std::uint32_t first = left;
    if (isLeaf(left) || isLeaf(right)) {
        first = isLeaf(left) ? right : left;
        push(Stage::JoinLeaf, next);
    } else if (joins(step.binary(), right)) {
        push(Stage::JoinPair, next, right);
    } else if (joins(step.binary(), left)) {
        first = right;
        push(Stage::JoinPair, next, left);
    } else {
        // Chains grow to the right, those of "min" and "max" to the left; the end of a chain
        // is built first, so that a chain of any length needs one scratch cell.
        first = step.binary() >= Binary::Min ? left : right;
        push(Stage::FirstOfTwo, next, first == left ? right : left);
    }
    next = {first, false};
    return true;
}

/// Builds the step or pushes a task for it; true when `next` has to be built before it.
bool ProgramBuilder::descend(Next& next) {
    switch (at(next.step).read.kind) {
        case StepKind::Number:
        case StepKind::Name:
            emitLoad(next.step);
            return false;
        case StepKind::Binary:
            return descendBinary(next);
        case StepKind::Unary:
            return descendUnary(next);
        case StepKind::Select:
            return descendSelect(next);
        case StepKind::Keep:
            push(Stage::KeptValue, next);
            next = {leftOf(at(next.step)), false};
            return true;
    }
    return false;
}

bool ProgramBuilder::descendUnary(Next& next) {
    const Step& step = at(next.step);
    const std::uint32_t value = leftOf(step);
    if (isLeaf(value) && !isNumber(value)) {
        emitFresh(opcode::kUnaryCell + step.read.code).a = at(value).a;
        return false;
    }
    push(Stage::UnaryValue, next);
    next = {value, false};
    return true;
}

bool ProgramBuilder::descendSelect(Next& next) {
    const Step& step = at(next.step);
    if (!isComparisonPair(leftOf(step))) {
        push(Stage::SelectCondition, next);
        next = {leftOf(step), false};
        return true;
    }
    if (keepIn_ != kUnwanted) emit(opcode::kStore).a = std::exchange(keepIn_, kUnwanted);
    emitPair(opcode::kUnlessPair, leftOf(step));
    push(Stage::SelectYes, next, static_cast<std::uint32_t>(program_.size() - 1));
    next.step = rightOf(step);
    return true;
}

/// The step below the topmost task has been built: true when `next` is to be built now, false
/// when all is done.
bool ProgramBuilder::ascend(Next& next) {
    while (!tasks_.empty()) {
        Task& task = tasks_.back();
        if (finish(task, next)) return true;
        if (task.last) program_.back().fused.opcode |= 1;
        tasks_.pop();
    }
    return false;
}

/// True when the task is not complete before `next` is built.
bool ProgramBuilder::finish(Task& task, Next& next) {
    const Step& step = at(task.step);
    next.last = false;
    switch (task.stage) {
        case Stage::JoinLeaf:
            emitWithLeaf(step, isLeaf(leftOf(step)));
            return false;
        case Stage::JoinPair:
            emitJoined(step, task.partner);
            return false;
        case Stage::FirstOfTwo:
            keepResult(task);
            next.step = task.partner;
            task.stage = Stage::SecondOfTwo;
            return true;
        case Stage::SecondOfTwo:
            emitWithCell(step.binary(), task.cell, task.partner == rightOf(step));
            --cellsInUse_;
            return false;
        case Stage::UnaryValue:
            emit(opcode::kUnary + step.read.code);
            return false;
        case Stage::SelectCondition:
            task.partner = emitJump(opcode::kUnlessResult);
            task.stage = Stage::SelectYes;
            next = {rightOf(step), task.last};
            return true;
        case Stage::SelectYes: {
            const std::uint32_t condition = task.partner;
            if (!task.last) task.partner = emitJump(opcode::kJump);
            land(condition);
            task.stage = Stage::SelectNo;
            next = {otherwiseOf(step), task.last};
            return true;
        }
        case Stage::SelectNo:
            if (!task.last) land(task.partner);
            return false;
        case Stage::KeptValue: {
            // From here on the cell stands for the value as a name stands for its own.
            keepResult(task);
            Step& kept = (*steps_)[leftOf(step)];
            kept.read.kind = StepKind::Name;
            kept.a = task.cell;
            task.stage = Stage::KeepBody;
            next = {rightOf(step), task.last};
            return true;
        }
        case Stage::KeepBody:
            --cellsInUse_;
            return false;
    }
    return false;
}

/// An operation of the result so far and a pair.
void ProgramBuilder::emitJoined(const Step& outer, std::uint32_t pair) {
    if (isLogic(outer.binary()))
        return emitPair(outer.binary() == Binary::Or ? opcode::kOrPair : opcode::kAndPair, pair);
    const int side = pair == leftOf(outer) ? 4 : 0;
    const int operation = static_cast<int>(outer.binary()) - static_cast<int>(Binary::Add);
    Step& emitted = emit(0);
    const Form form = placeLeaves(at(pair), emitted);
    const int number = opcode::kArithmeticPair + (side + operation) * opcode::kPairs +
                       opcode::arithmetic(at(pair).binary(), form);
    emitted.fused.opcode = static_cast<std::uint16_t>(number * 2);
}

/// Has the result so far put into a scratch cell by the step that comes next.
void ProgramBuilder::keepResult(Task& task) {
    fits_ = fits_ && ++cellsInUse_ < -kUnwanted;
    task.cell = static_cast<std::int16_t>(-cellsInUse_);
    keepIn_ = task.cell;
}

std::uint32_t ProgramBuilder::emitJump(int code) {
    emit(code);
    return static_cast<std::uint32_t>(program_.size() - 1);
}

/// Lets the jump at that place of the program go to its end.
void ProgramBuilder::land(std::uint32_t jump) {
    const std::size_t distance = program_.size() - jump;
    Step& step = program_[jump];
    if (step.fused.opcode / 2 >= opcode::kUnlessResult) {
        step.a = static_cast<std::int32_t>(distance);
        return;
    }
    fits_ = fits_ && distance <= std::numeric_limits<std::int16_t>::max();
    step.fused.operand = static_cast<std::int16_t>(distance);
}

void ProgramBuilder::releaseLargeBuffers() {
    program_.releaseIfLarge();
    tasks_.releaseIfLarge();
}

}  // namespace korvant::expr
