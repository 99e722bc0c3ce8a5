#include "expr/expression_text.h"

#include <algorithm>
#include <array>
#include <bit>

#include "expr/text_hash.h"

namespace korvant::expr {
namespace {

constexpr std::uint32_t kNoOpen = ~std::uint32_t{0};
constexpr std::size_t kLargeText = std::size_t{64} << 10;

/// The lower case of bytes that have a meaning, 0 for blanks.
constexpr std::array<char, 256> makeCleaned() {
    std::array<char, 256> bytes{};
    for (int i = 0; i < 256; ++i) {
        const char byte = static_cast<char>(i);
        bytes[static_cast<std::size_t>(i)] = isBlank(byte) ? '\0' : lowerCase(byte);
    }
    return bytes;
}
constexpr auto kCleaned = makeCleaned();

constexpr std::uint64_t kOnes = ~std::uint64_t{0} / 255, kHighs = kOnes * 128;

// Both look at eight bytes at a time and give the highest bit of each byte that they look for.
// The sums cannot carry into the next byte, as its highest bit is left out of them (Warren,
// "Hacker's Delight", chapter 6).

/// Blanks and capital letters.
std::uint64_t toBeCleaned(std::uint64_t word) noexcept {
    const std::uint64_t low = word & ~kHighs;
    const std::uint64_t notBlank = low + kOnes * (128 - 33);
    const std::uint64_t fromA = low + kOnes * (128 - 'A'), afterZ = low + kOnes * (127 - 'Z');
    return (word | ~notBlank | (fromA & ~afterZ)) & kHighs;
}

/// Parentheses, which are neighbours; `word` holds no byte from 0x80 up.
std::uint64_t parenthesesIn(std::uint64_t word) noexcept {
    static_assert((')' ^ '(') == 1);
    return ~((word ^ kOnes * '(') + kOnes * 126) & kHighs;
}

/// Number of the first byte in memory that `marks` marks.
std::uint32_t firstMarked(std::uint64_t marks) noexcept {
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(marks)
                                                                : std::countl_zero(marks);
    return static_cast<std::uint32_t>(bits) / 8;
}

std::uint64_t withoutFirst(std::uint64_t marks) noexcept {
    return std::endian::native == std::endian::little
               ? marks & (marks - 1)
               : marks & (kHighs >> (firstMarked(marks) * 8 + 1));
}

}  // namespace

std::string removeBlanks(std::string_view text) {
    std::string kept(text);
    std::erase_if(kept, isBlank);
    return kept;
}

bool isBalanced(std::string_view text) {
    PairedText paired;
    paired.assign(text);
    return paired.balanced();
}

bool stripOuterParentheses(std::string& text) {
    PairedText paired;
    paired.assign(text);
    if (!paired.isEnclosed(paired.all())) return false;
    text = text.substr(1, text.size() - 2);
    return true;
}

void PairedText::begin(std::size_t most) {
    // Eight bytes more: whole words are written before it is known what of them is kept.
    bytes_.reserve(most + 8);
    closing_.reserve(most);
    size_ = 0;
    innermost_ = kNoOpen;
    open_ = 0;
    depth_ = 0;
    balanced_ = true;
}

// While a parenthesis is open, its place in closing_ holds the one that is open around it, so
// that no stack beside the table is needed.
void PairedText::pair(std::uint32_t at) {
    if (bytes_[at] == '(') {
        closing_[at] = innermost_;
        innermost_ = at;
        depth_ = std::max(depth_, ++open_);
    } else if (innermost_ == kNoOpen) {
        balanced_ = false;
    } else {
        const std::uint32_t opening = innermost_;
        innermost_ = closing_[opening];
        closing_[opening] = at;
        --open_;
    }
}

inline void PairedText::add(char byte) {
    bytes_[size_] = byte;
    if (byte == '(' || byte == ')') pair(size_);
    ++size_;
}

/// The first `count` of eight bytes; the others are none that matter.
inline void PairedText::addWord(std::uint64_t word, std::uint32_t count) {
    if (toBeCleaned(word) == 0) {
        std::memcpy(bytes_.data() + size_, &word, 8);
        for (std::uint64_t marks = parenthesesIn(word); marks != 0; marks = withoutFirst(marks))
            pair(size_ + firstMarked(marks));
        size_ += count;
        return;
    }
    char bytes[8];
    std::memcpy(bytes, &word, 8);
    for (std::uint32_t i = 0; i < count; ++i) {
        const char cleaned = kCleaned[static_cast<unsigned char>(bytes[i])];
        if (cleaned != 0) add(cleaned);
    }
}

void PairedText::assignCleaned(std::string_view raw) {
    begin(raw.size());
    const char* from = raw.data();
    std::size_t left = raw.size();
    for (; left >= 8; from += 8, left -= 8) addWord(loadWord(from, 8), 8);
    std::uint64_t rest = ~std::uint64_t{0} / 255 * 'x';
    std::memcpy(&rest, from, left);
    addWord(rest, static_cast<std::uint32_t>(left));
    finish();
}

void PairedText::assign(std::string_view text) {
    begin(text.size());
    for (const char byte : text) add(byte);
    finish();
}

/// What is still open counts as closed by the end of the text.
void PairedText::finish() {
    bytes_[size_] = '\0';
    while (innermost_ != kNoOpen) {
        balanced_ = false;
        const std::uint32_t opening = innermost_;
        innermost_ = closing_[opening];
        closing_[opening] = size_;
    }
}

void PairedText::releaseLargeBuffers() {
    bytes_.releaseIfLarge(kLargeText);
    closing_.releaseIfLarge(kLargeText);
    size_ = 0;
}

}  // namespace korvant::expr
