// Types of expressions, also of scripts whose declarations are just being written.
#include "language/oracle.h"

#include "language/oracle_fixture.h"
#include "language/suggestions.h"

namespace korvant::test {
namespace {

class Types : public OracleFixture {
  protected:
    /// Of `expression` in front of "$" in the text.
    std::string typeOf(const std::string& expression, std::string text) {
        const std::size_t offset = text.find('$');
        text.erase(offset, 1);
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        return meanings.oracle().typeOf(expression, offset);
    }
    std::vector<std::string> offered(std::string text) {
        const std::size_t offset = text.find('$');
        text.erase(offset, 1);
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        std::vector<std::string> labels;
        for (const Suggestion& one : suggestionsAt(meanings, Documentation(), offset))
            labels.push_back(one.label);
        return labels;
    }
};

TEST_F(Types, AreThoseOfTheCompiler) {
    const std::string script =
        "namespace geo { class Point { double x; double get_far() const property { return x; } } "
        "}\n"
        "funcdef int Op(int);\n"
        "class Base { private int hidden; int shared_() { return 1; } }\n"
        "class Hole : Base { geo::Point top; Hole@[] next; funcdef void Done(); Done@ done;\n"
        "  int level { get { return 1; } set { } }\n"
        "  void walk(const Hole@ &in from, int[] list, Op@ op) { auto first = next[0]; $ } }\n"
        "int box(int width, int height = 2) { return 1; }\nHole@ make() { return null; }\n";
    const std::pair<const char*, const char*> expected[] = {{"1 + 2.5", "double"},
                                                            {"\"a\" + 1", "string@"},
                                                            {"from.top.x", "double"},
                                                            {"next", "Hole@[]@"},
                                                            {"next[0].top", "geo::Point@"},
                                                            {"list[0]", "int"},
                                                            {"make().next[1]", "Hole@"},
                                                            {"hidden", "int"},
                                                            {"from.hidden", "int"},
                                                            {"shared_()", "int"},
                                                            {"Base::shared_()", "int"},
                                                            {"this.top", "geo::Point@"},
                                                            {"level", "int"},
                                                            {"top.far", "double"},
                                                            {"op(3)", "int"},
                                                            {"op", "Op@"},
                                                            {"done", "Hole::Done@"},
                                                            {"first.next", "Hole@[]@"},
                                                            {"box(height: 1, width: 2)", "int"},
                                                            {"cast<Base@>(from)", "Base@"},
                                                            {"nothing.x", ""},
                                                            {"walk(null, list, op)", "void"},
                                                            {"nothing", ""},
                                                            {"list.length()", "uint"},
                                                            {"array<Hole@>(3)", "Hole@[]@"},
                                                            {"first is null", "bool"}};
    for (const auto& [expression, type] : expected)
        EXPECT_EQ(typeOf(expression, script), type) << expression;
}

TEST_F(Types, SurviveDeclarationsThatAreBeingWritten) {
    const std::string before = "class Circle {\n double r;\n ";
    const std::string middle = " void grow(int n) { r += n; } }\n";
    const std::string after = "int g = 1, h = 2;\nint main() { Circle c; $ return 0; }\n";
    for (const char* member : {"int ", "int x", "Unknown u;", "r r r", "double r;", "private", "@",
                               "Unknown f(int a) { return 1; }", "int f(Unknown a) {}"})
        EXPECT_EQ(typeOf("c.r", before + member + "\n" + middle + after), "double") << member;
    for (const char* global : {"int", "int x = ", "Unknown u;", "void f(int a", "enum E", "class",
                               "class X : ", "class X : Missing { int a; }", "funcdef void",
                               "interface I { void f() }", "namespace", "foo bar baz;", "))) (",
                               "Circle circle = missing();", "#if x", "import void f() from"})
        EXPECT_EQ(typeOf("c.r", before + middle + global + "\n" + after), "double") << global;
}

TEST_F(Types, OfATextWhoseBodiesAloneHaveChangedNeedNoOtherBuild) {
    const auto moduleOf = [&](const std::string& text, const std::string& type) {
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        asIScriptModule* const module = meanings.oracle().module();
        EXPECT_EQ(meanings.oracle().typeOf("f(1)", text.find("return")), type) << text;
        return module;
    };
    const std::string heads = "class A { private int n; A() {} }\n";
    asIScriptModule* const built = moduleOf(heads + "int f(int a) { return a; }", "int");
    EXPECT_EQ(moduleOf(heads + "int f(int a) {\n int b = a +;\n return b; }", "int"), built);
    moduleOf(heads + "string f(int a) { return \"\" + a; }", "string@");
    // Neither does one whose declarations are just being written.
    const std::string broken = "class A { int }\nint g(\nint f(int a) { ";
    asIScriptModule* const partly = moduleOf(broken + "return a; }", "int");
    EXPECT_NE(partly, nullptr);
    EXPECT_EQ(moduleOf(broken + "a++; return a; }", "int"), partly);
}

TEST_F(Types, ThatScopesTellNeedNoCompiler) {
    OracleEngine none(nullptr);
    const auto offered = [&](std::string text) {
        const std::size_t offset = text.find('$');
        text.erase(offset, 1);
        Meanings meanings(none, std::make_shared<ScopeIndex>(text));
        std::string labels;
        for (const Suggestion& one : suggestionsAt(meanings, Documentation(), offset))
            labels += one.label + " ";
        return labels;
    };
    const std::string script =
        "namespace geo { class Point { double x; } class Base { Point top; } }\n"
        "class Hole : geo::Base { Hole@ next; Hole@ skip(int n = 2) { return this; }\n"
        "  Hole@ pick(int n) { return this; } Hole@ pick(string s) { return this; }\n"
        "  geo::Point at { get { return top; } }\n"
        "  void walk(const Hole@ &in from, Hole@[] list, int top) { ";
    for (const char* place : {"from.top.$", "this.top.$", "next.skip(3).top.$", "skip().next.top.$",
                              "this.skip((1)).skip().top.$"})
        EXPECT_EQ(offered(script + place + " } }"), "x ") << place;
    // The compiler alone knows overloads, elements, and what a property gives; a local hides a
    // member.
    for (const char* place : {"from.pick(1).top.$", "list[0].top.$", "at.$", "top.$", "skip.top.$"})
        EXPECT_EQ(offered(script + place + " } }"), "") << place;
}

TEST_F(Types, OfTextsThatNoCompilerShouldSeeAreUnknown) {
    std::string deep = "int x = ";
    for (int i = 0; i < 50'000; ++i) deep += "(";
    EXPECT_EQ(typeOf("x", deep + "1;\nint main() { $ }"), "int");
    std::string chain = "class A { A@ a; int n; } A@ q;\nint main() { $ }\n";
    std::string members = "q";
    for (int i = 0; i < 20'000; ++i) members += ".a";
    EXPECT_EQ(typeOf(members + "..n", chain), "");
    EXPECT_EQ(typeOf("q.a.a.n", chain), "int");
}

TEST_F(Types, MembersAreOfferedToThoseWhoMayUseThem) {
    const std::string script =
        "class Base { private int hidden; protected int kept; int open; int get_size() const"
        " property { return 1; } }\nclass Other { int no; }\nclass Next : Base { void f(Base@ b)";
    const auto inside = offered(script + " { b.$ } }");
    for (const char* name : {"kept", "open", "size"})
        EXPECT_EQ(std::count(inside.begin(), inside.end(), name), 1) << name;
    for (const char* name : {"hidden", "no", "f", "Base"})
        EXPECT_EQ(std::count(inside.begin(), inside.end(), name), 0) << name;
    const auto outside = offered(script + " { } }\nint main() { Next n; n.$ }");
    EXPECT_EQ(std::count(outside.begin(), outside.end(), "kept"), 0);
    EXPECT_EQ(std::count(outside.begin(), outside.end(), "f"), 1);
    // What is overridden once, overloads each.
    const auto hidden = offered(
        "interface I { int f(int a); }\nclass A : I { int x; int f(int b) { return 1; } }\n"
        "class B : A { string f(string s) { return s; } int f(int c) { return 2; } }\n"
        "int main() { B b; b.$ }");
    EXPECT_EQ(std::count(hidden.begin(), hidden.end(), "f"), 2);
    for (const char* quiet : {"int main() { // n.$\n }", "int main() { Print(\"n.$\"); }",
                              "int main() { int a = 5.$; }", "/* $ */"})
        EXPECT_TRUE(offered(quiet).empty()) << quiet;
}

}  // namespace
}  // namespace korvant::test
