// Hash of a short byte string, for the tables of this layer.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace korvant::expr {

inline std::uint64_t loadWord(const char* from, std::size_t bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, from, bytes);
    return word;
}

/// The text's last bytes as two words that overlap where it is shorter than both.
struct TextEnds {
    std::uint64_t first = 0, last = 0;

    TextEnds(const char* text, std::size_t size) noexcept {
        if (size >= 8) {
            first = loadWord(text, 8);
            last = loadWord(text + size - 8, 8);
        } else if (size >= 4) {
            first = loadWord(text, 4);
            last = loadWord(text + size - 4, 4);
        } else if (size > 0) {
            first = static_cast<unsigned char>(text[0]) |
                    static_cast<std::uint64_t>(static_cast<unsigned char>(text[size / 2])) << 8;
            last = static_cast<unsigned char>(text[size - 1]);
        }
    }
};

/// Odd factors with well spread bits (from the golden ratio and the square roots of 2 and 3).
inline constexpr std::uint64_t kFactor1 = 0x9E3779B97F4A7C15u;
inline constexpr std::uint64_t kFactor2 = 0x6A09E667F3BCC909u;
inline constexpr std::uint64_t kFactor3 = 0xBB67AE8584CAA73Bu;

/// The first bytes of a text, eight at most, the others zero. Eight bytes are readable there.
inline std::uint64_t firstWord(const char* text, std::size_t size) noexcept {
    const std::uint64_t word = loadWord(text, 8);
    if constexpr (std::endian::native == std::endian::little)
        return size >= 8 ? word : word & ((std::uint64_t{1} << (size * 8)) - 1);
    return size >= 8 ? word : word & ~(~std::uint64_t{0} >> (size * 8));
}

/// Every bit of the text reaches the low and the high bits. Not meant to withstand texts that
/// are made to collide: a collision costs a comparison, never a wrong answer.
inline std::uint64_t hashText(std::string_view view) noexcept {
    const char* text = view.data();
    std::size_t left = view.size();
    std::uint64_t even = kFactor1 ^ left, odd = kFactor2;
    for (; left > 16; text += 16, left -= 16) {
        even = (even ^ loadWord(text, 8)) * kFactor1;
        odd = (odd ^ loadWord(text + 8, 8)) * kFactor2;
        even ^= even >> 32;
        odd ^= odd >> 32;
    }
    const TextEnds ends(text, left);
    const std::uint64_t mixed =
        ((even ^ ends.first) * kFactor1) ^ (((odd ^ ends.last) * kFactor2) >> 1);
    const std::uint64_t folded = (mixed ^ (mixed >> 32)) * kFactor3;
    return folded ^ (folded >> 29);
}

/// Two words that are worked on together.
using WordPair = std::uint64_t __attribute__((vector_size(16)));

inline WordPair loadPair(const char* from) noexcept {
    WordPair pair;
    std::memcpy(&pair, from, 16);
    return pair;
}

/// Whether two texts of one size hold the same bytes; without a call where they are short.
[[gnu::always_inline]] inline bool sameBytes(const char* left, const char* right,
                                             std::size_t size) noexcept {
    if (size < 16) {
        const TextEnds a(left, size), b(right, size);
        return ((a.first ^ b.first) | (a.last ^ b.last)) == 0;
    }
    const auto differences = [&](std::size_t at) {
        return loadPair(left + at) ^ loadPair(right + at);
    };
    WordPair all = differences(0) | differences(size - 16);
    if (size > 32) all |= differences(16) | differences(size - 32);
    if ((all[0] | all[1]) != 0) return false;
    return size <= 64 || std::memcmp(left + 32, right + 32, size - 64) == 0;
}

}  // namespace korvant::expr
