// What a build says, keeps and refuses.
#include <algorithm>
#include <stdexcept>

#include "support/needs_engine.h"
#include "support/script_fixture.h"

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace korvant::test {
namespace {

class Build : public ScriptFixture {
  protected:
    bool builds(const std::string& text) { return session().compile(engine(), text) == 1; }
    const BuildMessages& list() { return session().buildMessages(); }
};

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

TEST_F(Build, MessagesHaveTheGivenForm) {
    EXPECT_FALSE(builds("int main() {\n  return 0\n}"));
    ASSERT_EQ(list().count(), 3u);
    EXPECT_EQ(list().all()[0].text, "Compiling int main() at line 1 column 1\n");
    EXPECT_EQ(list().all()[1].text, "Expected ';' at line 3 column 1\n");
    EXPECT_EQ(list().all()[1].row, 3);
    EXPECT_EQ(list().all()[1].column, 1);
    EXPECT_EQ(list().all()[2].plain, "Instead found '}'");
}

TEST_F(Build, WarningsAndInformationAreKeptToo) {
    EXPECT_TRUE(builds("int main() { int a = 3000000000; return a; }"));
    ASSERT_EQ(list().count(), 2u);
    EXPECT_EQ(list().all()[0].kind, BuildMessage::Kind::information);
    EXPECT_EQ(list().all()[1].kind, BuildMessage::Kind::warning);
}

TEST_F(Build, FiveThousandErrorsLeaveOneThousandMessages) {
    EXPECT_FALSE(builds("int main() { " + repeated("x;\n", 5000) + " return 0; }"));
    EXPECT_EQ(list().count(), BuildMessages::kCapacity);
}

TEST_F(Build, OtherModulesOfTheHostCannotOverfillTheList) {
    EXPECT_TRUE(builds("int main() { return 0; }"));
    for (int i = 0; i < 3; ++i) {
        asIScriptModule* module = engine()->GetModule("other", asGM_ALWAYS_CREATE);
        const std::string text = "void f() { " + repeated("x;\n", 600) + "}";
        module->AddScriptSection("other", text.data(), text.size());
        EXPECT_LT(module->Build(), 0);
    }
    EXPECT_EQ(list().count(), BuildMessages::kCapacity);
    EXPECT_TRUE(builds("int main() { return 0; }"));
    EXPECT_EQ(list().count(), 0u);
}

TEST_F(Build, TextsTheCompilerCannotTakeAreRefusedWithTheirPlace) {
    struct Case {
        std::string text;
        const char* message;
    };
    const Case cases[] = {{std::string(10 << 20, ' '),
                           "The script is longer than 4194304 bytes at line 1 column 1\n"},
                          {repeated(";", 1'000'001),
                           "The script has more than 1000000 words and signs at line 1 column 1\n"},
                          {"int main() {\n int x = " + std::string(100000, '(') + "1" +
                               std::string(100000, ')') + ";\n return x; }",
                           "Brackets and statements are nested too deeply at line 2 column "},
                          {"\n\n" + repeated("array<", 16) + "int" + repeated(">", 16) + " a;",
                           "Types are nested too deeply at line 3 column 6\n"},
                          {"\n" + repeated("array<", 30'000) + "int a;",
                           "Types are nested too deeply at line 2 column 6\n"}};
    for (const Case& refused : cases) {
        EXPECT_FALSE(builds(refused.text));
        ASSERT_EQ(list().count(), 1u);
        EXPECT_EQ(list().all()[0].text.rfind(refused.message, 0), 0u) << list().all()[0].text;
    }
    EXPECT_EQ(engine()->GetModule("main"), nullptr) << "what ran before must not run again";
}

TEST_F(Build, ZeroBytesInATextAreAnError) {
    EXPECT_FALSE(builds(std::string("int main() { return 0; }\0 x", 27)));
    EXPECT_GT(list().count(), 0u);
    const std::string inLiteral("int main() { Print(\"a\0b\"); return 0; }", 38);
    EXPECT_TRUE(run(inLiteral)) << messages();
    EXPECT_EQ(console.output, std::string("a\0b", 3));
}

TEST_F(Build, TheHostsEngineSettingsAreBackAfterwards) {
    engine()->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 1);
    engine()->SetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES, 1);
    EXPECT_FALSE(run("int main() { SetMaxRunTime(20); while (true) {} return 0; }"));
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::timeOut);
    EXPECT_EQ(engine()->GetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD), 1u);
    EXPECT_EQ(engine()->GetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES), 1u);
}

TEST_F(Build, LettersKeepTheirBytesInWesternAndInUtf8) {
    EXPECT_EQ(value("StrSize(\"caf\xE9\")"), "4");
    EXPECT_EQ(value("StrSize(\"caf\xC3\xA9\")"), "5");
    EXPECT_EQ(value("StrSize(\"caf\\xE9\")"), "4");
    EXPECT_EQ(session().buildMessages().count(), 0u);
    EXPECT_EQ(engine()->GetEngineProperty(asEP_SCRIPT_SCANNER), 1u);
}

