// The pieces of reading, each by itself.
#include <gtest/gtest.h>

#include "expr/expression_reader.h"

using namespace korvant::expr;

namespace {

TEST(Reader, BlanksAreAllBytesBelowTheBlankAsSignedOnes) {
    EXPECT_EQ(removeBlanks(" a\tb\r\n c\x80\xFF\x01"), "abc");
    EXPECT_EQ(removeBlanks(std::string_view("1\0"
                                            "2",
                                            3)),
              "12");
}

TEST(Reader, BalanceIsCountedFromTheLeft) {
    for (const char* text : {"", "()", "(a)(b)", "((a)b)"}) EXPECT_TRUE(isBalanced(text)) << text;
    for (const char* text : {"(", ")", ")(", "(a))("}) EXPECT_FALSE(isBalanced(text)) << text;
}

TEST(Reader, OuterParenthesesGoOnePairAtATime) {
    std::string text = "((a+b))";
    EXPECT_TRUE(stripOuterParentheses(text));
    EXPECT_EQ(text, "(a+b)");
    EXPECT_TRUE(stripOuterParentheses(text));
    EXPECT_FALSE(stripOuterParentheses(text));
    for (std::string kept : {"()", "(a)+(b)", "a", ""}) {
        const std::string before = kept;
        EXPECT_FALSE(stripOuterParentheses(kept));
        EXPECT_EQ(kept, before);
    }
}

TEST(Reader, OperatorsSplitAtTheLeftmostPlaceThatFits) {
    const OperatorSplit split = splitAtOperator("a-b-c", "-", Operator::Subtract);
    EXPECT_TRUE(split.found);
    EXPECT_EQ(split.left, "a");
    EXPECT_EQ(split.right, "b-c");
    EXPECT_FALSE(splitAtOperator("-a", "-", Operator::Subtract).found);
    EXPECT_FALSE(splitAtOperator("(a-b)", "-", Operator::Subtract).found);
    EXPECT_EQ(findOperator("a==b<>c").left, "a==b");
    EXPECT_EQ(findOperator("a+b%c").op, Operator::Remainder);
    EXPECT_EQ(spellingOf(findOperator("a!=b").op), "<>");
    EXPECT_FALSE(findOperator("abc").found);
}

TEST(Reader, ParametersEndAtTheirOwnSemicolons) {
    using List = std::vector<std::string>;
    EXPECT_EQ(splitParameters("(1;2;3)"), (List{"1", "2", "3"}));
    EXPECT_EQ(splitParameters("(f(1;2);3)"), (List{"f(1;2)", "3"}));
    EXPECT_EQ(splitParameters("(1,2)"), (List{"1,2"}));
    EXPECT_EQ(splitParameters("()"), List{});
}

TEST(Reader, OperandsAreNumbersNamesCallsOrNeither) {
    NameTable names;
    names.findOrAdd("depth");
    EXPECT_EQ(classifyOperand("1.5", names).form, OperandForm::Number);
    EXPECT_EQ(classifyOperand("-", names).form, OperandForm::Number);
    EXPECT_EQ(classifyOperand("depth", names).form, OperandForm::Name);
    EXPECT_TRUE(classifyOperand("!depth", names).negated);
    EXPECT_EQ(classifyOperand("f(1)", names).form, OperandForm::Call);
    EXPECT_EQ(classifyOperand("1e3", names).form, OperandForm::Neither);
    EXPECT_EQ(classifyOperand("", names).form, OperandForm::Neither);
}

TEST(Reader, NumbersAreReadAsTheirLongestLeadingPart) {
    EXPECT_EQ(numberValue("1.2.3"), 1.2);
    EXPECT_EQ(numberValue("-"), 0);
    EXPECT_EQ(numberValue("-.5"), -0.5);
    EXPECT_EQ(numberValue("0.1"), 0.1);
}

}  // namespace
