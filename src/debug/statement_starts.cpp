#include "debug/statement_starts.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "host/scan/source_tokens.h"

namespace korvant {

struct StatementStarts::Impl {
    explicit Impl(std::string source);
    std::int32_t lineOf(std::size_t token) const;
    std::size_t offsetOf(std::int32_t line, std::int32_t column) const;
    std::size_t tokenAt(std::int32_t line, std::int32_t column) const;
    std::size_t behindBlock(std::size_t opening) const;
    std::size_t loopEnd(std::size_t loop) const;
    bool isDeclarator(std::size_t token) const;
    bool declaresPlainly(std::size_t token) const;
    std::size_t statementOf(std::size_t token) const;
    bool isNamed(std::size_t token, std::string_view name) const;
    bool maySet(std::size_t token, std::string_view name) const;
    bool maySetWithin(std::size_t begin, std::size_t end, std::string_view name,
                      int variable) const;
    bool isHandedOutLast(std::size_t from, std::size_t end, std::string_view name,
                         int variable) const;
    bool isAnother(std::size_t token, std::string_view name, int variable) const;
    bool isOutParameter(std::size_t token) const;
    void collectTries();
    /// A name that is met on the way back from a statement to the beginning of its function.
    struct Passed {
        std::size_t at;
        bool outside;      ///< in no bracket or block that has been left again
        std::size_t loop;  ///< see WayBack::loop()
    };
    const std::vector<Passed>& namesBefore(std::size_t from, std::string_view name) const;
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
    std::optional<DeclaredVariables> variables;

