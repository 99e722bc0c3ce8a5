// korvant eval EXPR [NAME=VALUE...]: the value of an expression.
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "expr/evaluator.h"
#include "expr/expression_text.h"
#include "host/number_text.h"
#include "source_report.h"

namespace korvant_app {

namespace {

using nlohmann::json;

struct Eval {
    std::string expression;
    std::vector<std::string> values;
    bool jsonLines = false;
};

/// The magnitude of a number without its sign: decimal, hexadecimal float, "nan" or "inf".
std::optional<double> readMagnitude(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    if (text.empty() || text.front() == '-') return std::nullopt;
    double value = 0;
    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<double> readValue(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) text.remove_prefix(1);
    const auto value = readMagnitude(text);
    return value && negative ? -*value : value;
}

/// A C hexadecimal float, which holds every bit: "0x1.8p+1", "nan", "inf", "-inf".
std::string hexadecimalText(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char digits[32];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, std::fabs(value), std::chars_format::hex).ptr;
    return (std::signbit(value) ? "-0x" : "0x") + std::string(digits, end);
}

/// "NAME=VALUE". The name is cleaned as names in an expression are.
bool addValue(korvant::ExpressionEvaluator& evaluator, const std::string& assignment) {
    const auto sign = assignment.find('=');
    const auto value = sign == std::string::npos || sign == 0
                           ? std::nullopt
                           : readValue(std::string_view(assignment).substr(sign + 1));
    if (!value) {
        complain("'" + assignment + "' is no NAME=VALUE");
        return false;
    }
    std::string name = korvant::expr::removeBlanks(std::string_view(assignment).substr(0, sign));
    for (char& byte : name) byte = korvant::expr::lowerCase(byte);
    evaluator.setValue(name, *value);
    return true;
}

int evaluateOne(const Eval& eval) {
    korvant::ExpressionEvaluator evaluator;
    for (const std::string& assignment : eval.values)
        if (!addValue(evaluator, assignment)) return kWrongUsage;
    const korvant::ExpressionResult result = evaluator.evaluate(eval.expression);
    if (!result.error.empty()) {
        std::printf("error: %s\n", result.error.c_str());
        return kRunFailed;
    }
    std::printf("%s\n", korvant::formatShortest(result.value).c_str());
    return kFinished;
}

/// JSON text to bytes: a character from 0 to 255 stands for one byte.
std::string bytesOf(const std::string& utf8) {
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            bytes += utf8[i];
        } else if (lead <= 0xC3 && i + 1 < utf8.size()) {
            const auto low = static_cast<unsigned char>(utf8[++i]);
            bytes += static_cast<char>((lead & 3) << 6 | (low & 0x3F));
        } else {
            throw std::invalid_argument("a character beyond 255");
        }
    }
    return bytes;
}

std::string utf8Of(const std::string& bytes) {
    std::string utf8;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | byte >> 6);
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

double valueOf(const json& value) {
    if (value.is_number()) return value.get<double>();
    const auto read = readValue(value.get<std::string>());
    if (!read) throw std::invalid_argument("a value that is no number");
    return *read;
}

void bindNames(korvant::ExpressionEvaluator& evaluator, const json& request) {
    evaluator.clearValues();
    if (!request.contains("names")) return;
    for (const auto& [name, value] : request.at("names").items())
        evaluator.setValue(bytesOf(name), valueOf(value));
}

json answer(const std::string& value, const std::string& error) {
    return {{"value", value}, {"error", error}};
}

/// Answers one line; false for a line that is no request.
bool answerLine(korvant::ExpressionEvaluator& evaluator, const std::string& line, json& reply) try {
    const json request = json::parse(line);
    bindNames(evaluator, request);
    const auto result = evaluator.evaluate(bytesOf(request.at("expr").get<std::string>()));
    reply =
        answer(hexadecimalText(result.error.empty() ? result.value : 0.0), utf8Of(result.error));
    return true;
} catch (const std::exception& problem) {
    reply = answer("nan", std::string("not a request: ") + problem.what());
    return false;
}

/// One answer a line. Whoever waits for an answer gets it at once.
int evaluateLines() {
    std::ios::sync_with_stdio(false);
    korvant::ExpressionEvaluator evaluator;
    bool allRead = true;
    json reply;
    for (std::string line; std::getline(std::cin, line);) {
        if (line.empty()) continue;
        allRead = answerLine(evaluator, line, reply) && allRead;
        std::cout << reply.dump(-1, ' ', true, json::error_handler_t::replace) << '\n';
        if (std::cin.rdbuf()->in_avail() <= 0) std::cout.flush();
    }
    if (!std::cout.flush()) {
        complain("could not write standard output");
        return kRunFailed;
    }
    return allRead ? kFinished : kRunFailed;
}

int evaluate(const Eval& eval) {
    if (eval.jsonLines) return evaluateLines();
    if (eval.expression.empty() && eval.values.empty()) {
        complain("eval needs an expression or --jsonl");
        return kWrongUsage;
    }
    return evaluateOne(eval);
}

}  // namespace

void addEvalCommand(CLI::App& app, int& exitCode) {
    const auto eval = std::make_shared<Eval>();
    CLI::App* const command = app.add_subcommand("eval", "Prints the value of an expression");
    command->add_option("EXPR", eval->expression, "expression, for example 'min(a;b)^2'");
    command->add_option("NAME=VALUE", eval->values, "values of the names in it");
    command->add_flag("--jsonl", eval->jsonLines,
                      "read one JSON object a line from standard input, answer likewise");
    command->callback([eval, &exitCode] { exitCode = evaluate(*eval); });
}

}  // namespace korvant_app
