// What expressions are worth, and what is said about those that cannot be read.
#include "expr/evaluator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using korvant::ExpressionEvaluator;
using korvant::ExpressionResult;

namespace {

ExpressionEvaluator withNames() {
    ExpressionEvaluator evaluator;
    for (const auto& [name, value] : std::vector<std::pair<std::string, double>>{
             {"a", 10}, {"b", 4}, {"c", 3}, {"x", 0}, {"ab", 7}, {"Upper", 1}, {"lower", 2}})
        evaluator.setValue(name, value);
    return evaluator;
}

struct ValueCase {
    const char* text;
    double value;
};

void expectValues(const std::vector<ValueCase>& cases) {
    auto evaluator = withNames();
    for (const ValueCase& test : cases)
        for (int repeat = 0; repeat < 2; ++repeat) {
            const ExpressionResult result = evaluator.evaluate(test.text);
            EXPECT_EQ(result.error, "") << test.text;
            EXPECT_EQ(result.value, test.value) << test.text << ", time " << repeat + 1;
        }
}

TEST(Evaluator, GroupsFromTheRightInTheOrderOfTheTable) {
    expectValues({{"a-b-c", 9},   {"a+b-c", 11},  {"a-b+c", 9},        {"a/b/c", 7.5},
                  {"2^3^2", 512}, {"a+b%c", 2},   {"2*3+4*5", 26},     {"100/10*2", 20},
                  {"8-2*3", 2},   {"(a-b)-c", 3}, {"((a))+((b))", 14}, {"(a)+(b)", 14},
                  {"1=1<>0", 1},  {"1<>1==1", 0}, {"3>2>1", 1},        {"1||0&&0", 1},
                  {"1\\/0", 1},   {"1/\\0", 0},   {"2!=3", 1},         {"2>=2", 1},
                  {"1<2=1", 1}});
}

TEST(Evaluator, BlanksAndCaseMeanNothing) {
    expectValues({{"A - B", 6},
                  {"1 0", 10},
                  {"a b", 7},
                  {"\ta\n-\r b", 6},
                  {"MIN(A;B)", 4},
                  {"Lower", 2},
                  {"\xE9"
                   "a",
                   10}});
}

TEST(Evaluator, NumbersReadAsTheirLongestDecimalPart) {
    expectValues(
        {{"1.2.3", 1.2}, {"-5", -5}, {".5", 0.5}, {"1-", 1}, {"--5", -5}, {"5.", 5}, {"1-2", -1}});
}

TEST(Evaluator, PrefixesNegateNumbersNamesAndOneParameterCalls) {
    expectValues({{"!x", 1},
                  {"~0", 1},
                  {"!a", 0},
                  {"!!(a>b)", 1},
                  {"!sqrt(x)", 1},
                  {"!not(x)", 0},
                  {"!min(1;2)", 1},
                  {"!if(1;0;1)", 0},
                  {"not(a>b)", 0}});
}

TEST(Evaluator, FunctionsDoWhatTheirTableSays) {
    expectValues({{"min(3)", 3},          {"max(1;5;2)", 5},
                  {"min(2;1;3)", 1},      {"ind(5;10;3;20;7;30)", 20},
                  {"ind(1;10;3;20)", 10}, {"ind(9;10;3;20)", 20},
                  {"ind(1;2)", 2},        {"cat(10;0;20;1;30)", 20},
                  {"cat(10;0;30)", 30},   {"cat(7)", 7},
                  {"if(0;1/0;5)", 5},     {"?(1;2;3)", 2},
                  {"not(0)", 1},          {"abs(-3)", 3},
                  {"floor(-1.5)", -2},    {"ceil(1.2)", 2},
                  {"sqrt(16)", 4},        {"log10(1000)", 3},
                  {"exp(0)", 1},          {"min(max(1;2);if(1;5;6))", 2}});
}

TEST(Evaluator, RemaindersAreThoseOfWholeNumbers) {
    expectValues({{"7%3", 1}, {"-7%3", -1}, {"7.9%2.9", 1}, {"7%-3", 1}, {"5000000000%10", 7}});
    ExpressionEvaluator evaluator;
    evaluator.setValue("least", -2147483648.0);
    evaluator.setValue("nan", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(evaluator.evaluate("least%(-1)").value, 0);
    EXPECT_EQ(evaluator.evaluate("least%(-1)").error, "");
    EXPECT_EQ(evaluator.evaluate("nan%5").value, 0);
    for (const char* text : {"1%0", "1%0.5", "1%nan"})
        EXPECT_EQ(evaluator.evaluate(text).error, "Division by zero.") << text;
}

TEST(Evaluator, DivisionByZeroIsAnInfinityAndComparisonsAreExact) {
    ExpressionEvaluator evaluator;
    EXPECT_EQ(evaluator.evaluate("1/0").value, std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(evaluator.evaluate("0/0").value));
    EXPECT_TRUE(std::isnan(evaluator.evaluate("sqrt(-1)").value));
    EXPECT_EQ(evaluator.evaluate("0.1+0.2=0.3").value, 0);
    EXPECT_EQ(evaluator.evaluate("0/0||0").value, 1) << "not-a-number is not 0";
}

TEST(Evaluator, MessagesNameWhatCannotBeRead) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"", "Empty expression."},
        {"  ", "Syntax error in expression."},
        {"(a", "Bad parenthesed expression: \"(a\""},
        {")A(", "Bad parenthesed expression: \")a(\""},
        {"1e3", "Unknow identifier: \"1e3\""},
        {"upper", "Unknow identifier: \"upper\""},
        {"2*-3", "Syntax error in expression: \"2*\""},
        {"-a", "Syntax error in expression: \"-a\""},
        {"\"s\"", "Syntax error in expression: \"\"s\"\""},
        {"()", "Syntax error in function \"\" parameters"},
        {"f()", "Syntax error in function \"f\" parameters"},
        {"!(a>b)", "Unknow function \"\" with 1 parameter"},
        {"foo(1)", "Unknow function \"foo\" with 1 parameter"},
        {"pow(2;3)", "Unknow function \"pow\" with 2 parameters"},
        {"sum(1;2;3)", "Unknow function \"sum\" with 3 parameters"},
        {"sum(1;2;3;4)", "Unknow function \"sum\" with 4 parameters"},
        {"ind(1;2;3)", "Odd number of parameters in function \"ind\""},
        {"cat(1;2)", "Even number of parameters in function \"cat\""},
        {"sqrt(y)",
         "Syntax error in function \"sqrt\" parameters \"y\":\n\tUnknow identifier: \"y\""},
        {"min(1;sqrt(y))",
         "Syntax error in function \"min\" parameters \"sqrt(y)\":\n\tSyntax error in function "
         "\"sqrt\" parameters \"y\":\n\tUnknow identifier: \"y\""},
        {"min(1,2)",
         "Syntax error in function \"min\" parameters \"1,2\":\n\tSyntax error in expression: "
         "\"1,2\""},
        {"0&&y", "Unknow identifier: \"y\""},
        {"y+z", "Unknow identifier: \"y\""},
    };
    auto evaluator = withNames();
    for (const auto& [text, message] : cases)
        for (int repeat = 0; repeat < 2; ++repeat)
            EXPECT_EQ(evaluator.evaluate(text).error, message) << text;
}

