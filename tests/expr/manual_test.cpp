// The page for script authors tells the truth: every "`TEXT` is VALUE" in it is evaluated.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "expr/evaluator.h"

namespace {

TEST(ExpressionsPage, EveryExampleHasTheValueItIsSaidToHave) {
    std::ifstream file(KORVANT_SOURCE_DIR "/docs/expressions.md");
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    korvant::ExpressionEvaluator evaluator;
    for (const char* name : {"a", "b", "c", "d", "x"}) evaluator.setValue(name, 3);
    const std::regex example(
        "`([^`]+)`\\s+(is|fails\\s+with)\\s+(`[^`]+`,\\s+which\\s+is\\s+)?"
        "(-?[0-9.]*[0-9]|`[^`]+`)");
    int values = 0, groupings = 0, failures = 0;
    for (std::sregex_iterator each(page.begin(), page.end(), example), end; each != end; ++each) {
        const std::string text = (*each)[1], verb = (*each)[2], inner = (*each)[3],
                          said = (*each)[4];
        const auto result = evaluator.evaluate(text);
        if (!inner.empty()) {
            const auto quoted = inner.substr(1, inner.find('`', 1) - 1);
            EXPECT_EQ(evaluator.grouping(text).text, quoted);
            ++groupings;
        }
        if (said.front() != '`') {
            EXPECT_EQ(result.error, "") << text;
            EXPECT_EQ(result.value, std::strtod(said.c_str(), nullptr)) << text;
            ++values;
        } else if (verb != "is") {
            EXPECT_EQ("`" + result.error + "`", said) << text;
            ++failures;
        }
    }
    EXPECT_GE(values, 14) << "the page's wording has changed; this test no longer finds examples";
    EXPECT_GE(groupings, 5);
    EXPECT_GE(failures, 5);
}

}  // namespace
