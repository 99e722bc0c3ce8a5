#include "support/literal_evaluator.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace korvant_test {
namespace {

const char* const kTable[][2] = {{"\\/", "||"}, {"||", "||"}, {"/\\", "&&"}, {"&&", "&&"},
                                 {"<>", "<>"},  {"!=", "<>"}, {">=", ">="},  {"<=", "<="},
                                 {"==", "=="},  {"=", "="},   {">", ">"},    {"<", "<"},
                                 {">", ">"},    {"%", "%"},   {"+", "+"},    {"-", "-"},
                                 {"*", "*"},    {"/", "/"},   {"^", "^"}};

/// The longest part of the beginning that is a number, 0 without one, in every locale.
double numberOf(const std::string& text) {
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc::result_out_of_range) return value;
    return text[0] == '-' ? -std::numeric_limits<double>::infinity()
                          : std::numeric_limits<double>::infinity();
}

std::string lowered(std::string text) {
    for (char& byte : text)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    return text;
}

std::string withoutBlanks(const std::string& text) {
    std::string kept;
    for (const char byte : text)
        if (static_cast<signed char>(byte) > 32) kept += byte;
    return kept;
}

bool balanced(const std::string& text) {
    int count = 0;
    for (const char byte : text) {
        if (byte == '(') ++count;
        if (byte == ')') --count;
        if (count < 0) return false;
    }
    return count == 0;
}

int deepest(const std::string& text) {
    int count = 0, most = 0;
    for (const char byte : text) {
        if (byte == '(') most = std::max(most, ++count);
        if (byte == ')') --count;
    }
    return most;
}

bool strip(std::string& text) {
    if (text.size() < 3 || text.front() != '(' || text.back() != ')') return false;
    int count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '(') ++count;
        if (text[i] == ')') --count;
        if (count < 0 || (count == 0 && i + 1 < text.size())) return false;
    }
    if (count != 0) return false;
    text = text.substr(1, text.size() - 2);
    return true;
}

bool splitAt(const std::string& text, const std::string& spelling, std::string& left,
             std::string& right) {
    for (std::size_t at = text.find(spelling); at != std::string::npos;
         at = text.find(spelling, at + 1)) {
        left = text.substr(0, at);
        right = text.substr(at + spelling.size());
        if (!left.empty() && !right.empty() && balanced(left) && balanced(right)) return true;
    }
    return false;
}

std::vector<std::string> parametersOf(const std::string& text) {
    std::vector<std::string> list;
    std::string gathered;
    int depth = 1;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')' && --depth == 0) break;
        if (text[i] == ';' && depth == 1) {
            list.push_back(gathered);
            gathered.clear();
        } else {
            gathered += text[i];
        }
    }
    if (!gathered.empty() || !list.empty()) list.push_back(gathered);
    return list;
}

int toInteger(double value) {
    if (std::isnan(value)) return 0;
    if (value <= -2147483648.0) return -2147483647 - 1;
    if (value >= 2147483647.0) return 2147483647;
    return static_cast<int>(value);
}

class Reading {
  public:
    explicit Reading(const LiteralNames& names) : names_(names) {}

    std::string error;

    double piece(std::string text) {
        if (!error.empty()) return 0;
        text = withoutBlanks(lowered(text));
        if (!balanced(text)) return fail("Bad parenthesed expression: \"" + text + "\"");
        if (deepest(text) > 1000) return fail("Expression too deep.");
        while (strip(text)) {
        }
        std::string left, right;
        for (const auto& row : kTable)
            if (splitAt(text, row[0], left, right)) {
                const double l = piece(left);
                if (!error.empty()) return 0;
                const double r = piece(right);
                if (!error.empty()) return 0;
                return applied(row[1], l, r);
            }
        return operand(text);
    }

  private:
    double fail(const std::string& message) {
        error = message;
        return 0;
    }

    double applied(const std::string& op, double l, double r) {
        if (op == "||") return l == 0 && r == 0 ? 0 : 1;
        if (op == "&&") return l == 0 || r == 0 ? 0 : 1;
        if (op == "<>") return l != r;
        if (op == ">=") return l >= r;
        if (op == "<=") return l <= r;
        if (op == "==" || op == "=") return l == r;
        if (op == ">") return l > r;
        if (op == "<") return l < r;
        if (op == "+") return l + r;
        if (op == "-") return l - r;
        if (op == "*") return l * r;
        if (op == "/") return l / r;
        if (op == "^") return std::pow(l, r);
        const int left = toInteger(l), right = toInteger(r);
        if (right == 0) return fail("Division by zero.");
        return right == -1 ? 0 : left % right;
    }

