#include "editor/assist/hover_expression.h"

#include "language/tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kLongest = 400;

bool isBlank(char letter) {
    return letter == ' ' || letter == '\t';
}

std::size_t backOverBlanks(std::string_view text, std::size_t at) {
    while (at > 0 && isBlank(text[at - 1])) --at;
    return at;
}

/// The open bracket that belongs to the one before `end`; npos for none near.
std::size_t openingOf(std::string_view text, std::size_t end) {
    int open = 0;
    for (std::size_t at = end; at > 0 && end - at < kLongest; --at) {
        const char letter = text[at - 1];
        if (letter == ']' || letter == ')') ++open;
        if ((letter == '[' || letter == '(') && --open == 0) return at - 1;
        if (letter == ';' || letter == '{' || letter == '}') break;
    }
    return std::string_view::npos;
}

}  // namespace

std::string expressionEndingWith(std::string_view text, ByteRange word) {
    if (word.empty() || word.end > text.size() ||
        (text[word.begin] >= '0' && text[word.begin] <= '9'))
        return {};
    std::size_t behind = word.end;
    while (behind < text.size() && isBlank(text[behind])) ++behind;
    if (behind < text.size() && text[behind] == '(') return {};
    std::size_t begin = word.begin;
    for (;;) {
        std::size_t at = backOverBlanks(text, begin);
        if (at < 2 || text[at - 1] != '.') break;
        at = backOverBlanks(text, at - 1);
        while (at > 0 && text[at - 1] == ']') {
            const std::size_t open = openingOf(text, at);
            if (open == std::string_view::npos) return {};
            at = backOverBlanks(text, open);
        }
        if (at > 0 && text[at - 1] == ')') return {};
        const std::size_t end = at;
        while (at > 0 && isWordByte(text[at - 1])) --at;
        if (at == end) return {};
        begin = at;
    }
    return std::string(text.substr(begin, word.end - begin));
}

}  // namespace korvant
