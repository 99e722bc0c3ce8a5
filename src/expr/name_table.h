// The named values of one evaluator: names to slots, slots to doubles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace korvant::expr {

class NameTable {
  public:
    using Slot = std::uint32_t;
    static constexpr Slot kNoSlot = ~Slot{0};

    /// Cells of intermediate results that stand before those of the names.
    static constexpr int kScratchCells = 64;

    NameTable();

    Slot find(std::string_view name) const noexcept;
    /// The slot of `name`, made if there is none; its value is left as it is, 0 when new.
    Slot findOrAdd(std::string_view name);
    bool remove(std::string_view name);
    void clear();
    std::size_t size() const noexcept { return count_; }

    /// Whether any name holds a "(", so that what looks like a call may be a name.
    bool hasCallLikeNames() const noexcept { return !callLikeSizes_.empty(); }
    /// Whether a name of that many bytes holds a "(".
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
        std::uint64_t hash = 0;
        bool used = false;
    };

    std::size_t placeOf(std::string_view name, std::uint64_t hash) const noexcept;
    void insertIntoIndex(Slot slot);
    void eraseFromIndex(std::size_t place);
    void growIndex();
    Slot freeSlot();

    std::vector<Entry> entries_;
    std::vector<double> cells_;
    std::vector<Slot> index_;  ///< open addressing; a power of two, never more than half full
    std::vector<Slot> free_;
    std::map<std::size_t, std::size_t> callLikeSizes_;  ///< sizes of names with "(", how many
    std::size_t count_ = 0;
};

}  // namespace korvant::expr
