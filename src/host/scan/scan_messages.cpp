#include <algorithm>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Of the compiler's 1,023 bytes some 120 are its own words.
constexpr std::size_t kMessageBytes = 900;
/// Bytes of messages that a text may give where they may be of any length: each of its tokens can
/// begin one that words the longest declaration. Some seconds.
constexpr double kMostMessageBytes = 4e9;
/// "const ", "&inout", "@", ", " around a type.
constexpr std::size_t kAroundType = 12;
/// The longest built-in type.
constexpr std::size_t kBuiltInType = 6;

bool isLiteral(const TokenList& tokens, TokenRange argument) {
    return argument.end == argument.begin + 1 && !tokens.isName(argument.begin);
}

class MessageCheck {
  public:
    /// `bounded`: a message may not be longer than the compiler's buffer.
    MessageCheck(const TokenList& tokens, const Outline& outline, bool bounded)
        : tokens_(tokens),
          outline_(outline),
          most_(bounded ? kMessageBytes : ~std::size_t{0}),
          typeBytes_(std::max(outline.longestType, kBuiltInType) + kAroundType) {}

    ScanResult run() {
        for (const FunctionOutline& function : outline_.functions) {
            const std::size_t bytes = declarationBytes(function);
            if (!fits(bytes, function.name)) return tooLong(function.name);
            if (auto finding = code(function.body, bytes)) return finding;
        }
        for (const GlobalOutline& global : outline_.globals)
            if (auto finding = code(global.value, tokens_[global.name].size)) return finding;
        for (std::size_t i = 0; i < tokens_.size(); ++i)
            if (tokens_.isName(i)) fits(tokens_[i].size, i);
        const double all = static_cast<double>(longest_) * static_cast<double>(tokens_.size());
        return all > kMostMessageBytes ? longestIsTooLong() : std::nullopt;
    }

  private:
    bool fits(std::size_t bytes, std::size_t token) {
        if (bytes > longest_) {
            longest_ = bytes;
            longestToken_ = token;
        }
        return bytes <= most_;
    }

    ScanResult longestIsTooLong() const {
        return ScanFinding{longestToken_, "The declaration is too long for a script of this size"};
    }

    static ScanResult tooLong(std::size_t token) {
        return ScanFinding{
            token, "The declaration is longer than " + std::to_string(kMessageBytes) + " bytes"};
    }

    /// As the compiler words it: the class before the name, namespaces before every type, default
    /// values behind the parameters. The name counts twice, because some messages give it again.
    std::size_t declarationBytes(const FunctionOutline& function) const {
        std::size_t bytes = tokens_[function.name].size;
        if (function.owner != Outline::kNone)
            bytes += tokens_[outline_.classes[function.owner].name].size + 2;
        for (std::size_t i = function.declaration.begin; i < function.declaration.end; ++i)
            bytes += tokens_[i].size + 1 + (tokens_.isName(i) ? outline_.longestPath : 0);
        return bytes;
    }

    /// Calls and functions without a name, whose names the compiler makes of all declarations
    /// around them.
    ScanResult code(TokenRange range, std::size_t declaration) {
        std::vector<std::size_t> ends;  // of the nameless functions around
        std::size_t around = declaration;
        std::vector<std::size_t> bytesOf;
        for (std::size_t i = range.begin; i < range.end; ++i) {
            while (!ends.empty() && i >= ends.back()) {
                around -= bytesOf.back();
                ends.pop_back();
                bytesOf.pop_back();
            }
            if (!tokens_.isSymbol(i, '(') || i == 0) continue;
            const std::size_t bytes = callBytes(i);
            if (tokens_.isWord(i - 1, "function")) {
                around += bytes;
                bytesOf.push_back(bytes);
                ends.push_back(bodyEnd(i));
                if (!fits(around, i - 1)) return tooLong(i - 1);
            } else if (!fits(bytes, i - 1)) {
                return ScanFinding{i - 1, "The call has too many arguments"};
            }
        }
        return std::nullopt;
    }

    std::size_t bodyEnd(std::size_t open) const {
        const std::size_t brace = outline_.closing[open] + std::size_t{1};
        return tokens_.isSymbol(brace, '{') ? outline_.closing[brace] : brace;
    }

    /// What the compiler says when no function takes these arguments: the name and their types.
    std::size_t callBytes(std::size_t open) {
        const std::size_t close = outline_.closing[open];
        std::size_t bytes = tokens_[open - 1].size + typeBytes_;
        TokenRange argument{open + 1, open + 1};
        for (std::size_t i = open + 1; i <= close; ++i) {
            const bool ends = i == close || tokens_.isSymbol(i, ',');
            if (ends) {
                argument.end = i;
                bytes += isLiteral(tokens_, argument) ? kBuiltInType + kAroundType : typeBytes_;
                argument.begin = i + 1;
            } else if (outline_.closing[i] > i) {
                i = outline_.closing[i];
            }
            if (bytes > most_) break;
        }
        return bytes;
    }

    const TokenList& tokens_;
    const Outline& outline_;
    const std::size_t most_;
    const std::size_t typeBytes_;
    std::size_t longest_ = 0;
    std::size_t longestToken_ = 0;
};

}  // namespace

ScanResult checkMessages(const TokenList& tokens, const Outline& outline, bool bounded) {
    return MessageCheck(tokens, outline, bounded).run();
}

}  // namespace korvant
