#include "support/random_expressions.h"

#include <limits>

namespace korvant_test {
namespace {

const std::vector<std::string> kOperators = {"\\/", "||", "/\\", "&&", "<>", "!=", ">=", "<=", "==",
                                             "=",   ">",  "<",   "%",  "+",  "-",  "*",  "/",  "^"};
const std::vector<std::string> kNumbers = {"0", "1", "2", "3.5", "10", "-1", ".5", "7.", "0.1"};
const std::vector<std::string> kOddNumbers = {"1.2.3", "-", "1e3", "1 0", ".", "--2", "-2.5"};
const std::vector<std::string> kNames = {"a",   "b", "c",        "d", "ab",   "x1",      "_n",
                                         "a|b", "A", "min(1;2)", "",  "f(a)", "sin(a+b)"};
const std::vector<std::string> kOfOne = {"floor", "ceil", "abs", "log",  "exp",  "log10", "sqrt",
                                         "sin",   "cos",  "tan", "asin", "acos", "atan",  "sinh",
                                         "cosh",  "tanh", "not", "!",    "~",    "Not"};
const std::vector<std::string> kOthers = {"", "pow", "f", "minn", "if", "ind", "cat", "sin", "1"};
const std::string kAlphabet = "ab01.;()!~\\/|&<>=%+-*^ ,_\"\n\t";

}  // namespace

int RandomExpressions::below(int end) {
    return static_cast<int>(generator_() % static_cast<std::uint32_t>(end));
}

const std::string& RandomExpressions::oneOf(const std::vector<std::string>& list) {
    return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
}

std::string RandomExpressions::text() {
    switch (below(4)) {
        case 0:
            return soup();
        case 1:
            return damaged(sensible());
        default:
            return sensible(1 + below(5));
    }
}

std::string RandomExpressions::sensible(int depth) {
    std::string made = operand(depth);
    for (int more = below(4); more > 0; --more) made += oneOf(kOperators) + operand(depth);
    return made;
}

std::string RandomExpressions::operand(int depth) {
    const std::string prefix = below(12) == 0 ? (below(2) == 0 ? "!" : "~") : "";
    const int kind = depth > 0 ? below(6) : below(3);
    if (kind == 0) return prefix + oneOf(below(40) == 0 ? kOddNumbers : kNumbers);
    if (kind <= 2) return prefix + (below(60) == 0 ? name() : std::string(1, "abcd"[below(4)]));
    if (kind == 3) return "(" + sensible(depth - 1) + ")";
    return prefix + call(depth - 1);
}

std::string RandomExpressions::call(int depth) {
    switch (below(20)) {
        case 0:
            return call(oneOf(kOthers), below(6), depth);
        case 1:
        case 2:
            return call("if", 3, depth);
        case 3:
            return call("?", 3, depth);
        case 4:
        case 5:
            return call("min", 1 + below(4), depth);
        case 6:
        case 7:
            return call("MAX", 1 + below(4), depth);
        case 8:
        case 9:
            return call("ind", 2 * (1 + below(4)), depth);
        case 10:
        case 11:
        case 12:
            return call("cat", 1 + 2 * below(4), depth);
        default:
            return call(oneOf(kOfOne), 1, depth);
    }
}

std::string RandomExpressions::call(const std::string& function, int count, int depth) {
    std::string made = function + "(";
    for (int i = 0; i < count; ++i) made += (i > 0 ? ";" : "") + sensible(depth - 1);
    return made + ")" + (below(40) == 0 ? "tail" : "");
}

std::string RandomExpressions::damaged(std::string text) {
    for (int times = 1 + below(4); times > 0; --times) {
        const auto at = static_cast<std::size_t>(below(static_cast<int>(text.size()) + 1));
        const char byte =
            kAlphabet[static_cast<std::size_t>(below(static_cast<int>(kAlphabet.size())))];
        switch (below(4)) {
            case 0:
                text.insert(at, 1, byte);
                break;
            case 1:
                text.erase(at, static_cast<std::size_t>(1 + below(3)));
                break;
            case 2:
                text.insert(at, text.substr(at, static_cast<std::size_t>(below(6))));
                break;
            default:
                if (at < text.size()) text[at] = byte;
        }
    }
    return text;
}

std::string RandomExpressions::soup() {
    const bool anyByte = below(4) == 0;
    std::string made;
    for (int left = below(24); left > 0; --left)
        made +=
            anyByte
                ? static_cast<char>(below(256))
                : kAlphabet[static_cast<std::size_t>(below(static_cast<int>(kAlphabet.size())))];
    return made;
}

std::string RandomExpressions::name() {
    return oneOf(kNames);
}

double RandomExpressions::value() {
    using Limits = std::numeric_limits<double>;
    const double odd[] = {0.0,
                          -0.0,
                          1.0,
                          -1.0,
                          2.0,
                          3.0,
                          Limits::infinity(),
                          -Limits::infinity(),
                          Limits::quiet_NaN(),
                          1e300,
                          -1e300,
                          5e-324,
                          0.5,
                          -2147483648.0,
                          2147483647.0,
                          4294967296.0,
                          1e17};
    if (below(2) == 0) return odd[below(static_cast<int>(std::size(odd)))];
    return (below(2000) - 1000) / 16.0;
}

LiteralNames RandomExpressions::names(int more) {
    LiteralNames made;
    for (const char* usual : {"a", "b", "c", "d"}) made[usual] = value();
    for (int i = 0; i < more; ++i) made[name()] = value();
    if (below(8) == 0) made.erase("c");
    return made;
}

}  // namespace korvant_test
