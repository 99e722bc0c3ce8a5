// The lines at which a run is suspended.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/engine/engine_compat.h"

namespace korvant {

/// A set of 1-based lines, asked before every statement of a run.
class BreakpointTable {
  public:
    /// The engine counts lines modulo 2^20.
    static constexpr std::int32_t kLastLine = (1 << 20) - 1;

    /// Null empties the set. Lines below 1 or beyond the last are kept nowhere: no statement has
    /// them.
    void set(const std::vector<std::int32_t>* lines);
    bool empty() const noexcept { return lines_.empty(); }
    /// Ascending, each once.
    const std::vector<std::int32_t>& lines() const noexcept { return lines_; }

    bool contains(std::int32_t line) const noexcept {
        const auto number = static_cast<std::uint32_t>(line);
        return number < bitCount_ && (bits_[number / 64] >> (number % 64) & 1) != 0;
    }

    /// False when no line of `function` is in the set. Remembered; see forgetFunctions().
    bool mayStopIn(asIScriptFunction* function) {
        Remembered& slot = remembered_[slotOf(function)];
        if (slot.function != function) slot = {function, holdsLineOf(*function)};
        return slot.holds;
    }
    /// For when functions may have been replaced: their addresses are used again.
    void forgetFunctions() { remembered_.fill({}); }

  private:
    struct Remembered {
        asIScriptFunction* function = nullptr;
        bool holds = true;
    };
    static constexpr std::size_t kSlots = 64;
    static std::size_t slotOf(const asIScriptFunction* function) {
        const auto address = reinterpret_cast<std::uintptr_t>(function);
        return (address >> 4 ^ address >> 10) % kSlots;
    }
    bool holdsLineOf(const asIScriptFunction& function) const;

    std::vector<std::int32_t> lines_;
    std::vector<std::uint64_t> bits_;
    std::uint32_t bitCount_ = 0;  ///< no line from here on, and no negative one, is in the set
    std::array<Remembered, kSlots> remembered_{};
};

}  // namespace korvant
