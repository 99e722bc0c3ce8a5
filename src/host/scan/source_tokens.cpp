#include "host/scan/source_tokens.h"

#include <algorithm>

namespace korvant {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Bytes of other scripts than Latin may stand in names when the host allows it.
bool startsName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool continuesName(char c) {
    return startsName(c) || isDigit(c);
}

/// Reads one token after another the way the compiler does: a quote runs over lines to the next
/// one that is not escaped, and what does not end runs to the end of the text.
class Reader {
  public:
    explicit Reader(std::string_view source) : source_(source) {}

    bool next(Token& token) {
        skipBlanksAndComments();
        if (at_ >= source_.size()) return false;
        token = {};
        token.begin = static_cast<std::uint32_t>(at_);
        read(token);
        token.size = static_cast<std::uint32_t>(at_ - token.begin);
        return true;
    }

  private:
    char peek(std::size_t ahead = 0) const {
        return at_ + ahead < source_.size() ? source_[at_ + ahead] : '\0';
    }
    bool stands(std::string_view text) const {
        return source_.compare(at_, text.size(), text) == 0;
    }
    void moveBehind(std::size_t found, std::size_t bytes) {
        at_ = found == std::string_view::npos ? source_.size() : found + bytes;
    }

    void skipBlanksAndComments() {
        while (at_ < source_.size()) {
            if (kBlanks.find(peek()) != std::string_view::npos)
                ++at_;
            else if (stands("\xEF\xBB\xBF"))
                at_ += 3;
            else if (stands("//"))
                moveBehind(source_.find('\n', at_), 1);
            else if (stands("/*"))
                moveBehind(source_.find("*/", at_ + 2), 2);
            else
                return;
        }
    }

    void read(Token& token) {
        if (startsName(peek())) {
            token.kind = Token::Kind::name;
            while (continuesName(peek())) ++at_;
        } else if (isDigit(peek()) || (peek() == '.' && isDigit(peek(1)))) {
            token.kind = Token::Kind::number;
            readNumber();
        } else if (peek() == '"' || peek() == '\'') {
            token.kind = Token::Kind::text;
            readText();
        } else {
            token.symbol = readSymbol();
        }
    }

    void readNumber() {
        while (continuesName(peek()) || peek() == '.') {
            const bool exponent = peek() == 'e' || peek() == 'E';
            ++at_;
            if (exponent && (peek() == '+' || peek() == '-')) ++at_;
        }
    }

    void readText() {
        constexpr std::size_t kShortestLong = 6;
        if (source_.size() - at_ >= kShortestLong && stands("\"\"\"")) {
            moveBehind(source_.find("\"\"\"", at_ + 3), 3);
            return;
        }
        const char quote = source_[at_++];
        bool escaped = false;
        while (at_ < source_.size()) {
            const char c = source_[at_++];
            if (c == quote && !escaped) return;
            escaped = c == '\\' && !escaped;
        }
    }

    char readSymbol() {
        constexpr std::string_view kAssigning[] = {
            ">>>=", ">>=", "<<=", "**=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="};
        constexpr std::string_view kComparing[] = {"==", "!=", "<=", ">="};
        for (const std::string_view operation : kAssigning)
            if (stands(operation)) return take(operation.size(), kAssign);
        for (const std::string_view operation : kComparing)
            if (stands(operation)) return take(operation.size(), kCompare);
        return stands("::") ? take(2, kScope) : take(1, peek());
    }

    char take(std::size_t bytes, char symbol) {
        at_ += bytes;
        return symbol;
    }

    std::string_view source_;
    std::size_t at_ = 0;
};

}  // namespace

std::optional<TokenList> TokenList::of(std::string_view text, std::size_t most) {
    TokenList list(text);
    Reader reader(text);
    for (Token token; reader.next(token);) {
        if (list.size() >= most) return std::nullopt;
        list.tokens_.push_back(token);
    }
    return list;
}

}  // namespace korvant
