#include "base/text/character_width.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace korvant {

namespace {

struct Range {
    std::uint32_t first, last;
};

constexpr Range kWide[] = {{0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0x33ff},
                           {0x3400, 0x4dbf},   {0x4e00, 0x9fff},   {0xa000, 0xa4cf},
                           {0xa960, 0xa97c},   {0xac00, 0xd7a3},   {0xf900, 0xfaff},
                           {0xfe30, 0xfe6f},   {0xff00, 0xff60},   {0xffe0, 0xffe6},
                           {0x1f300, 0x1f64f}, {0x1f680, 0x1f6ff}, {0x1f900, 0x1f9ff},
                           {0x20000, 0x2fffd}, {0x30000, 0x3fffd}};
constexpr Range kNone[] = {
    {0x300, 0x36f}, {0x200b, 0x200f}, {0x20d0, 0x20ff}, {0xfe00, 0xfe0f}, {0xfe20, 0xfe2f}};

bool within(const Range* begin, const Range* end, std::uint32_t character) {
    return std::any_of(begin, end, [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

std::uint32_t codeOf(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence.front());
    if (sequence.size() < 2 || sequence.size() > 4) return first;
    std::uint32_t code = first & (0x7fu >> sequence.size());
    for (const char byte : sequence.substr(1))
        code = code << 6 | (static_cast<unsigned char>(byte) & 0x3fu);
    return code;
}

}  // namespace

std::size_t characterWidth(std::string_view sequence) noexcept {
    if (sequence.empty()) return 0;
    const std::uint32_t code = codeOf(sequence);
    if (within(std::begin(kNone), std::end(kNone), code)) return 0;
    return within(std::begin(kWide), std::end(kWide), code) ? 2 : 1;
}

}  // namespace korvant
