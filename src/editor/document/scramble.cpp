#include "editor/document/scramble.h"

namespace korvant {

namespace {

constexpr int kLowestChanged = 32, kHighestChanged = 127;
constexpr int kMasks = 31;

}  // namespace

void scramble(std::string& text, std::int32_t key) noexcept {
    ScrambleNumbers numbers(key);
    for (char& byte : text) {
        const int value = static_cast<unsigned char>(byte);
        if (value < kLowestChanged || value > kHighestChanged) continue;
        // The mask is below 32, so a changed byte stays in its range and chooses the same bytes
        // on the way back.
        byte = static_cast<char>(value ^ numbers.next() % kMasks);
    }
}

std::int32_t& rememberedScrambleKey() noexcept {
    static std::int32_t key = 0;
    return key;
}

}  // namespace korvant
