// Mathematical functions as scripts call them.
#include <charconv>
#include <chrono>
#include <cmath>

#include "base/text/number_text.h"
#include "host/library/math_functions.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class MathFunctions : public ScriptInBothConventions {};

INSTANTIATE_TEST_SUITE_P(Conventions, MathFunctions, ::testing::Bool(), conventionName);

TEST_P(MathFunctions, AreTheLibrarys) {
    const std::pair<const char*, double> cases[] = {
        {"acos(0.25)", std::acos(0.25)},
        {"asin(0.25)", std::asin(0.25)},
        {"atan(2.0)", std::atan(2.0)},
        {"atan2(1, 0)", std::atan2(1.0, 0.0)},
        {"atan2(-1.0, -2.0)", std::atan2(-1.0, -2.0)},
        {"ceil(-1.5)", -1.0},
        {"cos(1.0)", std::cos(1.0)},
        {"cosh(1.0)", std::cosh(1.0)},
        {"exp(1.5)", std::exp(1.5)},
        {"fabs(-2.5)", 2.5},
        {"floor(-1.5)", -2.0},
        {"fmod(-7.0, 4.0)", -3.0},
        {"log(3.0)", std::log(3.0)},
        {"log10(3.0)", std::log10(3.0)},
        {"pow(2.0, 0.5)", std::pow(2.0, 0.5)},
        {"sin(1.0)", std::sin(1.0)},
        {"sinh(1.0)", std::sinh(1.0)},
        {"sqrt(2.0)", std::sqrt(2.0)},
        {"tan(1.0)", std::tan(1.0)},
        {"tanh(1.0)", std::tanh(1.0)},
        {"hypot(3.0, 4.0)", 5.0},
        {"j0(1.5)", ::j0(1.5)},
        {"j1(1.5)", ::j1(1.5)},
        {"jn(3, 1.5)", ::jn(3, 1.5)},
        {"jn(0, 1.5)", ::j0(1.5)},
        {"y0(1.5)", ::y0(1.5)},
        {"y1(1.5)", ::y1(1.5)},
        {"yn(-3, 1.5)", ::yn(-3, 1.5)},
        {"sqrt(2.25f)", 1.5},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(value(expression), formatGeneral(expected)) << expression;
}

TEST_P(MathFunctions, ErrorsAreTheLibrarysResultsAndNoExceptions) {
    const std::pair<const char*, const char*> cases[] = {
        {"y0(0.0)", "-inf"},
        {"log(0.0)", "-inf"},
        {"exp(1000.0)", "inf"},
    };
    for (const char* notANumber : {"y0(-1.0)", "sqrt(-1.0)", "acos(2.0)", "log(-1.0)"})
        EXPECT_EQ(output(std::string("double d = ") + notANumber +
                         "; Print(d == d ? \"number\" : "
                         "\"none\");"),
                  "none")
            << notANumber;
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(value(expression), expected) << expression;
}

TEST(Bessel, LargeOrdersAreTheLibrarysValues) {
    const std::pair<int, double> cases[] = {
        {300000, 300000.5},  {300001, 299950.0},   {300000, 400000.0},  {300001, -300100.0},
        {-300001, 300100.0}, {-300001, -300100.0}, {-300000, 300100.0}, {300000, 1e200}};
    for (const auto& [order, x] : cases) {
        const double expected = ::jn(order, x);
        EXPECT_NEAR(besselJn(order, x, nullptr), expected, std::fabs(expected) * 1e-9)
            << order << " " << x;
        const double second = ::yn(order, x);
        EXPECT_TRUE(besselYn(order, x, nullptr) == second || std::isnan(second)) << order << x;
    }
    EXPECT_EQ(besselJn(300000, 100.0, nullptr), 0.0);
    EXPECT_EQ(besselYn(300000, 100.0, nullptr), -HUGE_VAL);
    EXPECT_EQ(besselYn(-300001, 100.0, nullptr), HUGE_VAL);
    EXPECT_TRUE(std::isnan(besselYn(300000, -1.0, nullptr)));
    EXPECT_EQ(besselYn(300000, 0.0, nullptr), -HUGE_VAL);
    EXPECT_TRUE(std::isnan(besselJn(300000, NAN, nullptr)));
    EXPECT_EQ(besselJn(300000, HUGE_VAL, nullptr), 0.0);
    EXPECT_EQ(besselJn(300003, 0x1p400, nullptr), ::jn(300003, 0x1p400));
}

TEST(Bessel, TheSmallestOrderHasNoPositiveCounterpart) {
    EXPECT_EQ(besselJn(INT32_MIN, 5.0, nullptr), 0.0);
    EXPECT_EQ(besselYn(INT32_MIN, 5.0, nullptr), -HUGE_VAL);
    EXPECT_EQ(besselJn(INT32_MIN, 0x1p400, nullptr), ::jn(4, 0x1p400));
}

TEST(Bessel, AHugeOrderEndsWhenAsked) {
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(besselJn(2000000000, 3e9, [] { return true; }), 0.0);
    EXPECT_EQ(besselYn(2000000000, 3e9, [] { return true; }), 0.0);
    EXPECT_EQ(besselJn(2000000000, 1999999999.0, [] { return true; }), 0.0);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));
}

