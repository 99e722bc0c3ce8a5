// Declarations, scopes and names of whole and of half-written scripts.
#include "language/scope_index.h"

#include <gmock/gmock.h>

#include <ctime>
#include <set>

#include "support/own_time.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An index, and places in its text by what stands there.
class Indexed {
  public:
    explicit Indexed(const std::string& text) : index_(text) {}
    const ScopeIndex* operator->() const { return &index_; }
    std::size_t at(std::string_view what, int which = 0) const {
        std::size_t place = index_.document().text().find(what);
        while (which-- > 0) place = index_.document().text().find(what, place + 1);
        return place;
    }
    std::string declared(int index) const {
        if (index == kNoIndex) return "none";
        const Declaration& found = index_.declarations()[static_cast<std::size_t>(index)];
        return index_.oneLine(found.type) + " " + std::string(found.name) + ":" +
               std::to_string(index_.document().lineOf(found.nameRange.begin) + 1);
    }
    /// What the name that begins at a place means.
    std::vector<std::string> meanings(std::size_t place) const {
        std::vector<std::string> result;
        const NameUse* use = index_.useAt(place + 1);
        if (use == nullptr) return {"no name"};
        for (const int meaning : index_.meaningsOf(*use)) result.push_back(declared(meaning));
        return result;
    }
    std::vector<std::string> all() const {
        std::vector<std::string> names;
        for (const Declaration& found : index_.declarations()) names.emplace_back(found.name);
        return names;
    }

  private:
    ScopeIndex index_;
};

TEST(ScopeIndex, KnowsWhatEachKindOfDeclarationIs) {
    const Indexed script(
        "enum Colour { red, green = 1 << 2 }\nfuncdef void Done(int);\ntypedef double real;\n"
        "import int twice(int x) from \"other\";\n"
        "namespace A::B { int inside; shared interface I { int f() const; } }\n"
        "mixin class M { int m; }\n"
        "class C : A::B::I, M { private array<array<int>> list; C() {} ~C() {}\n"
        "  int f() const override { return m; } int p { get const { return 1; } set { } } }\n"
        "const string &in_name(const string &in text, int[]@ list = null) { return text; }\n"
        "Object made(\"title\"), second;\n");
    EXPECT_THAT(script.all(),
                ElementsAre("Colour", "red", "green", "Done", "real", "twice", "x", "A", "B",
                            "inside", "I", "f", "M", "m", "C", "list", "C", "C", "f", "p", "get",
                            "set", "in_name", "text", "list", "made", "second"));
    const auto kinds = [&](std::string_view name) {
        std::vector<DeclarationKind> result;
        for (const Declaration& found : script->declarations())
            if (found.name == name) result.push_back(found.kind);
        return result;
    };
    using Kind = DeclarationKind;
    EXPECT_THAT(kinds("C"), ElementsAre(Kind::classType, Kind::constructor, Kind::destructor));
    EXPECT_THAT(kinds("made"), ElementsAre(Kind::globalVariable));
    EXPECT_THAT(kinds("in_name"), ElementsAre(Kind::function));
    EXPECT_THAT(kinds("list"), ElementsAre(Kind::memberVariable, Kind::parameter));
    EXPECT_THAT(kinds("p"), ElementsAre(Kind::property));
    EXPECT_THAT(kinds("f"), ElementsAre(Kind::method, Kind::method));
    EXPECT_THAT(script.meanings(script.at("return m") + 7), ElementsAre("int m:6"));
    EXPECT_EQ(
        script->pathOf(script->membersOf(script->classAt(script.at("int f() const;")), "f")[0]),
        "A::B::I::f");
}

