// The reversible scrambling of a script's text. It hides a text from a glance; it is no
// encryption.
#pragma once

#include <cstdint>
#include <string>

namespace korvant {

/// The pseudo-random numbers that scrambled texts were made with: a linear congruential generator
/// with the multiplier 214013, the addend 2531011 and 15 bits of the upper half, 0 to 32767. The
/// process's own generator is left alone.
class ScrambleNumbers {
  public:
    explicit ScrambleNumbers(std::int32_t key) noexcept : state_(static_cast<std::uint32_t>(key)) {}
    int next() noexcept {
        state_ = state_ * 214013u + 2531011u;
        return static_cast<int>(state_ >> 16 & 32767u);
    }

  private:
    std::uint32_t state_;
};

/// Scrambles, or restores what was scrambled with the same key. Bytes from 32 to 127 change into
/// bytes of that range; all others stay and draw no number.
void scramble(std::string& text, std::int32_t key) noexcept;

/// The key that was typed last, for the life of the module.
std::int32_t& rememberedScrambleKey() noexcept;

}  // namespace korvant
