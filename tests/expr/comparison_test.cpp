// The evaluator against one that was written straight from the rules.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "expr/evaluator.h"
#include "support/literal_evaluator.h"
#include "support/random_expressions.h"

using korvant::ExpressionEvaluator;
using korvant_test::evaluateLiterally;
using korvant_test::LiteralNames;
using korvant_test::RandomExpressions;

namespace {

void setNames(ExpressionEvaluator& evaluator, const LiteralNames& names) {
    evaluator.clearValues();
    for (const auto& [name, value] : names) evaluator.setValue(name, value);
}

bool sameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

::testing::AssertionResult same(ExpressionEvaluator& evaluator, const std::string& text,
                                const LiteralNames& names) {
    const auto expected = evaluateLiterally(text, names);
    const auto result = evaluator.evaluate(text);
    if (result.error == expected.error &&
        (!result.error.empty() || sameBits(result.value, expected.value)))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << text << "\ngives " << result.value << " \"" << result.error << "\"\nnot "
           << expected.value << " \"" << expected.error << "\"";
}

TEST(Comparison, RandomTextsHaveTheValuesAndMessagesOfTheRules) {
    RandomExpressions random(20261121);
    ExpressionEvaluator evaluator;
    for (int round = 0; round < 300; ++round) {
        const LiteralNames names = random.names(random.below(6));
        setNames(evaluator, names);
        for (int i = 0; i < 50; ++i) ASSERT_TRUE(same(evaluator, random.text(), names));
    }
}

TEST(Comparison, KeptReadingsFollowEveryChangeOfTheNames) {
    RandomExpressions random(7);
    ExpressionEvaluator evaluator;
    std::vector<std::string> texts;
    for (int i = 0; i < 40; ++i) texts.push_back(random.sensible());
    for (int round = 0; round < 100; ++round) {
        const LiteralNames names = random.names(random.below(8));
        setNames(evaluator, names);
        for (const std::string& text : texts) ASSERT_TRUE(same(evaluator, text, names));
    }
}

}  // namespace