    /// The last way back, which all variables of a stop ask about.
    mutable std::optional<std::size_t> wayFrom;
    mutable std::unordered_map<std::string_view, std::vector<Passed>> way;
};

namespace {

constexpr std::size_t kMostTokens = std::size_t{1} << 22;

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// A name behind one of these is no variable that is declared.
bool isOperatorWord(std::string_view word) {
    return isOneOf(word, {"return", "case", "else", "do", "not", "and", "or", "xor", "is"});
}

/// A name behind one of these is used, one behind any other name is declared.
bool isNoType(std::string_view word) {
    return isOperatorWord(word) || isOneOf(word, {"in", "out", "cast"});
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

const DeclaredVariables& StatementStarts::variables() const {
    if (!impl_->variables) impl_->variables.emplace(impl_->text);
    return *impl_->variables;
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

/// The token behind a loop; behind the block around it where it has none of its own.
std::size_t StatementStarts::Impl::loopEnd(std::size_t loop) const {
    std::size_t body = loop + 1;
    if (tokens->isSymbol(body, '(')) body = behindBlock(body);
    std::size_t end = body;
    if (tokens->isSymbol(body, '{'))
        end = behindBlock(body);
    else
        for (int depth = 0; end < tokens->size() && depth >= 0; ++end)
            depth += opens(end) ? 1 : closes(end) ? -1 : 0;
    if (tokens->isWord(end, "while")) end = behindBlock(end + 1);
    return end;
}

/// The name of a variable, and no member or part of a longer name.
bool StatementStarts::Impl::isNamed(std::size_t i, std::string_view name) const {
    return tokens->isWord(i, name) && !tokens->isSymbol(i - 1, '.') &&
           !tokens->isSymbol(i - 1, kScope);
}

/// A name that is read alone does not count: it stands beside an operator that assigns nothing.
bool StatementStarts::Impl::maySet(std::size_t i, std::string_view name) const {
    if (!isNamed(i, name)) return false;
    const auto steps = [this](std::size_t sign) {
        return (tokens->isSymbol(sign, '+') && tokens->isSymbol(sign + 1, '+')) ||
               (tokens->isSymbol(sign, '-') && tokens->isSymbol(sign + 1, '-'));
    };
    const auto isOneOf = [this](std::size_t at, std::string_view signs) {
        return at < tokens->size() && (*tokens)[at].kind == Token::Kind::symbol &&
               signs.find((*tokens)[at].symbol) != std::string_view::npos;
    };
    const bool argument = isOneOf(i - 1, "([,:?") && isOneOf(i + 1, ")],:");
    return tokens->isSymbol(i + 1, kAssign) || steps(i + 1) || steps(i - 2) || argument;
}

bool StatementStarts::Impl::maySetWithin(std::size_t begin, std::size_t end, std::string_view name,
                                         int variable) const {
    for (std::size_t i = begin; i < end; ++i)
        if (maySet(i, name) && !isAnother(i, name, variable)) return true;
    return false;
}

/// "a.f(name);", "return f(name);" and "int b = f(name);": what a call hands out is there when it
/// has returned, and no code runs behind it.
bool StatementStarts::Impl::isHandedOutLast(std::size_t from, std::size_t end,
                                            std::string_view name, int variable) const {
    std::size_t use = end;
    for (std::size_t i = from; i < end; ++i) {
        if (!maySet(i, name) || isAnother(i, name, variable)) continue;
        if (use != end) return false;
        use = i;
    }
    int depth = 0;
    std::size_t open = use;
    while (open > from && depth >= 0) depth += closes(--open) ? 1 : opens(open) ? -1 : 0;
    if (depth >= 0 || !tokens->isSymbol(open, '(') || behindBlock(open) != end ||
        !tokens->isSymbol(end, ';'))
        return false;
    for (std::size_t i = from; i < open; ++i) {
        const bool ofPlain = tokens->isSymbol(i, kAssign) && i > 1 &&
                             isPlainType(tokens->text(i - 2)) && i <= from + 2;
        const bool returns = i == from && tokens->isWord(i, "return");
        const bool word = tokens->isName(i) && !isOperatorWord(tokens->text(i));
        if (!returns && !word && !ofPlain && !tokens->isSymbol(i, '.') &&
            !tokens->isSymbol(i, kScope))
            return false;
    }
    return true;
}

/// Whether a name means a variable of an inner or outer block.
bool StatementStarts::Impl::isAnother(std::size_t token, std::string_view name,
                                      int variable) const {
    if (variable == kNoIndex) return false;
    const int meant = variables->meantBy(name, (*tokens)[token].begin);
    return meant != kNoIndex && meant != variable;
}

/// "type &out name": what lies there when the call begins means nothing.
bool StatementStarts::Impl::isOutParameter(std::size_t token) const {
    return token > 1 && tokens->isWord(token - 1, "out") && tokens->isSymbol(token - 2, '&');
}

/// The first token of the statement around a token that stands in no bracket of it.
std::size_t StatementStarts::Impl::statementOf(std::size_t token) const {
    int depth = 0;
    for (std::size_t i = token; i > 0; --i) {
        const std::size_t before = i - 1;
        const bool block = tokens->isSymbol(before, '{') || tokens->isSymbol(before, '}');
        if (depth == 0 && (block || tokens->isSymbol(before, ';'))) return i;
        if (closes(before)) ++depth;
        if (opens(before)) --depth;
    }
    return 0;
}

/// "Type name", "const space::Type other, name", without a value: what it names is declared there.
bool StatementStarts::Impl::declaresPlainly(std::size_t token) const {
    if (!tokens->isSymbol(token + 1, ';') && !tokens->isSymbol(token + 1, ',')) return false;
    std::size_t first = statementOf(token);
    if (tokens->isWord(first, "const")) ++first;
    if (tokens->isSymbol(first, kScope)) ++first;
    if (!tokens->isName(first) || isNoType(tokens->text(first))) return false;
    while (tokens->isSymbol(first + 1, kScope) && tokens->isName(first + 2)) first += 2;
    return first + 1 == token ||
           (first + 1 < token && tokens->isName(first + 1) && tokens->isSymbol(token - 1, ','));
}

namespace {

/// Walks from a statement back to the parameters of its function, and notes what lies between.
class WayBack {
  public:
    WayBack(const TokenList& tokens, std::size_t from) : tokens_(tokens), at_(from) {}

    /// False where the function begins.
    bool step() {
        if (at_ == 0 || at_ == begin_) return false;
        --at_;
        if (tokens_.isSymbol(at_, ')') || tokens_.isSymbol(at_, ']')) ++brackets_;
        if (tokens_.isSymbol(at_, '(') || tokens_.isSymbol(at_, '[')) leave(brackets_);
        const bool block = tokens_.isSymbol(at_, '}');
        if (tokens_.isSymbol(at_, '{')) leave(blocks_);
        const bool ends = block || tokens_.isSymbol(at_, ';');
        const bool goesOn = tokens_.isWord(at_ + 1, "else") || tokens_.isWord(at_ + 1, "catch");
        if (ends && isOutside() && !goesOn) ended_ = true;
        if (block) ++blocks_;
        const bool loop =
            tokens_.isWord(at_, "for") || tokens_.isWord(at_, "while") || tokens_.isWord(at_, "do");
        if (loop && blocks_ == 0 && !ended_) loop_ = at_;
        return true;
    }

    std::size_t at() const { return at_; }
    /// The token stands in no bracket or block that has been left again.
    bool isOutside() const { return blocks_ == 0 && brackets_ == 0; }
    /// The outermost loop around the statement that has been passed; none: kNone.
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t loop() const { return loop_; }

  private:
    /// A bracket opens: one that has been passed, or one around the statement.
    void leave(int& depth) {
        if (depth > 0) {
            --depth;
            return;
        }
        ended_ = false;
        if (tokens_.isSymbol(at_, '{') && begin_ == 0) begin_ = parametersBefore(at_);
    }

    /// The bracket that opens the parameters of the function whose body opens at `body`; 0 where it
    /// is another block.
    std::size_t parametersBefore(std::size_t body) const {
        std::size_t i = body - 1;
        while (tokens_.isName(i) &&
               isOneOf(tokens_.text(i), {"const", "override", "final", "property", "explicit"}))
            --i;
        if (!tokens_.isSymbol(i, ')')) return 0;
        for (int depth = 0; i > 0; --i) {
            if (tokens_.isSymbol(i, ')')) ++depth;
            if (tokens_.isSymbol(i, '(') && --depth == 0) break;
        }
        const bool head =
            tokens_.isName(i - 1) && isOneOf(tokens_.text(i - 1), {"if", "for", "while", "switch"});
        return tokens_.isName(i - 1) && !head ? i : 0;
    }

    const TokenList& tokens_;
    std::size_t at_;
    std::size_t begin_ = 0;  ///< of the parameters; 0: not known yet
    int brackets_ = 0;
    int blocks_ = 0;
    bool ended_ = false;
    std::size_t loop_ = kNone;
};

}  // namespace

const std::vector<StatementStarts::Impl::Passed>& StatementStarts::Impl::namesBefore(
    std::size_t from, std::string_view name) const {
    if (wayFrom != from) {
        way.clear();
        wayFrom.reset();
        WayBack back(*tokens, from);
        while (back.step())
            if (tokens->isName(back.at()))
                way[tokens->text(back.at())].push_back({back.at(), back.isOutside(), back.loop()});
        wayFrom = from;
    }
    static const auto* const none = new std::vector<Passed>;
    const auto found = way.find(name);
    return found == way.end() ? *none : found->second;
}

bool StatementStarts::neverSet(std::int32_t line, std::int32_t column, std::string_view name,
                               bool begun) const {
    const TokenList& tokens = *impl_->tokens;
    const std::size_t from = impl_->tokenAt(line, column);
    const int variable = variables().meantBy(name, impl_->offsetOf(line, column));
    std::size_t end = from;
    while (begun && end < tokens.size() && !tokens.isSymbol(end, ';') && !tokens.isSymbol(end, '{'))
        ++end;
    // Its value is being worked out.
    const bool assigned = tokens.isWord(from, name) && tokens.isSymbol(from + 1, kAssign);
    if (impl_->maySetWithin(from + (assigned ? 1 : 0), end, name, variable) &&
        !impl_->isHandedOutLast(from, end, name, variable))
        return false;
    // A loop whose head begins has not run.
    const bool head = tokens.isSymbol(from - 1, '(') && tokens.isWord(from - 2, "for");
    for (const Impl::Passed& passed : impl_->namesBefore(head ? from - 2 : from, name)) {
        if (!impl_->isNamed(passed.at, name) || impl_->isAnother(passed.at, name, variable))
            continue;
        const bool plainly = passed.outside && impl_->declaresPlainly(passed.at);
        if (plainly || impl_->isOutParameter(passed.at))
            return passed.loop == WayBack::kNone ||
                   !impl_->maySetWithin(from, impl_->loopEnd(passed.loop), name, variable);
        // A declaration of some other form: with a value, in brackets, in a block of its own.
        const std::size_t before = passed.at - 1;
        const bool typed = tokens.isName(before) && !isOperatorWord(tokens.text(before));
        if (typed || impl_->maySet(passed.at, name)) return false;
    }
    return false;
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
