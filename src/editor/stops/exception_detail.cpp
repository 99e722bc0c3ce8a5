#include "editor/stops/exception_detail.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "language/tokens.h"

namespace korvant {

namespace {

using Tokens = std::vector<ScriptToken>;

std::string between(std::string_view line, const Tokens& tokens, std::size_t first,
                    std::size_t end) {
    if (first >= end) return {};
    const int from = tokens[first].position;
    return std::string(line.substr(static_cast<std::size_t>(from),
                                   static_cast<std::size_t>(tokens[end - 1].end() - from)));
}

/// The token that closes the bracket at `open`; tokens.size() for none.
std::size_t closing(const Tokens& tokens, std::size_t open) {
    int depth = 0;
    for (std::size_t i = open; i < tokens.size(); ++i) {
        if (tokens[i].is("[") || tokens[i].is("(")) ++depth;
        if ((tokens[i].is("]") || tokens[i].is(")")) && --depth == 0) return i;
    }
    return tokens.size();
}

/// Where the bracket that `close` closes opens; 0 for none, which no operand can be.
std::size_t opening(const Tokens& tokens, std::size_t close) {
    int depth = 0;
    for (std::size_t i = close + 1; i-- > 0;) {
        if (tokens[i].is("]") || tokens[i].is(")")) ++depth;
        if ((tokens[i].is("[") || tokens[i].is("(")) && --depth == 0) return i;
    }
    return 0;
}

/// The first token of the names, members and elements that end before `end`.
std::size_t operandBegin(const Tokens& tokens, std::size_t end) {
    std::size_t at = end;
    while (at > 0) {
        std::size_t begin = at - 1;
        if (tokens[begin].is("]")) {
            begin = opening(tokens, begin);
            if (begin == 0) return at;
            at = begin;
            continue;
        }
        if (!tokens[begin].isName() && !tokens[begin].is("this")) return at == end ? end : at;
        at = begin;
        if (at < 2 || !(tokens[at - 1].is(".") || tokens[at - 1].is("::"))) return at;
        --at;
    }
    return at;
}

std::optional<long long> wholeNumber(const std::string& text) {
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

bool isZero(const std::string& text) {
    return !text.empty() && text.find_first_not_of("-0.") == std::string::npos &&
           text.find('0') != std::string::npos;
}

std::string indexSentence(const std::string& array, std::uint64_t count, long long index) {
    const std::string here = "; the number here was " + std::to_string(index) + ".";
    if (count == 0) return array + " has no elements" + here;
    if (count == 1) return array + " has 1 element, numbered 0" + here;
    return array + " has " + std::to_string(count) + " elements, numbered 0 to " +
           std::to_string(count - 1) + here;
}

std::string outOfBounds(std::string_view line, const Tokens& tokens, const ReadExpression& read) {
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (!tokens[i].is("[")) continue;
        const std::size_t close = closing(tokens, i);
        const std::string array = between(line, tokens, operandBegin(tokens, i), i);
        if (close == tokens.size() || array.empty() || close == i + 1) continue;
        const auto index = read(between(line, tokens, i + 1, close));
        const auto number = index ? wholeNumber(index->value) : std::nullopt;
        if (!number) continue;
        const auto elements = read(array);
        // Only of an array is it known how its elements are numbered.
        if (!elements || elements->type.find_first_of("[<") == std::string::npos) continue;
        if (*number < 0 || static_cast<std::uint64_t>(*number) >= elements->indexed)
            return indexSentence(array, elements->indexed, *number);
    }
    return {};
}

std::string nullHandle(std::string_view line, const Tokens& tokens, const ReadExpression& read) {
    for (std::size_t i = 1; i < tokens.size(); ++i) {
        if (!tokens[i].is(".") && !tokens[i].is("[")) continue;
        const std::string name = between(line, tokens, operandBegin(tokens, i), i);
        const auto value = name.empty() ? std::nullopt : read(name);
        if (value && value->value == "null") return name + " is null.";
    }
    return {};
}

/// Up to the next sign that binds less than a division, or to the end of the brackets around it.
std::string zeroDivisor(std::string_view line, const Tokens& tokens, const ReadExpression& read) {
    for (std::size_t i = 1; i + 1 < tokens.size(); ++i) {
        if (!tokens[i].is("/") && !tokens[i].is("%") && !tokens[i].is("/=") && !tokens[i].is("%="))
            continue;
        std::size_t end = i + 1;
        if (tokens[end].is("(")) {
            end = std::min(closing(tokens, end) + 1, tokens.size());
        } else {
            while (end < tokens.size() &&
                   (tokens[end].isWord() || tokens[end].is(".") || tokens[end].is("::") ||
                    tokens[end].kind == ScriptToken::Kind::number || tokens[end].is("[")))
                end = tokens[end].is("[") ? std::min(closing(tokens, end) + 1, tokens.size())
                                          : end + 1;
        }
        const std::string divisor = between(line, tokens, i + 1, end);
        const auto value = divisor.empty() ? std::nullopt : read(divisor);
        if (value && isZero(value->value)) return divisor + " is 0.";
    }
    return {};
}

}  // namespace

std::string exceptionDetail(std::string_view message, std::string_view line,
                            const ReadExpression& read) {
    const Tokens tokens = scriptTokens(line);
    if (message.find("ndex out of bounds") != std::string_view::npos)
        return outOfBounds(line, tokens, read);
    if (message.find("ull pointer access") != std::string_view::npos)
        return nullHandle(line, tokens, read);
    if (message.find("ivide by zero") != std::string_view::npos)
        return zeroDivisor(line, tokens, read);
    return {};
}

}  // namespace korvant
