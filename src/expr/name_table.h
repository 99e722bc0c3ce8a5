// The named values of one evaluator: names to slots, slots to doubles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "expr/text_hash.h"

namespace korvant::expr {

class NameTable {
  public:
    using Slot = std::uint32_t;
    static constexpr Slot kNoSlot = ~Slot{0};

    /// Cells for intermediate results, which stand before those of the names.
    static constexpr int kScratchCells = 64;

    NameTable();

    Slot find(std::string_view name) const noexcept;
    /// The same for a name behind whose first byte eight are readable.
    [[gnu::always_inline]] Slot findReadable(const char* name, std::size_t size) const noexcept {
        return index_[placeOf(name, size, firstWord(name, size))].slot;
    }
    /// The slot of `name`, made if there is none; its value is left as it is, 0 when new.
    Slot findOrAdd(std::string_view name);
    bool remove(std::string_view name);
    void clear();
    std::size_t size() const noexcept { return count_; }

    /// Whether a name of that many bytes holds a "(", so that what looks like a call may be a name.
    bool hasCallLikeName(std::size_t size) const noexcept {
        return callLikeSizes_.count(size) != 0;
    }

    /// The value of slot n is cell n; cells -1 to -kScratchCells are free for a run's use.
    /// Valid until a name is added or the names are cleared.
    double* cells() noexcept { return cells_.data() + kScratchCells; }
    const double* cells() const noexcept { return cells_.data() + kScratchCells; }
    /// Slots below this one have a cell, whether or not a name uses them.
    std::size_t slotCount() const noexcept { return entries_.size(); }

  private:
    struct Entry {
        std::string name;
        bool used = false;
    };

    struct Place {
        std::uint64_t word = 0;  ///< the first eight bytes of the name
        std::uint32_t size = 0;
        Slot slot = kNoSlot;
    };

    static std::size_t homeOf(const char* name, std::size_t size, std::uint64_t word) noexcept {
        std::uint64_t mixed = (word ^ size) * kFactor1;
        if (size > 8) mixed ^= hashText({name + 8, size - 8});
        return static_cast<std::size_t>(mixed ^ (mixed >> 32));
    }

    /// The place of a name in the index, or the free place where it would be.
    [[gnu::always_inline]] std::size_t placeOf(const char* name, std::size_t size,
                                               std::uint64_t word) const noexcept {
        const std::size_t mask = index_.size() - 1;
        for (std::size_t place = homeOf(name, size, word) & mask;; place = (place + 1) & mask) {
            const Place& found = index_[place];
            if (found.slot == kNoSlot) return place;
            if (found.word != word || found.size != size) continue;
            if (size <= 8 || sameBytes(entries_[found.slot].name.data() + 8, name + 8, size - 8))
                return place;
        }
    }
    std::size_t placeOf(std::string_view name) const noexcept;
    Place placeFor(Slot slot) const noexcept;
    std::size_t homeOf(const Place& place) const noexcept;

    void insertIntoIndex(Slot slot);
    void eraseFromIndex(std::size_t place);
    void growIndex();
    Slot freeSlot();

    std::vector<Entry> entries_;
    std::vector<double> cells_;
    std::vector<Place> index_;  ///< open addressing; a power of two, never more than half full
    std::vector<Slot> free_;
    std::map<std::size_t, std::size_t> callLikeSizes_;  ///< sizes of names with "(", how many
    std::size_t count_ = 0;
};

}  // namespace korvant::expr
