#include <algorithm>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Type arguments inside each other: the compiler's time doubles with each, ...
constexpr std::size_t kTypeDepth = 10;
/// ... from 3 microseconds on. All of a text together may take ten seconds.
constexpr std::size_t kTypeWork = 3'000'000;
/// "[]" behind each other in a type.
constexpr std::size_t kArrayDepth = 32;

bool belongsToType(const TokenList& tokens, std::size_t i) {
    constexpr std::string_view kSigns = "<>[]@,";
    return tokens.isName(i) || tokens.isSymbol(i, kScope) ||
           (tokens[i].kind == Token::Kind::symbol &&
            kSigns.find(tokens[i].symbol) != std::string_view::npos);
}

class NameCheck {
  public:
    NameCheck(const TokenList& tokens, const Outline& outline, std::size_t longest)
        : tokens_(tokens), outline_(outline), longest_(longest) {}

    ScanResult run() {
        if (outline_.longestPath > longest_) return tooLong(outline_.deepestNames);
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_.isName(i)) {
                if (qualifiedBytes(i) > longest_) return tooLong(i);
            } else if (tokens_.isSymbol(i, '<') && opensType(i)) {
                if (auto finding = typeArguments(i)) return finding;
            } else if (arrayDepth(i) > kArrayDepth) {
                return ScanFinding{
                    i, "The type has more than " + std::to_string(kArrayDepth) + " dimensions"};
            }
        }
        return std::nullopt;
    }

  private:
    ScanResult tooLong(std::size_t i) const {
        return ScanFinding{i, "The name is longer than " + std::to_string(longest_) + " bytes"};
    }

    /// The name and the ones before it, as far as "::" joins them.
    std::size_t qualifiedBytes(std::size_t i) {
        const bool joined = i >= 2 && tokens_.isSymbol(i - 1, kScope);
        qualified_ = tokens_[i].size + (joined ? qualified_ + 2 : 0);
        return qualified_;
    }

    std::size_t arrayDepth(std::size_t i) {
        if (tokens_.isSymbol(i, ']') && tokens_.isSymbol(i - 1, '['))
            ++arrays_;
        else if (!tokens_.isSymbol(i, '['))
            arrays_ = 0;
        return arrays_;
    }

    bool opensType(std::size_t i) const {
        return i > 0 && tokens_.isName(i - 1) && i >= typeEnd_ && tokens_.isName(i + 1);
    }

    /// As far as it can be a type. A comparison ends soon, and nothing closes it.
    ScanResult typeArguments(std::size_t open) {
        std::size_t depth = 0, deepest = 0, bytes = 0, i = open;
        for (; i < tokens_.size() && belongsToType(tokens_, i); ++i) {
            depth += tokens_.isSymbol(i, '<');
            deepest = std::max(deepest, depth);
            bytes += tokens_[i].size;
            if (tokens_.isSymbol(i, '>') && --depth == 0) break;
        }
        typeEnd_ = i;
        // The parser follows what nothing closes as far as it goes.
        if (deepest <= kTypeDepth && !tokens_.isSymbol(i, '>')) return std::nullopt;
        work_ += std::size_t{1} << std::min(deepest, kTypeDepth);
        if (deepest > kTypeDepth || work_ > kTypeWork)
            return ScanFinding{open, "Types are nested too deeply"};
        return bytes > longest_ ? tooLong(open) : std::nullopt;
    }

    const TokenList& tokens_;
    const Outline& outline_;
    const std::size_t longest_;
    std::size_t qualified_ = 0;
    std::size_t arrays_ = 0;
    std::size_t work_ = 0;
    std::size_t typeEnd_ = 0;  ///< tokens before it have been seen as type arguments
};

}  // namespace

ScanResult checkNames(const TokenList& tokens, const Outline& outline, std::size_t longest) {
    return NameCheck(tokens, outline, longest).run();
}

}  // namespace korvant
