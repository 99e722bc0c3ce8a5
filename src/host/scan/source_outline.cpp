#include "host/scan/source_outline.h"

#include <algorithm>

namespace korvant {

namespace {

bool opens(char symbol) {
    return symbol == '(' || symbol == '[' || symbol == '{';
}
bool closes(char symbol) {
    return symbol == ')' || symbol == ']' || symbol == '}';
}
char partner(char closer) {
    return closer == ')' ? '(' : closer == ']' ? '[' : '{';
}

/// Pairs brackets. What a wrong text leaves open ends where the compiler gives up on it: round and
/// square ones at the end of their statement or block.
class BracketPairs {
  public:
    explicit BracketPairs(const TokenList& tokens) : tokens_(tokens), closing_(tokens.size()) {
        for (std::size_t i = 0; i < closing_.size(); ++i)
            closing_[i] = static_cast<std::uint32_t>(i);
        for (std::size_t i = 0; i < tokens.size(); ++i)
            if (tokens[i].kind == Token::Kind::symbol) meet(i, tokens[i].symbol);
        while (!open_.empty()) closeLast(tokens_.size());
    }
    std::vector<std::uint32_t> take() { return std::move(closing_); }

  private:
    void meet(std::size_t i, char symbol) {
        if (opens(symbol)) {
            open_.push_back(i);
        } else if (symbol == ';') {
            while (!open_.empty() && !mayHoldStatements(open_.back())) closeLast(i);
        } else if (symbol == '}') {
            while (!open_.empty() && !tokens_.isSymbol(open_.back(), '{')) closeLast(i);
            if (!open_.empty()) closeLast(i);
        } else if (closes(symbol) && !open_.empty() &&
                   tokens_.isSymbol(open_.back(), partner(symbol))) {
            closeLast(i);
        }
    }

    bool mayHoldStatements(std::size_t open) const {
        return tokens_.isSymbol(open, '{') || tokens_.isWord(open - 1, "for");
    }

    void closeLast(std::size_t at) {
        closing_[open_.back()] = static_cast<std::uint32_t>(at);
        open_.pop_back();
    }

    const TokenList& tokens_;
    std::vector<std::uint32_t> closing_;
    std::vector<std::size_t> open_;
};

/// Walks over everything that is not code and notes what is declared there.
class Declarations {
  public:
    Declarations(const TokenList& tokens, Outline& outline) : tokens_(tokens), outline_(outline) {}

    void read() {
        for (std::size_t i = 0; i < tokens_.size();) i = step(i);
    }

  private:
    struct Scope {
        std::size_t end;    ///< the token that closes it
        std::size_t owner;  ///< its class, or kNone
        std::size_t path;   ///< bytes of namespaces around
        bool accessors;     ///< of a property: get and set
    };

    static constexpr std::size_t kNone = Outline::kNone;

    std::size_t owner() const { return scopes_.empty() ? kNone : scopes_.back().owner; }
    std::size_t path() const { return scopes_.empty() ? 0 : scopes_.back().path; }

    /// Reads one token, or a declaration up to its end; the next token to read.
    std::size_t step(std::size_t i) {
        while (!scopes_.empty() && i >= scopes_.back().end) scopes_.pop_back();
        if (tokens_.isName(i)) noteKeyword(i);
        if (tokens_.isSymbol(i, '{')) return openScope(i);
        if (tokens_.isSymbol(i, '(')) return function(i);
        if (tokens_.isSymbol(i, kAssign)) return value(i);
        if (tokens_.isSymbol(i, ';') || tokens_.isSymbol(i, ',')) variable(i, {i, i});
        if (tokens_.isSymbol(i, ';') || tokens_.isSymbol(i, '}')) beginAt(i + 1);
        if (tokens_.isSymbol(i, '[')) return outline_.closing[i] + std::size_t{1};
        return i + 1;
    }

    void beginAt(std::size_t i) {
        begin_ = i;
        keyword_ = kNone;
    }

    /// The word that says what is declared is the first of these.
    void noteKeyword(std::size_t i) {
        static constexpr std::string_view kWords[] = {"namespace", "class", "interface", "enum",
                                                      "funcdef"};
        if (keyword_ != kNone) return;
        if (std::find(std::begin(kWords), std::end(kWords), tokens_.text(i)) != std::end(kWords))
            keyword_ = i;
    }

