// When runs must end, and that they do.
#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "host/engine/memory_budget.h"
#include "support/own_time.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

using std::chrono::milliseconds;
using Steady = std::chrono::steady_clock;

class Limit : public ScriptFixture {
  protected:
    RunFailure::Kind kind() { return session().lastFailure().kind; }
    /// Ends a run that does not end by itself; far above any of its limits.
    static constexpr milliseconds kPatience{20000};

    milliseconds timeOf(const std::string& text) {
        const auto began = Steady::now();
        EXPECT_FALSE(run(text)) << text;
        return std::chrono::duration_cast<milliseconds>(Steady::now() - began);
    }
};

struct Endless {
    const char* name;
    const char* script;
};

class EndlessScript : public Limit, public ::testing::WithParamInterface<Endless> {};

TEST_P(EndlessScript, IsEndedByItsLimit) {
    const auto spent = timeOf(GetParam().script);
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut) << session().lastFailure().text << messages();
    EXPECT_GE(spent, milliseconds(90));
    EXPECT_LT(spent, milliseconds(5000));
    EXPECT_EQ(value("1"), "1");
}

TEST_P(EndlessScript, IsEndedByItsLimitWithBreakpointsSet) {
    const std::vector<std::int32_t> elsewhere = {1000};
    EXPECT_FALSE(run(GetParam().script, &elsewhere));
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
}

INSTANTIATE_TEST_SUITE_P(
    AllPlaces, EndlessScript,
    ::testing::Values(
        Endless{"Main", "int main() { SetMaxRunTime(100); while (true) {} return 0; }"},
        Endless{"Calls",
                "void f() {} int main() { SetMaxRunTime(100); while (true) f(); return 0; }"},
        Endless{"InsideTry",
                "int main() { SetMaxRunTime(100); while (true) { try { while (true) {} } catch {} "
                "} return 0; }"},
        Endless{"Destructor",
                "class A { ~A() { while (true) {} } }\n"
                "int main() { SetMaxRunTime(100); { A a; } Print(\"no\"); return 0; }"},
        Endless{"ManyDestructors",
                "class A { ~A() { while (true) {} } }\n"
                "int main() { SetMaxRunTime(100); while (true) { A a; } return 0; }"},
        Endless{"Comparator",
                "bool less(const int &in a, const int &in b) { while (true) {} return a < b; }\n"
                "int main() { SetMaxRunTime(100); int[] a = {3, 2, 1}; a.sort(less); return 0; }"},
        Endless{
            "ManyComparators",
            "class A { int v; int opCmp(const A &in o) { while (true) {} return 0; } }\n"
            "int main() { SetMaxRunTime(100); A[] a(10); while (true) a.sortAsc(); return 0; }"},
        Endless{"Constructor",
                "class A { int v = endless(); }\n"
                "int endless() { while (true) {} return 1; }\n"
                "int main() { SetMaxRunTime(100); A a; return 0; }"},
        Endless{"Native", "int main() { SetMaxRunTime(100); while (true) Print(\"\"); return 0; }"},
        Endless{"Bessel", "int main() { SetMaxRunTime(100); jn(2147483647, 3e9); return 0; }"},
        Endless{"SelfCalls",
                "void f(int n) { if (n > 0) { f(n - 1); f(n - 1); } }\n"
                "int main() { SetMaxRunTime(100); f(1000); return 0; }"}),
    [](const auto& entry) { return entry.param.name; });

