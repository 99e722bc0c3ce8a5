#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Finds where a handle takes itself. The compiler leaves out the reference that a copy between
/// variables would otherwise hold, and the engine lets go of the old object before it takes the
/// new one: when the variable had the only reference, both are gone.
class HandleCheck {
  public:
    explicit HandleCheck(const TokenList& tokens) : tokens_(tokens) {}

    ScanResult run() const {
        for (std::size_t i = 1; i < tokens_.size(); ++i) {
            if (!tokens_.isSymbol(i, kAssign) || tokens_[i].size != 1) continue;
            const std::size_t target = targetBefore(i);
            if (tokens_.isName(target) && isSource(i + 1, tokens_.text(target)))
                return ScanFinding{target, "The handle is assigned to itself"};
        }
        return std::nullopt;
    }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// The variable of "@v", "@(v)" or "(@v)" that ends before `i`, unless it is declared there.
    std::size_t targetBefore(std::size_t i) const {
        std::size_t name = i - 1;
        while (tokens_.isSymbol(name, ')')) --name;
        bool handle = false;
        std::size_t before = name - 1;
        for (; tokens_.isSymbol(before, '(') || tokens_.isSymbol(before, '@'); --before)
            handle = handle || tokens_.isSymbol(before, '@');
        return handle && !isDeclared(name) ? name : kNone;
    }

    /// A type stands before the "@" before it.
    bool isDeclared(std::size_t name) const {
        const std::size_t type = name - 2;
        if (!tokens_.isSymbol(name - 1, '@')) return false;
        if (tokens_.isName(type)) return !tokens_.isWord(type, "return") && !isElse(type);
        return tokens_.isSymbol(type, ']') || tokens_.isSymbol(type, '>');
    }
    bool isElse(std::size_t i) const {
        return tokens_.isWord(i, "else") || tokens_.isWord(i, "do");
    }

    /// From `i` on stands nothing but `name`, perhaps in parentheses or cast to what it is.
    bool isSource(std::size_t i, std::string_view name) const {
        std::size_t open = 0;
        for (;; ++i) {
            if (tokens_.isWord(i, "cast") && tokens_.isSymbol(i + 1, '<'))
                i = endOfType(i + 1);
            else if (tokens_.isSymbol(i, '('))
                ++open;
            else if (!tokens_.isSymbol(i, '@'))
                break;
        }
        if (!tokens_.isWord(i, name)) return false;
        for (++i; open > 0 && tokens_.isSymbol(i, ')'); ++i) --open;
        for (const char end : {';', ',', ')', ':', ']', '}', kAssign})
            if (tokens_.isSymbol(i, end)) return true;
        return false;
    }

    /// The ">" that belongs to the "<" at `i`, unless the type is longer than any can be.
    std::size_t endOfType(std::size_t i) const {
        constexpr std::size_t kMostTokens = 512;
        const std::size_t end = std::min(tokens_.size(), i + kMostTokens);
        int depth = 0;
        for (; i < end; ++i) {
            depth += tokens_.isSymbol(i, '<');
            if (tokens_.isSymbol(i, '>') && --depth == 0) break;
        }
        return i;
    }

    const TokenList& tokens_;
};

/// Finds handles that came into a function by reference and are assigned on, put into a list or
/// called: the compiler takes the reference for the handle itself.
class ReferenceCheck {
  public:
    ReferenceCheck(const TokenList& tokens, const Outline& outline)
        : tokens_(tokens), outline_(outline) {}

    ScanResult run() {
        for (const FunctionOutline& function : outline_.functions)
            any_ = collect(function.parameters) || any_;
        if (!any_) return std::nullopt;
        for (const FunctionOutline& function : outline_.functions) {
            names_.clear();
            collect(function.parameters);
            if (auto finding = code(function.body)) return finding;
        }
        names_.clear();
        for (const GlobalOutline& global : outline_.globals)
            if (auto finding = code(global.value)) return finding;
        return std::nullopt;
    }

  private:
    /// The names of parameters "T@ &in name"; true when there is any, with a name or without.
    bool collect(TokenRange parameters) {
        bool found = false;
        for (std::size_t i = parameters.begin; i + 1 < parameters.end; ++i) {
            if (!tokens_.isSymbol(i, '@')) continue;
            std::size_t next = i + 1 + tokens_.isWord(i + 1, "const");
            if (!tokens_.isSymbol(next, '&')) continue;
            found = true;
            while (next < parameters.end && !tokens_.isSymbol(next, ',') &&
                   !tokens_.isSymbol(next, kAssign))
                ++next;
            if (tokens_.isName(next - 1)) names_.insert(tokens_.text(next - 1));
        }
        return found;
    }

    ScanResult code(TokenRange range) {
        for (std::size_t i = range.begin; i < range.end; ++i) {
            // What a function without a name is given is not written there.
            if (tokens_.isWord(i, "function")) addNameless(i + 1);
            if (!tokens_.isName(i) || names_.find(tokens_.text(i)) == names_.end()) continue;
            if (isCalled(i) || isAssigned(i) || isListed(i))
                return ScanFinding{i,
                                   "A handle that came by reference can only be used through a "
                                   "handle of its own: T@ own = parameter"};
        }
        return std::nullopt;
    }

    void addNameless(std::size_t open) {
        if (!tokens_.isSymbol(open, '(')) return;
        for (std::size_t i = open + 1; i < outline_.closing[open]; ++i)
            if (tokens_.isName(i)) names_.insert(tokens_.text(i));
    }

    bool isMember(std::size_t i) const { return tokens_.isSymbol(i - 1, '.'); }
    bool isCalled(std::size_t i) const { return tokens_.isSymbol(i + 1, '(') && !isMember(i); }
    /// The first token before it that is no "@" or "(".
    std::size_t before(std::size_t i) const {
        --i;
        while (tokens_.isSymbol(i, '@') || tokens_.isSymbol(i, '(')) --i;
        return i;
    }
    bool isAlone(std::size_t i) const {
        for (++i; tokens_.isSymbol(i, ')'); ++i) {
        }
        return !tokens_.isSymbol(i, '.') && !tokens_.isSymbol(i, '[');
    }
    /// Assigned to what was there before; a variable that begins with it is right.
    bool isAssigned(std::size_t i) const {
        const std::size_t sign = before(i);
        if (!tokens_.isSymbol(sign, kAssign) || !isAlone(i)) return false;
        const std::size_t target = sign - 1, type = sign - 2;
        if (!tokens_.isName(target)) return true;
        const bool declared =
            tokens_.isName(type) || (tokens_.isSymbol(type, '@') &&
                                     (tokens_.isName(type - 1) || tokens_.isSymbol(type - 1, ']') ||
                                      tokens_.isSymbol(type - 1, '>')));
        return !declared;
    }
    bool isListed(std::size_t i) const {
        const bool inside = tokens_.isSymbol(before(i), '{') || tokens_.isSymbol(before(i), ',');
        const bool ends = tokens_.isSymbol(i + 1, ',') || tokens_.isSymbol(i + 1, '}');
        return inside && ends && (tokens_.isSymbol(before(i), '{') || tokens_.isSymbol(i + 1, '}'));
    }

    const TokenList& tokens_;
    const Outline& outline_;
    std::unordered_set<std::string_view> names_;
    bool any_ = false;
};

}  // namespace

ScanResult checkHandles(const TokenList& tokens, const Outline& outline) {
    if (auto finding = HandleCheck(tokens).run()) return finding;
    return ReferenceCheck(tokens, outline).run();
}

}  // namespace korvant