TEST(NumberText, IsTheSameEverywhere) {
    const std::pair<double, const char*> general[] = {{0.0, "0"},
                                                      {-0.0, "-0"},
                                                      {1e5, "100000"},
                                                      {1e6, "1e+006"},
                                                      {1e-4, "0.0001"},
                                                      {1e-5, "1e-005"},
                                                      {123456.5, "123456"},
                                                      {1e100, "1e+100"},
                                                      {-1.5e-300, "-1.5e-300"},
                                                      {HUGE_VAL, "inf"},
                                                      {-HUGE_VAL, "-inf"},
                                                      {5e-324, "4.94066e-324"},
                                                      {1.0 / 3.0, "0.333333"}};
    for (const auto& [number, text] : general) EXPECT_EQ(formatGeneral(number), text);
    EXPECT_EQ(formatShortest(0.1), "0.1");
    EXPECT_EQ(formatShortest(0.1f), "0.1");
    EXPECT_EQ(formatShortest(1e300), "1e+300");
    for (const int whole : {INT32_MIN, INT32_MAX, 0, 9, 10, 99, 100, 101, -999, 1000, -10203})
        EXPECT_EQ(formatInt(whole), std::to_string(whole));
    EXPECT_EQ(formatUint(UINT32_MAX), "4294967295");
}

/// The library's own digits, for a number whose exponent has three digits or none.
std::string sixDigits(double number) {
    char buffer[40];
    const auto general = std::chars_format::general;
    return std::string(buffer, std::to_chars(buffer, buffer + 40, number, general, 6).ptr);
}

TEST(NumberText, WholeNumbersAreTheirDigits) {
    for (std::int64_t whole = 1; whole <= INT32_MAX; whole = whole * 3 / 2 + 1)
        for (const std::int64_t number : {whole, -whole, whole - 1}) {
            EXPECT_EQ(formatInt(static_cast<std::int32_t>(number)), std::to_string(number));
            const auto real = static_cast<double>(number);
            if (std::abs(real) > 999998.0) continue;
            for (const double near :
                 {real, std::nextafter(real, 2e6), std::nextafter(real, -2e6), real + 0.5})
                if (std::abs(near) >= 1e-4 || near == 0.0) {
                    EXPECT_EQ(formatGeneral(near), sixDigits(near));
                }
        }
    EXPECT_EQ(formatInt(INT32_MIN), "-2147483648");
    EXPECT_EQ(formatGeneral(-999999.0), "-999999");
    EXPECT_EQ(formatGeneral(999999.5), "1e+006");
}

TEST(NumberText, ReadsWholeTextsOnly) {
    const std::pair<const char*, double> good[] = {
        {"1.5", 1.5}, {" 1,5\t", 1.5},     {"+2", 2.0},           {"-2e3", -2000.0}, {".5", 0.5},
        {"5.", 5.0},  {"1e999", HUGE_VAL}, {"-1e999", -HUGE_VAL}, {"1e-999", 0.0}};
    for (const auto& [text, number] : good) {
        ASSERT_TRUE(parseNumber(text)) << text;
        EXPECT_EQ(*parseNumber(text), number) << text;
    }
    EXPECT_EQ(parseNumber("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(parseNumber("1" + std::string(400, '0')), HUGE_VAL);
    EXPECT_EQ(parseNumber("0." + std::string(400, '0') + "1e500"), 1e99);
    for (const char* text : {"", " ", "1.5x", "nan", "inf", "-infinity", "1.5.2", "1,5,2", "0x10",
                             "--1", "+-1", "1 2", "e5", "."})
        EXPECT_FALSE(parseNumber(text)) << text;
    EXPECT_EQ(parseInt(" -42 "), -42);
    EXPECT_EQ(parseInt("+2147483647"), 2147483647);
    for (const char* text : {"", "2147483648", "-2147483649", "1.0", "x", "0x1"})
        EXPECT_FALSE(parseInt(text)) << text;
}

}  // namespace
}  // namespace korvant::test
