// The expression evaluator against other people's and against C++ by hand.
#include <string>
#include <vector>

#include "expr/evaluator.h"
#include "expr_cases.h"
#include "ratio_table.h"

using korvant::ExpressionEvaluator;
using korvant_bench::ExprCase;
using korvant_bench::exprCases;
using korvant_bench::kExprNames;

RATIO_ROW("Expressions", "evaluate(text) of a text read before / muParser's Eval()", 0.45,
          "expr_again/", "muparser_again/");
RATIO_ROW("Expressions", "the same / C++ by hand", 5, "expr_again/", "by_hand/");
RATIO_ROW("Expressions", "a kept rule / muParser's Eval()", 0.30, "expr_rule/", "muparser_again/");
RATIO_ROW("Expressions", "first reading and evaluation / muParser's SetExpr and Eval", 0.020,
          "expr_first/", "muparser_first/");
RATIO_ROW("Expressions", "a failing text / muParser's exception", 0.05, "expr_fail/",
          "muparser_fail/");
RATIO_ROW("Expressions", "10,000 different texts in turn: per text / one text again", 4,
          "expr_turn_many", "expr_turn_one");
RATIO_ROW("Expressions", "a text read before / a compiled Lua function", 0, "expr_again/",
          "lua_again/");
RATIO_ROW("Expressions", "first reading / Lua's load and call", 0, "expr_first/", "lua_first/");
RATIO_ROW("Expressions", "a text read before / libmatheval's evaluate", 0, "expr_again/",
          "matheval_again/");
RATIO_ROW("Expressions", "a text read before / exprtk's value()", 0, "expr_again/",
          "exprtk_again/");
RATIO_ROW("Expressions", "first reading / exprtk's compile and value()", 0, "expr_first/",
          "exprtk_first/");
RATIO_ROW("Expressions", "growth: 1 MiB of text / 128 KiB (8 would be linear)", 12, "expr_1024k/",
          "expr_128k/", "the system's new pages for some 35 MB of steps, given back each time");

namespace {

void fillNames(ExpressionEvaluator& evaluator) {
    for (const auto& [name, value] : kExprNames) evaluator.setValue(name, value);
}

void again(benchmark::State& state, const ExprCase& each) {
    ExpressionEvaluator evaluator;
    fillNames(evaluator);
    const std::string text = each.text;
    checkValue(each, "evaluate", evaluator.evaluate(text).value);
    for (auto _ : state) benchmark::DoNotOptimize(evaluator.evaluate(text));
}

void rule(benchmark::State& state, const ExprCase& each) {
    ExpressionEvaluator evaluator;
    fillNames(evaluator);
    ExpressionEvaluator::Rule kept(each.text);
    checkValue(each, "a rule", evaluator.evaluate(kept).value);
    double value = 0;
    for (auto _ : state) {
        evaluator.evaluateValue(kept, value);
        benchmark::DoNotOptimize(value);
    }
}

/// The cache is emptied before each evaluation.
void first(benchmark::State& state, const ExprCase& each) {
    ExpressionEvaluator evaluator;
    fillNames(evaluator);
    const std::string text = each.text;
    for (auto _ : state) {
        evaluator.setCacheEntries(0);
        evaluator.setCacheEntries(64);
        benchmark::DoNotOptimize(evaluator.evaluate(text));
    }
}

void failing(benchmark::State& state, const ExprCase& each) {
    ExpressionEvaluator evaluator;
    fillNames(evaluator);
    const std::string text = each.text + std::string("+missing");
    if (evaluator.evaluate(text).error != "Unknow identifier: \"missing\"")
        state.SkipWithError("another error was expected");
    for (auto _ : state) benchmark::DoNotOptimize(evaluator.evaluate(text));
}

void byHand(benchmark::State& state, const ExprCase& each) {
    double values[kExprNames.size()];
    for (std::size_t i = 0; i < kExprNames.size(); ++i) values[i] = kExprNames[i].value;
    auto* function = each.byHand;
    for (auto _ : state) {
        benchmark::DoNotOptimize(function);
        benchmark::DoNotOptimize(function(values));
    }
}

void inTurn(benchmark::State& state, std::size_t count) {
    ExpressionEvaluator evaluator;
    evaluator.setCacheEntries(10000);
    for (int i = 0; i < 100; ++i) evaluator.setValue("p" + std::to_string(i), i);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back("p" + std::to_string(i % 100) + ">=" + std::to_string(i / 100) + "&&p" +
                        std::to_string(i * 7 % 100) + "<90");
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluator.evaluate(texts[next]));
        if (++next == count) next = 0;
    }
}

std::string repeated(std::string begin, const std::string& part, const std::string& end,
                     std::size_t bytes) {
    while (begin.size() + part.size() + end.size() <= bytes) begin += part;
    return begin + end;
}

struct LongText {
    const char* name;
    std::string begin, part, end;
};

const LongText kLongTexts[] = {
    {
        "chain",
        "",
        "a-",
        "b",
    },
    {
        "mixed",
        "",
        "a*b+c<",
        "d",
    },
    {
        "signs",
        "",
        "-",
        "1",
    },
    {"digits", "", "7", ""},
    {"groups", "", "(a+b)*", "c"},
    {"parameters", "min(", "a;", "b)"},
    {"cases", "cat(", "1;a=b;", "2)"},
    {"calls", "", "sin(cos(a))+", "b"},
    {"unknown", "", "x", ""},
};

void longText(benchmark::State& state, const LongText& kind, std::size_t bytes) {
    ExpressionEvaluator evaluator({.cacheEntries = 0});
    fillNames(evaluator);
    const std::string text = repeated(kind.begin, kind.part, kind.end, bytes);
    for (auto _ : state) benchmark::DoNotOptimize(evaluator.evaluate(text));
}

const bool kRegistered = [] {
    const auto add = [](const std::string& name, auto function, const auto&... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), function, arguments...);
    };
    for (const ExprCase& each : exprCases()) {
        const std::string name = std::string("/") + each.name;
        add("expr_again" + name, again, each);
        add("expr_rule" + name, rule, each);
        add("expr_first" + name, first, each);
        add("expr_fail" + name, failing, each);
        add("by_hand" + name, byHand, each);
    }
    add("expr_turn_many", inTurn, std::size_t{10000});
    add("expr_turn_one", inTurn, std::size_t{1});
    for (const LongText& kind : kLongTexts) {
        add(std::string("expr_1024k/") + kind.name, longText, kind, std::size_t{1} << 20);
        add(std::string("expr_128k/") + kind.name, longText, kind, std::size_t{1} << 17);
    }
    return true;
}();

}  // namespace