TEST(ScopeIndex, FindsTheVariableThatAStatementSees) {
    const Indexed script(R"(int x = 1;
class C { int x; void f(int y) { x = y; { int x = 2; x++; } x = 3; this.x = 4; } }
int main() {
    x = 5;
    int x = 6;
    for (int i = 0; i < x; i++) { string x = "7"; x += "8"; }
    Done@ d = function(x) { return x + 1; };
    return x;
}
)");
    const auto variable = [&](std::string_view before) {
        return script.declared(script->variableAt("x", script.at(before)));
    };
    EXPECT_EQ(variable("x = y"), "none") << "the member is no variable of the function";
    EXPECT_EQ(variable("x++"), "int x:2");
    EXPECT_EQ(variable("x = 3"), "none");
    EXPECT_EQ(variable("x = 5"), "none");
    EXPECT_EQ(variable("x += "), "string x:6");
    EXPECT_EQ(variable("x + 1"), " x:7");
    EXPECT_EQ(variable("return x;"), "int x:5");
    EXPECT_THAT(script.meanings(script.at("x = 3")), ElementsAre("int x:2"));
    EXPECT_THAT(script.meanings(script.at("this.x") + 5), ElementsAre("int x:2"));
    EXPECT_THAT(script.meanings(script.at("x = 5")), ElementsAre("int x:1"));
}

/// At the end of a text, where one writes, nothing local was known.
TEST(ScopeIndex, ABodyThatIsBeingWrittenGoesToTheEnd) {
    for (const char* const end :
         {"return x", "for (int i = 0; i < x; i++) {\n        x", "x;\n    "}) {
        const std::string body = std::string("class C { void f(int x) {\n    ") + end;
        const ScopeIndex index(body);
        EXPECT_NE(index.variableAt("x", body.size()), kNoIndex) << end;
        EXPECT_NE(index.classAt(body.size()), kNoIndex) << end;
    }
    const std::string whole = "void f(int x) { x; }";
    EXPECT_EQ(ScopeIndex(whole).variableAt("x", whole.size()), kNoIndex);
}

TEST(ScopeIndex, TellsWhatAUseDoes) {
    const Indexed script(
        "void f() { a = b; a += 1; ++a; g(n: a, A::c); a.d(e).h = int[](3)[0]; "
        "T@ t = cast<U>(v); array<W@>@ w = array<W@>(2); }");
    using Role = NameUse::Role;
    const auto role = [&](std::string_view what, std::size_t shift = 0) {
        return script->useAt(script.at(what) + shift)->role;
    };
    EXPECT_EQ(role("a = b"), Role::writes);
    EXPECT_EQ(role("a += "), Role::changes);
    EXPECT_EQ(role("++a", 2), Role::changes);
    EXPECT_EQ(role("g(n"), Role::calls);
    EXPECT_EQ(role("n: a"), Role::labels);
    EXPECT_EQ(role("A::c"), Role::qualifies);
    EXPECT_TRUE(script->useAt(script.at("c);"))->qualified);
    EXPECT_TRUE(script->useAt(script.at("d(e)"))->member);
    EXPECT_EQ(role("h = int"), Role::writes);
    EXPECT_EQ(role("U>("), Role::type);
    EXPECT_EQ(script->usesOf("W").size(), 2u);
    EXPECT_EQ(script->usesOf("a").size(), 5u);
}

TEST(ScopeIndex, KnowsWhereStatementsBegin) {
    const Indexed script(
        "int main()\n{\n  for (int i = 0;\n       i < 3;\n       i++,\n       f(i))\n"
        "    if (i == 1)\n      continue;\n\n  // nothing\n  return\n    0;\n}\nvoid f(int i) "
        "{\n}\n");
    std::set<std::uint32_t> lines;
    for (const Statement& statement : script->statements())
        lines.insert(script->document().lineOf(statement.range.begin) + 1);
    EXPECT_THAT(lines, ElementsAre(3, 4, 5, 6, 7, 8, 11, 13, 15));
}

