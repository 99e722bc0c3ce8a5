// The script type `string`, under both calling conventions of the engine.
#include <clocale>

#include "host/engine/memory_budget.h"
#include "host/engine/script_string.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class StringType : public ScriptInBothConventions {};

INSTANTIATE_TEST_SUITE_P(Conventions, StringType, ::testing::Bool(), conventionName);

TEST_P(StringType, ExpressionsGiveTheseTexts) {
    const std::pair<const char*, const char*> cases[] = {
        {"\"text\" + 0.5", "text0.5"},
        {"\"\" + 1.0", "1"},
        {"\"\" + 1e8", "1e+008"},
        {"\"\" + 1e6", "1e+006"},
        {"\"\" + 100000.0", "100000"},
        {"\"\" + 1234567.0", "1.23457e+006"},
        {"\"\" + 1e-5", "1e-005"},
        {"\"\" + 1e300", "1e+300"},
        {"\"\" + 0.1", "0.1"},
        {"\"\" + 0.1f", "0.1"},
        {"\"\" + -0.0", "-0"},
        {"\"\" + uint(4294967295)", "4294967295"},
        {"\"\" + int(-1)", "-1"},
        {"\"\" + int(-2147483648)", "-2147483648"},
        {"\"x\" + int64(5000000000)", "x5000000000"},
        {"int64(-9223372036854775807) + \"x\"", "-9223372036854775807x"},
        {"\"x\" + uint64(18446744073709551615)", "x18446744073709551615"},
        {"\"x\" + (1 < 2)", "xtrue"},
        {"false + \"x\"", "falsex"},
        {"\"\" + int8(-5) + uint8(250) + int16(-6) + uint16(60000)", "-5250-660000"},
        {"uint8(65) + \"x\"", "65x"},
        {"\"x\" + \"abc\"[1]", "x98"},
        {"0.5 + \" m\"", "0.5 m"},
        {"0.25f + \" m\"", "0.25 m"},
        {"-7 + \" m\"", "-7 m"},
        {"uint(7) + \" m\"", "7 m"},
        {"\"a\" + \"b\" + \"c\"", "abc"},
        {"string(\"copy\").length()", "4"},
        {"(\"ab\" == \"ab\" ? 1 : 0)", "1"},
        {"(\"ab\" != \"ab\" ? 1 : 0)", "0"},
        {"(\"ab\" < \"abc\" ? 1 : 0)", "1"},
        {"(\"b\" > \"abc\" ? 1 : 0)", "1"},
        {"(\"\\x80\" > \"z\" ? 1 : 0)", "1"},
        {"\"abc\"[1]", "98"},
        {"\"abc\".opCmp(\"abcd\")", "-1"},
        {"\"abcd\".opCmp(\"abc\")", "1"},
        {"\"abc\".opCmp(\"abc\")", "0"},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(value(expression), expected) << expression;
}

TEST_P(StringType, StatementsDoWhatTheySay) {
    const std::pair<const char*, const char*> cases[] = {
        {"string s; s = 0.5; Print(s); s = 2.5f; Print(s); s = -3; Print(s); s = uint(4); "
         "Print(s);",
         "0.52.5-34"},
        {"string s = \"n\"; s += 0.5; s += 2.5f; s += -3; s += uint(4); Print(s);", "n0.52.5-34"},
        {"string s; s = int64(5000000000); s += uint64(6000000000); s += true; s += s[0];"
         "Print(s);",
         "50000000006000000000true53"},
        {"string s = \"abc\"; s[1] = 88; Print(s);", "aXc"},
        {"string s = \"abcdef\"; s.resize(2); Print(s + s.length());", "ab2"},
        {"string s = \"a\"; s.resize(3); s += \"b\"; Print(\"\" + s.length() + s[2]);", "40"},
        {"string s = \"ab\"; s += s; s += s; Print(s);", "abababab"},
        {"string s = \"ab\"; s = s; Print(s);", "ab"},
        {"string s = \"a\"; string@ h = s; h += \"b\"; Print(s);", "ab"},
        {"const string c = \"xyz\"; Print(\"\" + c[2] + c.length());", "1223"},
        {"string[] all = {\"b\", \"a\", \"c\"}; all.sortAsc(); Print(all[0] + all[1] + all[2]);",
         "abc"},
    };
    for (const auto& [body, expected] : cases) EXPECT_EQ(output(body), expected) << body;
}

TEST_P(StringType, AnIndexBeyondTheTextIsAnException) {
    EXPECT_EQ(exceptionOf("string s = \"ab\"; uint8 b = s[2];"), "Out of range");
    EXPECT_EQ(exceptionOf("string s; s[0] = 1;"), "Out of range");
    EXPECT_EQ(exceptionOf("const string s = \"ab\"; uint8 b = s[4294967295];"), "Out of range");
    EXPECT_EQ(exceptionOf("string s = \"ab\"; uint8 b = s[1];"), "");
}

// A reference into the text is used after what follows it has run.
TEST_P(StringType, ReferencesSurviveAResizeInTheSameStatement) {
    for (const char* body :
         {"string s = \"abc\"; s[0] = grow(s);", "string s = \"abc\"; s[0] = s[grow(s)];",
          "string s = \"abc\"; uint8 b = s[0] + grow(s);",
          "string s = \"abc\"; s[grow(s)] = s[1];"}) {
        const std::string script = std::string(
                                       "uint8 grow(string@ s) { s.resize(100000); "
                                       "s = \"x\"; s.resize(3); return 1; }\n"
                                       "int main() { ") +
                                   body + " return 0; }";
        EXPECT_TRUE(run(script)) << body << messages();
    }
}

TEST_P(StringType, LimitsRaiseAndLeaveTheTextAsItWas) {
    Limits limits;
    limits.stringBytes = 1000;
    useLimits(limits);
    for (const char* growth :
         {"s.resize(1001);", "s += s;", "string t = s + s;", "s.resize(4294967295);"})
        EXPECT_EQ(output(std::string("string s; s.resize(900); try { ") + growth +
                         " Print(\"grown\"); } catch { Print(\"full \" + s.length()); }"),
                  "full 900")
            << growth;
    EXPECT_EQ(exceptionOf("string s; s.resize(1001);"), "Out of memory");
    EXPECT_EQ(output("string s; s.resize(1000); Print(\"\" + s.length());"), "1000");
}

TEST_P(StringType, AllStringsOfARunShareOneLimit) {
    Limits limits;
    limits.runBytes = std::size_t{4} << 20;
    useLimits(limits);
    EXPECT_EQ(
        exceptionOf("string[] all(100); for (int i = 0; i < 100; i++) all[i].resize(100000);"),
        "Out of memory");
    EXPECT_EQ(
        exceptionOf("string@[] all(60000); for (int i = 0; i < 60000; i++) @all[i] = string();"
                    "for (int i = 0; i < 60000; i++) all[i].resize(20);"),
        "Out of memory");
    EXPECT_EQ(exceptionOf("for (int i = 0; i < 100; i++) { string s; s.resize(1000000); }"), "");
}

TEST_P(StringType, WhatARunHeldIsGivenBack) {
    output("string s;");
    const std::size_t before = memoryBudget.used;
    output(
        "string[] all(100); for (int i = 0; i < 100; i++) all[i].resize(1000 + i);"
        "for (int i = 0; i < 99; i++) all[i] = all[i + 1] + i; Print(all[0]);");
    EXPECT_EQ(memoryBudget.used, before);
}

// The engine hands a literal to a `string &inout` as it stands in the program.
TEST_P(StringType, ALiteralCannotBeChanged) {
    for (const char* change :
         {"s += \"!\";", "s = \"!\";", "s.resize(1);", "s = 5;", "s += 0.5;"}) {
        const std::string script =
            std::string("void f(string &inout s) { ") + change +
            " }\nint main() { try { f(\"one\"); } catch { Print(\"caught \"); } "
            "Print(\"one\"); return 0; }";
        console.output.clear();
        EXPECT_TRUE(run(script)) << messages();
        EXPECT_EQ(console.output, "caught one") << change;
    }
    EXPECT_TRUE(
        run("void f(string &inout s) { s[0] = 88; Print(\"\" + s[1] + s.length()); }\n"
            "int main() { f(\"two\"); Print(\"two\"); return 0; }"));
    EXPECT_EQ(console.output.substr(console.output.size() - 7), "1193two");
}

TEST_P(StringType, HandlesToLiteralsAreCopies) {
    EXPECT_TRUE(
        run("void d(string@ s = \"a\") { s += \"b\"; Print(s); }\n"
            "string@ k() { return \"a\"; }\n"
            "int main() { string@ h = \"a\"; h += \"x\"; string[] x = {\"a\", \"a\"}; "
            "x[0] += \"z\"; k() += \"y\"; d(); d(); Print(\"a\" + x[1] + k()); return 0; }"));
    EXPECT_EQ(console.output, "ababaaa");
}

TEST(ScriptStringObject, BeginsWithItsText) {
    ScriptString* string = ScriptString::create("abc");
    EXPECT_EQ(static_cast<void*>(string), static_cast<void*>(&string->text));
    EXPECT_EQ(string->count(), 1);
    string->addRef();
    EXPECT_EQ(string->count(), 2);
    string->release();
    string->release();
}

TEST(ScriptStringObject, TakesPartsOfItself) {
    // Growing frees what is read, and then something else stands at its beginning.
    const std::string begin = "bc" + std::string(40, 'a'), half = begin + "bc";
    ScriptString* string = ScriptString::create(begin);
    EXPECT_TRUE(string->append(std::string_view(string->text).substr(0, 2)));
    EXPECT_EQ(string->text, half);
    EXPECT_TRUE(string->append(string->text));
    EXPECT_EQ(string->text, half + half);
    EXPECT_TRUE(string->assign(std::string_view(string->text).substr(86)));
    EXPECT_EQ(string->text, "bc");
    string->release();
}

TEST(ScriptStringObject, TheResultStringOutlivesAllItsHandles) {
    ScriptString* first = returnResultString("one");
    ScriptString* second = returnResultString("two");
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->text, "two");
    EXPECT_EQ(returnResultString(first->text.substr(1))->text, "wo");
    for (int i = 0; i < 3; ++i) first->release();
    EXPECT_EQ(first->count(), 1);
}

TEST(ScriptStringObject, AResultThatIsTooLongIsNone) {
    ScriptString* const result = returnResultString("kept");
    memoryBudget.stringLimit = 100;
    EXPECT_EQ(returnResultString(std::string(101, 'x')), nullptr);
    memoryBudget.stringLimit = Limits().stringBytes;
    EXPECT_EQ(result->text, "kept");
    EXPECT_EQ(result->count(), 2);
    result->release();
}

TEST(ScriptStringObject, ALargeResultIsDroppedWhenNobodyHoldsIt) {
    ScriptString* result = returnResultString(std::string(1 << 20, 'x'));
    trimResultString();
    EXPECT_EQ(result->text.size(), std::size_t{1} << 20);
    result->release();
    trimResultString();
    EXPECT_LT(result->text.capacity(), 1000u);
}

TEST_P(StringType, NumbersDoNotFollowTheHostsLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"fr_FR.UTF-8", "de_DE.UTF-8", "es_ES.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_EQ(value("0.5"), "0.5") << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace korvant::test
