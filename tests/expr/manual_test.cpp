// The page for script authors tells the truth: what it says of an expression is what it gives.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "expr/evaluator.h"
#include "support/tree.h"

namespace {

/// The page with every line end a blank.
std::string page() {
    std::ifstream file(korvant::test::sourceFolder() + "/docs/expressions.md");
    std::string text{std::istreambuf_iterator<char>(file), {}};
    for (char& byte : text)
        if (byte == '\n') byte = ' ';
    return text;
}

bool skip(std::string_view& text, std::string_view words) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    if (!text.starts_with(words)) return false;
    text.remove_prefix(words.size());
    return true;
}

/// What stands between the next two back quotes, with `text` behind it.
std::string quoted(std::string_view& text) {
    const std::size_t begin = text.find('`') + 1, end = text.find('`', begin);
    const std::string inside(text.substr(begin, end - begin));
    text.remove_prefix(end + 1);
    return inside;
}

struct Examples {
    korvant::ExpressionEvaluator evaluator;
    int values = 0, groupings = 0, failures = 0;

    /// "`EXPRESSION` is 3", "... is `GROUPED`, which is 3" or "... fails with `MESSAGE`".
    void check(const std::string& expression, std::string_view rest) {
        const auto result = evaluator.evaluate(expression);
        if (skip(rest, "fails with")) {
            EXPECT_EQ(result.error, quoted(rest)) << expression;
            ++failures;
        } else if (skip(rest, "is ")) {
            if (rest.front() == '`') {
                EXPECT_EQ(evaluator.grouping(expression).text, quoted(rest));
                ASSERT_TRUE(skip(rest, ", which is ")) << expression;
                ++groupings;
            }
            const std::string said(rest.substr(0, 32));
            char* end = nullptr;
            const double value = std::strtod(said.c_str(), &end);
            if (end == said.c_str()) return;
            EXPECT_EQ(result.error, "") << expression;
            EXPECT_EQ(result.value, value) << expression;
            ++values;
        }
    }
};

TEST(ExpressionsPage, EveryExampleGivesWhatItIsSaidToGive) {
    const std::string text = page();
    Examples examples;
    for (const char* name : {"a", "b", "c", "d", "x"}) examples.evaluator.setValue(name, 3);
    std::string_view rest = text;
    while (rest.find('`') != std::string_view::npos) {
        const std::string expression = quoted(rest);
        examples.check(expression, rest);
    }
    EXPECT_GE(examples.values, 14) << "the wording has changed; examples are no longer found";
    EXPECT_GE(examples.groupings, 5);
    EXPECT_GE(examples.failures, 5);
}

}  // namespace
