#include "editor/assist/script_tokens.h"

#include <algorithm>
#include <iterator>

namespace korvant {

namespace {

constexpr std::string_view kStatementWords[] = {
    "and",       "break",   "case",      "cast",   "continue",  "default", "do",
    "else",      "for",     "from",      "if",     "import",    "in",      "inout",
    "is",        "not",     "null",      "or",     "out",       "return",  "switch",
    "this",      "true",    "false",     "while",  "xor",       "class",   "enum",
    "interface", "private", "protected", "mixin",  "namespace", "funcdef", "typedef",
    "override",  "final",   "abstract",  "shared", "external",  "get",     "set"};

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isBlank(char byte) {
    return static_cast<unsigned char>(byte) <= ' ';
}

class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    std::vector<ScriptToken> read() {
        while (at_ < text_.size()) {
            if (isBlank(text_[at_]))
                ++at_;
            else if (startsWith("//"))
                skipTo("\n", 0);
            else if (startsWith("/*"))
                skipTo("*/", 2);
            else
                add();
        }
        return std::move(tokens_);
    }

  private:
    bool startsWith(std::string_view mark) const { return text_.substr(at_).starts_with(mark); }

    void skipTo(std::string_view mark, std::size_t from) {
        const auto end = text_.find(mark, at_ + from);
        at_ = end == std::string_view::npos ? text_.size() : end + mark.size();
    }

    void add() {
        const std::size_t begin = at_;
        ScriptToken token;
        const char first = text_[at_];
        if (first == '"' || first == '\'') {
            token.kind = ScriptToken::Kind::text;
            skipText(first);
        } else if (isWordByte(first)) {
            token.kind = isDigit(first) ? ScriptToken::Kind::number : ScriptToken::Kind::word;
            while (at_ < text_.size() && isWordByte(text_[at_])) ++at_;
        } else {
            ++at_;
        }
        token.text = text_.substr(begin, at_ - begin);
        token.position = static_cast<int>(begin);
        tokens_.push_back(token);
    }

    void skipText(char quote) {
        const std::string_view triple = "\"\"\"";
        if (startsWith(triple)) return skipTo(triple, triple.size());
        for (++at_; at_ < text_.size() && text_[at_] != quote && text_[at_] != '\n'; ++at_)
            if (text_[at_] == '\\') ++at_;
        at_ = std::min(at_ + 1, text_.size());
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<ScriptToken> tokens_;
};

}  // namespace

bool isWordByte(char byte) noexcept {
    return isDigit(byte) || byte == '_' || (byte >= 'a' && byte <= 'z') ||
           (byte >= 'A' && byte <= 'Z');
}

bool isStatementWord(std::string_view word) noexcept {
    return std::find(std::begin(kStatementWords), std::end(kStatementWords), word) !=
           std::end(kStatementWords);
}

std::vector<ScriptToken> scriptTokens(std::string_view text) {
    return Reader(text).read();
}

}  // namespace korvant
