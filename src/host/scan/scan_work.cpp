#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_map>

#include "host/scan/scan_checks.h"

namespace korvant {

namespace {

/// Seconds that a text may cost. The costs below were measured with version 2.35.1 of the engine
/// on a machine of 2020; each is the leading term of what the compiler does with n of a kind.
constexpr double kMostSeconds = 10.0;

constexpr double kPerJumpSquared = 1e-7;      ///< variables, jumps and loops of a function
constexpr double kPerOperatorSquared = 4e-8;  ///< operators of an expression
constexpr double kPerChoiceCubed = 1.2e-8;    ///< conditionals inside each other
constexpr double kPerCaseCubed = 1e-8;        ///< scattered cases of a switch
constexpr double kPerMemberSquared = 1.2e-7;  ///< members of a class, inherited ones included
constexpr double kPerDeclarationSquared = 5e-8;
constexpr double kPerGlobalPass = 3.7e-6;  ///< a global whose value needs a later one
constexpr double kPerOverload = 1e-7;      ///< a function of the same name at a call

double squared(double n) {
    return n * n;
}
double cubed(double n) {
    return n * n * n;
}

/// What compiling the code of one function costs.
class CodeCost {
  public:
    CodeCost(const TokenList& tokens, const Outline& outline)
        : tokens_(tokens), outline_(outline) {}

    double of(TokenRange code) {
        jumps_ = scattered_ = seconds_ = 0.0;
        expressions_.assign(1, {code.end, 0, 0});
        for (std::size_t i = code.begin; i < code.end; ++i) meet(i);
        while (!expressions_.empty()) endExpression();
        return seconds_ + kPerJumpSquared * squared(jumps_) + kPerCaseCubed * cubed(scattered_);
    }

  private:
    struct Expression {
        std::size_t end;
        double operators;
        double choices;
    };

    void endExpression() {
        restart();
        expressions_.pop_back();
    }

    void restart() {
        Expression& expression = expressions_.back();
        seconds_ += kPerOperatorSquared * squared(expression.operators) +
                    kPerChoiceCubed * cubed(expression.choices);
        jumps_ += expression.choices;
        expression.operators = expression.choices = 0.0;
    }

    void meet(std::size_t i) {
        while (expressions_.size() > 1 && i >= expressions_.back().end) endExpression();
        if (tokens_.isName(i))
            meetName(i);
        else if (tokens_[i].kind == Token::Kind::symbol)
            meetSymbol(i, tokens_[i].symbol);
    }

    void meetName(std::size_t i) {
        static constexpr std::string_view kJumps[] = {"for",   "while",    "do",   "return",
                                                      "break", "continue", "case", "try"};
        const std::string_view word = tokens_.text(i);
        jumps_ += std::find(std::begin(kJumps), std::end(kJumps), word) != std::end(kJumps);
        if (word == "case")
            scattered_ += !followsLastCase(i + 1);
        else if (declaresVariable(i))
            jumps_ += 1.0;
    }

    /// A name behind a type: behind another name that is no keyword of an expression, or behind
    /// "[]", "@" or ">".
    bool declaresVariable(std::size_t i) const {
        static constexpr std::string_view kBefore[] = {"return", "case", "is", "not", "and",
                                                       "or",     "xor",  "in", "else"};
        if (i == 0) return false;
        if (tokens_.isName(i - 1)) {
            const std::string_view before = tokens_.text(i - 1);
            return std::find(std::begin(kBefore), std::end(kBefore), before) == std::end(kBefore);
        }
        return tokens_.isSymbol(i - 1, ']') || tokens_.isSymbol(i - 1, '@') ||
               tokens_.isSymbol(i - 1, '>') || tokens_.isSymbol(i - 1, ',');
    }

    /// The compiler keeps cases that lie close together in one table.
    bool followsLastCase(std::size_t i) {
        constexpr std::int64_t kGap = 5;
        std::int64_t value = 0;
        const std::string_view text = i < tokens_.size() ? tokens_.text(i) : std::string_view();
        const char* const end = text.data() + text.size();
        if (std::from_chars(text.data(), end, value).ptr != end) return false;
        const bool close = value > lastCase_ && value - lastCase_ <= kGap;
        lastCase_ = value;
        return close;
    }

