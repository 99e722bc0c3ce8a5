// Breakpoints and steps.
#include "korvantide/korvantide.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using Lines = std::vector<std::int32_t>;

class Debug : public ScriptFixture {
  protected:
    /// Runs with `breakpoints`, resumes in `mode` until the script ends, and gives the lines at
    /// which it was suspended; at most 30.
    Lines stops(const std::string& text, const Lines& breakpoints, StepMode mode) {
        Lines lines;
        bool ran = run(text, &breakpoints);
        while (ran && outcome().line != 0 && lines.size() < 30) {
            EXPECT_EQ(context()->GetState(), asEXECUTION_SUSPENDED);
            EXPECT_EQ(context()->GetLineNumber(), outcome().line);
            lines.push_back(outcome().line);
            ran = resume(mode, &breakpoints);
        }
        EXPECT_TRUE(ran || lines.size() == 30) << session().lastFailure().text << messages();
        return lines;
    }
};

constexpr char kLoop[] =
    "int main() {\n"                     // 1
    "  int sum = 0;\n"                   // 2
    "  for (int i = 0; i < 3; i++) {\n"  // 3
    "    sum += i;\n"                    // 4
    "    sum += 1;\n"                    // 5
    "  }\n"                              // 6
    "  Print(\"\" + sum);\n"             // 7
    "  return sum;\n"                    // 8
    "}\n";

constexpr char kCalls[] =
    "int twice(int n) {\n"  // 1
    "  int r = n * 2;\n"    // 2
    "  return r;\n"         // 3
    "}\n"
    "int main() {\n"         // 5
    "  int a = twice(1);\n"  // 6
    "  int b = twice(a);\n"  // 7
    "  return a + b;\n"      // 8
    "}\n";

/// Hundreds of statements from one stop to the next, in the function that is stopped and below it.
constexpr char kFarApart[] =
    "int count(int n) {\n"                 // 1
    "  int s = 0;\n"                       // 2
    "  while (n-- > 0)\n"                  // 3
    "    s++;\n"                           // 4
    "  return s;\n"                        // 5
    "}\n"                                  // 6
    "int main() {\n"                       // 7
    "  int sum = 0;\n"                     // 8
    "  for (int i = 0; i < 2; i++) {\n"    // 9
    "    sum += count(150);\n"             // 10
    "    for (int k = 0; k < 150; k++)\n"  // 11
    "      sum++;\n"                       // 12
    "    sum += 2;\n"                      // 13
    "  }\n"                                // 14
    "  return sum;\n"                      // 15
    "}\n";

struct Walk {
    const char* name;
    const char* script;
    Lines breakpoints;
    StepMode mode;
    Lines expected;
};

class Stepping : public Debug, public ::testing::WithParamInterface<Walk> {};

