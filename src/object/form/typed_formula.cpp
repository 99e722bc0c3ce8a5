#include "object/form/typed_formula.h"

#include "base/text/characters.h"

namespace korvant {

namespace {

constexpr std::string_view kComparing = "<>=!~&|\\";
constexpr std::string_view kArithmetic = "+-*/^%";
constexpr std::string_view kEndsOperand = "<>=!~&|\\+-*/^%(); \t\r\n";

bool isNumberPart(char c) noexcept {
    return isDigit(c) || c == '.';
}

/// Walks through operands and operators, which have to take turns.
class FormulaWalk {
  public:
    explicit FormulaWalk(std::string_view text) : text_(text) {}

    bool passes() {
        while (sound_ && skipBlanks()) step();
        return sound_ && !wantsOperand_;
    }

  private:
    bool skipBlanks() {
        at_ = text_.find_first_not_of(kTextBlanks, at_);
        return at_ != std::string_view::npos;
    }

    void step() {
        const char c = text_[at_];
        if (c == '(')
            open();
        else if (c == ')')
            close();
        else if (c == ';')
            separate();
        else if (kEndsOperand.find(c) == std::string_view::npos)
            takeOperand();
        else
            takeOperator();
    }

    void open() {
        ++depth_;
        ++at_;
        wantsOperand_ = true;
        // The expression knows what to say about a call without parameters.
        if (skipBlanks() && text_[at_] == ')') wantsOperand_ = false;
    }

    void close() {
        sound_ = !wantsOperand_;
        if (depth_ > 0) --depth_;
        ++at_;
    }

    void separate() {
        sound_ = depth_ > 0 && !wantsOperand_;
        wantsOperand_ = true;
        ++at_;
    }

    /// Blanks count as parts of names, but not of numbers.
    void takeOperand() {
        sound_ = wantsOperand_;
        wantsOperand_ = false;
        bool numbers = true;
        int points = 0;
        while (at_ < text_.size()) {
            const char c = text_[at_];
            const bool blank = kTextBlanks.find(c) != std::string_view::npos;
            if (blank && numbers) return;
            if (!blank && kEndsOperand.find(c) != std::string_view::npos) return;
            points += c == '.' ? 1 : 0;
            numbers = numbers && isNumberPart(c);
            sound_ = sound_ && !(numbers && points > 1);
            ++at_;
        }
    }

    void takeOperator() {
        const char c = text_[at_];
        const bool comparing = kComparing.find(c) != std::string_view::npos || isPairOfSlashes();
        if (comparing) {
            takeComparison();
            return;
        }
        const bool sign = c == '-' && wantsOperand_;
        // One sign before a number, a name or a bracket; the expression says what it makes of it.
        sound_ = !wantsOperand_ || (sign && !signed_);
        signed_ = sign;
        wantsOperand_ = true;
        ++at_;
    }

    bool isPairOfSlashes() const { return text_.substr(at_, 2) == "/\\"; }

    void takeComparison() {
        const bool prefix = wantsOperand_ && (text_[at_] == '!' || text_[at_] == '~');
        sound_ = depth_ > 0 && (prefix || !wantsOperand_);
        wantsOperand_ = true;
        if (prefix) {
            ++at_;
            return;
        }
        while (at_ < text_.size() && (kComparing.find(text_[at_]) != std::string_view::npos ||
                                      text_[at_] == '/' || isPairOfSlashes())) {
            const bool next = text_[at_] == '!' || text_[at_] == '~';
            ++at_;
            if (next && at_ < text_.size() && text_[at_] != '=') return;
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    int depth_ = 0;
    bool wantsOperand_ = true;
    bool signed_ = false;  ///< a sign stands right before
    bool sound_ = true;
};

}  // namespace

std::string withDecimalPoints(std::string_view typed) {
    std::string text(typed);
    for (std::size_t i = 1; i + 1 < text.size(); ++i)
        if (text[i] == ',' && isDigit(text[i - 1]) && isDigit(text[i + 1])) text[i] = '.';
    return text;
}

bool looksLikeFormula(std::string_view text) {
    return FormulaWalk(text).passes();
}

}  // namespace korvant