    void meetSymbol(std::size_t i, char symbol) {
        constexpr std::string_view kOperators = "+-*/%&|^<>C=";
        if (symbol == ';' || symbol == ',' || symbol == '}')
            restart();
        else if (symbol == '?')
            expressions_.back().choices += 1.0;
        else if (kOperators.find(symbol) != std::string_view::npos)
            expressions_.back().operators += 1.0;
        else if (outline_.closing[i] > i)
            expressions_.push_back({outline_.closing[i], 0, 0});
    }

    const TokenList& tokens_;
    const Outline& outline_;
    std::vector<Expression> expressions_;
    double jumps_ = 0.0;
    double scattered_ = 0.0;
    double seconds_ = 0.0;
    std::int64_t lastCase_ = 0;
};

class WorkCheck {
  public:
    WorkCheck(const TokenList& tokens, const Outline& outline)
        : tokens_(tokens), outline_(outline) {}

    ScanResult run() {
        CodeCost cost(tokens_, outline_);
        for (const FunctionOutline& function : outline_.functions)
            if (add(cost.of(function.body))) return found(function.name);
        for (const GlobalOutline& global : outline_.globals)
            if (add(cost.of(global.value))) return found(global.name);
        if (add(classes()) || add(declarations()) || add(globals()) || add(overloads()))
            return found(0);
        return std::nullopt;
    }

  private:
    bool add(double seconds) {
        seconds_ += seconds;
        return seconds_ > kMostSeconds;
    }
    static ScanResult found(std::size_t token) {
        return ScanFinding{token, "The script would take too long to compile"};
    }

    /// A class has the members of all its bases; one that names itself as its base has them once.
    double classes() const {
        std::unordered_map<std::string_view, double> members;
        double seconds = 0.0;
        for (const ClassOutline& found : outline_.classes) {
            double own = static_cast<double>(found.members);
            for (const std::size_t base : found.bases) {
                const auto known = members.find(tokens_.text(base));
                if (known != members.end()) own += known->second;
            }
            if (found.name < tokens_.size()) members[tokens_.text(found.name)] = own;
            seconds += kPerMemberSquared * squared(own);
        }
        return seconds;
    }

    double declarations() const {
        const auto all = outline_.classes.size() + outline_.functions.size() / 2 +
                         outline_.functionTypes + (outline_.namespaces + outline_.enumValues) / 2;
        return kPerDeclarationSquared * squared(static_cast<double>(all));
    }

    /// The compiler goes over all globals again until none waits for a later one.
    double globals() const {
        std::unordered_map<std::string_view, std::size_t> places;
        for (std::size_t i = 0; i < outline_.globals.size(); ++i)
            places.emplace(tokens_.text(outline_.globals[i].name), i);
        std::vector<double> passes(outline_.globals.size(), 0.0);
        double most = 0.0;
        for (std::size_t i = passes.size(); i-- > 0;) {
            const TokenRange value = outline_.globals[i].value;
            for (std::size_t token = value.begin; token < value.end; ++token) {
                if (!tokens_.isName(token)) continue;
                const auto later = places.find(tokens_.text(token));
                if (later != places.end() && later->second > i)
                    passes[i] = std::max(passes[i], passes[later->second] + 1.0);
            }
            most = std::max(most, passes[i]);
        }
        return kPerGlobalPass * most * static_cast<double>(passes.size());
    }

    double overloads() const {
        std::unordered_map<std::string_view, double> functions;
        for (const FunctionOutline& function : outline_.functions)
            functions[tokens_.text(function.name)] += 1.0;
        double tries = 0.0;
        for (std::size_t i = 0; i + 1 < tokens_.size(); ++i) {
            if (!tokens_.isName(i) || !tokens_.isSymbol(i + 1, '(')) continue;
            const auto known = functions.find(tokens_.text(i));
            if (known != functions.end() && known->second > 1.0) tries += known->second;
        }
        return kPerOverload * tries;
    }

    const TokenList& tokens_;
    const Outline& outline_;
    double seconds_ = 0.0;
};

}  // namespace

ScanResult checkWork(const TokenList& tokens, const Outline& outline) {
    return WorkCheck(tokens, outline).run();
}

}  // namespace korvant
