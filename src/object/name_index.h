// From names to numbers, over names that are kept elsewhere.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace korvant {

/// An open-addressed table of 8-byte cells: part of the name's hash, and a number. The names
/// themselves stay with the owner, who tells by number which name is meant. Copies copy the cells.
class NameIndex {
  public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    /// The number that was inserted for `name`, or kNone. `nameOf(number)` gives the name.
    template <class NameOf>
    std::uint32_t find(std::string_view name, NameOf nameOf) const {
        if (cells_.empty()) return kNone;
        const std::uint32_t hash = hashOf(name);
        for (std::size_t at = hash & mask_;; at = (at + 1) & mask_) {
            const Cell& cell = cells_[at];
            if (cell.number == kNone) return kNone;
            if (cell.hash == hash && nameOf(cell.number) == name) return cell.number;
        }
    }

    /// Makes room for `count` names in all; after that so many inserts throw nothing.
    void reserve(std::size_t count) {
        if (count + count / 3 + 1 < cells_.size()) return;
        std::size_t size = 8;
        while (size <= count + count / 3 + 1) size *= 2;
        rehash(size);
    }

    /// `name` must not be in the table, and `number` not be kNone.
    void insert(std::string_view name, std::uint32_t number) {
        reserve(used_ + 1);
        place({hashOf(name), number});
        ++used_;
    }

    void clear() noexcept {
        for (Cell& cell : cells_) cell = Cell();
        used_ = 0;
    }

    std::size_t size() const noexcept { return used_; }

  private:
    struct Cell {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };

    static std::uint64_t load(const char* from, std::size_t bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, from, bytes);
        return word;
    }

    /// Multiplies eight bytes at a time into a 64-bit state; the multiplier is 2^64 divided by
    /// the golden ratio, as in multiplicative hashing.
    static std::uint32_t hashOf(std::string_view name) {
        constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;
        const char* at = name.data();
        std::size_t left = name.size();
        std::uint64_t state = left * kMultiplier;
        for (; left >= 8; at += 8, left -= 8) {
            state = (state ^ load(at, 8)) * kMultiplier;
            state ^= state >> 32;
        }
        if (left >= 4)
            state = (state ^ load(at, 4) ^ (load(at + left - 4, 4) << 32)) * kMultiplier;
        else if (left > 0)
            state = (state ^ shortTail(at, left)) * kMultiplier;
        state ^= state >> 29;
        return static_cast<std::uint32_t>((state * kMultiplier) >> 32);
    }

    static std::uint64_t shortTail(const char* at, std::size_t left) {
        const auto byte = [at](std::size_t place) {
            return static_cast<std::uint64_t>(static_cast<unsigned char>(at[place]));
        };
        return byte(0) | byte(left / 2) << 8 | byte(left - 1) << 16;
    }

    void place(Cell cell) noexcept {
        std::size_t at = cell.hash & mask_;
        while (cells_[at].number != kNone) at = (at + 1) & mask_;
        cells_[at] = cell;
    }

    void rehash(std::size_t size) {
        std::vector<Cell> old(size);
        old.swap(cells_);
        mask_ = size - 1;
        for (const Cell& cell : old)
            if (cell.number != kNone) place(cell);
    }

    std::vector<Cell> cells_;
    std::size_t mask_ = 0;
    std::size_t used_ = 0;
};

}  // namespace korvant
