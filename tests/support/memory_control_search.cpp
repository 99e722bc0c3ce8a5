// Searching of the control without a screen.
#include <algorithm>
#include <regex>

#include "support/memory_control.h"

namespace korvant::test {

namespace {

constexpr int kBadExpression = 1001;
constexpr std::size_t kGroups = 10;

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

bool wordByte(char byte) {
    return lower(byte) != byte || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') ||
           byte == '_';
}

/// Groups and words are written with a backslash in the control, and the plain signs mean
/// themselves; here it is the other way round.
std::string translated(const std::string& expression) {
    std::string result;
    for (std::size_t i = 0; i < expression.size(); ++i) {
        const char byte = expression[i];
        if (std::string_view("(){}|").find(byte) != std::string_view::npos) result += '\\';
        if (byte != '\\' || i + 1 == expression.size()) {
            result += byte;
            continue;
        }
        const char next = expression[++i];
        if (next == '<' || next == '>')
            result += "\\b";
        else if (next == '(' || next == ')')
            result += next;
        else
            result += {'\\', next};
    }
    return result;
}

/// Groups as begins and ends; nothing when there is no match.
using Groups = std::vector<std::pair<int, int>>;

class Expression {
  public:
    Expression(const std::string& text, bool matchCase) {
        const auto cases = matchCase ? std::regex::ECMAScript : std::regex::icase;
        try {
            regex_.assign(translated(text), std::regex::ECMAScript | cases);
        } catch (const std::regex_error&) {
            valid_ = false;
        }
    }

    bool valid() const { return valid_; }
    Groups match(const std::string& text, bool atLineStart) const {
        using namespace std::regex_constants;
        std::smatch found;
        Groups groups;
        if (!std::regex_search(text, found, regex_, atLineStart ? match_default : match_not_bol))
            return groups;
        for (std::size_t i = 0; i < found.size(); ++i) {
            const int start = found[i].matched ? static_cast<int>(found.position(i)) : -1;
            groups.emplace_back(start, start < 0 ? -1 : start + static_cast<int>(found.length(i)));
        }
        groups.resize(kGroups, {-1, -1});
        return groups;
    }

  private:
    std::regex regex_;
    bool valid_ = true;
};

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
    groups_.clear();
    const Expression regex(expression, matchCase);
    if (!regex.valid()) {
        status_ = kBadExpression;
        return std::nullopt;
    }
    const bool forward = from <= to;
    const int low = std::min(from, to);
    const int high = std::max(from, to);
    std::optional<TextSpan> found;
    for (int line = lineOf(low); line <= lineOf(high) && !(found && forward); ++line) {
        const int end = std::min(endOf(line), high);
        for (int begin = std::max(startOf(line), low); begin <= end;) {
            const std::string part =
                text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
            const Groups groups = regex.match(part, begin == startOf(line));
            if (groups.empty()) break;
            groups_.clear();
            for (const auto& [start, stop] : groups)
                groups_.emplace_back(begin + std::max(start, 0), begin + std::max(stop, 0));
            found = TextSpan{groups_[0].first, groups_[0].second};
            if (forward) break;
            begin = std::max(found->end, begin + 1);
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
