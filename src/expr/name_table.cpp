#include "expr/name_table.h"

#include <algorithm>

namespace korvant::expr {
namespace {

constexpr std::size_t kFewestPlaces = 32;

bool looksLikeCall(std::string_view name) {
    return name.find('(') != std::string_view::npos;
}

}  // namespace

NameTable::NameTable() : cells_(kScratchCells), index_(kFewestPlaces) {}

std::size_t NameTable::placeOf(std::string_view name) const noexcept {
    char first[8] = {};
    std::copy_n(name.data(), std::min<std::size_t>(name.size(), 8), first);
    return placeOf(name.data(), name.size(), loadWord(first, 8));
}

NameTable::Slot NameTable::find(std::string_view name) const noexcept {
    return index_[placeOf(name)].slot;
}

NameTable::Slot NameTable::findOrAdd(std::string_view name) {
    const Slot known = find(name);
    if (known != kNoSlot) return known;
    if ((count_ + 1) * 2 > index_.size()) growIndex();
    std::string copy(name);
    if (looksLikeCall(name)) ++callLikeSizes_[name.size()];
    const Slot slot = freeSlot();
    entries_[slot] = {std::move(copy), true};
    cells()[slot] = 0.0;
    index_[placeOf(name)] = placeFor(slot);
    ++count_;
    return slot;
}

/// What the index holds for a slot.
NameTable::Place NameTable::placeFor(Slot slot) const noexcept {
    const std::string& name = entries_[slot].name;
    char first[8] = {};
    std::copy_n(name.data(), std::min<std::size_t>(name.size(), 8), first);
    return {loadWord(first, 8), static_cast<std::uint32_t>(name.size()), slot};
}

std::size_t NameTable::homeOf(const Place& place) const noexcept {
    return homeOf(entries_[place.slot].name.data(), place.size, place.word);
}

/// Once the cells have moved nothing can fail any more, so that nobody is left with the old
/// place of theirs.
NameTable::Slot NameTable::freeSlot() {
    if (!free_.empty()) {
        const Slot slot = free_.back();
        free_.pop_back();
        return slot;
    }
    if (entries_.size() == entries_.capacity())
        entries_.reserve(std::max<std::size_t>(16, entries_.capacity() * 2));
    cells_.push_back(0.0);
    entries_.emplace_back();
    return static_cast<Slot>(entries_.size() - 1);
}

void NameTable::growIndex() {
    index_.assign(index_.size() * 2, {});
    for (Slot slot = 0; slot < entries_.size(); ++slot)
        if (entries_[slot].used) insertIntoIndex(slot);
}

void NameTable::insertIntoIndex(Slot slot) {
    const Place added = placeFor(slot);
    const std::size_t mask = index_.size() - 1;
    std::size_t place = homeOf(added) & mask;
    while (index_[place].slot != kNoSlot) place = (place + 1) & mask;
    index_[place] = added;
}

bool NameTable::remove(std::string_view name) {
    const std::size_t place = placeOf(name);
    const Slot slot = index_[place].slot;
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
    for (std::size_t next = (gap + 1) & mask; index_[next].slot != kNoSlot;
         next = (next + 1) & mask) {
        const std::size_t home = homeOf(index_[next]) & mask;
        if (((next - home) & mask) < ((next - gap) & mask)) continue;
        index_[gap] = index_[next];
        gap = next;
    }
    index_[gap] = {};
}

void NameTable::clear() {
    entries_.clear();
    cells_.resize(kScratchCells);
    index_.assign(kFewestPlaces, {});
    free_.clear();
    callLikeSizes_.clear();
    count_ = 0;
}

}  // namespace korvant::expr
