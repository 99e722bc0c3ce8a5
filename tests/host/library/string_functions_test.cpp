// Searching, cutting and changing texts.
#include <chrono>
#include <random>

#include "base/text/text_search.h"
#include "host/library/string_functions.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class StringFunctions : public ScriptInBothConventions {};

INSTANTIATE_TEST_SUITE_P(Conventions, StringFunctions, ::testing::Bool(), conventionName);

TEST_P(StringFunctions, GiveTheseResults) {
    const std::pair<const char*, const char*> cases[] = {
        {"StrSize(\"depth\")", "5"},
        {"StrSize(\"\")", "0"},
        {"StrFind(\"banana\", \"an\")", "1"},
        {"StrFind(\"banana\", \"an\", 2)", "3"},
        {"StrFind(\"banana\", \"x\")", "-1"},
        {"StrFind(\"banana\", \"an\", -1)", "-1"},
        {"StrFind(\"banana\", \"\", 6)", "6"},
        {"StrFind(\"banana\", \"\", 7)", "-1"},
        {"StrFind(\"banana\", \"a\", 6)", "-1"},
        {"StrFind(\"ban\", \"banana\")", "-1"},
        {"StrFind(\"\", \"\")", "0"},
        {"StrRevFind(\"banana\", \"an\", 5)", "3"},
        {"StrRevFind(\"banana\", \"an\", 2)", "1"},
        {"StrRevFind(\"banana\", \"an\")", "-1"},
        {"StrRevFind(\"banana\", \"ba\")", "0"},
        {"StrRevFind(\"banana\", \"an\", -1)", "3"},
        {"StrRevFind(\"banana\", \"\", 3)", "3"},
        {"StrRevFind(\"banana\", \"\", -1)", "6"},
        {"StrRevFind(\"ban\", \"banana\", 5)", "-1"},
        {"StrSubstring(\"abcdef\", 2, 3)", "cde"},
        {"StrSubstring(\"abcdef\", 4, 10)", "ef"},
        {"StrSubstring(\"abcdef\", 6, 1)", ""},
        {"StrSubstring(\"abcdef\", 1, -1)", "bcdef"},
        {"StrInsert(\"abc\", \"XY\", 1)", "aXYbc"},
        {"StrInsert(\"abc\", \"XY\", 3)", "abcXY"},
        {"StrInsert(\"\", \"\", 0)", ""},
        {"StrAsc(\"A\")", "65"},
        {"StrAsc(\"\")", "0"},
        {"StrAsc(\"\\x80\")", "-128"},
        {"StrAsc(\"\\xFF\")", "-1"},
        {"StrToUpper(\"Core \\xE4z{\")", "CORE \xE4Z{"},
        {"StrToLower(\"CORE [\\xC4\")", "core [\xC4"},
        {"StrToUpper(StrToLower(\"AbC\"))", "ABC"},
        {"StrInsert(StrToUpper(\"ab\"), StrToLower(\"CD\"), 1)", "AABB"},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(value(expression), expected) << expression;
}

/// Arguments are evaluated from the last to the first, and functions that only read get the texts
/// themselves where nothing can change them in between.
TEST_P(StringFunctions, SeeEachTextAsItWasWhenItWasEvaluated) {
    ASSERT_TRUE(run(R"(
string kept = "abc";
string change(string@ text, string answer) { text = "other"; return answer; }
class Holder { string text = "abc"; string other { get { text = "gone"; return "xabc"; } } }
int main() {
    string own = "abc";
    string@ handle = own;
    Holder holder;
    string[] texts = {"abc", "b"};
    Print(StrFind(change(own, "xxabc"), own) + " " + StrFind(change(kept, "abc"), kept) + " " +
          StrFind(holder.other, holder.text) + " " + StrFind(change(texts[0], "xxxabc"), texts[0]));
    own = "banana";
    Print(" " + StrFind(own, "na") + " " + StrFind("banana", texts[1]) + " " + StrFind(handle, own));
    for (int i = 0; i < 2; i++) Print(" " + StrToUpper("ab") + StrInsert(own, "-", 1));
    Print(" " + own + kept + texts[0]);
    return 0;
}
)")) << messages();
    EXPECT_EQ(console.output, "2 0 1 3 2 0 0 ABb-anana ABb-anana bananaotherother");
    EXPECT_EQ(exceptionOf("string@ none; StrFind(none, \"a\");"), "Null pointer access");
}

TEST_P(StringFunctions, PositionsBeyondTheTextAreExceptions) {
    for (const char* call : {"StrInsert(\"abc\", \"X\", 4);", "StrInsert(\"abc\", \"X\", -1);",
                             "StrSubstring(\"abc\", 4, 1);", "StrSubstring(\"abc\", -1, 1);"})
        EXPECT_EQ(exceptionOf(call), "Out of range") << call;
    EXPECT_EQ(exceptionOf("StrSubstring(\"abc\", 2, 2147483647);"), "");
}

TEST_P(StringFunctions, TwoHandlesToResultsAreOneObject) {
    EXPECT_EQ(output("string@ a = StrToUpper(\"one\"); string@ b = StrToUpper(\"two\");"
                     "Print(a + b + (a is b ? \" same\" : \" apart\"));"),
              "TWOTWO same");
    EXPECT_EQ(output("string@ a = StrToUpper(\"one\"); @a = null; for (int i = 0; i < 1000; i++) "
                     "{ string@ b = StrToLower(\"X\"); @b = null; } Print(StrToUpper(\"ok\"));"),
              "OK");
}

TEST_P(StringFunctions, TheCallersTextIsNotChanged) {
    EXPECT_EQ(output("string s = \"abc\"; StrInsert(s, \"X\", 1); StrToUpper(s); Print(s);"),
              "abc");
}

TEST_P(StringFunctions, AResultTooLongRaises) {
    Limits limits;
    limits.stringBytes = 100;
    useLimits(limits);
    EXPECT_EQ(exceptionOf("string s; s.resize(90); StrInsert(s, s, 5);"), "Out of memory");
}

TEST(TextSearch, FindsWhatThePlainSearchFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const unsigned letters = 1 + random() % 3;
        std::string text(random() % 400, 'a'), wanted(33 + random() % 40, 'a');
        for (char& c : text) c = static_cast<char>('a' + random() % letters);
        for (char& c : wanted) c = static_cast<char>('a' + random() % letters);
        if (random() % 2 == 0 && text.size() > wanted.size())
            wanted = text.substr(random() % (text.size() - wanted.size()), wanted.size());
        ASSERT_EQ(searchForward(text, wanted), text.find(wanted)) << text << " " << wanted;
        ASSERT_EQ(searchBackward(text, wanted), text.rfind(wanted)) << text << " " << wanted;
    }
}

TEST(TextSearch, IsLinearForTextsThatAlmostMatchEverywhere) {
    const std::string text(16 << 20, 'a');
    const std::string ends = std::string(60000, 'a') + "b", begins = "b" + std::string(60000, 'a');
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(findForward(text, ends, 0), -1);
    EXPECT_EQ(findForward(text, begins, 0), -1);
    EXPECT_EQ(findBackward(text, ends, ~std::size_t{0}), -1);
    EXPECT_EQ(findBackward(text, begins, ~std::size_t{0}), -1);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(10));
}

}  // namespace
}  // namespace korvant::test
