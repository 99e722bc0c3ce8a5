#include <algorithm>
#include <iterator>
#include <string_view>

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

}  // namespace

ScanResult checkHandles(const TokenList& tokens) {
    return HandleCheck(tokens).run();
}

}  // namespace korvant
