#include <algorithm>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Stack that the compiler takes for one more of each inside another, in bytes, as measured with
/// version 2.35.1 of the engine (optimised, 64 bits).
namespace cost {
constexpr std::uint32_t kRound = 2800, kCall = 5100, kSquare = 3600;
constexpr std::uint32_t kBlock = 300, kSwitch = 1200, kList = 9400, kLambda = 10400;
constexpr std::uint32_t kStatement = 850;
constexpr std::uint32_t kConditional = 1550, kAssignment = 700;
}  // namespace cost

/// One level of the limit on brackets stands for this much stack, so that the usual limit of 256
/// leaves a quarter of 1 MiB to whoever calls the compiler.
constexpr std::uint32_t kStackPerLevel = 3072;

constexpr char kTooDeep[] = "Brackets and statements are nested too deeply";

class NestingCheck {
  public:
    NestingCheck(const TokenList& tokens, const Outline& outline, const Limits& limits)
        : tokens_(tokens),
          outline_(outline),
          deepest_(limits.nesting),
          stack_(std::uint64_t{limits.nesting} * kStackPerLevel) {}

    ScanResult run() {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            closeUpTo(i);
            meet(i);
            if (levels_.size() > deepest_ + 1) return ScanFinding{i, kTooDeep};
            if (used_ > stack_) return ScanFinding{i, kTooDeep};
        }
        return std::nullopt;
    }

  private:
    struct Level {
        std::size_t end;               ///< the token that closes it
        bool block;                    ///< holds statements
        std::uint32_t own;             ///< for the bracket itself
        std::uint32_t statement = 0;   ///< statements that begin inside each other here
        std::uint32_t expression = 0;  ///< parts of an expression inside each other
        std::uint32_t openDos = 0;     ///< do without its while
    };

    void add(std::uint32_t& where, std::uint32_t bytes) {
        where += bytes;
        used_ += bytes;
    }
    void drop(std::uint32_t& where) {
        used_ -= where;
        where = 0;
    }

    void closeUpTo(std::size_t i) {
        while (levels_.size() > 1 && i >= levels_.back().end) {
            Level closed = levels_.back();
            drop(closed.own);
            drop(closed.statement);
            drop(closed.expression);
            levels_.pop_back();
            if (closed.block && i == closed.end) endStatement(i);
        }
    }

    void meet(std::size_t i) {
        Level& level = levels_.back();
        if (tokens_.isName(i))
            meetName(i, level);
        else if (tokens_[i].kind == Token::Kind::symbol)
            meetSymbol(i, tokens_[i].symbol, level);
    }

    void meetName(std::size_t i, Level& level) {
        const std::string_view word = tokens_.text(i);
        if (word == "do") ++level.openDos;
        if (word == "if" || word == "for" || word == "while" || word == "do" || word == "try")
            add(level.statement, cost::kStatement);
    }

    void meetSymbol(std::size_t i, char symbol, Level& level) {
        if (symbol == ';')
            endStatement(i);
        else if (symbol == ',')
            drop(level.expression);
        else if (symbol == '?')
            add(level.expression, cost::kConditional);
        else if (symbol == kAssign)
            add(level.expression, cost::kAssignment);
        else if (symbol == '(' || symbol == '[' || symbol == '{')
            open(i, symbol);
    }

    void open(std::size_t i, char symbol) {
        const bool lambda = symbol == '{' && isLambda(i);
        const bool list = symbol == '{' && !lambda && isList(i);
        Level level{outline_.closing[i], symbol == '{' && !list && !lambda, 0};
        levels_.push_back(level);
        add(levels_.back().own, lambda            ? cost::kLambda
                                : list            ? cost::kList
                                : symbol == '{'   ? blockCost(i)
                                : symbol == '['   ? cost::kSquare
                                : followsValue(i) ? cost::kCall
                                                  : cost::kRound);
    }

    std::uint32_t blockCost(std::size_t i) const {
        const bool ofSwitch = tokens_.isSymbol(i - 1, ')') && lastRound_ > 0 &&
                              tokens_.isWord(lastRound_ - 1, "switch");
        return ofSwitch ? cost::kSwitch : cost::kBlock;
    }

    bool followsValue(std::size_t i) {
        lastRound_ = i;
        return tokens_.isName(i - 1) || tokens_.isSymbol(i - 1, '>') ||
               tokens_.isSymbol(i - 1, ']') || tokens_.isSymbol(i - 1, ')');
    }

    bool isLambda(std::size_t i) const {
        return tokens_.isSymbol(i - 1, ')') && lastRound_ > 0 && lastRound_ < i &&
               outline_.closing[lastRound_] == i - 1 && tokens_.isWord(lastRound_ - 1, "function");
    }

    bool isList(std::size_t i) const {
        return tokens_.isSymbol(i - 1, kAssign) || tokens_.isSymbol(i - 1, ',') ||
               tokens_.isSymbol(i - 1, '(') ||
               (tokens_.isSymbol(i - 1, '{') && levels_.size() > 1 && !levels_.back().block);
    }

    /// A statement goes on behind its end where an else, a catch or the while of a do follows.
    void endStatement(std::size_t i) {
        Level& level = levels_.back();
        drop(level.expression);
        if (tokens_.isWord(i + 1, "else") || tokens_.isWord(i + 1, "catch")) return;
        if (level.openDos > 0 && tokens_.isWord(i + 1, "while")) {
            --level.openDos;
            return;
        }
        drop(level.statement);
        level.openDos = 0;
    }

    const TokenList& tokens_;
    const Outline& outline_;
    const std::size_t deepest_;
    const std::uint64_t stack_;
    std::uint64_t used_ = 0;
    std::vector<Level> levels_{{~std::size_t{0}, true, 0}};
    std::size_t lastRound_ = 0;  ///< the last opening round bracket
};

}  // namespace

ScanResult checkNesting(const TokenList& tokens, const Outline& outline, const Limits& limits) {
    return NestingCheck(tokens, outline, limits).run();
}

}  // namespace korvant
