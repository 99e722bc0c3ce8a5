// What is refused ahead of the compiler, and that the compiler holds what is not.
#include <pthread.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "host/scan/source_scan.h"
#include "support/needs_engine.h"
#include "support/script_fixture.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

std::string times(std::string_view text, std::size_t n) {
    std::string all;
    for (std::size_t i = 0; i < n; ++i) all += text;
    return all;
}

std::string inMain(const std::string& body) {
    return "int main() { int x = 1; bool b = true; int[] v; string s; " + body + " return 0; }";
}

std::string numbered(std::string_view before, std::string_view behind, std::size_t n) {
    std::string all;
    for (std::size_t i = 0; i < n; ++i)
        all += std::string(before) + std::to_string(i) + std::string(behind);
    return all;
}

/// A text whose shape grows with n.
struct Shape {
    const char* name;
    std::function<std::string(std::size_t)> text;
    std::size_t accepted;  ///< a people's script may go this far
    std::size_t refused;   ///< this must be refused
    /// Only for the message buffer of an engine that is not ours.
    bool forBuffer = false;
};

std::string nested(const char* open, const char* middle, const char* close, std::size_t n) {
    return times(open, n) + middle + times(close, n);
}

/// What nests, and so takes the compiler's stack.
const Shape kDeep[] = {
    {"Parentheses", [](auto n) { return inMain("x=" + nested("(", "1", ")", n) + ";"); }, 200, 300},
    {"Blocks", [](auto n) { return inMain(nested("{", "", "}", n)); }, 200, 300},
    {"Indexes", [](auto n) { return inMain("x=" + nested("v[", "0", "]", n) + ";"); }, 100, 300},
    {"Calls",
     [](auto n) {
         return "int f(int a){return a;} " + inMain("x=" + nested("f(", "1", ")", n) + ";");
     },
     100, 300},
    {"Casts", [](auto n) { return inMain("x=" + nested("int(float(", "1", "))", n) + ";"); }, 60,
     200},
    {"Lists",
     [](auto n) {
         return "int f(int[]@ a){return 1;} " +
                inMain("x=" + nested("f(array<int> = {", "1", "})", n) + ";");
     },
     30, 100},
    {"Lambdas",
     [](auto n) {
         return "funcdef void F(); " +
                inMain("F@ f = " + nested("function(){ F@ f = ", "null;", "};", n));
     },
     10, 100},
    {"ElseIfs", [](auto n) { return inMain("if(b){} " + times("else if(b){} ", n)); }, 500, 2000},
    {"Ifs", [](auto n) { return inMain(times("if(b) ", n) + "x=1;"); }, 500, 2000},
    {"Fors", [](auto n) { return inMain(times("for(;b;) ", n) + "x=1;"); }, 500, 2000},
    {"Dos", [](auto n) { return inMain(nested("do ", "x=1;", " while(b);", n)); }, 200, 2000},
    {"Assignments", [](auto n) { return inMain(times("x=", n) + "1;"); }, 500, 3000},
    {"Conditionals", [](auto n) { return inMain("x=" + times("b?1:", n) + "2;"); }, 200, 1000},
    {"Switches", [](auto n) { return inMain(nested("switch(x){case 1:", "x=1;", "}", n)); }, 200,
     400},
    {"Namespaces", [](auto n) { return nested("namespace a{", "int q;", "}", n) + inMain(""); }, 50,
     300},
    {"Scopes", [](auto n) { return inMain("x=" + times("a::", n) + "q;"); }, 50, 120, true},
    {"TypeArguments", [](auto n) { return inMain(nested("array<", "int", ">", n) + " q;"); }, 8,
     16},
    {"Dimensions", [](auto n) { return inMain("int" + times("[]", n) + " q;"); }, 16, 64},
    {"Parameters",
     [](auto n) { return "void f(" + numbered("int a", ", ", n) + "int z){} " + inMain(""); }, 30,
     200, true},
    {"Arguments", [](auto n) { return inMain("Print(" + times("x, ", n) + "x);"); }, 20, 200, true},
    {"DoublingDefaults",
     [](auto n) {
         std::string all = "int f0(int a=1){return 1;}";
         for (std::size_t i = 0; i < n; ++i) {
             const std::string call = "f" + std::to_string(i) + "()";
             all +=
                 "int f" + std::to_string(i + 1) + "(int a=" + call + "+" + call + "){return 1;}";
         }
         return all + inMain("f" + std::to_string(n) + "();");
     },
     8, 40},
    {"EndlessDefaults",
     [](auto n) {
         return n == 0 ? inMain("")
                       : "int g(int a=f()){return 1;} int f(int a=g()){return 1;}" + inMain("f();");
     },
     0, 1},
};

