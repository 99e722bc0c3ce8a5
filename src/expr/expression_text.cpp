#include "expr/expression_text.h"

#include <algorithm>

namespace korvant::expr {
namespace {

constexpr std::uint32_t kNoOpen = ~std::uint32_t{0};
constexpr std::size_t kLargeText = std::size_t{64} << 10;

/// Copies the bytes that have a meaning, each as `change` makes it; how many there were.
template <class Change>
std::size_t copyWithoutBlanks(std::string_view text, char* to, Change change) {
    char* next = to;
    for (const char byte : text) {
        *next = change(byte);
        next += isBlank(byte) ? 0 : 1;
    }
    return static_cast<std::size_t>(next - to);
}

/// Calls `open` and `close` with the position of each parenthesis; stops at a ")" without its
/// "(". Whether the text is balanced.
template <class Open, class Close>
bool walkParentheses(std::string_view text, Open open, Close close) {
    std::size_t depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') {
            ++depth;
            open(static_cast<std::uint32_t>(i));
        } else if (text[i] == ')') {
            if (depth == 0) return false;
            --depth;
            close(static_cast<std::uint32_t>(i));
        }
    }
    return depth == 0;
}

}  // namespace

std::string removeBlanks(std::string_view text) {
    std::string kept(text.size() + 1, '\0');
    kept.resize(copyWithoutBlanks(text, kept.data(), [](char byte) { return byte; }));
    return kept;
}

bool isBalanced(std::string_view text) {
    return walkParentheses(
        text, [](std::uint32_t) {}, [](std::uint32_t) {});
}

bool stripOuterParentheses(std::string& text) {
    PairedText paired;
    paired.assign(text);
    if (!paired.isEnclosed(paired.all())) return false;
    text = text.substr(1, text.size() - 2);
    return true;
}

void PairedText::assignCleaned(std::string_view raw) {
    // One byte more: a blank at the very end is written before it is dropped.
    if (bytes_.size() <= raw.size()) bytes_.resize(raw.size() + 1);
    const auto lower = [](char byte) { return lowerCase(byte); };
    size_ = static_cast<std::uint32_t>(copyWithoutBlanks(raw, bytes_.data(), lower));
    pair();
}

void PairedText::assign(std::string_view text) {
    if (bytes_.size() <= text.size()) bytes_.resize(text.size() + 1);
    std::copy(text.begin(), text.end(), bytes_.begin());
    size_ = static_cast<std::uint32_t>(text.size());
    pair();
}

// While a parenthesis is open, its place in closing_ holds the one that is open around it, so
// that no stack beside the table is needed.
void PairedText::pair() {
    if (closing_.size() <= size_) closing_.resize(std::max<std::size_t>(size_ + 1, bytes_.size()));
    std::uint32_t innermost = kNoOpen, depth = 0;
    depth_ = 0;
    const auto open = [&](std::uint32_t at) {
        closing_[at] = innermost;
        innermost = at;
        depth_ = std::max(depth_, ++depth);
    };
    const auto close = [&](std::uint32_t at) {
        const std::uint32_t outer = closing_[innermost];
        closing_[innermost] = at;
        innermost = outer;
        --depth;
    };
    balanced_ = walkParentheses(bytes(), open, close);
    closeAtEnd(innermost);
}

void PairedText::closeAtEnd(std::uint32_t open) {
    while (open != kNoOpen) {
        const std::uint32_t outer = closing_[open];
        closing_[open] = size_;
        open = outer;
    }
}

void PairedText::releaseLargeBuffers() {
    if (bytes_.capacity() > kLargeText) bytes_ = {};
    if (closing_.capacity() > kLargeText) closing_ = {};
    size_ = 0;
}

}  // namespace korvant::expr
