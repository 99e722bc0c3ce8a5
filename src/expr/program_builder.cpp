#include "expr/program_builder.h"

#include <limits>

#include "expr/name_table.h"

namespace korvant::expr {
namespace {

constexpr std::size_t kLargeCount = 4096;

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

bool isLogic(Binary code) {
    return code == Binary::Or || code == Binary::And;
}

// The stages of the tasks, named by what has been done when they begin.
enum : std::uint8_t {
    kNothing,
    kOnlyLeft,
    kOnlyRight,
    kFirstOfTwo,
    kSecondOfTwo,
    kLogicSide,
    kCondition,
    kYes,
    kNo,
    kValue,
    kKept,
};

}  // namespace

bool ProgramBuilder::build(Steps& steps, std::uint32_t result) {
    steps_ = &steps;
    program_.clear();
    tasks_.clear();
    lastPause_ = 0;
    cellsInUse_ = 0;
    fits_ = true;
    begin(result, true);
    while (fits_ && !tasks_.empty()) advance();
    return fits_;
}

void ProgramBuilder::advance() {
    Task& task = tasks_.back();
    switch (at(task.step).read.kind) {
        case StepKind::Number:
        case StepKind::Name:
            emitLoad(task.step);
            finish();
            break;
        case StepKind::Binary:
            advanceBinary(task);
            break;
        case StepKind::Unary:
            advanceUnary(task);
            break;
        case StepKind::Select:
            advanceSelect(task);
            break;
        case StepKind::Keep:
            advanceKeep(task);
            break;
    }
}

void ProgramBuilder::begin(std::uint32_t step, bool last) {
    tasks_.push_back({step, kNothing, last, 0, 0, 0});
}

/// The result of the topmost task has been computed.
void ProgramBuilder::finish() {
    if (tasks_.back().last) program_.back().fused.opcode |= 1;
    tasks_.pop_back();
}

bool ProgramBuilder::isNumber(std::uint32_t step) const noexcept {
    return at(step).read.kind == StepKind::Number;
}

bool ProgramBuilder::isLeaf(std::uint32_t step) const noexcept {
    return at(step).read.kind <= StepKind::Name;
}

bool ProgramBuilder::isPair(std::uint32_t step) const noexcept {
    const Step& found = at(step);
    return found.read.kind == StepKind::Binary && isComparison(found.binary()) &&
           isLeaf(leftOf(found)) && isLeaf(rightOf(found)) &&
           !(isNumber(leftOf(found)) && isNumber(rightOf(found)));
}

ProgramBuilder::Pair ProgramBuilder::pairOf(std::uint32_t step) const noexcept {
    const Step& found = at(step);
    const Step& left = at(leftOf(found));
    const Step& right = at(rightOf(found));
    Pair pair{found.binary(), PairForm::CellConstant, found};
    if (isNumber(leftOf(found))) {
        pair.comparison = mirrored(pair.comparison);
        pair.step.a = right.a;
        pair.step.payload = left.payload;
    } else {
        pair.step.a = left.a;
        pair.step.payload = right.payload;
        if (isNumber(rightOf(found))) return pair;
        pair.form = PairForm::CellCell;
        pair.step.payload.at = {right.a, 0};
    }
    return pair;
}

Step& ProgramBuilder::emit(std::uint16_t code) {
    if (program_.size() - lastPause_ >= kStepsBetweenPauses) {
        lastPause_ = program_.size();
        program_.push_back({});
        program_.back().fused = {static_cast<std::uint16_t>(opcode::kPause * 2), 0};
    }
    program_.push_back({});
    program_.back().fused = {static_cast<std::uint16_t>(code * 2), 0};
    return program_.back();
}

void ProgramBuilder::emitLoad(std::uint32_t step) {
    Step& load = emit(isNumber(step) ? opcode::kLoadConstant : opcode::kLoadCell);
    load.a = at(step).a;
    load.payload = at(step).payload;
}

void ProgramBuilder::emitStore(std::int32_t cell) {
    emit(opcode::kStore).a = cell;
}

void ProgramBuilder::emitPair(std::uint16_t family, std::uint32_t step) {
    const Pair pair = pairOf(step);
    Step& emitted = emit(opcode::pair(family, pair.comparison, pair.form));
    emitted.a = pair.step.a;
    emitted.payload = pair.step.payload;
}

/// An operation of two leaves.
void ProgramBuilder::emitLeaves(const Step& step) {
    const std::uint32_t left = leftOf(step), right = rightOf(step);
    if (isNumber(left) && isNumber(right)) {
        emitLoad(left);
        emitWithLeaf(step, false);
        return;
    }
    const Form form = isNumber(left)    ? Form::ConstantCell
                      : isNumber(right) ? Form::CellConstant
                                        : Form::CellCell;
    Step& emitted = emit(opcode::binary(step.binary(), form));
    emitted.a = form == Form::ConstantCell ? at(right).a : at(left).a;
    if (form == Form::CellCell)
        emitted.payload.at = {at(right).a, 0};
    else
        emitted.payload = at(isNumber(left) ? left : right).payload;
}

/// An operation of the result so far and a leaf.
void ProgramBuilder::emitWithLeaf(const Step& step, bool leafIsLeft) {
    const std::uint32_t leaf = leafIsLeft ? leftOf(step) : rightOf(step);
    if (!isNumber(leaf)) return emitWithCell(step.binary(), at(leaf).a, leafIsLeft);
    const Form form = leafIsLeft ? Form::ConstantResult : Form::ResultConstant;
    emit(opcode::binary(step.binary(), form)).payload = at(leaf).payload;
}

void ProgramBuilder::emitWithCell(Binary code, std::int32_t cell, bool cellIsLeft) {
    emit(opcode::binary(code, cellIsLeft ? Form::CellResult : Form::ResultCell)).a = cell;
}

std::int32_t ProgramBuilder::takeCell() {
    fits_ = fits_ && cellsInUse_ < NameTable::kScratchCells;
    return -++cellsInUse_;
}

/// Lets the jump at that place of the program go to its end.
void ProgramBuilder::land(std::size_t jump) {
    const std::size_t distance = program_.size() - jump;
    Step& step = program_[jump];
    if (step.fused.opcode / 2 >= opcode::kUnlessResult) {
        step.a = static_cast<std::int32_t>(distance);
        return;
    }
    fits_ = fits_ && distance <= std::numeric_limits<std::uint16_t>::max();
    step.fused.skip = static_cast<std::uint16_t>(distance);
}

void ProgramBuilder::advanceBinary(Task& task) {
    const Step& step = at(task.step);
    const std::uint32_t left = leftOf(step), right = rightOf(step);
    switch (task.stage) {
        case kNothing:
            if (isLeaf(left) && isLeaf(right)) break;
            if (isLogic(step.binary()) && joinsLogic(task)) return;
            if (isLeaf(left) || isLeaf(right)) {
                task.stage = isLeaf(left) ? kOnlyRight : kOnlyLeft;
                return begin(isLeaf(left) ? right : left, false);
            }
            task.stage = kFirstOfTwo;
            task.partner = at(left).read.need >= at(right).read.need ? right : left;
            return begin(task.partner == right ? left : right, false);
        case kFirstOfTwo:
            task.cell = takeCell();
            emitStore(task.cell);
            task.stage = kSecondOfTwo;
            return begin(task.partner, false);
        case kSecondOfTwo:
            emitWithCell(step.binary(), task.cell, task.partner == right);
            --cellsInUse_;
            return finish();
        case kLogicSide:
            emitPair(step.binary() == Binary::Or ? opcode::kOrPair : opcode::kAndPair,
                     task.partner);
            return finish();
        default:
            emitWithLeaf(step, task.stage == kOnlyRight);
            return finish();
    }
    emitLeaves(step);
    finish();
}

/// "||" and "&&" with a comparison on one side: the other side first, the comparison joined.
bool ProgramBuilder::joinsLogic(Task& task) {
    const Step& step = at(task.step);
    const bool right = isPair(rightOf(step));
    if (!right && !isPair(leftOf(step))) return false;
    task.stage = kLogicSide;
    task.partner = right ? rightOf(step) : leftOf(step);
    begin(right ? leftOf(step) : rightOf(step), false);
    return true;
}

void ProgramBuilder::advanceUnary(Task& task) {
    const Step& step = at(task.step);
    const std::uint32_t value = leftOf(step);
    if (task.stage == kNothing && (!isLeaf(value) || isNumber(value))) {
        task.stage = kValue;
        return begin(value, false);
    }
    const std::uint16_t family = task.stage == kValue ? opcode::kUnary : opcode::kUnaryCell;
    emit(static_cast<std::uint16_t>(family + step.read.code)).a = at(value).a;
    finish();
}

void ProgramBuilder::advanceSelect(Task& task) {
    const Step& step = at(task.step);
    switch (task.stage) {
        case kNothing:
            return beginSelect(task);
        case kCondition:
            emit(opcode::kUnlessResult);
            task.jump = program_.size() - 1;
            task.stage = kYes;
            return begin(rightOf(step), task.last);
        case kYes: {
            const std::size_t condition = task.jump;
            if (!task.last) {
                emit(opcode::kJump);
                task.jump = program_.size() - 1;
            }
            land(condition);
            task.stage = kNo;
            return begin(static_cast<std::uint32_t>(step.payload.at.second), task.last);
        }
        default:
            if (!task.last) land(task.jump);
            return finish();
    }
}

void ProgramBuilder::beginSelect(Task& task) {
    const Step& step = at(task.step);
    if (!isPair(leftOf(step))) {
        task.stage = kCondition;
        return begin(leftOf(step), false);
    }
    emitPair(opcode::kUnlessPair, leftOf(step));
    task.jump = program_.size() - 1;
    task.stage = kYes;
    begin(rightOf(step), task.last);
}

/// A value that several steps use: it is put into a cell, which then stands for it as a name
/// stands for its value.
void ProgramBuilder::advanceKeep(Task& task) {
    const Step& step = at(task.step);
    const std::uint32_t kept = leftOf(step), body = rightOf(step);
    switch (task.stage) {
        case kNothing:
            task.stage = kValue;
            return begin(kept, false);
        case kValue: {
            task.cell = takeCell();
            emitStore(task.cell);
            Step& value = (*steps_)[kept];
            value.read.kind = StepKind::Name;
            value.a = task.cell;
            task.stage = kKept;
            return begin(body, task.last);
        }
        default:
            --cellsInUse_;
            return finish();
    }
}

void ProgramBuilder::releaseLargeBuffers() {
    if (program_.capacity() > kLargeCount) program_ = {};
    if (tasks_.capacity() > kLargeCount) tasks_ = {};
}

}  // namespace korvant::expr
