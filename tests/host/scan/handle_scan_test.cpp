// Handles that are assigned to themselves, or that came by reference: our engine runs them; for the
// distribution's, what that one does not survive does not get there, and everything else does.
#include "host/scan/source_scan.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class HandleScan : public ScriptFixture {
  protected:
    static std::string inMain(const std::string& body) {
        return "interface I {}\nclass A : I { A@ o; A@ self() { return this; } }\n"
               "int main() {\n" +
               body + "\nreturn 0; }\n";
    }
};

std::string refusal(const std::string& text, bool hardened) {
    const auto found = scanSource(text, Limits{}, hardened);
    return found ? found->text + " at line " + std::to_string(found->row) : "";
}

// Each of these took the object away under the handle that alone held it, also one of the host.
TEST_F(HandleScan, AHandleMayBeAssignedToItselfOnlyOnOurEngine) {
    for (const char* assignment :
         {"@o = o;", "@o = @o;", "@(o) = (o);", "((@o)) = @(o);", "@o = cast<Object>(o);",
          "@o = cast<Object@>((o));", "Object@ p; @p = @o = o;", "@o = (@o = o);", "@o = @o = o;",
          "if (o is null) return 1; else @o = o;", "for (int i = 0; i < 1; i++, @o = o) {}",
          "@o = o = Object();", "if ((@o = o) is null) return 1;"}) {
        const std::string text =
            inMain("Object@ o = Object();\n" + std::string(assignment) + "\no.setTitle(\"t\");");
        EXPECT_EQ(refusal(text, false), "The handle is assigned to itself at line 5") << assignment;
        EXPECT_EQ(refusal(text, true), "");
        // The library lets nobody assign one property object to another.
        if (!engineIsHardened() ||
            std::string(assignment).find("o = Object()") != std::string::npos)
            continue;
        EXPECT_TRUE(run(text)) << assignment << messages() << session().lastFailure().text;
    }
    EXPECT_NE(refusal(inMain("I@ i = A();\n@i = i;"), false), "");
    EXPECT_NE(refusal(inMain("int[]@ a = {1};\n@a = a;"), false), "");
    EXPECT_NE(
        refusal("funcdef void F(Object@ o); F@ f = function(o) { @o = o; }; int main() {}", false),
        "");
}

// The compiler took the reference for the handle: the object that was used was none.
TEST_F(HandleScan, AHandleThatCameByReferenceIsTheHandle) {
    const std::string before =
        "class C { int v = 5; } funcdef int F(int); int twice(int a) { return a "
        "* 2; } int sum = 0;\n";
    const std::string behind =
        "\nint main() { C@ c = C(); F@ f = twice;\n"
        "for (int i = 0; i < 3; i++) use(c, f);\nPrint(\"\" + sum); return 0; }";
    for (const char* body :
         {"C@ l; @l = p; sum += l.v;", "C@ l; @l = @(p); sum += l.v;", "sum += q(2) + 1;",
          "C@[] l = {p, p}; sum += l[1].v;", "C@ l = C(); l = p; sum += l.v;",
          "C@[] l(1); @l[0] = p; sum += l[0].v;"}) {
        const std::string text =
            before + "void use(C@ &in p, F@ &in q) { " + std::string(body) + " }" + behind;
        EXPECT_NE(refusal(text, false).find("at line 2"), std::string::npos) << body;
        EXPECT_EQ(refusal(text, true), "");
        if (!engineIsHardened()) continue;
        console.output.clear();
        EXPECT_TRUE(run(text)) << body << messages();
        EXPECT_EQ(console.output, "15") << body;
    }
    EXPECT_NE(
        refusal("class C {} funcdef void F(C@ &in); C@ g; F@ f = function(p) { @g = p; };", false),
        "");
    for (const char* body :
         {"C@ l = p; sum += l.v;", "sum += p.v;", "@p = C();", "if (p is null) return;",
          "F@ l = q; sum += l(2);", "C@ l = C(); @l = C();"})
        EXPECT_EQ(
            refusal(before + "void use(C@ &out p, F@ &in q) { " + body + " }" + behind, false), "")
            << body;
}

TEST_F(HandleScan, WhatMovesFromOneHandleToAnotherRuns) {
    for (const char* body :
         {"Object@ o = Object(); Object@ p = o; @p = o; @o = p; @o = @p = o; Print(p.getTitle());",
          "A@ o = A(); @o.o = o; @o = o.o; @o = o.self(); @o.o = o.o; @o.o = null;",
          "A@[] a = {A()}; @a[0] = a[0]; A@ b = a[0]; @a[0] = b;",
          "A@ a = A(); A@ b; @b = a is null ? b : a; @a = true ? a : b;",
          "A o; A p; o = p; o = o; string s = \"a\"; string@ t = s; s = s; t = t;",
          "int a = 1; int b = a = a; a = (a); Print(\"@a = a;\"); /* @a = a; */"}) {
        EXPECT_TRUE(run(inMain(body))) << body << messages() << session().lastFailure().text;
    }
}

}  // namespace
}  // namespace korvant::test