/// What grows in time only.
const Shape kLong[] = {
    {"Locals", [](auto n) { return inMain(numbered("int y", "=1;", n)); }, 3000, 60000},
    {"Loops", [](auto n) { return inMain(times("for(int i=0;i<2;i++) x=1;", n)); }, 1000, 20000},
    {"Operators", [](auto n) { return inMain("x=" + times("x+", n) + "x;"); }, 5000, 60000},
    {"ScatteredCases",
     [](auto n) { return inMain("switch(x){" + numbered("case ", "000: break;", n) + "}"); }, 500,
     5000},
    {"Members",
     [](auto n) { return "class A{" + numbered("void f", "(){}", n) + "}" + inMain(""); }, 3000,
     40000},
    {"InheritedMembers",
     [](auto n) {
         std::string all = "class A0{ void m(){} } ";
         for (std::size_t i = 0; i < n; ++i)
             all += "class A" + std::to_string(i + 1) + " : A" + std::to_string(i) + "{ void m" +
                    std::to_string(i) + "(){} } ";
         return all + inMain("");
     },
     200, 3000},
    {"GlobalsInReverse",
     [](auto n) {
         std::string all;
         for (std::size_t i = 0; i < n; ++i)
             all += "int g" + std::to_string(i) + "=g" + std::to_string(i + 1) + ";";
         return all + "int g" + std::to_string(n) + "=1;" + inMain("");
     },
     500, 5000},
};

class ScanOf : public ScriptFixture, public ::testing::WithParamInterface<Shape> {
  protected:
    bool refuses(std::size_t n, bool hardened = engineIsHardened()) {
        return scanSource(GetParam().text(n), session().limits(), hardened).has_value();
    }
};

TEST_P(ScanOf, TakesWhatPeopleWriteAndRefusesWhatHarms) {
    EXPECT_FALSE(refuses(GetParam().accepted))
        << scanSource(GetParam().text(GetParam().accepted), {})->text;
    EXPECT_TRUE(refuses(GetParam().refused, false));
    EXPECT_EQ(refuses(GetParam().refused, true), !GetParam().forBuffer);
}

TEST(ScanOfStack, BlocksTakeTheirShareOfIt) {
    const std::string calls = "x=" + nested("f(", "1", ")", 152) + ";";
    const auto inBlocks = [&](std::size_t count) {
        return "int f(int a){return a;} " + inMain(nested("{", calls.c_str(), "}", count));
    };
    EXPECT_FALSE(scanSource(inBlocks(1), {}));
    EXPECT_TRUE(scanSource(inBlocks(80), {}));
}

struct Compile {
    ScriptSession* session;
    asIScriptEngine* engine;
    const std::string* text;
};

void* compileThere(void* given) {
    const auto& work = *static_cast<Compile*>(given);
    work.session->compile(work.engine, *work.text);
    asThreadCleanup();
    return nullptr;
}

class DeepScanOf : public ScanOf {};

/// What hosts' threads have; the calls of an engine with a sanitizer take more of it.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStack = std::size_t{8} << 20;
#else
constexpr std::size_t kStack = std::size_t{1} << 20;
#endif

// The largest text of this shape that is not refused, on a stack of that size.
TEST_P(DeepScanOf, TheCompilerHoldsTheLargestTextThatPasses) {
    std::size_t passes = GetParam().accepted, fails = GetParam().refused;
    while (fails - passes > 1 + passes / 20) {
        const std::size_t middle = passes + (fails - passes) / 2;
        (refuses(middle) ? fails : passes) = middle;
    }
    const std::string text = GetParam().text(passes);
    Compile work{&session(), engine(), &text};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStack);
    pthread_t thread;
    const auto began = std::chrono::steady_clock::now();
    ASSERT_EQ(pthread_create(&thread, &attributes, compileThere, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(60)) << passes;
}

std::string shapeName(const ::testing::TestParamInfo<Shape>& entry) {
    return entry.param.name;
}

INSTANTIATE_TEST_SUITE_P(Deep, ScanOf, ::testing::ValuesIn(kDeep), shapeName);
INSTANTIATE_TEST_SUITE_P(Long, ScanOf, ::testing::ValuesIn(kLong), shapeName);
INSTANTIATE_TEST_SUITE_P(Deep, DeepScanOf, ::testing::ValuesIn(kDeep), shapeName);

class Scan : public ::testing::Test {
  protected:
    /// Of a host whose engine is the distribution's, unless `hardened`.
    std::string refusal(const std::string& text, bool hardened = false) {
        const auto found = scanSource(text, Limits{}, hardened);
        if (!found) return "";
        return std::to_string(found->row) + ":" + std::to_string(found->column) + " " + found->text;
    }
};

TEST_F(Scan, LongNamesAndDeclarationsAreNamedWithTheirPlace) {
    const std::string name(255, 'n'), longName(256, 'n');
    EXPECT_EQ(refusal("int " + name + " = 1;\nint main() { return 0; }"), "");
    EXPECT_EQ(refusal("int main() {\n  return " + longName + "; }"),
              "2:10 The name is longer than 255 bytes");
    EXPECT_EQ(refusal("namespace " + std::string(200, 'a') + " { namespace " +
                      std::string(60, 'b') + " { int x; } }"),
              "1:285 The name is longer than 255 bytes");
    EXPECT_EQ(refusal("class A {\n void f(string " + std::string(250, 'a') + ", string " +
                      std::string(250, 'b') + ", string " + std::string(250, 'c') + ", string " +
                      std::string(250, 'd') + ") {}\n}"),
              "2:7 The declaration is longer than 900 bytes");
    EXPECT_EQ(refusal("void f(string s = \"" + std::string(900, 'x') + "\") {}"),
              "1:6 The declaration is longer than 900 bytes");
}

