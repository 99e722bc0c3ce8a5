// Looking into stopped scripts.
#include "host/run/inspect.h"

#include <map>

#ifdef KORVANT_TEST_ADDON
#include <angelscript/scriptarray.h>
#endif

#include "module/families.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class Inspect : public ScriptFixture {
  protected:
    /// Runs up to `line` and gives the variables of the innermost frame by name.
    std::map<std::string, VariableInfo> stopAt(std::int32_t line, const std::string& text) {
        const std::vector<std::int32_t> lines = {line};
        EXPECT_TRUE(run(text, &lines)) << messages();
        EXPECT_EQ(outcome().line, line);
        std::map<std::string, VariableInfo> found;
        for (const VariableInfo& variable : script().variables(0))
            if (!variable.name.empty()) found[variable.name] = variable;
        return found;
    }
    StoppedScript script() { return StoppedScript(context()); }
    ValueView view(const VariableInfo& variable) {
        return script().view(variable.typeId, variable.address);
    }
};

TEST_F(Inspect, PrimitivesAreReadByTheirType) {
    auto all = stopAt(8,
                      "enum E { none, some = 7 }\n"
                      "int main() {\n"
                      " int8 i8 = -8; int16 i16 = -16; int i = -32; int64 i64 = -64;\n"
                      " uint8 u8 = 200; uint16 u16 = 60000; uint u = 4000000000;\n"
                      " uint64 u64 = 5; float f = 0.5f; double d = 0.25; bool b = true;\n"
                      " E e = some;\n"
                      "\n"
                      " return 0;\n}");
    const std::map<std::string, std::int64_t> integers = {
        {"i8", -8},     {"i16", -16},      {"i", -32}, {"i64", -64}, {"u8", 200},
        {"u16", 60000}, {"u", 4000000000}, {"u64", 5}, {"e", 7}};
    for (const auto& [name, expected] : integers)
        EXPECT_EQ(integerOf(view(all[name])), expected) << name;
    EXPECT_EQ(view(all["u8"]).kind, ValueKind::unsignedInteger);
    EXPECT_EQ(view(all["e"]).kind, ValueKind::enumeration);
    EXPECT_EQ(realOf(view(all["f"])), 0.5);
    EXPECT_EQ(realOf(view(all["d"])), 0.25);
    EXPECT_TRUE(boolOf(view(all["b"])));
    EXPECT_EQ(all["u16"].declaration, "uint16 u16");
}

TEST_F(Inspect, TextsAndHandlesAreFollowed) {
    auto all = stopAt(3,
                      "int main() {\n"
                      " string s = \"text\"; string@ h = s; string@ none; const string@ c = s;\n"
                      " return 0;\n}");
    EXPECT_EQ(textOf(view(all["s"])), "text");
    EXPECT_EQ(textOf(view(all["h"])), "text");
    EXPECT_EQ(textOf(view(all["c"])), "text");
    EXPECT_EQ(view(all["none"]).kind, ValueKind::uninitialised);
}

TEST_F(Inspect, ArraysOfAllKindsGiveTheirElements) {
    auto all =
        stopAt(4,
               "class A { int x = 4; }\n"
               "int main() { int8[] small = {1, -2}; string[] texts = {\"a\", \"b\"}; bool[] "
               "flags = {true};\n"
               " A[] objects(2); A@[] handles(2); int[][] grid = {{1, 2}, {3}}; int[] empty;\n"
               " return 0;\n}");
    const StoppedScript stopped = script();
    EXPECT_EQ(view(all["small"]).elements, 2u);
    EXPECT_EQ(integerOf(stopped.element(view(all["small"]), 1)), -2);
    EXPECT_EQ(stopped.element(view(all["small"]), 2).kind, ValueKind::uninitialised);
    EXPECT_EQ(textOf(stopped.element(view(all["texts"]), 1)), "b");
    EXPECT_TRUE(boolOf(stopped.element(view(all["flags"]), 0)));
    EXPECT_EQ(stopped.element(view(all["objects"]), 1).kind, ValueKind::object);
    EXPECT_EQ(stopped.element(view(all["handles"]), 0).kind, ValueKind::uninitialised);
    const ValueView row = stopped.element(view(all["grid"]), 0);
    EXPECT_EQ(row.kind, ValueKind::array);
    EXPECT_EQ(integerOf(stopped.element(row, 1)), 2);
    EXPECT_EQ(view(all["empty"]).elements, 0u);
}

TEST_F(Inspect, MembersAreReadThroughBaseHandles) {
    auto all =
        stopAt(5,
               "class Base { int x = 1; }\n"
               "class internal : Base { string name = \"n\"; internal@ me; int[] list = {5}; }\n"
               "int main() {\n"
               " internal a; @a.me = a; Base@ b = a;\n"
               " return 0;\n}");
    const StoppedScript stopped = script();
    const ValueView object = view(all["b"]);
    ASSERT_EQ(object.kind, ValueKind::object);
    ASSERT_EQ(object.elements, 4u);
    std::string name;
    EXPECT_EQ(integerOf(stopped.member(object, 0, name)), 1);
    EXPECT_EQ(name, "x");
    EXPECT_EQ(textOf(stopped.member(object, 1, name)), "n");
    const ValueView itself = stopped.member(object, 2, name);
    EXPECT_EQ(itself.address, object.address);
    EXPECT_EQ(stopped.member(object, 3, name).kind, ValueKind::array);
    EXPECT_EQ(stopped.member(object, 4, name).kind, ValueKind::uninitialised);
    EXPECT_EQ(name, "");
}

