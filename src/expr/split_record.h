// The splits of one reading, in the order in which the pieces are visited.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "expr/scratch.h"

namespace korvant::expr {

/// A first-in, first-out list with one entry group per piece, a piece before its left operand
/// and that before its right one: 0 for an operand, or 1 and the two positions in the cleaned
/// text where the operator starts and where the right operand begins. A text that was read
/// once is split again from it without searching. Whoever takes an entry out must check it
/// against the text: the record may be another text's.
class SplitRecord {
  public:
    enum class Entry : std::uint8_t { Operand, Split, Broken };

    void clear() noexcept {
        numbers_.clear();
        next_ = 0;
    }
    void addOperand() { numbers_.push_back(0); }
    void addSplit(std::uint32_t start, std::uint32_t right) {
        numbers_.insert(numbers_.end(), {1, start, right});
    }

    /// Begins again at the front.
    void rewind() noexcept { next_ = 0; }
    bool atEnd() const noexcept { return next_ == numbers_.size(); }

    /// Takes the next entry; the positions are set for a split only. Broken at the end and for
    /// what is no entry.
    Entry next(std::uint32_t& start, std::uint32_t& right) noexcept;

    const std::vector<std::uint32_t>& numbers() const noexcept { return numbers_; }

  private:
    std::vector<std::uint32_t> numbers_;
    std::size_t next_ = 0;
};

/// Makes a record of a reading that tells of each piece when it is complete.
class SplitRecorder {
  public:
    /// An operand; the last `parameters` pieces are those of its call.
    void addOperand(std::uint32_t parameters);
    /// The last two pieces are the operands of an operator.
    void addSplit(std::uint32_t start, std::uint32_t right);
    /// The record of the whole, which is the last piece.
    SplitRecord record() const;

  private:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    struct Piece {
        std::uint32_t start, right;  ///< both 0 for an operand
        std::uint32_t firstPart, next;
    };

    void add(std::uint32_t start, std::uint32_t right, std::uint32_t parts);

    Scratch<Piece> pieces_;
    Scratch<std::uint32_t> complete_;  ///< pieces that are not part of another one yet
};

}  // namespace korvant::expr
