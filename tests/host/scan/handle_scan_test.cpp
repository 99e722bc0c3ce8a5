// Handles that are assigned to themselves: what the engine does not survive does not get there, and
// everything else does.
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

// Each of these took the object away under the handle that alone held it, also one of the host.
TEST_F(HandleScan, AHandleIsNotAssignedToItself) {
    for (const char* assignment :
         {"@o = o;", "@o = @o;", "@(o) = (o);", "((@o)) = @(o);", "@o = cast<Object>(o);",
          "@o = cast<Object@>((o));", "Object@ p; @p = @o = o;", "@o = (@o = o);", "@o = @o = o;",
          "if (o is null) return 1; else @o = o;", "for (int i = 0; i < 1; i++, @o = o) {}",
          "@o = o = Object();", "if ((@o = o) is null) return 1;"}) {
        EXPECT_FALSE(run(inMain(std::string("Object@ o = Object();\n") + assignment)));
        EXPECT_NE(messages().find("The handle is assigned to itself at line 5"), std::string::npos)
            << assignment << messages();
    }
    EXPECT_FALSE(run(inMain("I@ i = A();\n@i = i;")));
    EXPECT_FALSE(run(inMain("string@ s = \"a\" + 1;\n@s = s;")));
    EXPECT_FALSE(run(inMain("int[]@ a = {1};\n@a = a;")));
    EXPECT_FALSE(run("funcdef void F(Object@ o); F@ f = function(o) { @o = o; }; int main() {}"));
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
