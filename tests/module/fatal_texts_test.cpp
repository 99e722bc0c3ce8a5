// Texts that end the compiler of some builds of the engine: for a host they are build errors with a
// place, on every engine.
#include <gtest/gtest.h>

#include <algorithm>

#include "korvantide/host_interface.h"
#include "language/worker_guard.h"
#include "support/choices.h"
#include "support/script_fixture.h"
#include "support/script_generators.h"

namespace korvant::test {
namespace {

/// As a host's engine is configured.
class FatalTexts : public ScriptFixture {
  protected:
    FatalTexts() { session().setBuildGuard(&workerGuard()); }
    ~FatalTexts() override { session().setBuildGuard(nullptr); }

    bool placed() {
        const auto& all = session().buildMessages().all();
        return std::any_of(all.begin(), all.end(), [](const BuildMessage& one) {
            return one.kind == BuildMessage::Kind::error && one.row > 0;
        });
    }
};

TEST_F(FatalTexts, AreErrorsWithTheirPlaces) {
    const std::string before =
        "class C { int v; }\nenum E { one }\nfuncdef void F(int);\n"
        "void f(int x) {}\nint main() {\nint a = 1; bool ok = true; "
        "C@ p = C();\n";
    for (const char* body : {"null.x;",
                             "null.f();",
                             "-null;",
                             "~null;",
                             "null++;",
                             "--null;",
                             "null = p;",
                             "{1, 2} = a;",
                             "double d = ok ? null : 1.0;",
                             "\"a\" & 1;",
                             "bool b = true | false;",
                             "if (ok && @p) a = 2;",
                             "C@ x = true ? 1 : null ? null : {null} >> p;",
                             "int({1, 2});",
                             "E e = {1};",
                             "auto x = ({});",
                             "auto[] x = {1, 2};",

                             "C c(c);",

                             "F@ g = f; g(x: 1);",
                             "int[] l; l = {1}; null++;",
                             "F@ h = {1, 2};",
                             "int x = 0; x = {1, 2};",
                             "(null)++;"}) {
        EXPECT_EQ(CompileScript(engine(), before + body + "\nreturn 0; }"), 0) << body;
        EXPECT_TRUE(placed()) << body << "\n" << messages();
        EXPECT_EQ(CompileScript(engine(), "int main() { string s = \"a\" + 1; return 0; }"), 1)
            << "behind " << body << "\n"
            << messages();
    }
}

/// Whatever they are, the host is alive behind them.
TEST_F(FatalTexts, NoneOfManyEndsTheHost) {
    for (std::uint64_t seed = 1; seed <= 120; ++seed) {
        SeededChoices expressions(seed), tokens(seed << 32);
        for (const std::string& text :
             {faultyExpressions(expressions), brokenProgram(tokens),
              systematicScript(static_cast<std::size_t>(seed) * 7919 % systematicScripts())})
            EXPECT_TRUE(CompileScript(engine(), text) == 1 || !messages().empty()) << text;
    }
    EXPECT_EQ(CompileScript(engine(), "int main() { return 0; }"), 1) << messages();
}

}  // namespace
}  // namespace korvant::test
