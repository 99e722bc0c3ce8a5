#include "expr/split_record.h"

namespace korvant::expr {

SplitRecord::Entry SplitRecord::next(std::uint32_t& start, std::uint32_t& right) noexcept {
    if (atEnd()) return Entry::Broken;
    const std::uint32_t kind = numbers_[next_++];
    if (kind == 0) return Entry::Operand;
    if (kind != 1 || numbers_.size() - next_ < 2) return Entry::Broken;
    start = numbers_[next_++];
    right = numbers_[next_++];
    return Entry::Split;
}

void SplitRecorder::addOperand(std::uint32_t parameters) {
    add(0, 0, parameters);
}

void SplitRecorder::addSplit(std::uint32_t start, std::uint32_t right) {
    add(start, right, 2);
}

void SplitRecorder::add(std::uint32_t start, std::uint32_t right, std::uint32_t parts) {
    std::uint32_t first = kNone;
    for (; parts > 0; --parts) {
        pieces_[complete_.back()].next = first;
        first = complete_.back();
        complete_.pop();
    }
    complete_.push() = static_cast<std::uint32_t>(pieces_.size());
    pieces_.push() = {start, right, first, kNone};
}

SplitRecord SplitRecorder::record() const {
    SplitRecord record;
    Scratch<std::uint32_t> toVisit;
    if (!complete_.empty()) toVisit.push() = complete_[complete_.size() - 1];
    while (!toVisit.empty()) {
        const Piece& piece = pieces_[toVisit.back()];
        toVisit.pop();
        if (piece.right == 0)
            record.addOperand();
        else
            record.addSplit(piece.start, piece.right);
        if (piece.next != kNone) toVisit.push() = piece.next;
        if (piece.firstPart != kNone) toVisit.push() = piece.firstPart;
    }
    return record;
}

}  // namespace korvant::expr
