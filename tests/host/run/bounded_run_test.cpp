// Every way in which a run could go on for ever, and that its limit and a stop reach there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "host/engine/engine_build.h"
#include "support/own_time.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using std::chrono::milliseconds;

/// How long after its limit, or after a stop, a run may take to end: 250 ms, and half a second for
/// the watch's thread to be let in; a sanitizer looks at every byte.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr milliseconds kSoon{250 + 3000};
#else
constexpr milliseconds kSoon{250 + 500};
#endif

class Bounded : public ScriptFixture {
  protected:
    RunFailure::Kind kind() { return session().lastFailure().kind; }

    template <class Call>
    static milliseconds timeOf(Call call) {
        const auto began = OwnTime::now();
        call();
        return std::chrono::duration_cast<milliseconds>(OwnTime::now() - began);
    }
    /// The body of int main() is ended by its limit of 200 ms, soon.
    void expectEnd(const std::string& body) {
        const auto spent = timeOf([&] {
            EXPECT_FALSE(run("int main() { SetMaxRunTime(200); " + body + " return 0; }")) << body;
        });
        EXPECT_EQ(kind(), RunFailure::Kind::timeOut) << body << messages();
        EXPECT_LT(spent, milliseconds(200) + kSoon) << body;
    }
};

TEST_F(Bounded, ReadsThatTakeNothingDoNotBeginTheLimitAnew) {
    for (const char* input : {"", "abc"})
        for (const char* body :
             {"int i; while (true) Input(i);", "double d; while (true) Input(d);",
              "float f; while (true) Input(f);", "while (true) Inkey();"}) {
            console.input = input;
            expectEnd(body);
        }
}

TEST_F(Bounded, WhatIsReadBeginsTheLimitAnew) {
    useClock(&fakeClock);
    const TemporaryFolder folder;
    writeFile(folder.file("in"), "1 2");
    console.input = "3";
    static FakeClock* clock;
    clock = &fakeClock;
    engine()->RegisterGlobalFunction("void pass()", asFUNCTION(+[] { clock->advance(9000); }),
                                     asCALL_CDECL);
    EXPECT_EQ(output("int i; pass(); OpenInputFile(\"" + folder.file("in") +
                     "\"); Input(i); pass(); Input(i); pass(); CloseInputFile(); Input(i); pass();"
                     "Print(\"\" + i);"),
              "3");
}

TEST_F(Bounded, QuestionsThatNobodyCouldAnswerDoNotBeginTheLimitAnew) {
    frontend.nobody = true;
    ::testing::internal::CaptureStderr();
    for (const char* body :
         {"while (true) Information(\"?\");", "while (true) Question(\"?\");",
          "while (true) Prompt(\"?\", 1);", "while (true) Prompt(\"?\", \"\");",
          "Object o; while (true) o.prompt(\"?\", 1.5);", "Object o; while (true) o.edit();",
          "Object o; while (true) o.messageBox(\"c\", \"t\", \"BU_OK\", \"IC_ERROR\");",
          // An answered box leaves the limit off; one that nobody saw must not.
          "Object o; o.messageBox(\"c\", \"t\", \"BU_OK\", \"IC_ERROR\"); while (true) {}"}) {
        frontend.answers = {box_button::kOk};
        expectEnd(body);
    }
    ::testing::internal::GetCapturedStderr();
}

TEST_F(Bounded, WhereSomebodyTypesTheRestOfALineThatDoesNotFitIsDropped) {
    console.input = "abc def\n17\n";
    console.typed = true;
    EXPECT_EQ(output("int i = 0; while (i == 0) Input(i); Print(\"\" + i);"), "17");
}

TEST_F(Bounded, CaseConversionsOfALongTextEndSoon) {
    static OwnTime::time_point began;
    engine()->RegisterGlobalFunction("void mark()", asFUNCTION(+[] { began = OwnTime::now(); }),
                                     asCALL_CDECL);
    for (const char* call : {"StrToUpper", "StrToLower"}) {
        EXPECT_FALSE(
            run("int main() { string s; s.resize(134217728); mark(); SetMaxRunTime(50);"
                " while (true) " +
                std::string(call) + "(s); return 0; }"));
        EXPECT_EQ(kind(), RunFailure::Kind::timeOut) << messages() << boxes();
        EXPECT_LT(OwnTime::now() - began, milliseconds(50) + kSoon) << call;
    }
}

