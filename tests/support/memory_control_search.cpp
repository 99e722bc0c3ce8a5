// Searching of the control without a screen.
#include <algorithm>
#include <regex>

#include "support/memory_control.h"

namespace korvant::test {

namespace {

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

bool wordByte(char byte) {
    return lower(byte) != byte || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
           byte == '_';
}

/// The control marks groups as "\(...\)" and words as "\<...\>".
std::string translated(const std::string& expression) {
    std::string result;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        const char byte = expression[i];
        const bool escape = byte == '\\' && i + 1 < expression.size();
        const char next = escape ? expression[i + 1] : '\0';
        if (escape && (next == '(' || next == ')'))
            result += next, ++i;
        else if (escape && (next == '<' || next == '>'))
            result += "\\b", ++i;
        else if (byte == '(' || byte == ')' || byte == '{' || byte == '}' || byte == '|')
            result += std::string("\\") + byte;
        else if (escape)
            result += byte, result += next, ++i;
        else
            result += byte;
    }
    return result;
}

}  // namespace

bool MemoryControl::wordsAgree(std::uint32_t flags, int start, int end) const {
    if ((flags & sci::kFindWholeWord) == 0) return true;
    const auto word = [&](int place) {
        return place >= 0 && place < length() && wordByte(text[static_cast<std::size_t>(place)]);
    };
    return word(start - 1) != word(start) && word(end - 1) != word(end);
}

std::optional<TextSpan> MemoryControl::findText(std::uint32_t flags, int from, int to,
                                                const std::string& what) {
    const bool matchCase = (flags & sci::kFindMatchCase) != 0;
    if (what.empty()) return TextSpan{from, from};
    if ((flags & sci::kFindRegExp) != 0) return findExpression(from, to, what, matchCase);
    const int size = static_cast<int>(what.size());
    const int step = from <= to ? 1 : -1;
    const int limit = std::max(from, to);
    const auto same = [&](char a, char b) { return matchCase ? a == b : lower(a) == lower(b); };
    for (int at = step > 0 ? from : from - 1; step > 0 ? at < to : at >= to; at += step) {
        if (at + size > limit || at + size > length()) continue;
        const auto begin = text.begin() + at;
        if (std::equal(what.begin(), what.end(), begin, same) && wordsAgree(flags, at, at + size))
            return TextSpan{at, at + size};
    }
    return std::nullopt;
}

std::optional<TextSpan> MemoryControl::findExpression(int from, int to,
                                                      const std::string& expression,
                                                      bool matchCase) {
    auto options = std::regex::ECMAScript;
    if (!matchCase) options |= std::regex::icase;
    groups_.clear();
    const std::regex regex(translated(expression), options);
    const bool forward = from <= to;
    const int low = std::min(from, to);
    const int high = std::max(from, to);
    std::optional<TextSpan> found;
    for (int line = lineOf(low); line <= lineOf(high) && !(found && forward); ++line) {
        const int begin = std::max(startOf(line), low);
        const int end = std::min(endOf(line), high);
        auto flags = begin == startOf(line) ? std::regex_constants::match_default
                                            : std::regex_constants::match_not_bol;
        const std::string part = text.substr(static_cast<std::size_t>(begin),
                                             static_cast<std::size_t>(std::max(end - begin, 0)));
        for (auto match = std::sregex_iterator(part.begin(), part.end(), regex, flags);
             match != std::sregex_iterator() && !(found && forward); ++match) {
            groups_.clear();
            for (std::size_t i = 0; i < match->size(); ++i) {
                const int start = begin + static_cast<int>(match->position(i));
                groups_.emplace_back(start, start + static_cast<int>(match->length(i)));
            }
            found = TextSpan{groups_[0].first, groups_[0].second};
        }
    }
    return found;
}

/// Groups are where the last expression found them, whatever stands there now.
std::string MemoryControl::substituted(std::string_view pattern) const {
    std::string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '\\' || i + 1 >= pattern.size()) {
            result += pattern[i];
            continue;
        }
        const char next = pattern[++i];
        const auto group = static_cast<std::size_t>(next - '0');
        if (next == 'n')
            result += '\n';
        else if (next == 't')
            result += '\t';
        else if (next < '0' || next > '9')
            result += next;
        else if (group < groups_.size() && groups_[group].second <= length())
            result +=
                text.substr(static_cast<std::size_t>(groups_[group].first),
                            static_cast<std::size_t>(groups_[group].second - groups_[group].first));
    }
    return result;
}

}  // namespace korvant::test
