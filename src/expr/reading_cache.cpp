#include "expr/reading_cache.h"

#include <algorithm>
#include <new>
#include <utility>

namespace korvant::expr {
namespace {

constexpr std::size_t kSmallestIndex = 32;
/// What the index holds for one reading, at most half full as it is.
constexpr std::size_t kIndexBytes = 2 * sizeof(KeptReading*);

}  // namespace

ReadingCache::ReadingCache(std::size_t entries, std::size_t bytes, RecallTable& recalled)
    : recalled_(recalled), entries_(entries), byteBound_(bytes), index_(1) {}

ReadingCache::~ReadingCache() {
    clear();
    releaseSpare();
}

KeptReading* ReadingCache::find(std::string_view text, std::uint32_t hash) const noexcept {
    for (std::size_t place = hash & mask_;; place = (place + 1) & mask_) {
        KeptReading* kept = index_[place];
        if (!kept) return nullptr;
        if (kept->hash == hash && kept->textSize == text.size() &&
            sameBytes(kept->text(), text.data(), text.size()))
            return kept;
    }
}

bool ReadingCache::canKeep(std::size_t textSize, std::size_t stepCount) const noexcept {
    return entries_ > 0 && KeptReading::blockSize(textSize, stepCount) + kIndexBytes <= byteBound_;
}

void ReadingCache::keep(std::string_view text, std::uint32_t hash, const Steps& steps,
                        bool isProgram, std::uint32_t result) {
    if (!canKeep(text.size(), steps.size())) return;
    const std::size_t size = KeptReading::blockSize(text.size(), steps.size());
    while (count_ >= entries_ || bytes_ + size + kIndexBytes > byteBound_) dropOldest();
    if ((count_ + 1) * 2 > index_.size()) growIndex();
    KeptReading* kept = takeBlock(size);
    kept->newer = nullptr;
    kept->hash = hash;
    kept->recallPlace = 0;
    kept->stepCount = static_cast<std::uint32_t>(steps.size());
    kept->textSize = static_cast<std::uint32_t>(text.size());
    kept->result = result & 0x7FFFFFFFu;
    kept->isProgram = isProgram ? 1 : 0;
    std::copy(text.begin(), text.end(), kept->text());
    std::copy(steps.begin(), steps.end(), kept->steps(text.size()));
    (newest_ ? newest_->newer : oldest_) = kept;
    newest_ = kept;
    addToIndex(kept);
    ++count_;
    bytes_ += kept->capacity + kIndexBytes;
}

/// A block of at least `size` bytes; the spare one where it is not much larger.
KeptReading* ReadingCache::takeBlock(std::size_t size) {
    const bool fits = spare_ && spare_->capacity >= size && spare_->capacity <= size + size / 4 &&
                      bytes_ + spare_->capacity + kIndexBytes <= byteBound_;
    if (fits) return std::exchange(spare_, nullptr);
    releaseSpare();
    auto* block = static_cast<KeptReading*>(::operator new(size));
    block->capacity = static_cast<std::uint32_t>(size);
    return block;
}

void ReadingCache::releaseSpare() noexcept {
    ::operator delete(spare_);
    spare_ = nullptr;
}

void ReadingCache::dropOldest() noexcept {
    KeptReading* dropped = oldest_;
    oldest_ = dropped->newer;
    if (!oldest_) newest_ = nullptr;
    removeFromIndex(dropped);
    recalled_.forget(*dropped);
    --count_;
    bytes_ -= dropped->capacity + kIndexBytes;
    releaseSpare();
    spare_ = dropped;
}

void ReadingCache::clear() noexcept {
    while (count_ > 0) dropOldest();
}

void ReadingCache::setEntries(std::size_t entries) {
    entries_ = entries;
    while (count_ > entries_) dropOldest();
}

void ReadingCache::addToIndex(KeptReading* kept) noexcept {
    std::size_t place = kept->hash & mask_;
    while (index_[place]) place = (place + 1) & mask_;
    index_[place] = kept;
}

/// Moves what follows back into the gap, as long as that is no place before its own.
void ReadingCache::removeFromIndex(const KeptReading* kept) noexcept {
    std::size_t gap = kept->hash & mask_;
    while (index_[gap] != kept) gap = (gap + 1) & mask_;
    for (std::size_t next = (gap + 1) & mask_; index_[next]; next = (next + 1) & mask_) {
        const std::size_t home = index_[next]->hash & mask_;
        if (((next - home) & mask_) < ((next - gap) & mask_)) continue;
        index_[gap] = index_[next];
        gap = next;
    }
    index_[gap] = nullptr;
}

void ReadingCache::growIndex() {
    const std::size_t places = std::max(kSmallestIndex, index_.size() * 2);
    // As many, so that the texts of a whole form are recalled.
    recalled_.grow(places);
    index_ = std::vector<KeptReading*>(places);
    mask_ = places - 1;
    for (KeptReading* kept = oldest_; kept; kept = kept->newer) addToIndex(kept);
}

}  // namespace korvant::expr
