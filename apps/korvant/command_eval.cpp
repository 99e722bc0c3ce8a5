// korvant eval EXPR [NAME=VALUE...]: the value of an expression.
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text/number_text.h"
#include "commands.h"
#include "eval_lines.h"
#include "expr/evaluator.h"
#include "expr/expression_text.h"
#include "source_report.h"

namespace korvant_app {
namespace {

struct Eval {
    std::vector<std::string> words;  ///< the expression, then NAME=VALUE
    bool jsonLines = false;
    bool grouping = false;
};

/// "NAME=VALUE". The name is cleaned as names in an expression are.
bool addValue(korvant::ExpressionEvaluator& evaluator, const std::string& assignment) {
    const auto sign = assignment.find('=');
    const auto value = sign == std::string::npos || sign == 0
                           ? std::nullopt
                           : readEvalNumber(std::string_view(assignment).substr(sign + 1));
    if (!value) {
        complain("'" + assignment + "' is no NAME=VALUE");
        return false;
    }
    std::string name = korvant::expr::removeBlanks(std::string_view(assignment).substr(0, sign));
    for (char& byte : name) byte = korvant::expr::lowerCase(byte);
    evaluator.setValue(name, *value);
    return true;
}

/// Writes the answer, or the error if there is one.
int print(const std::string& answer, const std::string& error) {
    const std::string line = (error.empty() ? answer : "error: " + error) + "\n";
    writeOutput(line);
    return error.empty() ? kFinished : kRunFailed;
}

int evaluateOne(const Eval& eval) {
    const std::vector<std::string>& words = eval.words;
    korvant::ExpressionEvaluator evaluator;
    for (std::size_t i = 1; i < words.size(); ++i)
        if (!addValue(evaluator, words[i])) return kWrongUsage;
    if (eval.grouping) {
        const auto grouping = evaluator.grouping(words[0]);
        return print(grouping.text, grouping.error);
    }
    const korvant::ExpressionResult result = evaluator.evaluate(words[0]);
    return print(korvant::formatShortest(result.value), result.error);
}

int evaluateLines() {
    std::ios::sync_with_stdio(false);
    errno = 0;
    const bool allRead = answerEvalLines(std::cin, std::cout);
    if (!std::cout) {
        complainOfOutput(errno);
        return kRunFailed;
    }
    return allRead ? kFinished : kRunFailed;
}

int refuse(const std::string& why) {
    complain(why);
    return kWrongUsage;
}

/// `others` is what is no option of ours and the words behind it, "--" included: an expression
/// may begin with a minus sign.
int evaluate(Eval& eval, const std::vector<std::string>& others) {
    for (const std::string& word : others) {
        if (word == "--") continue;
        if (word.starts_with("--")) return refuse("eval has no option " + word);
        eval.words.push_back(word);
    }
    if (eval.jsonLines != eval.words.empty())
        return refuse("eval needs an expression, or --jsonl and none");
    return eval.jsonLines ? evaluateLines() : evaluateOne(eval);
}

}  // namespace

void addEvalCommand(CLI::App& app, int& exitCode) {
    const auto eval = std::make_shared<Eval>();
    CLI::App* const command = app.add_subcommand("eval", "Prints the value of an expression");
    command->add_option("EXPR", eval->words,
                        "an expression such as 'min(a;b)^2', then NAME=VALUE for its names");
    command->add_flag("--jsonl", eval->jsonLines,
                      "read one JSON object a line from standard input, answer likewise");
    command->add_flag("--grouping", eval->grouping,
                      "print how the expression is read, not its value");
    command->prefix_command();
    command->callback(
        [eval, command, &exitCode] { exitCode = evaluate(*eval, command->remaining()); });
}

}  // namespace korvant_app
