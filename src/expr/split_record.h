// The splits of one reading, in the order in which the pieces are visited.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

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
    bool empty() const noexcept { return numbers_.empty(); }

    /// Takes the next entry; the positions are set for a split only. Broken at the end and for
    /// what is no entry.
    Entry next(std::uint32_t& start, std::uint32_t& right) noexcept {
        if (atEnd()) return Entry::Broken;
        const std::uint32_t kind = numbers_[next_++];
        if (kind == 0) return Entry::Operand;
        if (kind != 1 || numbers_.size() - next_ < 2) return Entry::Broken;
        start = numbers_[next_++];
        right = numbers_[next_++];
        return Entry::Split;
    }

    const std::vector<std::uint32_t>& numbers() const noexcept { return numbers_; }

  private:
    std::vector<std::uint32_t> numbers_;
    std::size_t next_ = 0;
};

}  // namespace korvant::expr
