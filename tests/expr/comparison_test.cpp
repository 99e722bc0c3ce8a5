// The evaluator against one that was written straight from the rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

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

/// KORVANT_COMPARISONS in the environment asks for more of them, and for others each time.
int comparisons() {
    const char* const asked = std::getenv("KORVANT_COMPARISONS");
    return asked ? std::max(std::atoi(asked), 1) : 15000;
}

TEST(Comparison, RandomTextsHaveTheValuesAndMessagesOfTheRules) {
    const int count = comparisons();
    const std::uint32_t seed = count == 15000 ? 20261121u : std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomExpressions random(seed);
    ExpressionEvaluator evaluator;
    for (int round = 0; round < count / 50; ++round) {
        const LiteralNames names = random.names(random.below(6));
        setNames(evaluator, names);
        for (int i = 0; i < 50; ++i) ASSERT_TRUE(same(evaluator, random.text(), names));
    }
}

TEST(Comparison, KeptReadingsFollowEveryChangeOfTheNames) {
    RandomExpressions random(7);
    ExpressionEvaluator evaluator;
    std::vector<std::string> texts;
    std::vector<ExpressionEvaluator::Rule> rules;
    for (int i = 0; i < 40; ++i) texts.push_back(random.sensible());
    for (const std::string& text : texts) rules.emplace_back(text);
    for (int round = 0; round < 100; ++round) {
        const LiteralNames names = random.names(random.below(8));
        setNames(evaluator, names);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            ASSERT_TRUE(same(evaluator, texts[i], names));
            const auto kept = evaluator.evaluate(rules[i]), fresh = evaluator.evaluate(texts[i]);
            ASSERT_EQ(kept.error, fresh.error) << texts[i];
            ASSERT_TRUE(!kept.error.empty() || sameBits(kept.value, fresh.value)) << texts[i];
        }
    }
}

}  // namespace
