// The record of a reading, and texts that are split again by it.
#include "expr/split_record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "expr/evaluator.h"
#include "expr/expression_reader.h"
#include "expr/grouping.h"
#include "support/random_expressions.h"

using namespace korvant::expr;
using korvant::ExpressionEvaluator;
using korvant_test::RandomExpressions;

namespace {

constexpr ExpressionReader::Bounds kBounds{1 << 20, 1000};

SplitRecord recordOf(ExpressionReader& reader, const std::string& text) {
    SplitRecorder recorder;
    EXPECT_TRUE(reader.read(text, kBounds, &recorder)) << text;
    return recorder.record();
}

std::string groupedBy(SplitRecord record, const std::string& text, const NameTable& names) {
    PairedText paired;
    paired.assignCleaned(text);
    std::string grouped;
    return writeGrouped(paired, names, record, grouped) ? grouped : "does not fit";
}

TEST(SplitRecord, ListsAPieceBeforeItsOperandsAndTheLeftOneFirst) {
    const NameTable names;
    ExpressionReader reader(names);
    using Numbers = std::vector<std::uint32_t>;
    const std::vector<std::pair<const char*, Numbers>> cases = {
        {"7", {0}},
        {"1-2", {1, 1, 2, 0, 0}},
        {"1-2-3", {1, 1, 2, 0, 1, 3, 4, 0, 0}},
        {"1*2+3", {1, 3, 4, 1, 1, 2, 0, 0, 0}},
        {"(1<>2)", {1, 2, 4, 0, 0}},
        {"min(1;2-3)*4", {1, 10, 11, 0, 0, 1, 7, 8, 0, 0, 0}},
    };
    for (const auto& [text, numbers] : cases)
        EXPECT_EQ(recordOf(reader, text).numbers(), numbers) << text;
}

TEST(SplitRecord, BrokenOnesAreNoticed) {
    SplitRecord record;
    std::uint32_t start = 0, right = 0;
    EXPECT_EQ(record.next(start, right), SplitRecord::Entry::Broken);
    record.addSplit(1, 2);
    record.addOperand();
    EXPECT_EQ(record.next(start, right), SplitRecord::Entry::Split);
    EXPECT_EQ(record.next(start, right), SplitRecord::Entry::Operand);
    EXPECT_TRUE(record.atEnd());
    EXPECT_EQ(record.next(start, right), SplitRecord::Entry::Broken);
}

TEST(SplitRecord, AnotherTextsRecordCutsNothing) {
    const NameTable names;
    ExpressionReader reader(names);
    const SplitRecord record = recordOf(reader, "min(1;2-3)*4");
    for (const char* text : {"", "1", "1-2", "(1+2)*(3+4)", "min(1;2)", "((((1))))+22222",
                             "1234567890-1", "f(1;2;3-4)*5"})
        EXPECT_EQ(groupedBy(record, text, names), "does not fit") << text;
    SplitRecord outside;
    outside.addSplit(4000000000u, 4000000001u);
    EXPECT_EQ(groupedBy(outside, "1-2", names), "does not fit");
}

TEST(Grouping, PutsOperationsInParentheses) {
    ExpressionEvaluator evaluator;
    for (const char* name : {"a", "b", "c", "d"}) evaluator.setValue(name, 1);
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"a-b-c", "a-(b-c)"},
        {"A + b - c % d", "(a+(b-c))%d"},
        {"a==b<>c", "(a==b)<>c"},
        {"((a+b))*(c)", "(a+b)*c"},
        {"min(a-b*c;(a);sin(a+b)tail)*2", "min(a-(b*c);a;sin(a+b)tail)*2"},
        {"!not(a>b)+5--3", "!not(a>b)+(5--3)"},
        {"a\\/b!=c", "a\\/(b!=c)"},
        {"2*(-5)", "2*(-5)"},
        {"((-5))+((b))", "(-5)+b"},
        {"a<(--)-b", "a<((--)-b)"},
    };
    for (const auto& [text, grouped] : cases) EXPECT_EQ(evaluator.grouping(text).text, grouped);
    EXPECT_EQ(evaluator.grouping("a+e").error, "Unknow identifier: \"e\"");
    EXPECT_EQ(evaluator.grouping("").error, "Empty expression.");
}

TEST(Grouping, ReadsAsTheTextItWasMadeOf) {
    RandomExpressions random(99);
    for (int round = 0; round < 100; ++round) {
        ExpressionEvaluator evaluator;
        for (const auto& [name, value] : random.names(random.below(3)))
            evaluator.setValue(name, value);
        for (int i = 0; i < 30; ++i) {
            const std::string text = random.text();
            const auto grouping = evaluator.grouping(text);
            // A text of blanks only can be a name, but nothing is left of it to be written.
            if (!grouping.error.empty() || grouping.text.empty()) continue;
            EXPECT_EQ(evaluator.grouping(grouping.text).text, grouping.text) << text;
            const auto before = evaluator.evaluate(text), after = evaluator.evaluate(grouping.text);
            EXPECT_EQ(before.error.empty(), after.error.empty()) << text << "\n" << grouping.text;
            if (!before.error.empty() || before.value != before.value) continue;
            EXPECT_EQ(before.value, after.value) << text << "\n" << grouping.text;
        }
    }
}

}  // namespace
