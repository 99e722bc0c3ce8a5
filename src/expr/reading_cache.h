// Texts that were read, with their programs: a bounded first-in, first-out cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/step.h"
#include "expr/text_hash.h"

namespace korvant::expr {

/// One text that was read. It stands in one block of memory: this, the steps, the text.
struct KeptReading {
    std::uint64_t hash;
    KeptReading* newer;  ///< the one that was kept next
    std::uint32_t capacity, stepCount, textSize;
    std::uint32_t result : 31;    ///< step that holds the value, of steps as read
    std::uint32_t isProgram : 1;  ///< the steps are a program; else they are as read

    const Step* steps() const noexcept { return reinterpret_cast<const Step*>(this + 1); }
    const char* text() const noexcept { return reinterpret_cast<const char*>(steps() + stepCount); }
};
static_assert(sizeof(KeptReading) % alignof(Step) == 0);

class ReadingCache {
  public:
    ReadingCache(std::size_t entries, std::size_t bytes);
    ~ReadingCache();
    ReadingCache(const ReadingCache&) = delete;
    ReadingCache& operator=(const ReadingCache&) = delete;

    /// What was kept for exactly this text, or null. Valid until the next change.
    const KeptReading* find(std::string_view text) const noexcept {
        const std::uint64_t hash = hashText(text);
        for (std::size_t place = hash & mask_;; ++place) {
            const KeptReading* kept = index_[place & mask_];
            if (!kept) return nullptr;
            if (kept->hash == hash && kept->textSize == text.size() &&
                sameBytes(kept->text(), text.data(), text.size()))
                return kept;
        }
    }

    /// Whether a reading of that size can be kept at all.
    bool canKeep(std::size_t textSize, std::size_t stepCount) const noexcept;
    /// Keeps a text that is not kept yet, dropping the oldest ones for it where the bounds ask
    /// for it; does nothing if it cannot be kept at all.
    void keep(std::string_view text, const Steps& steps, bool isProgram, std::uint32_t result);
    void clear() noexcept;
    void setEntries(std::size_t entries);

    std::size_t entries() const noexcept { return entries_; }
    std::size_t count() const noexcept { return count_; }
    /// Memory in use for what is kept.
    std::size_t bytes() const noexcept { return bytes_; }

  private:
    void dropOldest() noexcept;
    KeptReading* takeBlock(std::size_t size);
    void releaseSpare() noexcept;
    void addToIndex(KeptReading* kept) noexcept;
    void removeFromIndex(const KeptReading* kept) noexcept;
    void growIndex();

    std::size_t entries_, byteBound_;
    std::size_t count_ = 0, bytes_ = 0;
    std::vector<KeptReading*> index_;  ///< open addressing, at most half full
    std::size_t mask_;
    KeptReading* oldest_ = nullptr;
    KeptReading* newest_ = nullptr;
    KeptReading* spare_ = nullptr;  ///< block of the one that was dropped last
};

}  // namespace korvant::expr
