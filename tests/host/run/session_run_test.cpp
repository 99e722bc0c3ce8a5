// How runs begin, end and are reported.
#include <utility>

#include "support/script_fixture.h"

namespace korvant::test {
namespace {

constexpr char kAborted[] =
    "The script was aborted before it could finish. Probably it timed out.\n";

class Run : public ScriptFixture {
  protected:
    RunFailure::Kind kind() { return session().lastFailure().kind; }
    std::int32_t compile(const std::string& text) { return session().compile(engine(), text); }
    void prepare(const char* declaration) {
        asIScriptModule* module = engine()->GetModule("main");
        ASSERT_NE(module, nullptr);
        ASSERT_EQ(context()->Prepare(module->GetFunctionByDecl(declaration)), 0);
    }
};

TEST_F(Run, AScriptPrintsAndFinishes) {
    EXPECT_EQ(output("Print(\"a\" + 0.5);"), "a0.5");
    EXPECT_EQ(kind(), RunFailure::Kind::none);
    EXPECT_EQ(boxes(), "");
}

struct Failure {
    const char* name;
    const char* script;
    RunFailure::Kind kind;
    const char* box;  ///< its text; empty for none
    std::int32_t line;
};

class FailedRun : public Run, public ::testing::WithParamInterface<Failure> {};

TEST_P(FailedRun, IsReportedInTheGivenWords) {
    const Failure& failure = GetParam();
    EXPECT_FALSE(run(failure.script));
    EXPECT_EQ(kind(), failure.kind);
    EXPECT_EQ(session().lastFailure().text, failure.box);
    EXPECT_EQ(session().lastFailure().line, failure.line);
    ASSERT_EQ(frontend.boxes.size(), *failure.box != '\0' ? 1u : 0u);
    if (*failure.box == '\0') return;
    EXPECT_EQ(frontend.boxes[0].text, failure.box);
    EXPECT_EQ(frontend.boxes[0].style, box_style::kIconError);
    EXPECT_EQ(frontend.boxes[0].caption, "KorvantIDE");
}

INSTANTIATE_TEST_SUITE_P(
    AllKinds, FailedRun,
    ::testing::Values(
        Failure{"NoMain", "void main() {}", RunFailure::Kind::noMain,
                "The function 'int main()' was not found.", 0},
        Failure{"NotBuilt", "int main() { return x; }", RunFailure::Kind::build, "", 0},
        Failure{"OutOfRange", "int main() {\n string s = \"ab\";\n s[2] = 65;\n return 0; }",
                RunFailure::Kind::exception,
                "The script ended with an exception.\n\nline: 3\ndesc: Out of range", 3},
        Failure{"DividedByZero", "int zero = 0;\nint main() {\n return 1 / zero;\n}",
                RunFailure::Kind::exception,
                "The script ended with an exception.\n\nline: 3\ndesc: Divide by zero", 3},
        Failure{"NullHandle", "class A { int x; }\nint main() { A@ a;\n return a.x; }",
                RunFailure::Kind::exception,
                "The script ended with an exception.\n\nline: 3\ndesc: Null pointer access", 3},
        Failure{"Recursion", "int f(int n) { return f(n + 1) + 1; }\nint main() { return f(0); }",
                RunFailure::Kind::exception,
                "The script ended with an exception.\n\nline: 1\ndesc: Stack overflow", 1}),
    [](const auto& entry) { return entry.param.name; });

TEST_F(Run, ABuildFailureLeavesItsMessagesAndARunNone) {
    EXPECT_FALSE(run("int main() { return x; }"));
    EXPECT_EQ(session().buildMessages().all().back().text,
              "No matching symbol 'x' at line 1 column 21\n");
    EXPECT_TRUE(run("int main() { int unused; return 0; }"));
    EXPECT_EQ(session().buildMessages().count(), 0u);
}

TEST_F(Run, CompileAnswersOneOrNothing) {
    EXPECT_EQ(compile("int main() { return 0; }"), 1);
    EXPECT_EQ(compile("int main() { return }"), 0);
    EXPECT_EQ(compile(""), 0);
    EXPECT_EQ(session().compile(nullptr, "int main() { return 0; }"), 0);
    EXPECT_EQ(boxes(), "");
}

TEST_F(Run, RunScriptGivesTheExecutionResultUnchanged) {
    compile("int zero = 0; void good() {} void bad() { zero = 1 / zero; }");
    prepare("void good()");
    EXPECT_EQ(session().run(context()).result, asEXECUTION_FINISHED);
    prepare("void bad()");
    EXPECT_EQ(session().run(context()).result, asEXECUTION_EXCEPTION);
    EXPECT_EQ(session().run(context()).result, asCONTEXT_NOT_PREPARED);
    EXPECT_LT(session().run(nullptr).result, 0);
    EXPECT_EQ(boxes(), "");
}

TEST_F(Run, NothingGivenFailsAndDoesNotCrash) {
    EXPECT_TRUE(session().runApplication(nullptr, context(), "", nullptr).failed());
    EXPECT_TRUE(session().runApplication(engine(), nullptr, "", nullptr).failed());
    EXPECT_TRUE(session().continueApplication(engine(), nullptr, nullptr, StepMode::run).failed());
    EXPECT_EQ(session().configure(nullptr, {}), nullptr);
    session().abandon(nullptr);
    session().release(nullptr);
}

TEST_F(Run, ContinuingWhatIsNotSuspendedIsAnUnforeseenEnd) {
    EXPECT_TRUE(run("int main() { return 0; }"));
    EXPECT_FALSE(resume(StepMode::run));
    EXPECT_EQ(boxes(), "The script ended for some unforeseen reason.\n\n");
}

TEST_F(Run, ARunInsideARunIsRefused) {
    bool inner = true, asked = false;
    std::int32_t compiled = 1, ran = 0;
    frontend.meanwhile = [&] {
        if (std::exchange(asked, true)) return;
        inner = run("int main() { return 0; }");
        compiled = compile("int main() { return 0; }");
        ran = session().run(context()).result;
        session().abandon(context());
        session().release(engine());
    };
    EXPECT_EQ(output("Information(\"press F5\"); Print(\"still here\");"), "still here");
    EXPECT_FALSE(inner);
    EXPECT_EQ(compiled, 0);
    EXPECT_LT(ran, 0);
    EXPECT_EQ(boxes(), "press F5\nFailed to prepare the context.\n");
}

TEST_F(Run, EndsAreClearedByTheNextRun) {
    EXPECT_FALSE(run("void main() {}"));
    EXPECT_TRUE(run("int main() { return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::none);
    EXPECT_EQ(session().lastFailure().text, "");
}

TEST_F(Run, AScreenIsClearedAndHiddenAroundARun) {
    output("Print(\"x\");");
    console.calls.clear();
    EXPECT_TRUE(run("int main() { Print(\"y\"); return 0; }"));
    const std::vector<std::string> expected = {"clear", "show", "hide"};
    EXPECT_EQ(console.calls, expected);
}

TEST_F(Run, AFileThatCannotBeWrittenIsReportedOnceAtTheEnd) {
    EXPECT_TRUE(
        run("int main() { OpenOutputFile(\"/dev/full\"); Print(\"lost\"); "
            "CloseOutputFile(); OpenOutputFile(\"/dev/full\"); Print(\"lost\"); "
            "return 0; }"));
    const std::string expected = "could not write /dev/full: No space left on device";
    EXPECT_EQ(session().lastFailure().unwritten, std::vector<std::string>{expected});
    EXPECT_EQ(boxes(), expected + "\n");
}

TEST_F(Run, AnExceptionIsCaughtByTheScript) {
    EXPECT_EQ(output("string s; try { s[5] = 1; } catch { Print(\"caught\"); }"), "caught");
}

TEST_F(Run, EndlessRecursionInsideTryEndsInTheScript) {
    EXPECT_TRUE(
        run("int f(int n) { return f(n + 1) + 1; }\n"
            "int main() { try { f(0); } catch { Print(\"caught\"); } return 0; }"));
    EXPECT_EQ(console.output, "caught");
}

TEST_F(Run, EndlessAllocationEndsInAnException) {
    for (const char* body :
         {"string s = \"0123456789\"; while (true) s += s;",
          "string[] all; string s; s.resize(10000000); while (true) all.insertLast(s);",
          "int[] a; a.resize(1000); while (true) a.resize(a.length() * 2);"})
        EXPECT_EQ(exceptionOf(body), "Out of memory") << body;
    EXPECT_EQ(value("StrSize(\"still alive\")"), "11");
}

TEST_F(Run, TheAbortTextIsTheOneGiven) {
    EXPECT_FALSE(run("int main() { SetMaxRunTime(20); while (true) {} return 0; }"));
    EXPECT_EQ(session().lastFailure().text, kAborted);
    EXPECT_EQ(boxes(), std::string(kAborted) + "\n");
    EXPECT_EQ(session().lastFailure().line, 1);
}

}  // namespace
}  // namespace korvant::test
