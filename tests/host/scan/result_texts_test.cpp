// Texts that the next function overwrites: the warning is given where the result shows it, and
// nowhere else.
#include "host/scan/result_texts.h"

#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class ResultTexts : public ScriptFixture {
  protected:
    /// Builds and runs main() with this body among functions that take texts in every way; the
    /// number of warnings.
    std::size_t warnings(const std::string& body) {
        text_ =
            "string own(string s) { return \"own\" + s; }\n"
            "string two(string &in a, string &in b) { return a + b; }\n"
            "string values(string a, string b) { return a + b; }\n"
            "string handles(string@ a, string@ b) { return a + b; }\n"
            "string three(const string &in a, const string &in b, const string &in c)"
            " { return a + b + c; }\n"
            "string many(string a, int n) { return a + n; }\n"
            "class K { string t; K(string a, string b) { t = a + b; }"
            " string m(string a, string b) { return a + b; } }\n"
            "int main() {\n string a = \"Aa\", b = \"Bb\"; bool yes = true; string s; Object o;\n" +
            body + "\n Print(s);\n return 0;\n}\n";
        console.output.clear();
        EXPECT_TRUE(run(text_)) << body << messages();
        return findOverwrittenResults(text_).size();
    }

    std::string text_;
};

struct Meeting {
    const char* body;
    const char* meant;  ///< what somebody who writes this wants to see
};

TEST_F(ResultTexts, AreNamedExactlyWhereTheyComeOutWrong) {
    const Meeting kMeetings[] = {
        {"s = StrToUpper(a) + StrToLower(b);", "AAbb"},
        {"s = \"x\" + StrToUpper(a) + StrToLower(b);", "xAAbb"},
        {"s = StrToUpper(a) + \"y\" + StrToLower(b);", "AAybb"},
        {"s = StrToUpper(a) + (\"y\" + StrToLower(b));", "AAybb"},
        {"s = (StrToUpper(a)) + StrToLower(b);", "AAbb"},
        {"s = StrToUpper(a) + 5 + StrToLower(b);", "AA5bb"},
        {"s = StrToUpper(a) + StrSize(StrToLower(b));", "AA2"},
        {"s = (\"\" + StrToUpper(a)) + StrToLower(b);", "AAbb"},
        {"s = string(StrToUpper(a)) + string(StrToLower(b));", "AAbb"},
        {"s = (yes ? StrToUpper(a) : b) + StrToLower(b);", "AAbb"},
        {"s = (!yes ? b : StrToUpper(a)) + StrToLower(b);", "AAbb"},
        {"s = (yes ? StrToUpper(a) : \"x\") + StrToLower(b);", "AAbb"},
        {"s = (!yes ? \"x\" : StrToUpper(a)) + StrToLower(b);", "AAbb"},
        {"s = yes ? StrToUpper(a) : StrToLower(b);", "AA"},
        {"s = StrToUpper(a) == StrToLower(a) ? \"same\" : \"differ\";", "differ"},
        {"s = \"AA\" == StrToUpper(a) && StrToLower(b) == \"bb\" ? \"y\" : \"n\";", "y"},
        {"s = StrToUpper(a) == \"AA\" && StrToLower(b) == \"bb\" ? \"y\" : \"n\";", "y"},
        {"s = StrToUpper(StrToLower(a));", "AA"},
        {"s = two(StrToUpper(a), StrToLower(b));", "AAbb"},
        {"s = two(\"x\" + StrToUpper(a), StrToLower(b));", "xAAbb"},
        {"s = two(StrToUpper(a), \"x\" + StrToLower(b));", "AAxbb"},
        {"s = values(StrToUpper(a), StrToLower(b));", "AAbb"},
        {"s = handles(StrToUpper(a), StrToLower(b));", "AAbb"},
        {"s = three(StrToUpper(a), \"-\", StrToLower(b));", "AA-bb"},
        {"s = three(\"-\", StrToUpper(a), own(b));", "-AAownBb"},
        {"s = many(StrToUpper(a), StrSize(StrToLower(\"zzz\")));", "AA3"},
        {"K k(StrToUpper(a), StrToLower(b)); s = k.t;", "AAbb"},
        {"K k(a, b); s = k.m(StrToUpper(a), StrToLower(b));", "AAbb"},
        {"string[] l = {StrToUpper(a), StrToLower(b)}; s = l[0] + l[1];", "AAbb"},
        {"string[] l = {StrToUpper(a), \"\" + StrToLower(b)}; s = l[0] + l[1];", "AAbb"},
        {"string[] l = {\"\" + StrToUpper(a), StrToLower(b)}; s = l[0] + l[1];", "AAbb"},
        {"s = StrInsert(StrToUpper(a), StrToLower(b), 1);", "AbbA"},
        {"s = StrInsert(StrToUpper(a), b, 1);", "ABbA"},
        {"s = Prompt(\"l\", a) + Prompt(\"l\", b);", "AaBb"},
        {"s = \"\" + Prompt(\"l\", 1) + Prompt(\"l\", 2);", "12"},
        {"s = two(Prompt(\"l\", \"x\"), StrToUpper(b));", "xBB"},
        {"s = o.prompt(\"l\", a) + StrToLower(b);", "Aabb"},
        {"s = o.prompt(\"l\", a) + o.prompt(\"l\", b);", "AaBb"},
        {"s = StrToUpper(a); s += StrToLower(b);", "AAbb"},
        {"if (yes) s = StrToUpper(a); else s = StrToLower(b);", "AA"},
        {"string u = StrToUpper(a), l = StrToLower(b); s = u + l;", "AAbb"},
        {"s = a; s += StrToUpper(a) + StrToLower(b);", "AaAAbb"},
        {"s = StrToUpper(a).length() + StrToLower(b);", "2bb"},
    };
    for (const Meeting& meeting : kMeetings) {
        const std::size_t found = warnings(meeting.body);
        EXPECT_EQ(found != 0, console.output != meeting.meant)
            << meeting.body << " gives " << console.output;
    }
}

TEST_F(ResultTexts, TheWarningSaysWhereAndWhatAndTheScriptBuilds) {
    ASSERT_EQ(session().compile(engine(),
                                "string s =\n  StrToUpper(\"a\") + StrToLower(\"B\");\n"
                                "int main() { return 0; }\n"),
              1);
    const auto& all = session().buildMessages().all();
    ASSERT_EQ(all.size(), 1u) << messages();
    EXPECT_EQ(all[0].kind, BuildMessage::Kind::warning);
    EXPECT_EQ(all[0].row, 2);
    EXPECT_EQ(all[0].column, 3);
    EXPECT_EQ(all[0].plain,
              "The text that StrToUpper returns is read after StrToLower has overwritten it; "
              "assign it to a string first");
}

TEST_F(ResultTexts, FunctionsOfTheScriptsOwnAreItsOwn) {
    EXPECT_EQ(findOverwrittenResults("string StrToUpper(string s) { return s; }\n").size(), 0u);
    std::string nested = "x";
    for (int i = 0; i < 50'000; ++i) nested = nested + " + StrToUpper(a) + (StrToLower(b))";
    EXPECT_EQ(findOverwrittenResults("string s = " + nested + ";").size(), 0u);
    std::string first = "int main() { s = ";
    for (int i = 0; i < 20'000; ++i) first += "StrToUpper(a) + StrToLower(b); s = ";
    EXPECT_EQ(findOverwrittenResults(first).size(), 100u);
}

}  // namespace
}  // namespace korvant::test