TEST(Evaluator, KeptTextsFollowTheNames) {
    ExpressionEvaluator evaluator;
    EXPECT_EQ(evaluator.evaluate("p+1").error, "Unknow identifier: \"p\"");
    const auto slot = evaluator.setValue("p", 2);
    EXPECT_EQ(evaluator.evaluate("p+1").value, 3);
    evaluator.setSlotValue(slot, 5);
    EXPECT_EQ(evaluator.evaluate("p+1").value, 6);
    EXPECT_TRUE(evaluator.removeValue("p"));
    EXPECT_EQ(evaluator.evaluate("p+1").error, "Unknow identifier: \"p\"");
    EXPECT_EQ(evaluator.evaluate("min(1;2)").value, 1);
    evaluator.setValue("min(1;2)", 9);
    EXPECT_EQ(evaluator.evaluate("min(1;2)").value, 9) << "a name comes before a call";
    evaluator.clearValues();
    EXPECT_EQ(evaluator.evaluate("min(1;2)").value, 1);
}

TEST(Evaluator, RulesGiveWhatTheirTextGives) {
    ExpressionEvaluator evaluator;
    evaluator.setValue("a", 2);
    evaluator.setValue("b", 3);
    ExpressionEvaluator::Rule rule("a*b+a"), broken("a*unknown");
    EXPECT_EQ(evaluator.evaluate(rule).value, 8);
    const auto slots = evaluator.slotsRead(rule);
    EXPECT_EQ(slots.size(), 2u);
    double value = 0;
    EXPECT_FALSE(evaluator.evaluateValue(broken, value));
    EXPECT_EQ(evaluator.evaluate(broken).error, "Unknow identifier: \"unknown\"");
    evaluator.setValue("unknown", 5);
    EXPECT_TRUE(evaluator.evaluateValue(broken, value));
    EXPECT_EQ(value, 10);
    ExpressionEvaluator other(evaluator);
    other.setValue("a", 10);
    EXPECT_EQ(other.evaluate(rule).value, 40);
    EXPECT_EQ(evaluator.evaluate(rule).value, 8);
}

TEST(Evaluator, CacheOfAnySizeGivesTheSame) {
    for (const std::size_t entries : {std::size_t{0}, std::size_t{1}, std::size_t{3}}) {
        ExpressionEvaluator evaluator;
        evaluator.setCacheEntries(entries);
        for (int round = 0; round < 3; ++round)
            for (int i = 0; i < 7; ++i)
                EXPECT_EQ(evaluator.evaluate(std::to_string(i) + "+1").value, i + 1);
    }
}

}  // namespace
