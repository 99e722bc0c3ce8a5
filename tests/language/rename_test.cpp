// New names: every name of every script and back, and those that must be refused.
#include "language/rename.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include "language/oracle_fixture.h"
#include "support/script_files.h"

namespace korvant::test {
namespace {

using ::testing::IsEmpty;

class Renaming : public OracleFixture {
  protected:
    RenameResult rename(const std::string& text, std::size_t offset, const std::string& name) {
        Meanings meanings(oracle_, std::make_shared<ScopeIndex>(text));
        return renameAt(oracle_, meanings, offset, name);
    }
    std::vector<std::string> code(const std::string& text, const std::string& oldName) {
        oracle_.rest();
        asIScriptModule* const module = oracle_.build("compared", text);
        if (module == nullptr) return {};
        std::vector<std::string> code = codeOf(*module, oldName, "fresh_9");
        module->Discard();
        return code;
    }
};

/// KORVANT_EVERY_NAME of all names, or a few of each script.
TEST_F(Renaming, ThereAndBackLeavesEveryScriptAsItWas) {
    const bool all = std::getenv("KORVANT_EVERY_NAME") != nullptr;
    int renamed = 0, refused = 0;
    for (const ScriptFile& file : allScriptFiles()) {
        const ScopeIndex index(file.text);
        if (code(file.text, "").empty()) continue;  // does not build
        for (std::size_t i = 0; i < index.declarations().size(); i += all ? 1 : 7) {
            const Declaration& one = index.declarations()[i];
            if (one.name.empty()) continue;
            const std::string name(one.name);
            const RenameResult there = rename(file.text, one.nameRange.begin, "fresh_9");
            if (!there.refusal.empty()) {
                const bool fixed = name.starts_with("op") || name == "get" || name == "set" ||
                                   name.starts_with("get_") || name.starts_with("set_");
                EXPECT_TRUE(fixed) << file.name << ": " << name << ": " << there.refusal.text();
                ++refused;
                continue;
            }
            const std::string text = withEdits(file.text, there.edits, "fresh_9");
            EXPECT_EQ(code(text, name), code(file.text, name)) << file.name << ": " << name;
            const auto first = there.edits.front();
            const RenameResult back = rename(text, first.begin, name);
            EXPECT_EQ(back.refusal.text(), "") << file.name << ": " << name;
            EXPECT_EQ(withEdits(text, back.edits, name), file.text) << file.name << ": " << name;
            ++renamed;
        }
    }
    EXPECT_GT(renamed, 40);
    EXPECT_LT(refused, renamed / 4);
}

struct Refused {
    const char* text;  ///< "$" stands in front of the name
    const char* name;
};

constexpr Refused kRefused[] = {
    // Twice in one scope.
    {"int $a; int b; int main() { return a; }", "b"},
    {"int $a; void b() {} int main() { return a; }", "b"},
    {"int main() { int $a = 1; int b = 2; return a + b; }", "b"},
    {"int f(int $a, int b) { return a + b; }", "b"},
    {"int f(int $a) { int b = 2; return a + b; }", "b"},
    {"class A { int $a; int b; }", "b"},
    {"class $A {} class B {}", "B"},
    {"class $A {} enum B { x }", "B"},
    {"enum E { $a, b }", "b"},
    {"enum E { a } enum $F { b }", "E"},
    {"void $f(int a) {} void g(int b) {}", "g"},
    {"namespace n { int $a; int b; }", "b"},
    {"interface I { void $f(); void g(); }", "g"},
    {"funcdef void $F(); class G {}", "G"},
    {"typedef int $T; class G {}", "G"},
    {"int main() { for (int $i = 0, j = 0; i < j; i++) { } return 0; }", "j"},
    // Would be hidden by something nearer.
    {"int $g = 1; int main() { int l = 2; return l + g; }", "l"},
    {"int $g = 1; int f(int p) { return p + g; }", "p"},
    {"int $g = 1; class A { int m; int f() { return g + m; } }", "m"},
    {"class B { int m; } class A : B { int f() { return g + m; } } int $g = 1;", "m"},
    {"int g() { return 1; } class A { int f() { return 2; } int h() { return g() + f(); } }"
     " int main() { return $g(); }",
     "f"},
    {"namespace n { int x = 2; int f() { return x + y; } } int $y = 1;", "x"},
    {"int main() { int $a = 1; { int b = 2; return a + b; } }", "b"},
    {"int main() { int $a = 1; for (int i = 0; i < 3; i++) { a++; } return a; }", "i"},
    {"class A { int $m; int f(int p) { return m + p; } }", "p"},
    {"class A { int $m; int f() { int l = 1; return m + l; } }", "l"},
    {"int $f() { return 1; } int main() { int l = 2; return f() + l; }", "l"},
    {"enum E { $a } int main() { int l = 2; return int(a) + l; }", "l"},
    // Would hide something that is meant elsewhere.
    {"int g = 1; int main() { int $l = 2; return l + g; }", "g"},
    {"int g = 1; int f(int $p) { return p + g; }", "g"},
    {"int g = 1; class A { int $m; int f() { return g + m; } }", "g"},
    {"int g() { return 1; } class A { int $f() { return 2; } int h() { return g() + f(); } }", "g"},
    {"int y = 1; namespace n { int $x = 2; int f() { return x + y; } }", "y"},
    {"class A { int m; int f(int $p) { return m + p; } }", "m"},
    {"int main() { int a = 1; { int $b = 2; return a + b; } }", "a"},
    {"class B { int m; int f() { return m; } } class A : B { int $n; int g() { return m + n; } "
     "}",
     "m"},
    // Other overloads would be called, or other methods overridden.
    {"int f(int a) { return 1; } int $g(double a) { return 2; } int main() { return f(1.5); }",
     "f"},
    {"class B { int f() { return 1; } } class A : B { int $g() { return 2; } }"
     " int main() { B@ b = A(); return b.f(); }",
     "f"},
    {"interface I { void f(); } class A : I { void f() {} void $g() {} }", "f"},
    // The property that accessors make has a name of its own; nothing proves a text that is broken.
    {"class P { int $get_n() const property { return 1; } } int main() { P p; return p.n; }",
     "get_m"},
    {"class P { int $get_n() const property { return 1; } } int main() { P p; return p.n; } int x "
     "=",
     "get_m"},
    // No names, and names of the library and of the language.
    {"int $a;", "2a"},
    {"int $a;", "a b"},
    {"int $a;", ""},
    {"int $a;", "int"},
    {"int $a;", "return"},
    {"int $a;", "this"},
    {"class A { void $f() {} }", "opAdd"},
    {"class A { void $opAssign(int a) {} }", "f"},
    {"int main() { $Print(\"\"); return 0; }", "f"},
    {"int main() { string s; return s.$length(); }", "f"},
    {"$string s;", "text"},
    {"int $a = 1; int main() { Print(\"\" + a); return 0; }", "Print"},
    {"// $remark\nint a;", "b"},
    {"string s = \"$quoted\";", "b"},
};

TEST_F(Renaming, WhatWouldCaptureOrShadowIsRefused) {
    for (const Refused& one : kRefused) {
        std::string text = one.text;
        const std::size_t offset = text.find('$');
        text.erase(offset, 1);
        const RenameResult result = rename(text, offset, one.name);
        EXPECT_NE(result.refusal.text(), "") << one.text << " -> " << one.name;
        EXPECT_THAT(result.edits, IsEmpty());
    }
}

TEST_F(Renaming, ShadowsThatWereThereStay) {
    const std::string text =
        "int v = 1;\nint f(int v) { return v; }\nint main() { { int v = 3; v++; } return f(v); }\n";
    const RenameResult result = rename(text, text.find("v = 1"), "w");
    EXPECT_EQ(result.refusal.text(), "");
    EXPECT_EQ(withEdits(text, result.edits, "w"),
              "int w = 1;\nint f(int v) { return v; }\nint main() { { int v = 3; v++; } return "
              "f(w); }\n");
}

}  // namespace
}  // namespace korvant::test
