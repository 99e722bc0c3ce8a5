// From names to numbers, over names that are kept elsewhere.
#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "expr/text_hash.h"

namespace korvant {

/// An open-addressed table of 4-byte cells, at most half full, so that it stays in the processor's
/// cache for as long as it can: a number, and eight bits of the name's hash. The names themselves
/// stay with the owner, who tells by number which name is meant. Copies copy the cells.
class NameIndex {
  public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    /// Numbers are below this, and there are at most half as many names.
    static constexpr std::uint32_t kMost = (std::uint32_t{1} << 24) - 1;

    /// The number that was inserted for `name`, or kNone. `nameOf(number)` gives the name.
    template <class NameOf>
    std::uint32_t find(std::string_view name, NameOf nameOf) const {
        if (name.size() > kShort) return findLong(name, nameOf);
        const expr::TextEnds ends(name.data(), name.size());
        return findWhere(hashOf(ends, name.size()), [&](std::uint32_t number) {
            const std::string_view other = nameOf(number);
            if (other.size() != name.size()) return false;
            const expr::TextEnds others(other.data(), other.size());
            return ((others.first ^ ends.first) | (others.last ^ ends.last)) == 0;
        });
    }

    /// Makes room for `count` names in all; after that so many inserts throw nothing. Throws
    /// std::length_error for too many.
    void reserve(std::size_t count) {
        if (count * 2 < cells_.size()) return;
        if (count > kMost / 2) throw std::length_error("names");
        std::size_t size = 8;
        while (size <= count * 2) size *= 2;
        keys_.reserve(size / 2);
        std::vector<std::uint32_t>(size, kNone).swap(cells_);
        mask_ = size - 1;
        for (const Key& key : keys_) place(key);
    }

    /// `name` must not be in the table, and `number` be below kMost.
    void insert(std::string_view name, std::uint32_t number) {
        reserve(keys_.size() + 1);
        keys_.push_back({hashOf(name), number});
        place(keys_.back());
    }

    void clear() noexcept {
        std::fill(cells_.begin(), cells_.end(), kNone);
        keys_.clear();
    }

    std::size_t size() const noexcept { return keys_.size(); }

  private:
    /// Longest name whose ends are all of it.
    static constexpr std::size_t kShort = 16;
    static constexpr std::uint32_t kTag = ~kMost;

    struct Key {
        std::uint32_t hash;
        std::uint32_t number;
    };

    /// The place is taken from the low bits, the tag from the high ones.
    static std::uint32_t hashOf(const expr::TextEnds& ends, std::size_t size) noexcept {
        std::uint64_t state = ((ends.first ^ size) * expr::kFactor1) ^ ends.last;
        state ^= state >> 32;
        return static_cast<std::uint32_t>((state * expr::kFactor2) >> 32);
    }
    static std::uint32_t hashOf(std::string_view name) noexcept {
        if (name.size() > kShort) return static_cast<std::uint32_t>(expr::hashText(name));
        return hashOf(expr::TextEnds(name.data(), name.size()), name.size());
    }

    template <class IsIt>
    std::uint32_t findWhere(std::uint32_t hash, IsIt isIt) const {
        if (cells_.empty()) return kNone;
        for (std::size_t at = hash & mask_;; at = (at + 1) & mask_) {
            if (cells_[at] == kNone) return kNone;
            const std::uint32_t number = cells_[at] ^ (hash & kTag);
            if (number < kMost && isIt(number)) return number;
        }
    }

    /// Apart, so that short names need not save what the comparison might change.
    template <class NameOf>
    [[gnu::noinline]] std::uint32_t findLong(std::string_view name, NameOf nameOf) const {
        return findWhere(hashOf(name),
                         [&](std::uint32_t number) { return nameOf(number) == name; });
    }

    void place(const Key& key) noexcept {
        std::size_t at = key.hash & mask_;
        while (cells_[at] != kNone) at = (at + 1) & mask_;
        cells_[at] = key.number ^ (key.hash & kTag);
    }

    std::vector<std::uint32_t> cells_;
    std::vector<Key> keys_;  ///< in the order in which they came, to place them anew
    std::size_t mask_ = 0;
};

}  // namespace korvant
