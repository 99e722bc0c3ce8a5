#include "language/expression_before.h"

#include <algorithm>

#include "language/tokens.h"

namespace korvant {

namespace {

constexpr std::size_t kLongestChain = 32;

/// The tokens up to the caret, and whether the caret is in code.
struct CodeBefore {
    CodeBefore(std::string_view text, bool inComment) : bytes(text) {
        if (inComment) {
            const auto end = text.find("*/");
            if (end == std::string_view::npos) return;
            bytes.replace(0, end + 2, end + 2, ' ');
        }
        // A word behind the end is read as a token of its own only where the end is code.
        const std::string_view probe = "\x01q";
        bytes += probe;
        tokens = scriptTokens(bytes);
        inCode = !tokens.empty() && tokens.back().is("q");
        if (inCode) tokens.pop_back();
        length = bytes.size() - probe.size();
    }

    bool endsWith(const ScriptToken& token) const {
        return static_cast<std::size_t>(token.position) + token.text.size() == length;
    }

    std::string bytes;
    std::size_t length = 0;
    std::vector<ScriptToken> tokens;
    bool inCode = false;
};

/// Reads chains backward over tokens.
class BackReader {
  public:
    explicit BackReader(const std::vector<ScriptToken>& tokens) : tokens_(tokens) {}

    /// Index of the bracket that `close` at `i` belongs to; -1 for none.
    int opening(int i, std::string_view open, std::string_view close) const {
        int depth = 0;
        for (; i >= 0; --i) {
            if (at(i).is(close)) ++depth;
            if (at(i).is(open) && --depth == 0) return i;
        }
        return -1;
    }

    /// The chain that ends with token `i`.
    std::vector<ChainLink> chain(int i) const {
        std::vector<ChainLink> links;
        while (i >= 0 && links.size() < kLongestChain) {
            ChainLink link;
            for (; i >= 0 && at(i).is("]"); ++link.indexed) i = opening(i, "[", "]") - 1;
            link.called = i >= 0 && at(i).is(")");
            if (link.called) i = opening(i, "(", ")") - 1;
            if (i < 0 || !at(i).isWord()) return {};
            link.name = at(i).text;
            links.insert(links.begin(), std::move(link));
            if (i < 1 || !at(i - 1).is(".")) break;
            i -= 2;
        }
        return links;
    }

    /// A type stands before the name that is token `i`: something of that name begins here.
    bool declares(int i) const {
        if (i == 0) return false;
        const ScriptToken& before = at(i - 1);
        return (before.isWord() && !isStatementWord(before.text)) || before.is("]") ||
               (before.is("@") && i > 1 && at(i - 2).isWord() && !isStatementWord(at(i - 2).text));
    }

    const ScriptToken& at(int i) const { return tokens_[static_cast<std::size_t>(i)]; }

  private:
    const std::vector<ScriptToken>& tokens_;
};

/// What the tokens from `last` backward end with.
WordBefore wordEndingAt(const BackReader& reader, int last, bool lastIsWord) {
    WordBefore before;
    if (lastIsWord) before.word = reader.at(last--).text;
    before.member = last >= 0 && reader.at(last).is(".");
    if (before.member) before.chain = reader.chain(last - 1);
    return before;
}

}  // namespace

WordBefore wordBefore(std::string_view text, bool inComment) {
    const CodeBefore code(text, inComment);
    if (!code.inCode) {
        WordBefore nothing;
        nothing.writable = false;
        return nothing;
    }
    const BackReader reader(code.tokens);
    const int last = static_cast<int>(code.tokens.size()) - 1;
    if (last >= 0 && reader.at(last).kind == ScriptToken::Kind::number &&
        reader.at(last).text.ends_with('.')) {
        WordBefore fraction;
        fraction.writable = false;
        return fraction;
    }
    const bool word = last >= 0 && reader.at(last).isWord() && code.endsWith(reader.at(last));
    return wordEndingAt(reader, last, word);
}

CallBefore callBefore(std::string_view text, bool inComment) {
    CallBefore call;
    const CodeBefore code(text, inComment);
    if (!code.inCode) return call;
    const BackReader reader(code.tokens);
    for (int i = static_cast<int>(code.tokens.size()) - 1; i >= 0; --i) {
        const ScriptToken& token = reader.at(i);
        if (token.is(")")) {
            i = reader.opening(i, "(", ")");
        } else if (token.is(",")) {
            ++call.argument;
        } else if (token.is(";") || token.is("{") || token.is("}")) {
            return call;
        } else if (token.is("(")) {
            if (i == 0 || !reader.at(i - 1).isWord() || reader.declares(i - 1)) return call;
            call.bracket = token.position;
            call.function = wordEndingAt(reader, i - 1, true);
            return call;
        }
    }
    return call;
}

}  // namespace korvant
