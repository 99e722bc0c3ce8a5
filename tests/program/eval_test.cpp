// korvant eval, as it is typed and as other programs talk to it.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/process_runner.h"

using korvant::test::runKorvant;

namespace {

TEST(Eval, PrintsTheShortestTextThatReadsBack) {
    struct Case {
        std::vector<std::string> arguments;
        const char* output;
    };
    const std::vector<Case> cases = {{{"min(a;b)^2^0.5", "a=3", "b=4"}, "4.728804387837416\n"},
                                     {{"0.1+0.2"}, "0.30000000000000004\n"},
                                     {{"x*2", "X=0x1.8p+1"}, "6\n"},
                                     {{"x", "x=-inf"}, "-inf\n"},
                                     {{"10-4-3"}, "9\n"},
                                     {{"-5+a", "a=7"}, "2\n"},
                                     {{"--", "-5+3"}, "-2\n"},
                                     {{"--grouping", "a-b-c", "a=1", "b=2", "c=3"}, "a-(b-c)\n"}};
    for (const Case& test : cases) {
        std::vector<std::string> arguments = {"eval"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const auto result = runKorvant(arguments);
        EXPECT_EQ(result.output, test.output) << test.arguments[0];
        EXPECT_EQ(result.exitCode, 0);
    }
}

TEST(Eval, SaysWhatIsWrong) {
    const auto unread = runKorvant({"eval", "sqrt(y"});
    EXPECT_EQ(unread.output, "error: Bad parenthesed expression: \"sqrt(y\"\n");
    EXPECT_EQ(unread.exitCode, 1);
    EXPECT_EQ(runKorvant({"eval", "a", "a=much"}).exitCode, 64);
    EXPECT_EQ(runKorvant({"eval"}).exitCode, 64);
    EXPECT_EQ(runKorvant({"eval", "--unknown", "1"}).exitCode, 64);
    EXPECT_EQ(runKorvant({"eval", "--jsonl", "1"}).exitCode, 64);
}

TEST(Eval, HoldsNoMoreOfALineThanItNeeds) {
    korvant::test::ProcessOptions options;
    options.input = std::string(17 << 20, '[') + "\n{\"expr\": \"1+1\"}\n";
    const auto result = runKorvant({"eval", "--jsonl"}, options);
    std::istringstream lines(result.output);
    std::string refused, answered;
    ASSERT_TRUE(std::getline(lines, refused) && std::getline(lines, answered));
    EXPECT_NE(nlohmann::json::parse(refused).at("error"), "");
    EXPECT_EQ(nlohmann::json::parse(answered).at("value"), "0x1p+1");
}

TEST(Eval, AnswersOneJsonObjectForEachLine) {
    korvant::test::ProcessOptions options;
    options.input =
        "{\"expr\": \"a*b\", \"names\": {\"a\": 1.5, \"b\": \"0x1.8p+1\"}}\n"
        "{\"expr\": \"a\"}\n"
        "{\"expr\": \"\\u00e9+\", \"names\": {}}\n"
        "not json\n"
        "{\"expr\": \"1/0\"}\n";
    const auto result = runKorvant({"eval", "--jsonl"}, options);
    std::istringstream lines(result.output);
    const std::vector<std::pair<const char*, const char*>> expected = {
        {"0x1.2p+2", ""},
        {nullptr, "Unknow identifier: \"a\""},
        {nullptr, "Syntax error in expression: \"+\""},
        {nullptr, nullptr},
        {"inf", ""}};
    for (const auto& [value, error] : expected) {
        std::string line;
        ASSERT_TRUE(std::getline(lines, line));
        const auto answer = nlohmann::json::parse(line);
        if (value) {
            EXPECT_EQ(answer.at("value"), value);
        }
        if (error) {
            EXPECT_EQ(answer.at("error"), error);
        } else {
            EXPECT_NE(answer.at("error"), "");
        }
    }
    EXPECT_EQ(result.exitCode, 1);
}

}  // namespace
