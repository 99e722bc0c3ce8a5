#include "expr/name_table.h"

#include "expr/text_hash.h"

namespace korvant::expr {
namespace {

constexpr std::size_t kSmallestIndex = 32;

bool looksLikeCall(std::string_view name) {
    return name.find('(') != std::string_view::npos;
}

}  // namespace

NameTable::NameTable() : cells_(kScratchCells), index_(kSmallestIndex, kNoSlot) {}

/// The place of `name` in the index, or the free place where it would be.
std::size_t NameTable::placeOf(std::string_view name, std::uint64_t hash) const noexcept {
    const std::size_t mask = index_.size() - 1;
    for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
        if (index_[place] == kNoSlot) return place;
        const Entry& entry = entries_[index_[place]];
        if (entry.hash == hash && entry.name.size() == name.size() &&
            sameBytes(entry.name.data(), name.data(), name.size()))
            return place;
    }
}

NameTable::Slot NameTable::find(std::string_view name) const noexcept {
    return index_[placeOf(name, hashText(name))];
}

NameTable::Slot NameTable::findOrAdd(std::string_view name) {
    const std::uint64_t hash = hashText(name);
    const Slot known = index_[placeOf(name, hash)];
    if (known != kNoSlot) return known;
    if ((count_ + 1) * 2 > index_.size()) growIndex();
    std::string copy(name);
    const Slot slot = freeSlot();
    entries_[slot] = {std::move(copy), hash, true};
    cells()[slot] = 0.0;
    index_[placeOf(name, hash)] = slot;
    ++count_;
    if (looksLikeCall(name)) ++callLikeSizes_[name.size()];
    return slot;
}

NameTable::Slot NameTable::freeSlot() {
    if (!free_.empty()) {
        const Slot slot = free_.back();
        free_.pop_back();
        return slot;
    }
    if (cells_.size() == cells_.capacity()) cells_.reserve(cells_.size() * 2);
    entries_.emplace_back();
    cells_.push_back(0.0);
    return static_cast<Slot>(entries_.size() - 1);
}

void NameTable::growIndex() {
    index_.assign(index_.size() * 2, kNoSlot);
    for (Slot slot = 0; slot < entries_.size(); ++slot)
        if (entries_[slot].used) insertIntoIndex(slot);
}

void NameTable::insertIntoIndex(Slot slot) {
    const std::size_t mask = index_.size() - 1;
    std::size_t place = entries_[slot].hash & mask;
    while (index_[place] != kNoSlot) place = (place + 1) & mask;
    index_[place] = slot;
}

bool NameTable::remove(std::string_view name) {
    const std::size_t place = placeOf(name, hashText(name));
    const Slot slot = index_[place];
    if (slot == kNoSlot) return false;
    free_.push_back(slot);
    eraseFromIndex(place);
    if (looksLikeCall(name)) {
        const auto sizes = callLikeSizes_.find(name.size());
        if (--sizes->second == 0) callLikeSizes_.erase(sizes);
    }
    entries_[slot] = {};
    --count_;
    return true;
}

/// Moves what follows back into the gap, as long as that is no place before its own.
void NameTable::eraseFromIndex(std::size_t place) {
    const std::size_t mask = index_.size() - 1;
    std::size_t gap = place;
    for (std::size_t next = (gap + 1) & mask; index_[next] != kNoSlot; next = (next + 1) & mask) {
        const std::size_t home = entries_[index_[next]].hash & mask;
        if (((next - home) & mask) < ((next - gap) & mask)) continue;
        index_[gap] = index_[next];
        gap = next;
    }
    index_[gap] = kNoSlot;
}

void NameTable::clear() {
    entries_.clear();
    cells_.resize(kScratchCells);
    index_.assign(kSmallestIndex, kNoSlot);
    free_.clear();
    callLikeSizes_.clear();
    count_ = 0;
}

}  // namespace korvant::expr
