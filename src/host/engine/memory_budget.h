// What scripts may hold in memory, all strings and objects together.
#pragma once

#include <cstddef>

#include "host/engine/limits.h"

namespace korvant {

/// Bytes that live strings and objects take. One for the module, because strings are made by the
/// engine without a word about the run they belong to. Script's thread only. Aligned to a power of
/// two that holds it, or 32-bit linkers find sections of different sizes.
struct alignas(4 * sizeof(std::size_t)) MemoryBudget {
    std::size_t used = 0;
    std::size_t limit = kRunBytes;           ///< all together
    std::size_t stringLimit = kStringBytes;  ///< one string
    bool scriptRuns = false;                 ///< what property objects take counts

    bool charge(std::size_t bytes) noexcept {
        if (bytes > limit || used > limit - bytes) return false;
        used += bytes;
        return true;
    }
    void release(std::size_t bytes) noexcept { used -= bytes < used ? bytes : used; }
};

inline MemoryBudget memoryBudget;

}  // namespace korvant
