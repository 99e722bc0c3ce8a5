// From names to numbers, over names that are kept elsewhere.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/text_hash.h"

namespace korvant {

/// An open-addressed table of 8-byte cells, at most half full: part of the name's hash, and a
/// number. The names themselves stay with the owner, who tells by number which name is meant.
/// Copies copy the cells.
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
            if (cell.hash == hash && cell.number != kNone && isSame(nameOf(cell.number), name))
                return cell.number;
            if (cell.number == kNone) return kNone;
        }
    }

    /// Makes room for `count` names in all; after that so many inserts throw nothing.
    void reserve(std::size_t count) {
        if (count * 2 < cells_.size()) return;
        std::size_t size = 8;
        while (size <= count * 2) size *= 2;
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

    static std::uint32_t hashOf(std::string_view name) noexcept {
        return static_cast<std::uint32_t>(expr::hashText(name));
    }
    static bool isSame(std::string_view a, std::string_view b) noexcept {
        return a.size() == b.size() && expr::sameBytes(a.data(), b.data(), a.size());
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
