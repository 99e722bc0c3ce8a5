// Values as scripts read them.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "host/library/input_scanner.h"
#include "support/byte_text.h"

namespace korvant {
namespace {

using test::ByteText;
constexpr auto kConverted = ScanState::converted;
constexpr auto kFailed = ScanState::failed;
constexpr auto kEnd = ScanState::endOfInput;

TEST(InputScanner, ReadsIntegersInThreeBasesAndSaturates) {
    const struct {
        const char* text;
        ScanState state;
        std::int32_t value;
        const char* rest;
    } cases[] = {
        {"0x1F", kConverted, 31, ""},
        {"0X1f ", kConverted, 31, " "},
        {"010", kConverted, 8, ""},
        {"08", kConverted, 0, "8"},
        {"0", kConverted, 0, ""},
        {"-0x10", kConverted, -16, ""},
        {" \t\r\n\v\f+42,7", kConverted, 42, ",7"},
        {"2147483648", kConverted, 2147483647, ""},
        {"-2147483649", kConverted, std::numeric_limits<std::int32_t>::min(), ""},
        {"99999999999999999999999999", kConverted, 2147483647, ""},
        {"0xFFFFFFFFFFFFFFFFFFFFF", kConverted, 2147483647, ""},
        {"abc", kFailed, 0, "abc"},
        {"-x", kFailed, 0, "x"},
        {"0x", kFailed, 0, ""},
        {"", kEnd, 0, ""},
        {"  \n", kEnd, 0, ""},
    };
    for (const auto& each : cases) {
        ByteText source(each.text);
        std::int32_t value = 77;
        EXPECT_EQ(each.state, scanInt(source, nullptr, value)) << each.text;
        EXPECT_EQ(each.value, value) << each.text;
        EXPECT_EQ(each.rest, source.rest()) << each.text;
    }
}

TEST(InputScanner, ReadsRealNumbersWhateverTheirForm) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* text;
        ScanState state;
        double value;
        const char* rest;
    } cases[] = {
        {"1.5", kConverted, 1.5, ""},
        {"-.5x", kConverted, -0.5, "x"},
        {"5.", kConverted, 5, ""},
        {"1,5", kConverted, 1, ",5"},
        {"+1E3 ", kConverted, 1000, " "},
        {"1e+5", kConverted, 1e5, ""},
        {"25E-2", kConverted, 0.25, ""},
        {"0x1.8p1", kConverted, 3, ""},
        {"0x.8", kConverted, 0.5, ""},
        {"0XFFp-4", kConverted, 15.9375, ""},
        {"inf", kConverted, kInfinity, ""},
        {"-INFINITY!", kConverted, -kInfinity, "!"},
        {"1e999", kConverted, kInfinity, ""},
        {"-1e999999999999999999999", kConverted, -kInfinity, ""},
        {"1e-999", kConverted, 0, ""},
        {"0.0000000000001e-999999999999999", kConverted, 0, ""},
        {"0e99999", kConverted, 0, ""},
        {"0x1p99999", kConverted, kInfinity, ""},
        {"1e", kFailed, 0, ""},
        {"1e+", kFailed, 0, ""},
        {".", kFailed, 0, ""},
        {"-", kFailed, 0, ""},
        {"0x", kFailed, 0, ""},
        {"infix", kFailed, 0, "x"},
        {"word", kFailed, 0, "word"},
        {"\n", kEnd, 0, ""},
    };
    for (const auto& each : cases) {
        ByteText source(each.text);
        double value = 77;
        EXPECT_EQ(each.state, scanDouble(source, nullptr, value)) << each.text;
        EXPECT_EQ(each.value, value) << each.text;
        EXPECT_EQ(each.rest, source.rest()) << each.text;
    }
}

TEST(InputScanner, SinglePrecisionIsRoundedOnce) {
    ByteText source("0.1 1e39 16777217 nan");
    float value = 0;
    for (const float wanted : {0.1f, std::numeric_limits<float>::infinity(), 16777216.0f}) {
        EXPECT_EQ(kConverted, scanFloat(source, nullptr, value));
        EXPECT_EQ(wanted, value);
    }
    EXPECT_EQ(kConverted, scanFloat(source, nullptr, value));
    EXPECT_TRUE(std::isnan(value));
}

TEST(InputScanner, AFailedReadLeavesTheTextForTheNext) {
    ByteText source("  depth 12.5");
    double value = 0;
    std::string word;
    EXPECT_EQ(kFailed, scanDouble(source, nullptr, value));
    EXPECT_EQ(kConverted, scanWord(source, nullptr, word));
    EXPECT_EQ("depth", word);
    EXPECT_EQ(kConverted, scanDouble(source, nullptr, value));
    EXPECT_EQ(12.5, value);
}

TEST(InputScanner, WordsKeepEveryByteButBlanks) {
    using namespace std::string_literals;
    ByteText source("\n a\0b\xE9 next"s);
    std::string word;
    EXPECT_EQ(kConverted, scanWord(source, nullptr, word));
    EXPECT_EQ("a\0b\xE9"s, word);
    EXPECT_EQ(kConverted, scanWord(source, nullptr, word));
    EXPECT_EQ(kEnd, scanWord(source, nullptr, word));
    EXPECT_EQ("", word);
}

TEST(InputScanner, AValueEndsAtItsLimit) {
    constexpr std::size_t kLimit = 1000;
    std::string word;
    double number = 1;
    ByteText fits(std::string(kLimit, 'w') + " " + std::string(kLimit, '7'));
    EXPECT_EQ(kConverted, scanWord(fits, nullptr, word, kLimit));
    EXPECT_EQ(kLimit, word.size());
    EXPECT_EQ(kConverted, scanDouble(fits, nullptr, number, kLimit));
    ByteText longWord(std::string(kLimit + 1, 'w')), longNumber(std::string(kLimit + 1, '7'));
    EXPECT_EQ(ScanState::tooLong, scanWord(longWord, nullptr, word, kLimit));
    EXPECT_EQ("", word);
    EXPECT_EQ(ScanState::tooLong, scanDouble(longNumber, nullptr, number, kLimit));
    EXPECT_EQ(0, number);
}

TEST(InputScanner, AStoppedWaitGivesNothing) {
    for (const char* text : {"", "  ", "-", "12"}) {
        ByteText integers(text, true), reals(text, true), words(text, true);
        std::int32_t integer = 5;
        double real = 5;
        std::string word;
        EXPECT_EQ(ScanState::stopped, scanInt(integers, nullptr, integer)) << text;
        EXPECT_EQ(ScanState::stopped, scanDouble(reals, nullptr, real)) << text;
        EXPECT_EQ(ScanState::stopped, scanWord(words, nullptr, word)) << text;
        EXPECT_EQ(0, integer);
        EXPECT_EQ(0, real);
    }
}

}  // namespace
}  // namespace korvant