TEST_F(Bounded, DestructorsAtATimeOutEndSoon) {
    const std::string endless = "class A { A@ other; ~A() { while (true) {} } }\n";
    for (const char* rest :
         {"A g; int main() { SetMaxRunTime(200); while (true) {} return 0; }",
          "array<A> g(100); int main() { SetMaxRunTime(200); while (true) {} return 0; }",
          "int main() { SetMaxRunTime(200); A a; while (true) {} return 0; }",
          "int main() { SetMaxRunTime(200); for (int i = 0; i < 100; i++) { A a; @a.other = a; }"
          " while (true) {} return 0; }"}) {
        const auto spent = timeOf([&] {
            EXPECT_FALSE(run(endless + rest));
            session().abandon(context());
            EXPECT_EQ(session().compile(engine(), "int main() { return 0; }"), 1);
        });
        EXPECT_LT(spent, milliseconds(200) + kSoon + milliseconds(50)) << rest;
    }
}

TEST_F(Bounded, ACeilingBeyondTheClockIsNone) {
    for (const std::uint64_t most : {UINT64_MAX, UINT64_MAX - 1}) {
        Limits limits;
        limits.hardCeilingMs = most;
        useLimits(limits);
        EXPECT_EQ(output("int i = 0; while (i < 1000) i++; Print(\"\" + i);"), "1000");
    }
    useLimits({});
}

/// A context that its host made, with a line callback of the host's own.
class HostsContext : public Bounded {
  protected:
    HostsContext() : own_(engine()->CreateContext()) {
        own_->SetLineCallback(asFUNCTION(countLine), nullptr, asCALL_CDECL);
        lines = 0;
    }
    ~HostsContext() override { own_->Release(); }
    static void countLine(asIScriptContext*, void*) { ++lines; }

    asIScriptContext* own_;
    static inline int lines = 0;
};

TEST_F(HostsContext, IsBoundedByRunScript) {
    for (const char* body : {"while (true) {}", "int[] a = {3, 1, 2}; while (true) a.sort(less);",
                             "while (true) { try { while (true) {} } catch {} }"}) {
        const std::string text =
            "bool less(const int &in a, const int &in b) { int i = 0; while (i < 1000) i++;"
            " return a < b; }\nint main() { SetMaxRunTime(200); " +
            std::string(body) + " return 0; }";
        ASSERT_EQ(session().compile(engine(), text), 1) << messages();
        own_->Prepare(engine()->GetModule("main")->GetFunctionByName("main"));
        RunOutcome outcome;
        const auto spent = timeOf([&] { outcome = session().run(own_); });
        EXPECT_EQ(outcome.result, asEXECUTION_ABORTED) << body;
        EXPECT_LT(spent, milliseconds(200) + kSoon) << body;
    }
    EXPECT_GT(lines, 0) << "the host's own callback stays";
}

TEST_F(HostsContext, IsBoundedAndStoppedByRunApplication) {
    RunOutcome outcome;
    const auto spent = timeOf([&] {
        outcome = session().runApplication(
            engine(), own_, "int main() { SetMaxRunTime(200); while (true) {} return 0; }",
            nullptr);
    });
    EXPECT_TRUE(outcome.failed());
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
    EXPECT_LT(spent, milliseconds(200) + kSoon);
    {
        const Meanwhile later(*engine(), [&] { session().requestStop(); });
        const std::string endless = "int main() { begun(); while (true) {} return 0; }";
        EXPECT_TRUE(session().runApplication(engine(), own_, endless, nullptr).failed());
    }
    EXPECT_EQ(kind(), RunFailure::Kind::stopped);
    EXPECT_FALSE(
        session().runApplication(engine(), own_, "int main() { return 0; }", nullptr).failed());
}

/// Calls `void inner()` of the script on a context that a host's function makes.
void callInner() {
    asIScriptEngine* const engine = asGetActiveContext()->GetEngine();
    asIScriptContext* const fresh = engine->CreateContext();
    fresh->Prepare(engine->GetModule("main")->GetFunctionByName("inner"));
    fresh->Execute();
    fresh->Release();
}

TEST_F(Bounded, ScriptsOnAFreshContextOfAHostsFunctionEndWithTheRun) {
    if (!engineIsHardened()) GTEST_SKIP() << "other builds do not tell of new contexts";
    engine()->RegisterGlobalFunction("void callInner()", asFUNCTION(callInner), asCALL_CDECL);
    const std::string text =
        "void inner() { while (true) {} }\n"
        "int main() { SetMaxRunTime(200); callInner(); return 0; }";
    const auto spent = timeOf([&] { EXPECT_FALSE(run(text)); });
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
    EXPECT_LT(spent, milliseconds(200) + kSoon);
}

}  // namespace
}  // namespace korvant::test
