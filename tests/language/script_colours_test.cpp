// Kinds of names, hints between them, and what mends mistakes.
#include "language/script_colours.h"

#include <gmock/gmock.h>

#include "language/checker.h"
#include "language/oracle_fixture.h"
#include "language/repairs.h"
#include "support/needs_engine.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;

class Colours : public OracleFixture {
  protected:
    static constexpr const char* kNames[] = {"namespace", "class",     "interface", "enum",
                                             "member",    "parameter", "variable",  "property",
                                             "function",  "method"};
    std::vector<std::string> coloured(const std::string& text, std::size_t from = 0) {
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        std::vector<std::string> list;
        for (const ColouredName& name : colouredNames(meanings, {from, text.size()}))
            list.push_back(text.substr(name.range.begin, name.range.size()) + ":" +
                           kNames[static_cast<int>(name.colour)] + (name.declares ? "+" : "") +
                           (name.readOnly ? "!" : ""));
        return list;
    }
};

TEST_F(Colours, AreThoseOfTheMeanings) {
    EXPECT_THAT(
        coloured("namespace n { enum E { one } const int limit = 2; }\n"
                 "interface I { void go(int far); }\n"
                 "class C : I { int m; int get_size() const property { return m; }\n"
                 "  void go(int far) { Object o(\"t\"); o.clear(); n::one; Print(size); } }\n"
                 "void f(C@ c, string s) { c.m = s.length(); c.size; unknown = n::limit; }"),
        ElementsAre("n:namespace+", "E:enum+", "one:member+!", "limit:variable+!", "I:interface+",
                    "go:method+", "far:parameter+", "C:class+", "I:interface", "m:property+",
                    "get_size:method+", "m:property", "go:method+", "far:parameter+",
                    "Object:class", "o:variable+", "o:variable", "clear:method", "n:namespace",
                    "one:member!", "Print:function", "size:property", "f:function+", "C:class",
                    "c:parameter+", "string:class", "s:parameter+", "c:parameter", "m:property",
                    "s:parameter", "length:method", "c:parameter", "size:property", "n:namespace",
                    "limit:variable!"));
    const std::string text = "int a;\nint b = a;\n";
    EXPECT_THAT(coloured(text, text.find("b =")), ElementsAre("b:variable+", "a:variable"));
}

/// Function types in classes make the compiler begin with another engine where a text does not
/// build.
TEST_F(Colours, OutliveTheEngineThatTheyBeganWith) {
    for (int i = 0; i < 20; ++i)
        EXPECT_THAT(coloured("class A { funcdef void F(int n); F@ f; }\nUnknown u;\nint 0 x;\n"
                             "void g() { Print(\"a\"); Prnt(1); }",
                             60),
                    ::testing::IsSupersetOf({"g:function+", "Print:function"}));
}

/// What the compiler says of variables whose class has no constructor that it can call.
TEST_F(Colours, OfAClassThatIsJustBeingWrittenAreThoseOfTheRest) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    EXPECT_THAT(coloured("class Sample {\n    string rock;\n\n    () {}\n    Sample(string name, "
                         "double value) {\n        rock = name;\n    }\n}\nint main() {\n"
                         "    Sample[] samples;\n    samples.insertLast(Sample(\"skarn\", 3.1));\n"
                         "    for (uint i = 0; i < samples.length(); i++)\n"
                         "        Print(samples[i].rock + \" %%\\n\");\n    return 0;\n}"),
                ::testing::IsSupersetOf({"rock:property", "samples:variable", "Print:function"}));
}

TEST_F(Colours, HintsNameLiteralsAndDeducedTypes) {
    const std::string text =
        "class C { C(int depth, bool open) {} void dig(int by) {} void dig(string how) {} }\n"
        "int box(int width, int height = 2) { return 1; }\n"
        "void f() { auto c = C(3, true); c.dig(\"fast\"); c.dig(box(1, box(5)));\n"
        "  auto n = 1 + 2.5; box(width: 4); }\n";
    Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
    std::vector<std::string> hints;
    for (const InlayHint& hint : hintsIn(meanings, {0, text.size()}))
        hints.push_back(hint.text + text.substr(hint.offset, 2));
    EXPECT_THAT(hints, ElementsAre(": C@ =", "depth:3,", "open:tr", "how:\"f", "width:1,",
                                   "width:5)", ": double ="));
}

/// One of them leaves a script that builds.
TEST_F(Colours, RepairsMendWhatTheCompilerComplainsAbout) {
    for (const char* text :
         {"int main() { int total = 1\n return total; }", "int main() { return (1 + 2; }",
          "int main() { int[] a = {1}; return a[0; }", "int main() { int total = 1; return totl; }",
          "int main() { Prnt(\"a\"); return 0; }", "class Well { int depth; }\nWel w;",
          "class Well { int depth; }\nint main() { Well w; return w.deph; }",
          "namespace n { int far = 1; }\nint main() { return n::fat; }",
          "int main() { string s; return s.lenght(); }", "int f(int a int b) { return 1; }"}) {
        ASSERT_NE(session().check(engine(), text), 1) << text;
        const auto problems = diagnosticsOf(session().buildMessages(), text);
        ASSERT_FALSE(problems.empty()) << text;
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        std::vector<Repair> repairs;
        for (const Diagnostic& problem : problems)
            if (repairs.empty()) repairs = repairsFor(meanings, problem);
        ASSERT_FALSE(repairs.empty()) << text << "\n" << problems[0].text;
        bool mends = false;
        for (const Repair& repair : repairs) {
            std::string mended = text;
            mended.replace(repair.range.begin, repair.range.size(), repair.with);
            mends = mends || session().check(engine(), mended) == 1;
            EXPECT_EQ(repair.title.text().find('%'), std::string::npos);
        }
        EXPECT_TRUE(mends) << text << "\n" << problems[0].text;
    }
    // What nothing is like stays as it is.
    const std::string strange = "int main() { return zzzzzzzz; }";
    session().check(engine(), strange);
    Meanings meanings(oracle_, std::make_shared<ScopeIndex>(strange));
    for (const Diagnostic& one : diagnosticsOf(session().buildMessages(), strange))
        EXPECT_TRUE(repairsFor(meanings, one).empty());
}

}  // namespace
}  // namespace korvant::test
