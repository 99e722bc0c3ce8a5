// Values as they are shown and typed, file filters, search words, rich text.
#include "object/form/value_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "base/text/rich_text.h"
#include "object/form/file_filter.h"
#include "object/form/form_texts.h"
#include "object/form/row_filter.h"

namespace korvant::test {
namespace {

ExpressionResult evaluate(std::string_view text) {
    ExpressionEvaluator evaluator;
    evaluator.setValue("a", 2.5);
    evaluator.setValue("n", 4.0);
    return evaluator.evaluate(text);
}

TEST(RealText, ReadsBackToTheSameBits) {
    EXPECT_EQ(realText(0.1), "0.1");
    EXPECT_EQ(realText(static_cast<double>(0.1F)), "0.1");
    EXPECT_EQ(realText(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(realText(-0.0), "-0");
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        const FormValue<double> read = readReal(realText(value), evaluate, 0);
        ASSERT_TRUE(read.accepted) << realText(value) << read.message;
        if (static_cast<double>(static_cast<float>(value)) == value) continue;
        ASSERT_EQ(read.value, value);
    }
}

TEST(TypedReals, AreNumbersOrExpressions) {
    struct Case {
        const char* typed;
        double value;
    };
    for (const Case& one :
         {Case{"12", 12}, Case{" 1.5 ", 1.5}, Case{"1,5", 1.5}, Case{"-2e3", -2000}, Case{"a*2", 5},
          Case{"min(a;n)+1", 3.5}, Case{"A", 2.5}, Case{"1,5*2", 3}, Case{"max(0,5;1,25)", 1.25},
          Case{"-5", -5}, Case{"2*(-3)", -6}, Case{"if(a<3; 1; 2)", 1}, Case{"if(a>1&&!0;1;2)", 1},
          Case{"(a + 1) * 2", 7}}) {
        const FormValue<double> read = readReal(one.typed, evaluate, 0);
        EXPECT_TRUE(read.accepted) << one.typed << read.message;
        EXPECT_EQ(read.value, one.value) << one.typed;
    }
    for (const char* typed : {"",    "  ",    "nan", "inf", "-infinity",   "1e999", "b",   "1.2.3",
                              "a+",  "1/0",   "-",   "--",  "5-",          "2 3",   "5=5", "a>1",
                              "1;2", "1,2,3", "()",  "5-)", "abs(-2)rest", "!0",    "*5",  "2 a"}) {
        const FormValue<double> read = readReal(typed, evaluate, 0);
        EXPECT_FALSE(read.accepted) << typed;
        EXPECT_NE(read.message, "") << typed;
    }
    EXPECT_EQ(readReal("", evaluate, 1).message, formText(FormText::needsNumber, 1));
    EXPECT_EQ(readReal("1/0", evaluate, 2).message, formText(FormText::notFinite, 2));
    EXPECT_EQ(readReal("b*2", evaluate, 0).message, "Unknow identifier: \"b\"");
    EXPECT_EQ(readReal("b*2", evaluate, 1).message, "Nom inconnu : \"b\"");
    EXPECT_EQ(readReal("abs(pow(2;3))", evaluate, 1).message,
              "Erreur de syntaxe, fonction \"abs\", param\350tre \"pow(2;3)\" :\n\t"
              "Fonction inconnue \"pow\" avec 2 param\350tres");
    EXPECT_EQ(readReal("1%0", evaluate, 2).message, "Divisi\363n por cero.");
}

TEST(RoundedTexts, HaveTenDigitsAtMost) {
    EXPECT_EQ(roundedText(0.1 + 0.2), "0.3");
    EXPECT_EQ(roundedText(1.0 / 3.0), "0.3333333333");
    EXPECT_EQ(roundedText(-1234567890123.0), "-1234567890000");
    EXPECT_EQ(roundedText(42.0), "42");
    EXPECT_EQ(roundedText(static_cast<double>(0.1F)), "0.1");
    EXPECT_EQ(roundedText(1e300), "1e+300");
    EXPECT_EQ(roundedText(std::nan("")), realText(std::nan("")));
}

TEST(TypedIntegers, FitThirtyTwoBitsOrAreRefusedAloud) {
    struct Case {
        const char* typed;
        std::int32_t value;
    };
    for (const Case& one : {Case{"12", 12}, Case{" -7 ", -7}, Case{"2147483647", 2147483647},
                            Case{"-2147483648", -2147483647 - 1}, Case{"5.0", 5}, Case{"n*2", 8},
                            Case{"1e3", 1000}}) {
        const FormValue<std::int32_t> read = readInteger(one.typed, evaluate, 0);
        EXPECT_TRUE(read.accepted) << one.typed << read.message;
        EXPECT_EQ(read.value, one.value) << one.typed;
    }
    struct Refusal {
        const char* typed;
        FormText why;
    };
    for (const Refusal& one :
         {Refusal{"2147483648", FormText::beyond32Bits},
          Refusal{"-2147483649", FormText::beyond32Bits}, Refusal{"1e300", FormText::beyond32Bits},
          Refusal{"2.5", FormText::notWhole}, Refusal{"a", FormText::notWhole},
          Refusal{"", FormText::needsNumber}}) {
        const FormValue<std::int32_t> read = readInteger(one.typed, evaluate, 1);
        EXPECT_FALSE(read.accepted) << one.typed;
        EXPECT_EQ(read.message, formText(one.why, 1)) << one.typed;
    }
}

TEST(TypedColours, AreHexadecimalListedOrDecimal) {
    struct Case {
        const char* typed;
        std::int32_t value;
    };
    for (const Case& one :
         {Case{"#FF0000", 0x0000FF}, Case{"#0000ff", 0xFF0000}, Case{"1,2,3", 0x030201},
          Case{" 255 , 0 , 16 ", 0x1000FF}, Case{"65280", 65280}, Case{"-1", -1}}) {
        const FormValue<std::int32_t> read = readColour(one.typed, 0);
        EXPECT_TRUE(read.accepted) << one.typed;
        EXPECT_EQ(read.value, one.value) << one.typed;
    }
    for (const char* typed : {"", "#", "#12", "#GG0000", "#-12345", "#1234567", "1,2", "1,2,256",
                              "1,2,-3", "1,2,3,4", ",,", "red"})
        EXPECT_FALSE(readColour(typed, 0).accepted) << typed;
    EXPECT_EQ(colourText(0x0000FF), "#FF0000");
    EXPECT_EQ(colourText(0xABCDEF), "#EFCDAB");
    EXPECT_EQ(colourText(-1), "#FFFFFF");
}

TEST(TypedBooleansAndOptions, AreWordsOfTheLanguage) {
    for (const char* typed : {"yes", "TRUE", "1", "Oui", "oui"})
        EXPECT_TRUE(readBoolean(typed, 1).value) << typed;
    for (const char* typed : {"no", "false", "0", "Non"}) {
        EXPECT_TRUE(readBoolean(typed, 1).accepted) << typed;
        EXPECT_FALSE(readBoolean(typed, 1).value) << typed;
    }
    EXPECT_TRUE(readBoolean("S\355", 2).value);
    EXPECT_FALSE(readBoolean("", 0).accepted);
    EXPECT_FALSE(readBoolean("2", 0).accepted);
    EXPECT_EQ(readOption("two", {"one", "two", "two"}, 0).value, 1);
    EXPECT_FALSE(readOption("Two", {"one", "two"}, 0).accepted);
    EXPECT_FALSE(readOption("", {}, 0).accepted);
}

TEST(FileFilters, AreReadInEveryFormThatScriptsUse) {
    struct Case {
        const char* text;
        std::vector<std::pair<std::string, std::string>> filters;
    };
    const Case kCases[] = {
        {"", {{"All files", "*"}}},
        {"|", {{"All files", "*"}}},
        {"||", {{"All files", "*"}}},
        {"*.txt", {{"*.txt", "*.txt"}}},
        {".txt", {{"*.txt", "*.txt"}}},
        {"Text|*.txt", {{"Text", "*.txt"}}},
        {"Text|*.txt|", {{"Text", "*.txt"}}},
        {"Text|*.txt;*.csv||", {{"Text", "*.txt;*.csv"}}},
        {"Text|.txt|All|*.*||", {{"Text", "*.txt"}, {"All", "*.*"}}},
        {"Text|*.txt|*.las", {{"Text", "*.txt"}, {"*.las", "*.las"}}},
    };
    for (const Case& one : kCases) {
        const std::vector<FileFilter> filters = parseFileFilter(one.text, "All files");
        ASSERT_EQ(filters.size(), one.filters.size()) << one.text;
        for (std::size_t i = 0; i < filters.size(); ++i) {
            EXPECT_EQ(filters[i].description, one.filters[i].first) << one.text;
            EXPECT_EQ(filters[i].patterns, one.filters[i].second) << one.text;
        }
    }
}

TEST(SearchWords, AreFoundWhateverTheirCase) {
    EXPECT_EQ(folded("D\xC9"
                     "BIT"),
              folded("d\xE9"
                     "bit"));
    EXPECT_EQ(folded("ÉÀÜ ŠŽ Ω ЖЁ"), "éàü šž ω жё");
    EXPECT_TRUE(RowFilter("").empty());
    EXPECT_TRUE(RowFilter(" \t ").empty());
    EXPECT_TRUE(RowFilter("").accepts("", ""));
    const RowFilter filter("Flow M3");
    EXPECT_TRUE(filter.accepts("flow at the outlet\nm3/h", "12"));
    EXPECT_TRUE(filter.accepts("flow", "m3"));
    EXPECT_FALSE(filter.accepts("flow", "m2"));
}

TEST(RichText, BecomesMarkup) {
    struct Case {
        const char* text;
        const char* html;
    };
    for (const Case& one : {
             Case{"plain <b>", "plain <b>"},
             Case{"{\\rtf1 Hello}", "Hello"},
             Case{"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0 a\\b b\\b0  c\\par d}",
                  "a<b>b</b> c<br>d"},
             Case{"{\\rtf1 {\\i x}y \\{z\\} \\'e9\\u8364?<&>}",
                  "<i>x</i>y {z} &#233;&#8364;&lt;&amp;&gt;"},
             Case{"{\\rtf1 {\\*\\generator x}{\\pict 0123}a\\tab\\ul b\\ulnone c}",
                  "a&nbsp;&nbsp;&nbsp;&nbsp;<u>b</u>c"},
             Case{"{\\rtf1 \\uc2\\u65??b}}}}", "Ab"},
             Case{"{\\rtf1 \\", ""},
             Case{"{\\rtf1 \\'", ""},
             Case{"{\\rtf1 \\b99999999999 x", "<b>99999999999 x</b>"},
         })
        EXPECT_EQ(htmlOfRichText(one.text), one.html) << one.text;
    const std::string deep = "{\\rtf1 " + std::string(100000, '{') + "x" + std::string(100000, '}');
    EXPECT_EQ(htmlOfRichText(deep), "x");
}

}  // namespace
}  // namespace korvant::test