TEST_P(Stepping, StopsAtTheseLines) {
    EXPECT_EQ(stops(GetParam().script, GetParam().breakpoints, GetParam().mode),
              GetParam().expected);
    EXPECT_EQ(outcome().line, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Walks, Stepping,
    ::testing::Values(
        Walk{"NoBreakpoint", kLoop, {}, StepMode::run, {}},
        Walk{"OncePerPass", kLoop, {4}, StepMode::run, {4, 4, 4}},
        Walk{"EveryLineOnceThough", kLoop, {4, 4, 5, 2}, StepMode::run, {2, 4, 5, 4, 5, 4, 5}},
        Walk{"LinesWithoutCode",
             kLoop,
             {-1, 0, 100, 2147483647, -2147483647 - 1},
             StepMode::run,
             {}},
        // The line is the loop's only one, so nothing between clears the last stop.
        Walk{"OneLineLoop",
             "int main() {\n int i = 0;\n while (i < 5) i++;\n return i;\n}",
             {3},
             StepMode::run,
             {3}},
        Walk{"FarApartInTheCaller", kFarApart, {10, 13}, StepMode::run, {10, 13, 10, 13}},
        Walk{"FarApartInBoth", kFarApart, {2, 5, 13}, StepMode::run, {2, 5, 13, 2, 5, 13}},
        // Never above the last line, so the loop is left at the end of its body.
        Walk{"OverLeavesTheLoop", kLoop, {2}, StepMode::over, {2, 3, 4, 5, 7, 8}},
        Walk{"OverStopsAtABreakpointAbove",
             kLoop,
             {2, 4},
             StepMode::over,
             {2, 3, 4, 5, 4, 5, 4, 5, 7, 8}},
        Walk{"IntoGoesDown", kCalls, {6}, StepMode::into, {6, 2, 3, 7, 2, 3, 8}},
        Walk{"OverGoesOn", kCalls, {6}, StepMode::over, {6, 7, 8}}),
    [](const auto& entry) { return entry.param.name; });

TEST_F(Debug, HostsContinueWithAnyOtherStepMode) {
    for (const std::int32_t other : {3, -1}) {
        const Lines lines = {2};
        ASSERT_TRUE(run(kLoop, &lines));
        EXPECT_TRUE(ContinueApplication(engine(), context(), &lines, other));
        EXPECT_EQ(context()->GetState(), asEXECUTION_FINISHED);
    }
}

TEST_F(Debug, ANullListEmptiesTheBreakpoints) {
    const Lines lines = {4};
    EXPECT_TRUE(run(kLoop, &lines));
    EXPECT_EQ(outcome().line, 4);
    EXPECT_TRUE(resume(StepMode::run, nullptr));
    EXPECT_EQ(outcome().line, 0);
    EXPECT_EQ(console.output, "6");
}

TEST_F(Debug, ABreakpointAddedWhileSuspendedIsMet) {
    const Lines first = {2}, second = {7};
    EXPECT_TRUE(run(kLoop, &first));
    EXPECT_TRUE(resume(StepMode::run, &second));
    EXPECT_EQ(outcome().line, 7);
}

TEST_F(Debug, SteppingFromTheLastStatementFinishes) {
    const Lines lines = {8};
    EXPECT_TRUE(run(kLoop, &lines));
    EXPECT_TRUE(resume(StepMode::into, nullptr));
    EXPECT_EQ(outcome().line, 0);
    EXPECT_EQ(context()->GetState(), asEXECUTION_FINISHED);
}

// The engine calls twice for the first line of a function.
TEST_F(Debug, SteppingIntoALineWithTwoCallsStopsAtTheSecond) {
    const Lines lines = {6};
    EXPECT_TRUE(run(kCalls, &lines));
    EXPECT_TRUE(resume(StepMode::into, nullptr));
    EXPECT_EQ(outcome().line, 2);
    EXPECT_TRUE(resume(StepMode::run, &lines));
    EXPECT_EQ(outcome().line, 0);
}

TEST_F(Debug, AFailureAfterAStopClearsTheLine) {
    const Lines lines = {2};
    EXPECT_TRUE(run("int zero = 0;\nint main() { int a = 1;\n return a / zero; }", &lines));
    EXPECT_FALSE(resume(StepMode::run, nullptr));
    EXPECT_EQ(outcome().line, 0);
}

TEST_F(Debug, FilesAreClosedWhenTheRunIsFirstSuspended) {
    const TemporaryFolder folder;
    const std::string file = folder.file("debug.txt");
    const std::string script = "int main() {\n OpenOutputFile(\"" + file +
                               "\");\n Print(\"in the file\");\n"
                               " Print(\"on the console\");\n"
                               " OpenOutputFile(\"" +
                               file +
                               "\");\n"
                               " Print(\"again \");\n Print(\"in the file\");\n return 0;\n}";
    const Lines first = {4}, second = {7};
    EXPECT_TRUE(run(script, &first));
    EXPECT_TRUE(resume(StepMode::run, &second));
    EXPECT_EQ(console.output, "on the console");
    EXPECT_TRUE(resume(StepMode::run, nullptr));
    EXPECT_TRUE(run("int main() { string s; OpenInputFile(\"" + file +
                    "\"); while (true) { "
                    "Input(s); if (s.length() == 0) return 0; Print(s + \".\"); } return 0; }"));
    EXPECT_EQ(console.output, "on the consoleagain.in.the.file.");
}

// A native that calls back cannot wait for the user.
TEST_F(Debug, BreakpointsUnderNativesArePassedOver) {
    const char* script =
        "class A { int v;\n"
        " ~A() {\n"
        "  v = 1;\n"
        " }\n"
        " int opCmp(const A &in o) {\n"
        "  return v - o.v;\n"
        " } }\n"
        "int main() {\n"
        " A[] a(4);\n"
        " a.sortAsc();\n"
        " { A b; }\n"
        " Print(\"through\");\n"
        " return 0;\n"
        "}\n";
    EXPECT_EQ(stops(script, {3, 6, 12}, StepMode::run), Lines{12});
    EXPECT_EQ(console.output, "through");
    EXPECT_EQ(stops(script, {10}, StepMode::over), (Lines{10, 11, 12, 13}));
}

TEST_F(Debug, LinesAreOfTheTextThatRunsAndOfNoOtherSource) {
    shareLibrary("other", "int twice(int n) {\n  int r = n;\n  r += n;\n  return r;\n}\n", "twice");
    const char kScript[] = "int main() {\n  int a = share(1);\n  return a;\n}\n";
    EXPECT_EQ(stops(kScript, {2, 3, 4}, StepMode::run), (Lines{2, 3}));
    EXPECT_EQ(stops(kScript, {2}, StepMode::into), (Lines{2, 2, 3, 4, 3}));
    const char kLower[] = "int main() {\n\n  int a = share(1);\n  a++;\n  return a;\n}\n";
    EXPECT_EQ(stops(kLower, {3}, StepMode::into), (Lines{3, 2, 3, 4, 4, 5}));
    EXPECT_EQ(stops(kLower, {3}, StepMode::over), (Lines{3, 4, 5}));
}

TEST_F(Debug, ConstructorsWithoutALineDoNotStop) {
    const char* script = "class A { int v = 3; }\nint main() {\n A a;\n return a.v;\n}";
    EXPECT_EQ(stops(script, {3}, StepMode::over), (Lines{3, 4}));
}

TEST_F(Debug, BuildingEndsASuspendedRun) {
    const Lines lines = {3};
    const char* script =
        "class A { ~A() { Print(\"gone \"); } }\nint main() {\n A a; A b;\n return 0; }";
    EXPECT_TRUE(run(script, &lines));
    EXPECT_EQ(session().compile(engine(), "int main() { return 1; }"), 1);
    EXPECT_NE(context()->GetState(), asEXECUTION_SUSPENDED);
    EXPECT_FALSE(resume(StepMode::run, nullptr));
}

TEST_F(Debug, AbandoningLetsGoOfTheObjects) {
    const Lines lines = {4};
    EXPECT_TRUE(
        run("class A { ~A() { Print(\"gone\"); } }\nint main() {\n A a;\n return 0; }", &lines));
    session().abandon(context());
    EXPECT_EQ(console.output, "gone");
    EXPECT_EQ(context()->GetState(), asEXECUTION_UNINITIALIZED);
}

TEST_F(Debug, AnAbandonedEndlessDestructorIsEnded) {
    const Lines lines = {4};
    useClock(&fakeClock);
    EXPECT_TRUE(
        run("class A { ~A() { while (true) {} } }\nint main() {\n A a;\n return 0; }", &lines));
    useClock(nullptr);
    session().setMaxRunTime(10);
    session().requestStop();
    session().abandon(context());
    EXPECT_EQ(context()->GetState(), asEXECUTION_UNINITIALIZED);
}

TEST_F(Debug, BreakpointsOfAFinishedRunDoNotReachTheNext) {
    EXPECT_EQ(stops(kLoop, {4}, StepMode::run).size(), 3u);
    asIScriptModule* module = engine()->GetModule("main");
    ASSERT_EQ(context()->Prepare(module->GetFunctionByName("main")), 0);
    EXPECT_EQ(session().run(context()).result, asEXECUTION_FINISHED);
}

TEST_F(Debug, AHostsOwnSuspensionIsReturnedAsItIs) {
    engine()->RegisterGlobalFunction(
        "void pause()", asFUNCTION(+[] { asGetActiveContext()->Suspend(); }), asCALL_CDECL);
    EXPECT_TRUE(run("int main() { pause(); Print(\"resumed\"); return 0; }"));
    EXPECT_EQ(context()->GetState(), asEXECUTION_SUSPENDED);
    EXPECT_EQ(outcome().line, 0);
    EXPECT_TRUE(resume(StepMode::run, nullptr));
    EXPECT_EQ(console.output, "resumed");
}

TEST_F(Debug, AContinuationHasItsOwnTime) {
    useClock(&fakeClock);
    const Lines lines = {3, 4};
    EXPECT_TRUE(
        run("int main() {\n SetMaxRunTime(500);\n int a = 1;\n a = 2;\n return a; }", &lines));
    fakeClock.advance(100000);
    EXPECT_TRUE(resume(StepMode::run, &lines));
    EXPECT_EQ(outcome().line, 4);
    EXPECT_EQ(session().limitBegan(), fakeClock.tick());
}

}  // namespace
}  // namespace korvant::test
