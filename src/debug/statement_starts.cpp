#include "debug/statement_starts.h"

#include <algorithm>
#include <optional>

#include "host/scan/source_tokens.h"

namespace korvant {

struct StatementStarts::Impl {
    explicit Impl(std::string source);
    std::int32_t lineOf(std::size_t token) const;
    std::size_t offsetOf(std::int32_t line, std::int32_t column) const;
    std::size_t tokenAt(std::int32_t line, std::int32_t column) const;
    std::size_t behindBlock(std::size_t opening) const;
    bool isDeclarator(std::size_t token) const;
    void collectTries();
    bool opens(std::size_t i) const {
        return tokens->isSymbol(i, '(') || tokens->isSymbol(i, '[') || tokens->isSymbol(i, '{');
    }
    bool closes(std::size_t i) const {
        return tokens->isSymbol(i, ')') || tokens->isSymbol(i, ']') || tokens->isSymbol(i, '}');
    }

    std::string text;
    std::optional<TokenList> tokens;
    std::vector<std::size_t> lineBegins{0};
    std::vector<std::pair<std::size_t, std::size_t>> tries;  ///< offsets of their blocks
};

namespace {

constexpr std::size_t kMostTokens = std::size_t{1} << 22;

/// A name behind one of these is used, one behind any other name is declared.
bool isNoType(std::string_view word) {
    static constexpr std::string_view kWords[] = {"return", "case", "else", "not", "and", "or",
                                                  "xor",    "is",   "in",   "out", "cast"};
    return std::find(std::begin(kWords), std::end(kWords), word) != std::end(kWords);
}

}  // namespace

StatementStarts::Impl::Impl(std::string source) : text(std::move(source)) {
    tokens = TokenList::of(text, kMostTokens);
    if (!tokens) tokens = TokenList::of("", kMostTokens);
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        lineBegins.push_back(at + 1);
    collectTries();
}

StatementStarts::StatementStarts(std::string text)
    : impl_(std::make_unique<Impl>(std::move(text))) {}

StatementStarts::~StatementStarts() = default;

std::int32_t StatementStarts::lineCount() const {
    return static_cast<std::int32_t>(impl_->lineBegins.size());
}

const std::string& StatementStarts::text() const {
    return impl_->text;
}

std::int32_t StatementStarts::Impl::lineOf(std::size_t token) const {
    const auto behind =
        std::upper_bound(lineBegins.begin(), lineBegins.end(), (*tokens)[token].begin);
    return static_cast<std::int32_t>(behind - lineBegins.begin());
}

std::size_t StatementStarts::Impl::offsetOf(std::int32_t line, std::int32_t column) const {
    const auto index = static_cast<std::size_t>(std::max(line, 1) - 1);
    if (index >= lineBegins.size()) return text.size();
    return lineBegins[index] + static_cast<std::size_t>(std::max(column, 1) - 1);
}

/// The first token at or behind a place.
std::size_t StatementStarts::Impl::tokenAt(std::int32_t line, std::int32_t column) const {
    const std::size_t offset = offsetOf(line, column);
    std::size_t low = 0;
    std::size_t high = tokens->size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if ((*tokens)[middle].begin < offset)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

/// The token behind the bracket that closes the one at `opening`.
std::size_t StatementStarts::Impl::behindBlock(std::size_t opening) const {
    int depth = 0;
    for (std::size_t i = opening; i < tokens->size(); ++i) {
        if (opens(i)) ++depth;
        if (closes(i) && --depth == 0) return i + 1;
    }
    return tokens->size();
}

void StatementStarts::Impl::collectTries() {
    for (std::size_t i = 0; i + 1 < tokens->size(); ++i) {
        if (!tokens->isWord(i, "try") || !tokens->isSymbol(i + 1, '{')) continue;
        const std::size_t behind = behindBlock(i + 1);
        const std::size_t end = behind < tokens->size() ? (*tokens)[behind].begin : text.size();
        tries.emplace_back((*tokens)[i + 1].begin, end);
    }
}

std::vector<std::int32_t> StatementStarts::loopHeadLines() const {
    const TokenList& tokens = *impl_->tokens;
    std::vector<std::int32_t> lines;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        if (!tokens.isWord(i, "for") || !tokens.isSymbol(i + 1, '(')) continue;
        int depth = 0;
        int part = 0;
        for (std::size_t at = i + 1; at + 1 < tokens.size(); ++at) {
            if (impl_->opens(at)) ++depth;
            if (impl_->closes(at) && --depth == 0) break;
            const bool next = depth == 1 && tokens.isSymbol(at, ';');
            if (next) ++part;
            if (next || (part == 2 && depth == 1 && tokens.isSymbol(at, ',')))
                if (!tokens.isSymbol(at + 1, ';') && !impl_->closes(at + 1))
                    lines.push_back(impl_->lineOf(at + 1));
        }
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

bool StatementStarts::insideTry(std::int32_t line, std::int32_t column) const {
    const std::size_t at = impl_->offsetOf(line, column);
    return std::any_of(impl_->tries.begin(), impl_->tries.end(),
                       [at](const auto& block) { return at >= block.first && at < block.second; });
}

bool StatementStarts::Impl::isDeclarator(std::size_t i) const {
    const bool used = tokens->isName(i - 1) && isNoType(tokens->text(i - 1));
    const bool typed = tokens->isName(i - 1) || tokens->isSymbol(i - 1, '>') ||
                       tokens->isSymbol(i - 1, ']') || tokens->isSymbol(i - 1, '@') ||
                       tokens->isSymbol(i - 1, ',');
    const bool ended = tokens->isSymbol(i + 1, '=') || tokens->isSymbol(i + 1, ';') ||
                       tokens->isSymbol(i + 1, ',') || tokens->isSymbol(i + 1, '(');
    return typed && ended && !used;
}

bool StatementStarts::declares(std::int32_t line, std::int32_t column,
                               std::string_view name) const {
    const TokenList& tokens = *impl_->tokens;
    std::size_t i = impl_->tokenAt(line, column);
    if (tokens.isWord(i, "for")) i += 2;
    const std::size_t first = i;
    int depth = 0;
    bool value = false;  // behind the sign that a declarator's value follows
    for (; i < tokens.size(); ++i) {
        if (depth == 0 && tokens.isSymbol(i, ';')) return false;
        if (impl_->closes(i) && --depth < 0) return false;
        if (impl_->opens(i)) ++depth;
        if (depth != 0) continue;
        if (tokens.isSymbol(i, '=')) value = true;
        if (tokens.isSymbol(i, ',')) value = false;
        if (!value && i > first && tokens.isWord(i, name) && impl_->isDeclarator(i)) return true;
    }
    return false;
}

}  // namespace korvant