TEST_F(Build, AHostThatInitialisesGlobalsItselfStillDoes) {
    const char* text = "int f() { Print(\"f\"); return 7; } int g = f(); int main() { return g; }";
    engine()->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
    EXPECT_TRUE(builds(text));
    EXPECT_EQ(console.output, "");
    engine()->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 1);
    EXPECT_TRUE(builds(text));
    EXPECT_EQ(console.output, "f");
}

TEST_F(Build, ARegistrationThatFailsIsNamedByEveryBuild) {
    asIScriptEngine* other = asCreateScriptEngine();
    other->RegisterObjectType("string", 4, asOBJ_VALUE | asOBJ_POD);
    const RegisterFamily families[] = {[](asIScriptEngine* engine) {
        return engine->RegisterGlobalFunction("void f(nothing)", asFUNCTION(+[] {}), asCALL_CDECL);
    }};
    asIScriptContext* made = session().configure(other, families);
    ASSERT_NE(made, nullptr);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(session().compile(other, "int main() { return 0; }"), 0);
        EXPECT_NE(messages().find("void f(nothing)"), std::string::npos) << messages();
    }
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
}

TEST_F(Build, ARegistrationOfTheHostThatFailsIsNamedByEveryBuild) {
    EXPECT_LT(engine()->RegisterGlobalFunction("int depth(hole)", asFUNCTION(+[] {}), asCALL_CDECL),
              0);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(builds("int main() { return 0; }"));
        EXPECT_NE(messages().find("'RegisterGlobalFunction' with 'int depth(hole)'"),
                  std::string::npos)
            << messages();
    }
}

/// What scripts share with those before and behind them; sum() is 10.
constexpr char kSharing[] =
    "shared enum Size { small = 1, large }\n"
    "shared funcdef int Change(int);\n"
    "shared interface Runs { int go(); }\n"
    "shared int twice(int n) { return n * 2; }\n"
    "shared class Pump : Runs {\n"
    " int turns = 3; int[] log; Change@ change;\n"
    " Pump() { @change = @twice; }\n"
    " int go() { return change(turns) + int(large); }\n"
    "}\n"
    "int sum() {\n"
    " int[] a = {1, 2}; Pump p; p.log = a; Pump q = p; Runs@ r = q;\n"
    " return q.log[1] + r.go();\n"
    "}\n"
    "int main() { return sum(); }\n";

/// A host that keeps a function of a script.
TEST_F(Build, AFunctionThatAHostKeepsOutlivesItsScript) {
    for (int i = 0; i < 2; ++i) ASSERT_TRUE(run(kSharing)) << messages() << boxes();
    EXPECT_EQ(context()->GetReturnDWord(), 10u);
    asIScriptFunction* const kept = engine()->GetModule("main")->GetFunctionByName("sum");
    kept->AddRef();
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(run("int main() { return 0; }"));
    engine()->GarbageCollect();
    asIScriptContext* const own = engine()->CreateContext();
    ASSERT_EQ(own->Prepare(kept), 0);
    EXPECT_EQ(own->Execute(), asEXECUTION_FINISHED);
    EXPECT_EQ(own->GetReturnDWord(), 10u);
    own->Release();
    kept->Release();
}

TEST_F(Build, AContextThatIsPreparedOutlivesTwoScripts) {
    KORVANT_NEEDS_HARDENED_ENGINE();
    for (const int scripts : {1, 2, 3}) {
        for (int i = 0; i < scripts; ++i) {
            ASSERT_TRUE(builds(kSharing)) << messages();
            context()->Prepare(engine()->GetModule("main")->GetFunctionByName("main"));
        }
        EXPECT_FALSE(builds("int main() { return x; }"));
        EXPECT_TRUE(builds("int main() { return 0; }"));
        EXPECT_EQ(session().run(context()).result, asEXECUTION_FINISHED) << scripts;
        EXPECT_EQ(context()->GetReturnDWord(), 10u) << scripts;
    }
}

/// Texts of a host's own that it cannot make.
class ThrowingFactory : public asIStringFactory {
  public:
    const void* GetStringConstant(const char*, asUINT) override {
        throw std::out_of_range("no such text");
    }
    int ReleaseStringConstant(const void*) override { return 0; }
    int GetRawStringData(const void*, char*, asUINT*) const override { return -1; }
};

#ifdef __SANITIZE_ADDRESS__
using LeaksAreMeant = __lsan::ScopedDisabler;
#else
struct [[maybe_unused]] LeaksAreMeant {};
#endif

TEST_F(Build, WhatTheCompilerThrowsIsAMessageAndItsEngineIsLeftAlone) {
    static ThrowingFactory factory;
    asIScriptEngine* other = asCreateScriptEngine();
    asIScriptContext* made = session().configure(other, {});
    ASSERT_NE(made, nullptr);
    other->RegisterObjectType("label", 4, asOBJ_VALUE | asOBJ_POD);
    other->RegisterStringFactory("label", &factory);
    {
        // What it was in the middle of stays until the process ends.
        const LeaksAreMeant meant;
        EXPECT_EQ(session().compile(other, "int main() { \"a\"; return 0; }"), 0);
    }
    EXPECT_NE(messages().find("The compiler failed: no such text"), std::string::npos);
    EXPECT_TRUE(session().broken(other));
    EXPECT_EQ(session().compile(other, "int main() { return 0; }"), 0);
    EXPECT_NE(messages().find("cannot be used again"), std::string::npos) << messages();
    EXPECT_TRUE(builds("int main() { return 0; }"));
    session().release(other);
    made->Release();
}

