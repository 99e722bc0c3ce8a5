// A set of small numbers that is walked in ascending order.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace korvant {

/// Numbers from 0 below a fixed size. Besides the bits there is a bit for each word of them, so
/// that finding the next of few marks among thousands reads a handful of words.
class MarkSet {
  public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    MarkSet() = default;
    explicit MarkSet(std::uint32_t size)
        : words_((size + 63) / 64), summary_((words_.size() + 63) / 64) {}

    void mark(std::uint32_t number) noexcept {
        const std::uint32_t word = number / 64;
        words_[word] |= bit(number);
        summary_[word / 64] |= bit(word);
    }

    void unmark(std::uint32_t number) noexcept {
        const std::uint32_t word = number / 64;
        words_[word] &= ~bit(number);
        if (words_[word] == 0) summary_[word / 64] &= ~bit(word);
    }

    /// The lowest marked number that is not below `from`, or kNone.
    std::uint32_t next(std::uint32_t from) const noexcept {
        std::uint32_t word = from / 64;
        if (word >= words_.size()) return kNone;
        const std::uint64_t rest = words_[word] & (~std::uint64_t{0} << (from % 64));
        if (rest != 0) return word * 64 + lowest(rest);
        word = nextWord(word + 1);
        return word == kNone ? kNone : word * 64 + lowest(words_[word]);
    }

  private:
    static std::uint64_t bit(std::uint32_t number) { return std::uint64_t{1} << (number % 64); }
    static std::uint32_t lowest(std::uint64_t bits) {
        return static_cast<std::uint32_t>(std::countr_zero(bits));
    }

    std::uint32_t nextWord(std::uint32_t from) const noexcept {
        std::uint32_t group = from / 64;
        if (group >= summary_.size()) return kNone;
        std::uint64_t rest = summary_[group] & (~std::uint64_t{0} << (from % 64));
        while (rest == 0 && ++group < summary_.size()) rest = summary_[group];
        return rest == 0 ? kNone : group * 64 + lowest(rest);
    }

    std::vector<std::uint64_t> words_;
    std::vector<std::uint64_t> summary_;
};

}  // namespace korvant
