// A script's text in the compiler's own tokens, as far as a scan needs them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace korvant {

/// Keywords are names. Of the operators only those that the scan asks for are told apart.
struct Token {
    enum class Kind : std::uint8_t { name, number, text, symbol };
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
    Kind kind = Kind::symbol;
    char symbol = 0;  ///< its first byte; kScope, kAssign, kCompare for those of several bytes
};

/// "::", any assignment, any comparison with an equals sign.
inline constexpr char kScope = 'S';
inline constexpr char kAssign = '=';
inline constexpr char kCompare = 'C';

class TokenList {
  public:
    /// Nothing when there would be more than `most`.
    static std::optional<TokenList> of(std::string_view text, std::size_t most);

    std::size_t size() const noexcept { return tokens_.size(); }
    const Token& operator[](std::size_t i) const { return tokens_[i]; }
    std::string_view text(std::size_t i) const {
        return source_.substr(tokens_[i].begin, tokens_[i].size);
    }

    /// False beyond the end, so that callers may look ahead and back (npos wraps to beyond).
    bool isSymbol(std::size_t i, char symbol) const {
        return i < size() && tokens_[i].kind == Token::Kind::symbol && tokens_[i].symbol == symbol;
    }
    bool isName(std::size_t i) const { return i < size() && tokens_[i].kind == Token::Kind::name; }
    bool isWord(std::size_t i, std::string_view word) const { return isName(i) && text(i) == word; }

  private:
    explicit TokenList(std::string_view source) : source_(source) {}
    void add(std::uint32_t begin, std::size_t size, Token::Kind kind, char symbol);
    void addSigns(std::uint32_t begin, std::string_view sign);

    std::string_view source_;
    std::vector<Token> tokens_;
};

}  // namespace korvant
