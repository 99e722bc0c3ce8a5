// Texts that nobody would write, in linear time and without a signal.
#include <gtest/gtest.h>

#include <string>

#include "expr/evaluator.h"

using korvant::ExpressionEvaluator;

namespace {

std::string repeated(const std::string& piece, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += piece;
    return text;
}

TEST(HostileText, ChainsOfAnyLengthHaveTheirValue) {
    ExpressionEvaluator evaluator;
    // Grouped from the right, 1-1-1-... is 1 for an odd number of terms.
    EXPECT_EQ(evaluator.evaluate(repeated("1-", 50000) + "1").value, 1);
    EXPECT_EQ(evaluator.evaluate(repeated("1+", 499999) + "1").value, 500000);
    EXPECT_EQ(evaluator.evaluate(repeated("1^", 100000) + "1").value, 1);
}

TEST(HostileText, DepthEndsInAMessageAndNotInTheStack) {
    ExpressionEvaluator evaluator;
    for (const int depth : {1001, 100000}) {
        EXPECT_EQ(evaluator.evaluate(repeated("(1+", depth) + "1" + repeated(")", depth)).error,
                  "Expression too deep.");
        EXPECT_FALSE(
            evaluator.evaluate(repeated("not(", depth) + "1" + repeated(")", depth)).error.empty());
    }
    EXPECT_EQ(evaluator.evaluate(repeated("(1+", 999) + "1" + repeated(")", 999)).value, 1000);
}

TEST(HostileText, LongTextsAreReadOrRefused) {
    ExpressionEvaluator evaluator;
    const int limit = 1 << 20;
    EXPECT_EQ(evaluator.evaluate(std::string(120000, '0') + "7").value, 7);
    EXPECT_FALSE(evaluator.evaluate(std::string(limit, 'n')).error.empty());
    EXPECT_FALSE(evaluator.evaluate(std::string(limit + 1, '1')).error.empty());
    EXPECT_FALSE(evaluator.evaluate(std::string(limit, '(')).error.empty());
    EXPECT_FALSE(evaluator.evaluate(repeated("<>=!", limit / 4)).error.empty());
    EXPECT_FALSE(evaluator.evaluate(repeated("1+", limit / 2)).error.empty());
    EXPECT_EQ(evaluator.evaluate("1+1").value, 2);
}

TEST(HostileText, MessagesStayShortHoweverDeepTheFault) {
    ExpressionEvaluator evaluator;
    const std::string text = repeated("abs(", 1000) + std::string(10000, 'u') + repeated(")", 1000);
    const std::string error = evaluator.evaluate(text).error;
    EXPECT_FALSE(error.empty());
    EXPECT_LT(error.size(), std::size_t{1} << 17);
}

TEST(HostileText, EveryByteAtEveryPlaceIsAValueOrAMessage) {
    ExpressionEvaluator evaluator;
    evaluator.setValue("a", 1);
    const std::string base = "min(a;1)+a%2";
    for (std::size_t place = 0; place <= base.size(); ++place)
        for (int byte = 0; byte < 256; ++byte) {
            std::string text = base;
            text.insert(place, 1, static_cast<char>(byte));
            const auto first = evaluator.evaluate(text);
            const auto again = evaluator.evaluate(text);
            EXPECT_EQ(first.error, again.error);
        }
}

}  // namespace