TEST_F(Inspect, WhatIsNotYetOrNoMoreInScopeIsNotRead) {
    auto all = stopAt(3,
                      "int main() {\n"
                      " { string gone = \"gone\"; }\n"
                      " int now = 1;\n"
                      " string later = \"later\";\n"
                      " return now; }");
    EXPECT_FALSE(all["gone"].inScope);
    EXPECT_FALSE(all["later"].inScope);
    for (const char* name : {"gone", "later"}) {
        EXPECT_EQ(all[name].address, nullptr) << name;
        EXPECT_EQ(view(all[name]).kind, ValueKind::uninitialised) << name;
    }
}

TEST_F(Inspect, FramesAreCountedFromTheInside) {
    stopAt(2,
           "int inner(int n, string &in s) {\n"
           " return n;\n"
           "}\n"
           "int main() {\n"
           " return inner(3, \"x\");\n"
           "}");
    const StoppedScript stopped = script();
    ASSERT_EQ(stopped.frameCount(), 2u);
    EXPECT_EQ(stopped.frame(0).function, "int inner(int, string&in)");
    EXPECT_EQ(stopped.frame(0).line, 2);
    EXPECT_EQ(stopped.frame(1).line, 5);
    EXPECT_EQ(stopped.frame(2).function, "");
    const std::vector<VariableInfo> parameters = stopped.variables(0);
    EXPECT_EQ(integerOf(stopped.view(parameters[0].typeId, parameters[0].address)), 3);
    EXPECT_EQ(textOf(stopped.view(parameters[1].typeId, parameters[1].address)), "x");
    EXPECT_TRUE(stopped.variables(7).empty());
}

TEST_F(Inspect, AnExceptionLeavesItsVariables) {
    EXPECT_FALSE(run("int zero = 0; int main() { int a = 5;\n a = a / zero; return a; }"));
    const StoppedScript stopped = script();
    ASSERT_TRUE(stopped.readable());
    EXPECT_EQ(stopped.frame(0).line, 2);
    const VariableInfo variable = stopped.variables(0).at(0);
    EXPECT_EQ(integerOf(stopped.view(variable.typeId, variable.address)), 5);
}

TEST_F(Inspect, WhatHasEndedIsNotRead) {
    EXPECT_TRUE(run("int main() { int a = 5; return a; }"));
    EXPECT_FALSE(script().readable());
    EXPECT_EQ(script().frameCount(), 0u);
    EXPECT_TRUE(script().variables(0).empty());
    const int number = 1;
    EXPECT_EQ(script().view(asTYPEID_INT32, &number).kind, ValueKind::uninitialised);
    EXPECT_FALSE(StoppedScript(nullptr).readable());
    EXPECT_TRUE(StoppedScript(nullptr).variables(0).empty());
}

#ifdef KORVANT_TEST_ADDON
// A host that registered the array of the engine's own add-ons keeps it.
TEST_F(Inspect, ArraysOfTheHostGiveTheirElements) {
    asIScriptEngine* other = asCreateScriptEngine();
    RegisterScriptArray(other, true);
    asIScriptContext* made = session().configure(other, registrationOrder());
    const std::vector<std::int32_t> lines = {4};
    EXPECT_FALSE(session()
                     .runApplication(other, made,
                                     "class A { int x = 4; }\nint main() { int8[] small = {1, -2}; "
                                     "string[] texts = {\"a\"};\n A@[] handles = {null, A()};\n "
                                     "return 0; }",
                                     &lines)
                     .failed());
    const StoppedScript stopped(made);
    std::map<std::string, ValueView> all;
    for (const VariableInfo& variable : stopped.variables(0))
        all[variable.name] = stopped.view(variable.typeId, variable.address);
    EXPECT_EQ(all["small"].elements, 2u);
    EXPECT_EQ(integerOf(stopped.element(all["small"], 1)), -2);
    EXPECT_EQ(stopped.element(all["small"], 2).kind, ValueKind::uninitialised);
    EXPECT_EQ(textOf(stopped.element(all["texts"], 0)), "a");
    EXPECT_EQ(stopped.element(all["handles"], 0).kind, ValueKind::uninitialised);
    EXPECT_EQ(stopped.element(all["handles"], 1).kind, ValueKind::object);
    session().abandon(made);
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
}
#endif

struct Foreign {
    std::int64_t nothing[4] = {};
};

// A host may have types of the names that are known here.
TEST_F(Inspect, TypesOfTheHostAreNotTakenForOurs) {
    static Foreign foreign;
    asIScriptEngine* other = asCreateScriptEngine();
    other->RegisterObjectType("string", 0, asOBJ_REF | asOBJ_NOCOUNT);
    other->RegisterGlobalFunction("string@ one()", asFUNCTION(+[] { return &foreign; }),
                                  asCALL_CDECL);
    asIScriptContext* made = session().configure(other, {});
    const std::vector<std::int32_t> lines = {3};
    const std::string text = "int main() {\n string@ s = one();\n return 0;\n}";
    EXPECT_TRUE(session().runApplication(other, made, text, &lines).stoppedAtLine());
    const StoppedScript stopped(made);
    const VariableInfo variable = stopped.variables(0).at(0);
    EXPECT_EQ(stopped.view(variable.typeId, variable.address).kind, ValueKind::other);
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
}

}  // namespace
}  // namespace korvant::test