TEST_F(Build, ConfiguringAgainGivesTheSameContext) {
    const asUINT functions = engine()->GetGlobalFunctionCount();
    asIScriptContext* again = session().configure(engine(), {});
    EXPECT_EQ(again, context());
    EXPECT_EQ(engine()->GetGlobalFunctionCount(), functions);
    again->Release();
    EXPECT_EQ(value("1"), "1");
}

TEST_F(Build, TwoEnginesHaveAContextEach) {
    asIScriptEngine* other = asCreateScriptEngine();
    asIScriptContext* made = session().configure(other, {});
    EXPECT_NE(made, context());
    EXPECT_EQ(session().compile(other, "int[] all = {1, 2}; int main() { return 0; }"), 1);
    EXPECT_FALSE(
        session().runApplication(other, made, "int main() { return 0; }", nullptr).failed());
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
    EXPECT_EQ(session().currentContext(), nullptr);
    EXPECT_EQ(value("1"), "1");
}

TEST_F(Build, AHostThatNeverReleasesStillEndsItsEngine) {
    asIScriptEngine* other = asCreateScriptEngine();
    asIScriptContext* made = session().configure(other, {});
    EXPECT_FALSE(
        session().runApplication(other, made, "int main() { return 0; }", nullptr).failed());
    static bool gone;
    gone = false;
    other->SetEngineUserDataCleanupCallback([](asIScriptEngine*) { gone = true; }, 42);
    other->SetUserData(&gone, 42);
    made->Release();
    other->ShutDownAndRelease();
    EXPECT_TRUE(gone);
}

TEST_F(Build, TheHostsArrayTypeIsKept) {
    asIScriptEngine* other = asCreateScriptEngine();
    asIScriptContext* made = session().configure(other, {});
    EXPECT_GE(other->GetDefaultArrayTypeId(), 0);
    const int type = other->GetTypeIdByDecl("int[]");
    EXPECT_STREQ(other->GetTypeDeclaration(type), "int[]");
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
}

TEST_F(Build, TheDepthOfCallsIsBoundedOnlyWhereTheHostLeftItOpen) {
    EXPECT_EQ(engine()->GetEngineProperty(asEP_MAX_CALL_STACK_SIZE), 10000u);
    asIScriptEngine* other = asCreateScriptEngine();
    other->SetEngineProperty(asEP_MAX_CALL_STACK_SIZE, 77);
    asIScriptContext* made = session().configure(other, {});
    EXPECT_EQ(other->GetEngineProperty(asEP_MAX_CALL_STACK_SIZE), 77u);
    session().release(other);
    made->Release();
    other->ShutDownAndRelease();
}

// Scripts and manuals were written for these declarations in this order.
TEST_F(Build, EverythingIsRegisteredInItsOrder) {
    const char* const first[] = {
        "OpenInputFile", "CloseInputFile", "ApendOutputFile", "OpenOutputFile", "CloseOutputFile",
        "Print",         "Input",          "Input",           "Input",          "Input",
        "Inkey",         "Clear",          "SetTextColor",    "SetTextBold",    "ResetText",
        "GoToXY",        "Prompt",         "Prompt",          "Prompt",         "Prompt",
        "Question",      "Information",    "Warning",         "Error",          "Progress",
        "Progress"};
    asUINT index = 0;
    for (const char* name : first)
        EXPECT_STREQ(engine()->GetGlobalFunctionByIndex(index++)->GetName(), name);
    const char* const last[] = {"SetMaxRunTime",
                                "GetSystemTime",
                                "acos",
                                "asin",
                                "atan",
                                "atan2",
                                "ceil",
                                "cos",
                                "cosh",
                                "exp",
                                "fabs",
                                "floor",
                                "fmod",
                                "log",
                                "log10",
                                "pow",
                                "sin",
                                "sinh",
                                "sqrt",
                                "tan",
                                "tanh",
                                "hypot",
                                "j0",
                                "j1",
                                "jn",
                                "y0",
                                "y1",
                                "yn",
                                "StrSize",
                                "StrFind",
                                "StrFind",
                                "StrRevFind",
                                "StrRevFind",
                                "StrInsert",
                                "StrSubstring",
                                "StrAsc",
                                "StrToUpper",
                                "StrToLower"};
    index = engine()->GetGlobalFunctionCount() - static_cast<asUINT>(std::size(last));
    for (const char* name : last)
        EXPECT_STREQ(engine()->GetGlobalFunctionByIndex(index++)->GetName(), name);
}

}  // namespace
}  // namespace korvant::test
