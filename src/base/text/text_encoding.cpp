#include "base/text/text_encoding.h"

#include <array>
#include <cstddef>

namespace korvant {

namespace {

/// Bytes 0x80 to 0x9F of Windows code page 1252, as its published table gives them; the five
/// undefined ones stand for the code points of their own numbers.
constexpr std::array<char16_t, 32> kWesternHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstHigh = 0xD800, kFirstLow = 0xDC00, kBehindLow = 0xE000;
constexpr char32_t kFirstWide = 0x10000;  // needs two units of UTF-16

unsigned char byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

/// Length that a lead byte announces, 0 for a byte that leads nothing.
int announcedLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// Second bytes that would make an overlong form, a surrogate or a number beyond U+10FFFF.
bool secondFits(unsigned char lead, unsigned char second) {
    switch (lead) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second <= 0x9F;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second <= 0x8F;
        default:
            return true;
    }
}

/// The code point of a sequence that utf8SequenceLength accepted.
char32_t codePointOf(std::string_view sequence) {
    const unsigned char lead = byteAt(sequence, 0);
    if (sequence.size() == 1) return lead;
    char32_t code = lead & (0x7Fu >> sequence.size());
    for (std::size_t i = 1; i < sequence.size(); ++i)
        code = code << 6 | (byteAt(sequence, i) & 0x3F);
    return code;
}

/// The Windows Western byte of a code point, -1 for none.
int westernByte(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<int>(code);
    for (std::size_t i = 0; i < kWesternHigh.size(); ++i)
        if (kWesternHigh[i] == code) return static_cast<int>(0x80 + i);
    return -1;
}

/// Calls `visit` with each code point; a byte that begins no sequence counts as U+FFFD.
template <class Visit>
void forEachCodePoint(std::string_view utf8, Visit visit) {
    while (!utf8.empty()) {
        const int length = utf8SequenceLength(utf8);
        const std::size_t step = length > 0 ? static_cast<std::size_t>(length) : 1;
        visit(length > 0 ? codePointOf(utf8.substr(0, step)) : kReplacement);
        utf8.remove_prefix(step);
    }
}

char32_t unitAt(std::string_view bytes, std::size_t index, bool bigEndian) {
    const unsigned char first = byteAt(bytes, index), second = byteAt(bytes, index + 1);
    return bigEndian ? first << 8 | second : second << 8 | first;
}

}  // namespace

int utf8SequenceLength(std::string_view bytes) noexcept {
    if (bytes.empty()) return 0;
    const unsigned char lead = byteAt(bytes, 0);
    const int length = announcedLength(lead);
    for (int i = 1; i < length; ++i) {
        const auto index = static_cast<std::size_t>(i);
        if (index == bytes.size()) return -1;
        const unsigned char next = byteAt(bytes, index);
        if ((next & 0xC0) != 0x80 || (i == 1 && !secondFits(lead, next))) return 0;
    }
    return length;
}

char32_t westernCodePoint(unsigned char byte) noexcept {
    return byte >= 0x80 && byte <= 0x9F ? kWesternHigh[byte - 0x80u] : byte;
}

void appendUtf8(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) return put(code);
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            put(0xE0 | code >> 12);
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

bool isValidUtf8(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const int length = utf8SequenceLength(bytes);
        if (length <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(length));
    }
    return true;
}

std::string decodeForDisplay(std::string_view bytes) {
    return isValidUtf8(bytes) ? std::string(bytes) : decodeWestern(bytes);
}

std::string decodeWestern(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) appendUtf8(text, westernCodePoint(static_cast<unsigned char>(c)));
    return text;
}

std::string encodeWestern(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    forEachCodePoint(utf8, [&bytes](char32_t code) {
        const int byte = westernByte(code);
        bytes.push_back(byte < 0 ? '?' : static_cast<char>(byte));
    });
    return bytes;
}

bool fitsWestern(std::string_view utf8) noexcept {
    bool fits = true;
    forEachCodePoint(utf8, [&fits](char32_t code) { fits = fits && westernByte(code) >= 0; });
    return fits;
}

std::optional<std::string> decodeUtf16(std::string_view bytes, bool bigEndian) {
    std::string text;
    if (bytes.size() % 2 != 0) return std::nullopt;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        char32_t code = unitAt(bytes, i, bigEndian);
        if (code >= kFirstHigh && code < kBehindLow) {
            const bool pair = code < kFirstLow && i + 2 < bytes.size();
            const char32_t low = pair ? unitAt(bytes, i + 2, bigEndian) : 0;
            if (low < kFirstLow || low >= kBehindLow) return std::nullopt;
            code = kFirstWide + ((code - kFirstHigh) << 10) + (low - kFirstLow);
            i += 2;
        }
        appendUtf8(text, code);
    }
    return text;
}

std::string encodeUtf16(std::string_view utf8, bool bigEndian) {
    std::string bytes;
    bytes.reserve(2 * utf8.size());
    const auto put = [&bytes, bigEndian](char32_t unit) {
        const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes.push_back(bigEndian ? high : low);
        bytes.push_back(bigEndian ? low : high);
    };
    forEachCodePoint(utf8, [&put](char32_t code) {
        if (code < kFirstWide) return put(code);
        put(kFirstHigh + ((code - kFirstWide) >> 10));
        put(kFirstLow + ((code - kFirstWide) & 0x3FF));
    });
    return bytes;
}

std::string encodeTyped(std::string_view utf8) {
    if (!fitsWestern(utf8)) return std::string(utf8);
    std::string western = encodeWestern(utf8);
    // Bytes that would be shown as something else than what was typed.
    const bool misread = western != utf8 && isValidUtf8(western);
    return misread ? std::string(utf8) : western;
}

}  // namespace korvant
