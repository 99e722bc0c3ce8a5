// Texts that ended the process in the engine: each gives messages, or runs to an end that is right.
#include <string>

#include "support/needs_engine.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class FaultyText : public ScriptFixture {
  protected:
    void SetUp() override { KORVANT_NEEDS_HARDENED_ENGINE(); }

    /// The error that names the fault; what follows from it is not asked for.
    void expectError(const std::string& text, const std::string& error) {
        EXPECT_FALSE(run(text)) << text;
        EXPECT_NE(messages().find(error), std::string::npos) << text << "\n" << messages();
        EXPECT_TRUE(run("int main() { string s = \"a\" + 1; return 0; }")) << "behind " << text;
    }
    void expectErrorInMain(const std::string& body, const std::string& error) {
        expectError(
            "class C { int v; } enum E { one } interface I {}\nint main() {\nint a = 1; bool ok "
            "= true; C@ p = C();\n" +
                body + "\nreturn 0; }",
            error);
    }
    void expectOutput(const std::string& text, const std::string& printed) {
        console.output.clear();
        EXPECT_TRUE(run(text)) << text << messages() << session().lastFailure().text;
        EXPECT_EQ(console.output, printed) << text;
    }
};

TEST_F(FaultyText, NullHasNoMembersAndNoOperators) {
    for (const char* body : {"null.x;", "null.f();", "-null;", "~null;", "null++;", "--null;"})
        expectErrorInMain(body, "Illegal operation on this datatype at line 4");
    expectErrorInMain("null = p;", "Expression is not an l-value at line 4");
    expectErrorInMain("{1, 2} = a;", " at line 4");
    expectErrorInMain("double d = ok ? null : 1.0;", "Can't find unambiguous implicit conversion");
}

TEST_F(FaultyText, OperatorsOverWhatTheyDoNotTakeAreErrors) {
    expectErrorInMain("\"a\" & 1;", "No conversion from 'const string' to 'int' available");
    expectErrorInMain("bool b = true | false;", "No conversion from 'bool' to 'int' available");
    expectErrorInMain("if (ok && @p) a = 2;", " at line 4");
    EXPECT_TRUE(run("int main() { const string s = true; return 0; }")) << messages();
    expectErrorInMain("C@ x = true ? 1 : null ? null : {null} >> p;", " at line 4");
}

TEST_F(FaultyText, ListsWhereThereAreNoneAreErrors) {
    expectErrorInMain("int({1, 2});", " at line 4");
    expectErrorInMain("E e = {1};", "Initialization lists cannot be used with 'E'");
    expectErrorInMain("auto x = ({});", "Unable to resolve auto type at line 4");
    expectErrorInMain("auto[] x = {1, 2};", "Auto is not allowed here at line 4");
}

TEST_F(FaultyText, AnObjectDoesNotMakeItself) {
    expectErrorInMain("string s = s;", "'s' is not initialized. at line 4");
    expectErrorInMain("C c(c);", "'c' is not initialized. at line 4");
    expectErrorInMain("int[] x = {x.length()};", "'x' is not initialized. at line 4");
}

TEST_F(FaultyText, ArgumentsByNameNeedNames) {
    expectError("funcdef void F(int); void f(int x) {} int main() { F@ g = f; g(x: 1); return 0; }",
                "No matching signatures");
}

TEST_F(FaultyText, AClassThatIsTooLargeIsAnError) {
    useClock(&fakeClock);  // however long it takes
    std::string text = "class Part {", derived;
    for (int i = 0; i < 3000; ++i) text += "double d" + std::to_string(i) + ";";
    derived = text + "} class Whole : Part {";
    for (int i = 0; i < 1200; ++i) derived += "double e" + std::to_string(i) + ";";
    expectError(derived + "} int main() { Whole w; w.e1199 = 2; return 0; }",
                "The class 'Whole' is too large");
    expectOutput(text + "} int main() { Part p; p.d2999 = 2.5; Print(\"\" + p.d2999); return 0; }",
                 "2.5");
}

TEST_F(FaultyText, AReferenceWithAPlusIsAReference) {
    run("void f(const string &+ y) { Print(y); } int main() { string s = \"a\"; f(s); return 0; }");
    EXPECT_TRUE(run("int main() { return 0; }"));
}

// These are valid: they ended the process when they ran.
TEST_F(FaultyText, ACastIsAnOperandLikeAnyOther) {
    const std::string classes =
        "class C { int v = 7; int opCmp(const C &in o) { return v - o.v; }\n"
        "C@ opAdd(const C &in o) { C c; c.v = v + o.v; return c; } } class D : C {}\n";
    expectOutput(classes +
                     "int main() { C c; D d; d.v = 8; C@ s = cast<C>(d) + c;\n"
                     "if (cast<C>(d) > c) Print(\"\" + s.v); return 0; }",
                 "15");
    EXPECT_FALSE(run(classes + "int main() { C c; return cast<D>(c) > c ? 1 : 0; }"));
    EXPECT_NE(session().lastFailure().text.find("Null pointer access"), std::string::npos);
}

TEST_F(FaultyText, AFunctionThatIsNamedIsCalledAtOnce) {
    expectOutput(
        "funcdef int F(int); int twice(int a) { return a * 2; }\n"
        "int main() { Print(\"\" + F(twice)(4)); return 0; }",
        "8");
}

TEST_F(FaultyText, ANamelessFunctionIsNoValueOfAnyType) {
    const auto nothing = [](asIScriptGeneric*) {};
    asIScriptEngine& host = *engine();
    ASSERT_GE(
        host.RegisterGlobalFunction("void take(const ?&in)", asFUNCTION(+nothing), asCALL_GENERIC),
        0);
    expectErrorInMain("take(function() {});", "No matching signatures to 'take(");
    expectErrorInMain("take((function(x) { x = 1; }));", "No matching signatures to 'take(");
    expectOutput(
        "funcdef int F(); int main() { F@ f = function() { return 3; }; take(f); "
        "Print(\"\" + f()); return 0; }",
        "3");
}

TEST_F(FaultyText, NumbersAreTheNearestThereAre) {
    expectOutput(
        "int main() {\n"
        "double pi = 3.14159, top = 1.7976931348623157e308, least = 5e-324, none = 1e-400;\n"
        "Print(\"\" + (pi == 314159 / 100000.0) + (1.75 == 7 / 4.0) + (0.1f == float(0.1)) +\n"
        "(top < 1e309) + (least > 0) + (none == 0) + (5. == .5 * 10));\n"
        "return 0; }",
        "truetruetruetruetruetruetrue");
}

TEST_F(FaultyText, ShiftsTakeTheLowerBitsOfTheCount) {
    expectOutput(
        "int main() { int n = 33; uint64 w = 1; Print(\"\" + (1 << n) + \" \" + (1 << 33) + "
        "\" \" + (-8 >>> 33) + \" \" + int(w << (n + 31))); return 0; }",
        "2 2 -4 1");
}

// What a destructor sees in the handle that is being changed is the new object.
TEST_F(FaultyText, DestructorsSeeNoDeadObject) {
    expectOutput(
        "class N { int v; N(int x) { v = x; } ~N() { if (kept !is null) Print(\"\" + kept.v); "
        "} }\nN@ kept;\nint main() { @kept = N(1); @kept = N(2); @kept = null; return 0; }",
        "2");
}

}  // namespace
}  // namespace korvant::test
