#include "object/form/row_filter.h"

#include <algorithm>
#include <cstdint>

#include "base/text/text_encoding.h"

namespace korvant {

namespace {

/// Lower case of the letters of two bytes whose two cases stand 32 apart or beside each other.
/// Source: the blocks Latin-1 Supplement, Latin Extended-A, Greek and Cyrillic of Unicode.
std::uint32_t lowerOf(std::uint32_t code) {
    if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return code + 32;
    const bool evenIsUpper = (code >= 0x100 && code <= 0x137) || (code >= 0x14A && code <= 0x177);
    const bool oddIsUpper = (code >= 0x139 && code <= 0x148) || (code >= 0x179 && code <= 0x17E);
    if (evenIsUpper) return code | 1U;
    if (oddIsUpper) return code + (code & 1U);
    if (code == 0x178) return 0xFF;
    if (code >= 0x391 && code <= 0x3A9) return code + 32;
    if (code >= 0x410 && code <= 0x42F) return code + 32;
    if (code >= 0x400 && code <= 0x40F) return code + 80;
    return code;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void foldAscii(std::string& text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
}

/// Valid UTF-8; both cases of every letter of two bytes have two bytes.
void foldPairs(std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0xC2 || lead > 0xDF) continue;
        const auto trail = static_cast<unsigned char>(text[i + 1]);
        const std::uint32_t code = lowerOf((lead & 31U) << 6 | (trail & 63U));
        text[i] = static_cast<char>(0xC0 | code >> 6);
        text[i + 1] = static_cast<char>(0x80 | (code & 63U));
        ++i;
    }
}

}  // namespace

std::string folded(std::string_view bytes) {
    std::string text = isAscii(bytes) ? std::string(bytes) : decodeForDisplay(bytes);
    foldAscii(text);
    if (!isAscii(text)) foldPairs(text);
    return text;
}

RowFilter::RowFilter(std::string_view words) {
    const std::string text = folded(words);
    std::size_t at = 0;
    while ((at = text.find_first_not_of(" \t\r\n", at)) != std::string::npos) {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", at), text.size());
        words_.push_back(text.substr(at, end - at));
        at = end;
    }
}

bool RowFilter::accepts(std::string_view text, std::string_view value) const {
    const auto found = [&](const std::string& word) {
        return text.find(word) != std::string_view::npos ||
               value.find(word) != std::string_view::npos;
    };
    return std::all_of(words_.begin(), words_.end(), found);
}

}  // namespace korvant