    double operand(std::string text) {
        bool negated = false;
        if (!text.empty() && (text[0] == '!' || text[0] == '~')) {
            negated = true;
            text = text.substr(1);
        }
        if (!text.empty() && text.find_first_not_of("0123456789.-") == std::string::npos)
            return negate(negated, numberOf(text));
        const auto name = names_.find(text);
        if (name != names_.end()) return negate(negated, name->second);
        const std::size_t open = text.find('(');
        if (open != std::string::npos && text.rfind(')') != std::string::npos)
            return call(text.substr(0, open), parametersOf(text.substr(open)), negated);
        if (text.empty()) return fail("Syntax error in expression.");
        for (const char byte : text)
            if (byte < 48 || (byte >= 58 && byte <= 64))
                return fail("Syntax error in expression: \"" + text + "\"");
        return fail("Unknow identifier: \"" + text + "\"");
    }

    static double negate(bool negated, double value) {
        if (!negated) return value;
        return value == 0 ? 1 : 0;
    }

    double call(const std::string& name, const std::vector<std::string>& parameters, bool negated) {
        const std::string about = "Syntax error in function \"" + name + "\" parameters";
        if (parameters.empty()) return fail(about);
        std::vector<double> p;
        for (const std::string& parameter : parameters) {
            p.push_back(piece(parameter));
            if (!error.empty()) return fail(about + " \"" + parameter + "\":\n\t" + error);
        }
        if (name == "min" || name == "max") return extreme(name == "min", p);
        if (name == "ind") return interval(p);
        if (name == "cat") return selected(p);
        if (p.size() == 3 && (name == "if" || name == "?")) return p[0] != 0 ? p[1] : p[2];
        double value = 0;
        if (p.size() == 1 && ofOne(name, p[0], value)) return negate(negated, value);
        return fail("Unknow function \"" + name + "\" with " + std::to_string(p.size()) +
                    (p.size() == 1 ? " parameter" : " parameters"));
    }

    static double extreme(bool smallest, const std::vector<double>& p) {
        double best = p[0];
        for (const double value : p)
            if (smallest ? value < best : value > best) best = value;
        return best;
    }

    double interval(const std::vector<double>& p) {
        if (p.size() % 2 != 0) return fail("Odd number of parameters in function \"ind\"");
        for (std::size_t bound = 2; bound < p.size(); bound += 2)
            if (p[0] < p[bound]) return p[bound - 1];
        return p.back();
    }

    double selected(const std::vector<double>& p) {
        if (p.size() % 2 == 0) return fail("Even number of parameters in function \"cat\"");
        for (std::size_t condition = 1; condition < p.size(); condition += 2)
            if (p[condition] != 0) return p[condition - 1];
        return p.back();
    }

    static bool ofOne(const std::string& name, double x, double& value) {
        static const std::map<std::string, double (*)(double)> functions = {
            {"floor", std::floor}, {"ceil", std::ceil}, {"abs", std::fabs},  {"log", std::log},
            {"exp", std::exp},     {"sqrt", std::sqrt}, {"sin", std::sin},   {"cos", std::cos},
            {"tan", std::tan},     {"asin", std::asin}, {"acos", std::acos}, {"atan", std::atan},
            {"sinh", std::sinh},   {"cosh", std::cosh}, {"tanh", std::tanh}, {"log10", std::log10}};
        if (name == "not" || name == "!" || name == "~") {
            value = x == 0;
            return true;
        }
        const auto found = functions.find(name);
        if (found == functions.end()) return false;
        value = found->second(x);
        return true;
    }

    const LiteralNames& names_;
};

}  // namespace

LiteralResult evaluateLiterally(const std::string& text, const LiteralNames& names) {
    if (text.empty()) return {0, "Empty expression."};
    Reading reading(names);
    const double value = reading.piece(text);
    if (reading.error.size() > 65536) {
        const std::string whole = reading.error;
        reading.error = whole.substr(0, 32766) + "..." + whole.substr(whole.size() - 32767);
    }
    return {value, reading.error};
}

}  // namespace korvant_test
