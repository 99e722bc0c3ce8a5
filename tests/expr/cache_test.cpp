// What is kept of texts that were read, within its bounds.
#include "expr/reading_cache.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "expr/evaluator.h"

using namespace korvant::expr;
using korvant::ExpressionEvaluator;

namespace {

class Cache : public ::testing::Test {
  protected:
    void keep(ReadingCache& cache, const std::string& text, int steps = 1) {
        Steps list;
        for (int i = 0; i < steps; ++i) list.push() = Step{};
        cache.keep(text, static_cast<std::uint32_t>(hashText(text)), list, true, 0);
    }
    bool has(const ReadingCache& cache, const std::string& text) {
        return cache.find(text, static_cast<std::uint32_t>(hashText(text))) != nullptr;
    }
    RecallTable recalled_;
};

TEST_F(Cache, DropsTheOldestFirst) {
    ReadingCache cache(3, 1 << 20, recalled_);
    for (const char* text : {"a", "b", "c", "d"}) keep(cache, text);
    EXPECT_EQ(cache.count(), 3u);
    EXPECT_FALSE(has(cache, "a"));
    for (const char* text : {"b", "c", "d"}) EXPECT_TRUE(has(cache, text)) << text;
    EXPECT_TRUE(has(cache, "b"));
    keep(cache, "e");
    EXPECT_FALSE(has(cache, "b")) << "use does not make younger";
    cache.setEntries(1);
    EXPECT_TRUE(has(cache, "e"));
    EXPECT_EQ(cache.count(), 1u);
}

TEST_F(Cache, NeverHoldsMoreBytesThanAllowed) {
    ReadingCache cache(1000, 4096, recalled_);
    for (int i = 0; i < 500; ++i) {
        keep(cache, std::string(static_cast<std::size_t>(i % 90), 'x') + std::to_string(i),
             1 + i % 20);
        EXPECT_LE(cache.bytes(), 4096u);
        EXPECT_GT(cache.count(), 0u);
    }
    keep(cache, std::string(5000, 'y'));
    EXPECT_FALSE(has(cache, std::string(5000, 'y'))) << "too large to be kept at all";
    cache.clear();
    EXPECT_EQ(cache.bytes(), 0u);
}

TEST_F(Cache, TenThousandShortConditionsFitIntoOneMebibyte) {
    ReadingCache cache(10000, 1 << 20, recalled_);
    for (int i = 0; i < 10000; ++i) keep(cache, "p" + std::to_string(i) + ">=12&&q<9", 2);
    EXPECT_EQ(cache.count(), 10000u);
}

TEST_F(Cache, RecallsByAddressOnlyWhatTheTextStillIs) {
    ReadingCache cache(4, 1 << 20, recalled_);
    keep(cache, "same");
    keep(cache, "else");
    std::string text = "same";
    KeptReading* kept = cache.find(text, static_cast<std::uint32_t>(hashText(text)));
    EXPECT_EQ(recalled_.find(text), nullptr);
    recalled_.remember(text, *kept);
    EXPECT_EQ(recalled_.find(text), kept);
    text = "else";
    EXPECT_EQ(recalled_.find(text), nullptr) << "other bytes at the same address";
    text = "same";
    EXPECT_EQ(recalled_.find(text), kept);
    cache.clear();
    EXPECT_EQ(recalled_.find(text), nullptr) << "dropped";
    EXPECT_EQ(recalled_.find({}), nullptr);
}

TEST(Evaluation, ATextThatChangesInPlaceIsReadForWhatItIs) {
    ExpressionEvaluator evaluator;
    std::string text = "1+1";
    for (int round = 0; round < 3; ++round)
        for (const char digit : {'1', '2', '3'}) {
            text[2] = digit;
            for (int repeat = 0; repeat < 3; ++repeat)
                EXPECT_EQ(evaluator.evaluate(text).value, 1 + (digit - '0'));
        }
}

TEST(Rules, FollowEvaluatorsNamesAndMoves) {
    ExpressionEvaluator evaluator;
    const auto a = evaluator.setValue("a", 1);
    std::vector<ExpressionEvaluator::Rule> rules;
    for (int i = 0; i < 50; ++i) rules.emplace_back("a+" + std::to_string(i));
    double value = 0;
    for (int round = 0; round < 4; ++round) {
        evaluator.setSlotValue(a, round);
        if (round == 2) evaluator.setValue("another", 1);
        for (std::size_t i = 0; i < rules.size(); ++i) {
            EXPECT_TRUE(evaluator.evaluateValue(rules[i], value));
            EXPECT_EQ(value, round + static_cast<double>(i));
        }
        rules.emplace_back(rules.front());
        rules.pop_back();
    }
    ExpressionEvaluator::Rule taken(std::move(rules.front()));
    EXPECT_TRUE(evaluator.evaluateValue(taken, value));
    EXPECT_EQ(evaluator.evaluate(rules.front()).error, "Empty expression.");
    evaluator.removeValue("a");
    EXPECT_FALSE(evaluator.evaluateValue(taken, value));
    EXPECT_TRUE(evaluator.slotsRead(taken).empty());
}

TEST(Rules, AnEvaluatorInThePlaceOfAnotherIsAnother) {
    ExpressionEvaluator::Rule rule("a*2");
    for (int round = 0; round < 50; ++round) {
        auto evaluator = std::make_unique<ExpressionEvaluator>();
        for (int i = 0; i < round; ++i) evaluator->setValue("n" + std::to_string(i), -1);
        evaluator->setValue("a", round);
        EXPECT_EQ(evaluator->evaluate(rule).value, 2 * round);
    }
}

TEST(Rules, TellTheSlotsTheyRead) {
    ExpressionEvaluator evaluator;
    const auto a = evaluator.setValue("a", 1), b = evaluator.setValue("b", 2);
    evaluator.setValue("c", 3);
    ExpressionEvaluator::Rule rule("if(b>0;a;b)+a"), none("1+1"), fails("(a%0)+b");
    using Slots = std::vector<ExpressionEvaluator::Slot>;
    const auto slots = [&](ExpressionEvaluator::Rule& each) {
        const auto read = evaluator.slotsRead(each);
        return Slots(read.begin(), read.end());
    };
    EXPECT_EQ(slots(rule), (Slots{a, b}));
    EXPECT_EQ(slots(none), Slots{});
    EXPECT_EQ(slots(fails), (Slots{a, b})) << "it reads, though it has no value now";
    EXPECT_EQ(evaluator.evaluate(fails).error, "Division by zero.");
}

TEST(Values, SurviveRemovalAndReuseOfSlots) {
    ExpressionEvaluator evaluator;
    for (int i = 0; i < 300; ++i) evaluator.setValue("n" + std::to_string(i), i);
    for (int i = 0; i < 300; i += 2) EXPECT_TRUE(evaluator.removeValue("n" + std::to_string(i)));
    EXPECT_FALSE(evaluator.removeValue("n0"));
    EXPECT_EQ(evaluator.valueCount(), 150u);
    for (int i = 0; i < 200; ++i) evaluator.setValue("averylongname" + std::to_string(i), -i);
    for (int i = 1; i < 300; i += 2)
        EXPECT_EQ(evaluator.evaluate("n" + std::to_string(i)).value, i);
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(evaluator.evaluate("averylongname" + std::to_string(i)).value, -i);
    EXPECT_EQ(evaluator.findSlot("n0"), ExpressionEvaluator::kNoSlot);
    evaluator.setSlotValue(ExpressionEvaluator::kNoSlot, 1);
    EXPECT_EQ(evaluator.slotValue(ExpressionEvaluator::kNoSlot), 0);
}

}  // namespace