TEST(ScopeIndex, AHalfWrittenStatementHidesNothingBehindIt) {
    const Indexed script(R"(class Well { int depth; }
int main() {
    Well w;
    string open = "no end;
    w.
    int later = 3;
    f(1, (2
    if (later > 2) { int inner = w.depth; inner }
    later
}
int after(int p) { return p; }
)");
    EXPECT_NE(script->variableAt("later", script.at("later > 2")), kNoIndex);
    EXPECT_NE(script->variableAt("inner", script.at("inner }")), kNoIndex);
    EXPECT_THAT(script.meanings(script.at("p; }")), ElementsAre("int p:11"));
    EXPECT_THAT(script->membersOf(script->classAt(script.at("int depth")), "depth"),
                ElementsAre(1));
}

/// Letter by letter, and without the braces that an editor may add.
TEST(ScopeIndex, AHeadThatIsBeingWrittenSwallowsNothing) {
    const std::string before = "namespace geo {\nclass Well {\n    Well() {}\n";
    const std::string behind =
        "    int depth = 1;\n    Well@ next;\n    Well(int d) {\n        depth = d;\n    }\n"
        "    Well@ deeper(int by,\n                 int more) const {\n"
        "        return Well(depth + by);\n    }\n    ~Well() {}\n}\n}\n"
        "enum Kind { flat }\nclass Next : geo::Well {\n    int last;\n}\n"
        "string[] words(const string &in text) {\n    return split(text,\n        \" \");\n}\n"
        "int main() {\n    for (\n        int i = 0; i < 2; i++) {}\n    return 0;\n}\n";
    const std::vector<std::string> wanted = {"geo::Well",
                                             "geo::Well::depth",
                                             "geo::Well::next",
                                             "geo::Well::deeper",
                                             "Kind",
                                             "Kind::flat",
                                             "Next",
                                             "Next::last",
                                             "words",
                                             "main"};
    for (const std::string head :
         {"    private double grow(int n, const Well@ &in other = make(1), int[] list = {1}) "
          "const {\n        if (n > 2 && list[",
          "    Well@ grow(Well@[] all, array<Well@>@ more) {\n        all.sort(function(a, b) {\n"
          "            return a",
          "    int level { get const { return 1; } set { x(", "    Well(int", "    ~Well() {",
          "    class Inner : Well { int f("}) {
        for (std::size_t size = 1; size <= head.size(); ++size) {
            const Indexed script(before + head.substr(0, size) + "\n" + behind);
            std::vector<std::string> paths;
            for (std::size_t i = 0; i < script->declarations().size(); ++i)
                paths.push_back(script->pathOf(static_cast<int>(i)));
            for (const std::string& path : wanted)
                EXPECT_EQ(std::count(paths.begin(), paths.end(), path), 1)
                    << path << " behind " << head.substr(0, size);
            EXPECT_EQ(script.declared(script->functionAt(script.at("return 0"))).substr(0, 9),
                      "int main:");
        }
    }
}

TEST(ScopeIndex, HostileTextsTakeLinearTime) {
    const auto repeated = [](const std::string& text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) all += text;
        return all;
    };
    const std::clock_t begin = std::clock();  // of the processor: others may use it as well
    for (const char* piece : {"(",
                              "{",
                              "a::",
                              "a<",
                              "\\\"",
                              "\n\\\"\n",
                              "if(",
                              "else ",
                              "int a,",
                              "a@",
                              "f(function(){",
                              "class C{",
                              "namespace A{",
                              "/*",
                              "\"\"\"",
                              "do ",
                              "for(",
                              "int[]",
                              "~",
                              "cast<",
                              "int a=1,",
                              "f(a,",
                              "}",
                              "case 1:",
                              "x y",
                              "@",
                              "\xff"})
        for (const char* around : {"", "void f() { ", "class C { "}) {
            const std::string text = around + repeated(piece, 100000);
            readSyntax(text, scriptTokens(text));
        }
    EXPECT_LT((std::clock() - begin) / CLOCKS_PER_SEC, 60 * kSlowdown);
}

}  // namespace
}  // namespace korvant::test