    bool declares(std::string_view word) const {
        return keyword_ != kNone && tokens_.text(keyword_) == word;
    }

    std::size_t openScope(std::size_t i) {
        const std::size_t end = outline_.closing[i];
        Scope scope{end, owner(), path(), false};
        const bool inAccessors = !scopes_.empty() && scopes_.back().accessors;
        std::size_t next = i + 1;
        if (declares("namespace")) {
            ++outline_.namespaces;
            scope.path += namespaceBytes(i);
        } else if (declares("enum")) {
            noteType(keyword_ + 1);
            next = end;
            for (std::size_t at = i; at < end; ++at)
                outline_.enumValues += tokens_.isSymbol(at, ',');
        } else if (declares("class") || declares("interface")) {
            scope.owner = addClass(keyword_ + 1, i);
        } else if (inAccessors) {
            next = end;
        } else {
            countMember();
            scope.accessors = true;
        }
        scopes_.push_back(scope);
        beginAt(next);
        return next;
    }

    std::size_t namespaceBytes(std::size_t brace) {
        std::size_t bytes = 0;
        for (std::size_t i = keyword_ + 1; i < brace; ++i)
            if (tokens_.isName(i)) bytes += tokens_[i].size + 2;
        if (path() + bytes > outline_.longestPath) {
            outline_.longestPath = path() + bytes;
            outline_.deepestNames = brace;
        }
        return bytes;
    }

    std::size_t addClass(std::size_t name, std::size_t brace) {
        noteType(name);
        ClassOutline found;
        found.name = name;
        for (std::size_t i = name + 1; i < brace; ++i)
            if (tokens_.isName(i)) found.bases.push_back(i);
        outline_.classes.push_back(std::move(found));
        return outline_.classes.size() - 1;
    }

    void noteType(std::size_t name) {
        if (!tokens_.isName(name)) return;
        outline_.longestType = std::max(outline_.longestType, tokens_[name].size + path());
    }

    void countMember() {
        if (owner() != kNone) ++outline_.classes[owner()].members;
    }

    /// A parameter list, and the body behind it.
    std::size_t function(std::size_t open) {
        const std::size_t close = outline_.closing[open];
        FunctionOutline found;
        found.name = open > 0 ? open - 1 : 0;
        found.declaration = {std::min(begin_, open), std::min(close + 1, tokens_.size())};
        found.parameters = {open + 1, close};
        found.owner = owner();
        if (declares("funcdef")) {
            ++outline_.functionTypes;
            noteType(found.name);
        }
        std::size_t next = close + 1;
        while (tokens_.isName(next) || (found.owner != kNone && tokens_.isSymbol(next, ':')))
            ++next;
        if (tokens_.isSymbol(next, '{')) {
            found.body = {next + 1, outline_.closing[next]};
            next = found.body.end + 1;
        }
        beginAt(std::max(next, open + 1));
        outline_.functions.push_back(found);
        countMember();
        return begin_;
    }

    /// An initialiser, up to the end of its variable.
    std::size_t value(std::size_t assign) {
        std::size_t i = assign + 1;
        while (i < tokens_.size() && !tokens_.isSymbol(i, ';') && !tokens_.isSymbol(i, ',') &&
               !tokens_.isSymbol(i, '}'))
            i = opens(tokens_[i].symbol) ? outline_.closing[i] + std::size_t{1} : i + 1;
        // Behind a bracket that nothing closes there is no token.
        i = std::min(i, tokens_.size());
        variable(assign, {assign + 1, i});
        if (tokens_.isSymbol(i, ';')) beginAt(i + 1);
        return tokens_.isSymbol(i, '}') ? i : i + 1;
    }

    void variable(std::size_t behindName, TokenRange value) {
        if (behindName == 0 || !tokens_.isName(behindName - 1)) return;
        countMember();
        if (owner() == kNone) outline_.globals.push_back({behindName - 1, value});
    }

    const TokenList& tokens_;
    Outline& outline_;
    std::vector<Scope> scopes_;
    std::size_t begin_ = 0;        ///< first token of the declaration that is read
    std::size_t keyword_ = kNone;  ///< the word in it that says what it is
};

}  // namespace

Outline::Outline(const TokenList& tokens) : closing(BracketPairs(tokens).take()) {
    Declarations(tokens, *this).read();
}

}  // namespace korvant
