// Texts that were read, with their programs: a bounded first-in, first-out cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "expr/kept_reading.h"

namespace korvant::expr {

class ReadingCache {
  public:
    /// `recalled` is told of what comes and goes; it outlives the cache.
    ReadingCache(std::size_t entries, std::size_t bytes, RecallTable& recalled);
    ~ReadingCache();
    ReadingCache(const ReadingCache&) = delete;
    ReadingCache& operator=(const ReadingCache&) = delete;

    /// What was kept for exactly this text, or null. Valid until the next change. `hash` is
    /// the lower half of hashText(text).
    KeptReading* find(std::string_view text, std::uint32_t hash) const noexcept;
    /// Whether a reading of that size can be kept at all.
    bool canKeep(std::size_t textSize, std::size_t stepCount) const noexcept;
    /// Keeps a text that is not kept yet, dropping the oldest ones for it where the bounds ask
    /// for it; does nothing if it cannot be kept at all.
    void keep(std::string_view text, std::uint32_t hash, const Steps& steps, bool isProgram,
              std::uint32_t result);
    void clear() noexcept;
    void setEntries(std::size_t entries);

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

    RecallTable& recalled_;
    std::size_t entries_, byteBound_;
    std::size_t count_ = 0, bytes_ = 0;
    std::vector<KeptReading*> index_;  ///< open addressing, at most half full
    std::size_t mask_ = 0;
    KeptReading* oldest_ = nullptr;
    KeptReading* newest_ = nullptr;
    KeptReading* spare_ = nullptr;  ///< block of the one that was dropped last
};

}  // namespace korvant::expr