TEST_F(Limit, AGlobalThatNeverEndsIsABuildFailure) {
    useClock(&fakeClock);
    const Meanwhile later(*engine(), [&] { fakeClock.advance(10001); });
    EXPECT_FALSE(
        run("int f() { begun(); while (true) {} return 1; } int g = f();\n"
            "int main() { return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::build);
    EXPECT_EQ(session().buildMessages().all().back().plain,
              "The script was aborted before it could finish. Probably it timed out.");
}

TEST_F(Limit, AnExceptionInAGlobalIsABuildFailure) {
    EXPECT_FALSE(run("int zero = 0; int g = 1 / zero;\nint main() { return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::build);
    EXPECT_NE(messages().find("Failed to initialize global variable 'g' at line 1"),
              std::string::npos);
}

TEST_F(Limit, TheUsualLimitIsTenSecondsFromTheStart) {
    useClock(&fakeClock);
    const Meanwhile later(*engine(), [&] {
        fakeClock.advance(9999);
        std::this_thread::sleep_for(milliseconds(50));  // nothing is to happen here
        fakeClock.advance(2);
    });
    EXPECT_FALSE(run("int main() { begun(); while (true) {} return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
    EXPECT_EQ(fakeClock.monotonic(), 1000u + 10001u);
}

TEST_F(Limit, ALimitOfNothingEndsOnceTheTickMovesOn) {
    useClock(&fakeClock);
    const char* script =
        "int main() { SetMaxRunTime(0); int i = 0; while (i < 100) i++; "
        "Print(\"same tick\"); begun(); while (true) {} return 0; }";
    const Meanwhile later(*engine(), [&] { fakeClock.advance(1); });
    EXPECT_FALSE(run(script));
    EXPECT_EQ(console.output, "same tick");
}

TEST_F(Limit, AnEndlessScriptEndsSoonAfterItsLimit) {
    const auto began = OwnTime::now();
    timeOf("int main() { SetMaxRunTime(300); while (true) {} return 0; }");
    EXPECT_LT(OwnTime::now() - began, milliseconds(300 + 150));
}

TEST_F(Limit, WaitingForTheUserDoesNotCount) {
    useClock(&fakeClock);
    frontend.meanwhile = [&] {
        EXPECT_TRUE(session().interacting());
        fakeClock.advance(60000);
        std::this_thread::sleep_for(milliseconds(60));
    };
    EXPECT_EQ(output("Information(\"?\"); int i = 0; while (i < 1000) i++; Print(\"on\");"), "on");
    EXPECT_EQ(session().limitBegan(), fakeClock.tick());
    EXPECT_FALSE(session().interacting());
}

TEST_F(Limit, WaitsInsideWaitsCountAsOne) {
    session().beginInteraction();
    { const InteractionScope inner; }
    EXPECT_TRUE(session().interacting());
    session().endInteraction();
    EXPECT_FALSE(session().interacting());
    session().endInteraction();
    EXPECT_FALSE(session().interacting());
}

TEST_F(Limit, TheInteractingFlagDoesNotOutliveItsRun) {
    engine()->RegisterGlobalFunction(
        "void stay()", asFUNCTION(+[] { moduleSession().beginInteraction(); }), asCALL_CDECL);
    EXPECT_TRUE(run("int main() { stay(); return 0; }"));
    EXPECT_FALSE(session().interacting());
}

TEST_F(Limit, AHardCeilingCountsWaitsToo) {
    useClock(&fakeClock);
    Limits limits;
    limits.hardCeilingMs = 30000;
    useLimits(limits);
    frontend.meanwhile = [&] { fakeClock.advance(20000); };
    EXPECT_FALSE(run("int main() { while (true) Information(\"again\"); return 0; }"));
    EXPECT_EQ(frontend.boxes.size(), 3u) << "two waits and the report";
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
}

TEST_F(Limit, AHardCeilingAddsUpWhatRunsBetweenSuspensions) {
    static FakeClock* clock;
    clock = &fakeClock;
    useClock(&fakeClock);
    engine()->RegisterGlobalFunction("void work()", asFUNCTION(+[] { clock->advance(400); }),
                                     asCALL_CDECL);
    Limits limits;
    limits.hardCeilingMs = 1000;
    useLimits(limits);
    const std::vector<std::int32_t> lines = {3};
    EXPECT_TRUE(
        run("int main() {\n while (true) {\n work();\n int i = 0;\n }\n return 0; }", &lines));
    for (int execution = 1; execution <= 2; ++execution) {
        fakeClock.advance(100'000);  // suspended: nobody counts
        EXPECT_TRUE(resume(StepMode::run, &lines)) << execution;
        EXPECT_EQ(outcome().line, 3) << execution;
    }
    // The breakpoint may come before somebody looks at the clock; going on then ends at once.
    if (resume(StepMode::run, &lines)) {
        EXPECT_FALSE(resume(StepMode::run, &lines));
    }
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
}

// The tick counts to 2^32 and is compared as a signed number.
TEST_F(Limit, TheTickWrapsBelowARun) {
    struct Case {
        const char* name;
        std::uint32_t start;
        bool endsAtOnce;
    };
    for (const Case& wrap :
         {Case{"far from it", 1000, false}, Case{"deadline beyond 2^31", 0x7FFFFFFFu - 5000, true},
          Case{"behind 2^31", 0x80000000u + 5000, false},
          Case{"deadline beyond 2^32", 0xFFFFFFFFu - 5000, false}}) {
        useClock(&fakeClock);
        fakeClock.setTick(wrap.start);
        const bool ran = run("int main() { int i = 0; while (i < 100000) i++; return 0; }");
        EXPECT_EQ(ran, !wrap.endsAtOnce) << wrap.name;
    }
}

TEST_F(Limit, ADeadlineThatTheWrappedTickNeverReachesEndsAllTheSame) {
    useClock(&fakeClock);
    fakeClock.setTick(0x7FFFFFFFu - 10005);
    // The tick is negative then, and stays below the deadline for weeks.
    const Meanwhile later(*engine(), [&] { fakeClock.advance(10007); });
    EXPECT_FALSE(run("int main() { begun(); while (true) {} return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
}

TEST_F(Limit, AStopRequestEndsEveryLoop) {
    for (const char* script :
         {"int main() { begun(); while (true) {} return 0; }",
          "class A { ~A() { begun(); while (true) {} } } int main() { A a; return 0; }",
          "int f() { begun(); while (true) {} return 1; } int g = f(); int main() { return 0; }"}) {
        frontend.boxes.clear();
        {
            const Meanwhile later(*engine(), [&] { session().requestStop(); });
            EXPECT_FALSE(run(script)) << script;
        }
        ASSERT_FALSE(frontend.boxes.empty()) << script;
        EXPECT_EQ(frontend.boxes[0].text, "The Script is stopped.");
        EXPECT_EQ(frontend.boxes[0].style, box_style::kIconWarning);
        EXPECT_FALSE(session().stopRequested());
    }
}

TEST_F(Limit, AStopIsToldBeforeTheAbortion) {
    engine()->RegisterGlobalFunction(
        "void stop()", asFUNCTION(+[] { moduleSession().requestStop(); }), asCALL_CDECL);
    EXPECT_FALSE(run("int main() { stop(); while (true) {} return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::stopped);
    EXPECT_EQ(boxes(),
              "The Script is stopped.\nThe script was aborted before it could finish. "
              "Probably it timed out.\n\n");
}

TEST_F(Limit, AStopReachesThroughTheInteractingFlag) {
    engine()->RegisterGlobalFunction("void stop()", asFUNCTION(+[] {
                                         moduleSession().beginInteraction();
                                         moduleSession().requestStop();
                                     }),
                                     asCALL_CDECL);
    EXPECT_FALSE(run("int main() { stop(); while (true) {} return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::stopped);
}

TEST_F(Limit, AnOldStopRequestDoesNotReachTheNextRun) {
    session().requestStop();
    EXPECT_EQ(output("Print(\"runs\");"), "runs");
}

TEST_F(Limit, DestructorsOfTheReplacedModuleAreBounded) {
    useClock(&fakeClock);
    EXPECT_TRUE(run("class A { ~A() { while (true) {} } } A[] all(50);\nint main() { return 0; }"));
    std::thread later([&] {
        for (int i = 0; i < 8; ++i) {
            std::this_thread::sleep_for(milliseconds(10));
            fakeClock.advance(500);
        }
    });
    EXPECT_EQ(output("Print(\"next\");"), "next");
    later.join();
}

TEST_F(Limit, ReleasingAnEngineWithEndlessDestructorsIsBounded) {
    EXPECT_TRUE(
        run("class A { ~A() { while (true) {} } } A[] all(50); A@ h = A();\n"
            "int main() { return 0; }"));
    const auto began = Steady::now();
    session().release(engine());
    EXPECT_LT(Steady::now() - began, milliseconds(8000));
}

// Discarding a module starts a full collection, which grows with the square of what lives.
TEST_F(Limit, ALongListDoesNotHoldTheNextBuild) {
    EXPECT_TRUE(
        run("class Node { Node@ next; } Node@ all;\n"
            "int main() { for (int i = 0; i < 20000; i++) { Node n; @n.next = all; @all = n; } "
            "return 0; }"));
    const auto began = Steady::now();
    EXPECT_EQ(value("1"), "1");
    EXPECT_LT(Steady::now() - began, milliseconds(4000));
    EXPECT_EQ(engine()->GetEngineProperty(asEP_AUTO_GARBAGE_COLLECT), 1u);
}

// An engine with its assertions ends the process at a million objects of a class.
TEST_F(Limit, ObjectsWithoutEndAreAnException) {
    useClock(&fakeClock);  // memory is what ends them
    for (const char* const script :
         {"final class A {} int main() { A@[] all; all.reserve(2000000); "
          "while (true) all.insertLast(A()); return 0; }",
          "class A {} class B { A[] some; B() { some.resize(2000000); } }\n"
          "int main() { B b; return 0; }",
          "int main() { int[][] all(20000000); return 0; }"}) {
        EXPECT_FALSE(run(script)) << script;
        EXPECT_THAT(session().lastFailure().text, ::testing::HasSubstr("desc: Out of memory"));
    }
    EXPECT_TRUE(run("int main() { int[] all(2000000); int[][] more(2000000); return 0; }"));
}

// A 32-bit host has two or three gigabytes for everything.
TEST_F(Limit, DefaultsLeaveAHostOfTwoGigabytesItsRoom) {
    EXPECT_EQ(scaledMebibytes(512, 4), std::size_t{128} << 20);
    EXPECT_EQ(scaledMebibytes(512, 8), std::size_t{512} << 20);
    EXPECT_EQ(session().limits().runBytes, scaledMebibytes(512, sizeof(void*)));
    EXPECT_EQ(session().limits().stringBytes, scaledMebibytes(256, sizeof(void*)));
    EXPECT_EQ(MemoryBudget().limit, Limits().runBytes);
    EXPECT_EQ(MemoryBudget().stringLimit, Limits().stringBytes);
}

TEST_F(Limit, DestructorsInTheCollectorBelongToTheRun) {
    EXPECT_FALSE(
        run("class A { A@ me; ~A() { while (true) {} } }\n"
            "int main() { SetMaxRunTime(100);\n"
            "for (int i = 0; i < 1000; i++) { A a; @a.me = a; } return 0; }"));
    EXPECT_EQ(kind(), RunFailure::Kind::timeOut);
}

TEST_F(Limit, AContextOfTheHostsOwnLoopIsOnlyAskedToEnd) {
    EXPECT_EQ(session().compile(engine(), "int n = 0; void f() { while (true) n++; }"), 1);
    session().setMaxRunTime(50);
    context()->Prepare(engine()->GetModule("main")->GetFunctionByName("f"));
    EXPECT_EQ(context()->Execute(), asEXECUTION_ABORTED);
    session().setMaxRunTime(10000);
    EXPECT_EQ(value("2"), "2");
}

}  // namespace
}  // namespace korvant::test