// Each of these made the engine read beyond a buffer.
TEST_F(Scan, NothingThatPassesMakesAMessageTooLong) {
    std::string parameters, arguments;
    for (int i = 0; i < 20; ++i)
        parameters += "const string &in parameter" + std::to_string(i) + ", ";
    for (int i = 0; i < 100; ++i) arguments += "1, ";
    const std::string hidden[] = {
        "void f(" + parameters + parameters + "int z) {}\nint main() { return 0; }",
        "void f(int a) {}\nint main() { f(" + arguments + arguments + "1); return 0; }",
        "class A { void f(int a) {} }\nint main() { A a; a.f(" + arguments + arguments +
            "1); return 0; }",
        "int main() { x" + times("::y", 400) + "; return 0; }",
        "int main() { int[]" + times("[]", 600) + " a = 1; return 0; }"};
    for (const std::string& text : hidden) EXPECT_NE(refusal(text), "") << text.substr(0, 80);
}

// On our engine messages are of any length, as long as they do not keep the compiler busy.
TEST_F(Scan, OnOurEngineNamesAndDeclarationsAreOfAnyLength) {
    const std::string name(20000, 'n');
    const std::string text = "class " + name + " { int v; }\nvoid f(" + name + " a, " + name +
                             " b) {}\nint main() { f(1, 2); return 0; }";
    EXPECT_NE(refusal(text), "");
    EXPECT_EQ(refusal(text, true), "");
    Limits chosen;
    chosen.nameBytes = 100;
    EXPECT_TRUE(scanSource(text, chosen, true)) << "a host's own bound holds everywhere";
    const std::string huge(std::size_t{1} << 20, 'n');
    EXPECT_EQ(
        refusal("class " + huge + " {}\n" + huge + " x; int main() {" + times("x+x;", 5000) + "}",
                true),
        "1:7 The declaration is too long for a script of this size");
}

class LongMessages : public ScriptFixture {};

TEST_F(LongMessages, AreGivenAndCut) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    const std::string name(1500, 'n');
    EXPECT_FALSE(run("class " + name + " {}\nvoid f(" + name + " a, " + name + " b, " + name +
                     " c) {}\nint main() { " + name + " x; f(x); return 0; }"));
    EXPECT_NE(messages().find("No matching signatures to 'f(" + name), std::string::npos);
    for (const BuildMessage& message : session().buildMessages().all())
        EXPECT_LE(message.plain.size(), 4003U);
    EXPECT_TRUE(run("int main() { int " + name + " = 0; return " + name + "; }")) << messages();
}

TEST_F(Scan, TextsAndCommentsHoldNoBrackets) {
    EXPECT_EQ(refusal("int main() { Print(\"" + times("(", 1000) + "\"); return 0; }"), "");
    EXPECT_EQ(refusal("// " + times("(", 1000) + "\n/* " + times("{", 1000) + " */ int main() {}"),
              "");
    EXPECT_EQ(refusal("string s = \"\"\"" + times("([", 1000) + "\"\"\"; int main() {}"), "");
    EXPECT_EQ(refusal("string s = '\\'" + times("(", 1000) + "'; int main() {}"), "");
    EXPECT_NE(refusal("string s = 'a\\\\';" + times("(", 1000)), "");
    EXPECT_NE(refusal("/* open */ int x = " + times("(", 1000)), "");
}

TEST_F(Scan, WrongTextsAreLeftToTheCompiler) {
    for (const std::string& text :
         {std::string(), std::string("}}}}"), std::string(")]}(["), times("x = (1;\n", 3000),
          times("if (a < b, c < d, e < f) {}\n", 300), std::string("\"never ends"),
          std::string("/* never ends"), std::string("\xEF\xBB\xBFint main() {}"),
          std::string(1000, '\0'), std::string("class"), std::string("namespace {"),
          std::string("enum {,,,"), std::string("= = ="), std::string("((("),
          std::string("int n = {1, 2 n array<string@> t;")})
        EXPECT_EQ(refusal(text), "") << text.substr(0, 40);
}

TEST_F(Scan, IsLinear) {
    const std::string parts[] = {
        "f(", "a<b,", "{x=1;", "x::", "\"s\"+", "if(b)", "int a=b,", "a b(c)"};
    for (const std::string& part : parts) {
        const std::string text = times(part, (std::size_t{4} << 20) / part.size());
        const auto began = std::chrono::steady_clock::now();
        scanSource(text, Limits{});
        EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5)) << part;
    }
}

TEST_F(Scan, TakesAllExamples) {
    namespace fs = std::filesystem;
    for (const auto& entry :
         fs::directory_iterator(fs::path(korvant::test::sourceFolder()) / "examples")) {
        if (entry.path().extension() != ".as") continue;
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        EXPECT_EQ(refusal(text.str()), "") << entry.path();
    }
}

}  // namespace
}  // namespace korvant::test
