// Runs under a debugger whose answers are code.
#include <gmock/gmock.h>

#include <chrono>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "debug/debug_fixture.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;

class Session : public DebugFixture {};

constexpr char kCounting[] =
    "int main() {\n    int n = 0; begun();\n    while (n < 1000000000)\n        n++;\n    return "
    "n;\n}\n";

TEST_F(Session, LimitsStandStillWhileTheScriptDoes) {
    useClock(&fakeClock);
    breakAt(3);
    atStop = [&](const StopInfo&) { fakeClock.advance(3600'000); };
    EXPECT_FALSE(
        start("int main() {\n    int n = 1;\n    n = 2;\n    n = 3;\n    return 0;\n}\n").failed());
    EXPECT_EQ(stops.size(), 1u);
}

TEST_F(Session, PausesAnEndlessLoopWithinATenthOfASecond) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point asked;
    Clock::time_point stopped;
    atStop = [&](const StopInfo&) {
        stopped = Clock::now();
        debug.stopRun();
    };
    {
        const Meanwhile user(*engine(), [&] {
            asked = Clock::now();
            debug.requestPause();
        });
        EXPECT_TRUE(start(kCounting).failed());
    }
    ASSERT_EQ(stops.size(), 1u);
    EXPECT_EQ(stops[0].reason, StopReason::pause);
    EXPECT_LT(stopped - asked, std::chrono::milliseconds(1000)) << "100 ms on a free machine";
}

TEST_F(Session, BreakpointsMayChangeWhileTheScriptRuns) {
    const Meanwhile user(*engine(), [&] { debug.requestAttention(); });
    atStop = [&](const StopInfo&) { debug.stopRun(); };
    attentionAct = [&] {
        breakAt(4);
        debug.apply();
    };
    EXPECT_TRUE(start(kCounting).failed());
    ASSERT_EQ(stops.size(), 1u);
    EXPECT_EQ(stops[0].place.line, 4);
}

TEST_F(Session, WhoAsksForAPauseDoesNotEndAContextOfTheHosts) {
    ASSERT_TRUE(debug.attach());
    const std::string text =
        "int main() { begun(); int n = 0; while (n < 2000000) n++; return 0; }";
    asIScriptContext* const own = engine()->CreateContext();
    {
        const Meanwhile user(*engine(), [&] { debug.requestPause(); });
        EXPECT_FALSE(session().runApplication(engine(), own, text, nullptr).failed());
    }
    own->Release();
    EXPECT_TRUE(stops.empty());
}

TEST_F(Session, AHostsOwnRunIsDebuggedWhileAttached) {
    ASSERT_TRUE(debug.attach());
    breakAt(2);
    EXPECT_TRUE(run("int main() {\n    int n = 1;\n    return n;\n}\n"));
    EXPECT_EQ(stops.size(), 1u);
    debug.detach();
    EXPECT_TRUE(run("int main() {\n    int n = 1;\n    return n;\n}\n"));
    EXPECT_EQ(stops.size(), 1u);
}

TEST_F(Session, AStopLeavesAndComesBackWhereItMaySuspend) {
    debug.setStyle(StopStyle::suspend);
    breakAt(2);
    EXPECT_TRUE(
        start("int main() {\n    int n = 1;\n    n = 2;\n    return n;\n}\n").stoppedAtLine());
    EXPECT_EQ(debug.state(), DebugState::suspended);
    EXPECT_TRUE(debug.stepOver());
    EXPECT_EQ(debug.state(), DebugState::suspended);
    EXPECT_EQ(debug.stop().place.line, 3);
    EXPECT_EQ(value("n"), "1");
    EXPECT_TRUE(debug.goOn());
    EXPECT_EQ(debug.state(), DebugState::idle);
    EXPECT_FALSE(debug.goOn());
}

/// The window's way: runs with its lines, which leave at each stop.
class Suspending : public Session {
  protected:
    Suspending() {
        debug.setStyle(StopStyle::suspend);
        debug.attach();
    }
    /// Values of `expression` at each stop, suspended or held.
    std::vector<std::string> valuesAt(const std::string& script, std::vector<std::int32_t> lines,
                                      const std::string& expression, StepMode mode) {
        std::vector<std::string> seen;
        atStop = [&](const StopInfo& info) {
            const std::string place = info.place.source + std::to_string(info.place.line);
            seen.push_back(place + (debug.state() == DebugState::held ? "! " : " ") +
                           value(expression));
        };
        bool ran = run(script, &lines);
        while (ran && outcome().line != 0 && seen.size() < 30) ran = resume(mode, &lines);
        EXPECT_TRUE(ran) << messages();
        return seen;
    }
};

constexpr char kBranch[] =
    "int main() {\n    int a;\n    int b = 1;\n    if (b == 2)\n        a = 5;\n    b = 2;\n"
    "    if (b == 2)\n        a = 7;\n    return a;\n}\n";

TEST_F(Suspending, WhatABranchMaySetIsNotYetSetUntilThen) {
    const std::string unset = "error: \"a\" is not yet set.";
    EXPECT_THAT(valuesAt(kBranch, {6, 9}, "a", StepMode::run), ElementsAre("6 " + unset, "9 7"));
    EXPECT_THAT(
        valuesAt(kBranch, {3}, "a", StepMode::into),
        ElementsAre("3 " + unset, "4 " + unset, "6 " + unset, "7 " + unset, "8 " + unset, "9 7"));
}

TEST_F(Suspending, WhatALoopHasSetStaysSet) {
    constexpr char kSetter[] =
        "int main() {\n    int b = 0;\n    int a;\n    for (int i = 0; i < 3; i++)\n"
        "        if (i >= b)\n            a = i;\n    return a;\n}\n";
    EXPECT_THAT(valuesAt(kSetter, {6}, "a", StepMode::run),
                ElementsAre("6 error: \"a\" is not yet set.", "6 0", "6 1"));
}

TEST_F(Suspending, LinesStopInsideCallsOfTheLibraryAndWhileGlobalsAreMade) {
    constexpr char kSorting[] =
        "int made = first();\nint first() {\n    return 4;\n}\n"
        "class Rock {\n    int m;\n    int opCmp(const Rock &in o) {\n        return m - o.m;\n"
        "    }\n}\nint main() {\n    Rock[] rocks(2);\n    rocks.sortAsc();\n    return 0;\n}\n";
    EXPECT_THAT(valuesAt(kSorting, {3, 8, 13}, "1 + 1", StepMode::run),
                ElementsAre("3! 2", "13 2", "8! 2"));
    EXPECT_THAT(valuesAt(kSorting, {13}, "1 + 1", StepMode::into), ElementsAre("13 2", "8! 2"));
}

TEST_F(Suspending, ABreakpointBelongsToItsSource) {
    shareLibrary("other.as", "int twice(int n) {\n    int r = n;\n    r += n;\n    return r;\n}\n",
                 "twice");
    constexpr char kScript[] = "int main() {\n    int a = share(1);\n    return a;\n}\n";
    EXPECT_THAT(valuesAt(kScript, {2, 3, 4}, "1", StepMode::run), ElementsAre("2 1", "3 1"));
    BreakpointWish wish;
    wish.place.line = 3;
    wish.logText = "{r}";
    BreakpointWish plain;
    plain.place.line = 4;
    debug.breakpoints().setLines("other.as", {wish, plain});
    EXPECT_THAT(valuesAt(kScript, {}, "r", StepMode::run), ElementsAre("other.as4 2"));
    EXPECT_EQ(output, "1\n");
}

TEST_F(Suspending, StepsTellLinesOfTwoSourcesApart) {
    shareLibrary("other.as", "int twice(int n) {\n    int r = n;\n    r += n;\n    return r;\n}\n",
                 "twice");
    constexpr char kScript[] =
        "int main() {\n\n    int a = share(1);\n    a++;\n    return a;\n}\n";
    EXPECT_THAT(valuesAt(kScript, {3}, "1", StepMode::into),
                ElementsAre("3 1", "other.as2 1", "other.as3 1", "other.as4 1", "4 1", "5 1"));
    EXPECT_THAT(valuesAt(kScript, {3}, "1", StepMode::over), ElementsAre("3 1", "4 1", "5 1"));
    BreakpointWish wish;
    wish.place.line = 4;
    debug.breakpoints().setLines("other.as", {wish});
    EXPECT_THAT(valuesAt(kScript, {}, "1", StepMode::over),
                ElementsAre("other.as4 1", "4 1", "5 1"));
}

/// For who has no way to wait inside a run.
TEST_F(Suspending, NothingIsHeldWhereNobodyWantsThat) {
    debug.setStyle(StopStyle::suspendOnly);
    debug.rules() = StopRules::usual();
    shareLibrary("other.as", "int twice(int n) {\n    int r = n;\n    return r;\n}\n", "twice");
    BreakpointWish wish;
    wish.place.line = 3;
    debug.breakpoints().setLines("other.as", {wish});
    constexpr char kScript[] =
        "int made = first();\nint first() {\n    return 4;\n}\n"
        "bool less(const int &in a, const int &in b) {\n    return share(a) < b;\n}\n"
        "int main() {\n    int a;\n    int[] v = {2, 1};\n    v.sort(less);\n"
        "    if (v[0] == 2) a = 1;\n    a = share(v[0]);\n    return 1 / (a - 1);\n}\n";
    std::vector<std::string> seen;
    atStop = [&](const StopInfo& info) {
        EXPECT_EQ(debug.state(), DebugState::suspended);
        NamedValue a;
        const bool unset = debug.names(1).findLocal("a", a) && a.value.unset;
        seen.push_back(info.place.source + std::to_string(info.place.line) + (unset ? "?" : ""));
    };
    const std::vector<std::int32_t> lines = {3, 6, 11};
    bool ran = run(kScript, &lines);
    while (ran && outcome().line != 0) ran = resume(StepMode::run, &lines);
    EXPECT_FALSE(ran);
    EXPECT_THAT(seen, ElementsAre("11", "other.as3?"));
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::exception);
}

/// A step ends at a line whose breakpoint does not stop.
TEST_F(Suspending, StepsEndAtLinesThatOnlyPrint) {
    BreakpointWish wish;
    wish.place.line = 3;
    wish.logText = "here";
    debug.breakpoints().setLines({}, {wish});
    const char kScript[] = "int main() {\n    int a = 1;\n    a = 2;\n    return a;\n}\n";
    EXPECT_THAT(valuesAt(kScript, {2, 3}, "1", StepMode::over), ElementsAre("2 1", "3 1", "4 1"));
    EXPECT_EQ(output, "here\n");
}

TEST_F(Session, RestartsFromInsideAStop) {
    breakAt(2);
    atStop = [&](const StopInfo&) {
        if (stops.size() == 1) {
            EXPECT_TRUE(debug.restart());
        }
    };
    EXPECT_FALSE(start("int main() {\n    int n = 1;\n    return n;\n}\n").failed());
    EXPECT_EQ(stops.size(), 2u);
    EXPECT_EQ(ended, 1);
}

TEST_F(Session, ATimeOutStopsOnceBeforeTheEnd) {
    debug.rules() = StopRules::usual();
    atStop = [&](const StopInfo&) { EXPECT_NE(value("n"), "0"); };
    EXPECT_TRUE(start("int main() {\n    SetMaxRunTime(100);\n    int n = 1;\n    for (;;)\n"
                      "        n++;\n    return 0;\n}\n")
                    .failed());
    ASSERT_EQ(stops.size(), 1u);
    EXPECT_EQ(stops[0].reason, StopReason::timeOut);
    const RunFailure& failure = session().lastFailure();
    EXPECT_EQ(failure.kind, RunFailure::Kind::timeOut);
    EXPECT_EQ(failure.line, stops[0].place.line);
    EXPECT_EQ(failure.stack.at(0).line, stops[0].place.line);
}

TEST_F(Session, TheStackOfAFailureCanBeLookedAtAfterwards) {
    EXPECT_TRUE(
        start("int f(int zero) {\n    return 1 / zero;\n}\nint main() {\n    return f(0);\n}\n")
            .failed());
    EXPECT_EQ(debug.state(), DebugState::ended);
    ASSERT_EQ(debug.frames().count(), 2u);
    EXPECT_EQ(value("zero"), "0");
    EXPECT_EQ(value("zero + 1"), "1");
    const auto& stack = session().lastFailure().stack;
    ASSERT_EQ(stack.size(), 2u);
    EXPECT_EQ(stack[1].function, "int main()");
    EXPECT_EQ(stack[1].line, 5);
}

TEST_F(Session, NothingThatIsLookedAtKeepsTheScriptBusy) {
    breakAt(4);
    atStop = [&](const StopInfo&) {
        EXPECT_EQ(value("stone.weigh()"), "3");
        EXPECT_EQ(value("endless()", EvaluationPurpose::watch),
                  "error: This takes longer than 300 ms.");
        EXPECT_NE(value("Question(\"?\")").find("Nothing can be asked"), std::string::npos);
        EXPECT_NE(value("stone.weigh()", EvaluationPurpose::hover).find("could change"),
                  std::string::npos);
        EXPECT_EQ(value("stone.weight == 3 && n != 2", EvaluationPurpose::hover), "true");
        EXPECT_NE(value("hoard()").find("Out of memory"), std::string::npos);
        EXPECT_NE(value("n / (n - n)").find("Divide by zero"), std::string::npos);
    };
    EXPECT_FALSE(
        start("int main() {\n    Stone stone;\n    int n = 1;\n    n++;\n    return 0;\n}\n"
              "class Stone { int weight = 3; int weigh() { return weight; } }\n"
              "int endless() { for (;;) {} return 0; }\n"
              "int hoard() { string s = \"0123456789\"; for (;;) s += s; return 0; }\n")
            .failed());
    EXPECT_EQ(stops.size(), 1u);
    EXPECT_TRUE(frontend.boxes.empty());
}

#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(Session, TenThousandStopsLeaveNothingBehind) {
    breakAt(5, "n >= 0");
    std::size_t early = 0;
    std::size_t late = 0;
    atStop = [&](const StopInfo&) {
        const ValueNode locals = debug.scope(ValueScope::locals, 0);
        EXPECT_EQ(debug.values().children(locals).size(), 3u);
        EXPECT_EQ(value("n + words.length()", EvaluationPurpose::watch).empty(), false);
        if (stops.size() == 2000) early = mallinfo2().uordblks;
        if (stops.size() == 10000) late = mallinfo2().uordblks;
        stops.back() = {};
    };
    stops.reserve(10001);
    EXPECT_FALSE(start("int main() {\n    string[] words = {\"a\"};\n    int n = 0;\n"
                       "    for (int i = 0; i < 10000; i++)\n        n++;\n    return 0;\n}\n")
                     .failed());
    EXPECT_EQ(stops.size(), 10000u);
    EXPECT_LT(late, early + (64u << 10));
}
#endif

/// Of each it is noted at a stop whether it has been set: that may not end the script by its limit.
TEST_F(Session, AThousandVariablesThatABranchSetsTakeNoTimeOfTheRun) {
    std::string declared, set;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "a" + std::to_string(i);
        declared += "int " + name + "; ";
        set += "if (b == 0) " + name + " = 1;\nf(" + name + ");\n";
    }
    breakAt(2004);
    atStop = [&](const StopInfo&) {
        EXPECT_EQ(value("a5 + a999"), "2");
        EXPECT_EQ(value("c"), "error: \"c\" is not yet set.");
    };
    start("void f(int x) {}\nint main() { SetMaxRunTime(5000); int b = 0;\nint c; " + declared +
          "\n" + set + "if (b == 1) c = 1;\nreturn c; }");
    EXPECT_EQ(stops.size(), 1u);
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::none) << messages();
}

TEST_F(Session, ArraysAreReadByPages) {
    breakAt(3);
    atStop = [&](const StopInfo&) {
        const ValueNode locals = debug.scope(ValueScope::locals, 0);
        const std::vector<DebugValue> values = debug.values().children(locals);
        ASSERT_EQ(values.size(), 1u);
        EXPECT_EQ(values[0].indexed, 1000000u);
        const auto page = debug.values().children(values[0].node, 999998, 10);
        ASSERT_EQ(page.size(), 2u);
        EXPECT_EQ(page[1].name, "[999999]");
        EXPECT_EQ(page[1].evaluateName, "big[999999]");
        const ShownValue set = debug.setChild(values[0].node, "[3]", 0, "40 + 2");
        EXPECT_EQ(set.value.value, "42") << set.error;
        EXPECT_EQ(value("big[3]"), "42");
    };
    EXPECT_FALSE(start("int main() {\n    int[] big(1000000);\n    return 0;\n}\n").failed());
    EXPECT_EQ(stops.size(), 1u);
}

/// What a client still holds of values that an expression has let go of shows what is there now.
TEST_F(Session, NodesFollowWhatIsSet) {
    breakAt(12);
    atStop = [&](const StopInfo&) {
        ValueTree& tree = debug.values();
        const auto textOf = [&](ValueNode node) {
            std::string all;
            for (const DebugValue& child : tree.children(node))
                all += child.name + "=" + child.value + " ";
            return all;
        };
        const auto under = [&](ValueNode node, const std::string& name) {
            DebugValue found;
            EXPECT_TRUE(tree.child(node, name, found)) << name;
            return found.node;
        };
        const ValueNode locals = debug.scope(ValueScope::locals, 0);
        const ValueNode list = under(locals, "list");
        const ValueNode first = under(list, "[0]");
        const ValueNode rows = under(first, "rows");
        const ValueNode last = under(locals, "last");
        const ValueNode watched =
            debug.show(0, "list[1].rows", EvaluationPurpose::watch).value.node;
        // Without a frame, as a client asks of global variables.
        const ValueNode global = debug.show(9, "all[0].rows", EvaluationPurpose::watch).value.node;
        EXPECT_EQ(textOf(global), "[0]=1 [1]=2 ");
        EXPECT_EQ(debug.show(9, "drop(all)", EvaluationPurpose::console).error, "");
        EXPECT_EQ(textOf(global), "");
        EXPECT_EQ(textOf(rows), "[0]=1 [1]=2 ");
        EXPECT_EQ(textOf(watched), "[0]=1 [1]=2 ");
        EXPECT_EQ(debug.setChild(first, "rows", 0, "{7}").error, "");
        EXPECT_EQ(textOf(rows), "[0]=7 ");
        EXPECT_TRUE(debug.show(0, "list[1].rows.resize(3)", EvaluationPurpose::console).isVoid);
        EXPECT_EQ(textOf(watched), "[0]=1 [1]=2 [2]=0 ");
        EXPECT_TRUE(debug.show(0, "drop(list)", EvaluationPurpose::console).isVoid);
        EXPECT_EQ(tree.children(list).size(), 0u);
        EXPECT_EQ(textOf(rows), "") << "of an element that is gone";
        EXPECT_EQ(textOf(watched), "");
        EXPECT_EQ(tree.children(last).size(), 1u);
        EXPECT_EQ(debug.setChild(locals, "last", 0, "null").error, "");
        EXPECT_EQ(textOf(last), "");
        EXPECT_EQ(debug.setChild(locals, "last", 0, "Hole()").error, "");
        EXPECT_EQ(textOf(under(last, "rows")), "[0]=1 [1]=2 ");
    };
    EXPECT_FALSE(start("class Hole {\n    int[] rows = {1, 2};\n}\nHole@[] all = {Hole()};\n"
                       "void drop(Hole@[]& list) {\n    list.resize(0);\n}\n"
                       "int main() {\n    Hole@[] list = {Hole(), Hole()};\n"
                       "    Hole@ last = Hole();\n    int n = 0;\n    return n;\n}\n")
                     .failed())
        << messages();
    EXPECT_EQ(stops.size(), 1u);
}

/// The value is there before the place that it goes to is looked for.
TEST_F(Session, WhatIsSetMayGoWithTheValue) {
    breakAt(13);
    atStop = [&](const StopInfo&) {
        const auto set = [&](const char* target, const char* value) {
            const ShownValue shown = debug.setExpression(0, target, value, {});
            return shown.error.empty() ? shown.value.value : shown.error;
        };
        EXPECT_EQ(set("list[0].rows[1]", "twice(21)"), "42");
        EXPECT_EQ(set("list[0].next", "list[1]"), "Hole {rows = {1, 2}, next = null, f = null}");
        EXPECT_EQ(set("list[1].next", "make()"), "Hole {rows = {7}, next = null, f = null}");
        EXPECT_EQ(set("list[1].rows", "make().rows"), "{7}");
        const std::string refused = "Only a variable can be set to this where it calls a function.";
        EXPECT_EQ(set("list[1].rows", "{twice(1)}"), refused);
        EXPECT_EQ(set("list[1].f", "given()"), refused);
        EXPECT_EQ(set("list[1].rows[0]", "drop(list)"), "\"list[1].rows[0]\" is gone.");
        EXPECT_EQ(value("list.length()"), "0");
    };
    EXPECT_FALSE(start("class Hole { int[] rows = {1, 2}; Hole@ next; F@ f; }\n"
                       "funcdef int F(int);\nint twice(int n) { return 2 * n; }\n"
                       "F@ given() { return twice; }\n"
                       "int drop(Hole@[]& list) { list.resize(0); return 9; }\n"
                       "Hole@ make() {\n    Hole hole;\n    hole.rows = {7};\n"
                       "    return hole;\n}\nint main() {\n"
                       "    Hole@[] list = {Hole(), Hole()};\n    return 0;\n}\n")
                     .failed())
        << messages();
    EXPECT_EQ(stops.size(), 1u);
}

TEST_F(Session, PropertiesOfObjectsAreShownAndSetThroughTheModel) {
    breakAt(6);
    atStop = [&](const StopInfo&) {
        const ValueNode locals = debug.scope(ValueScope::locals, 0);
        const std::vector<DebugValue> values = debug.values().children(locals);
        ASSERT_EQ(values.size(), 1u);
        EXPECT_EQ(values[0].type, "Object");
        const auto parts = debug.values().children(values[0].node);
        ASSERT_EQ(parts.size(), 2u);
        EXPECT_NE(parts[0].name.find("width"), std::string::npos);
        EXPECT_NE(parts[0].value.find("2.5 mm"), std::string::npos) << parts[0].value;
        EXPECT_NE(parts[0].value.find("error: too wide"), std::string::npos) << parts[0].value;
        const ShownValue set = debug.setChild(values[0].node, parts[0].name, 0, "1.5");
        EXPECT_EQ(set.error, "");
        EXPECT_EQ(set.value.value, "1.5 mm");
        EXPECT_NE(debug.setChild(values[0].node, parts[0].name, 0, "\"x\"").error, "");
        EXPECT_EQ(value("form.width"), "1.5 mm");
    };
    EXPECT_FALSE(start("int main() {\n    Object form;\n"
                       "    form.addProperty(\"width\", \"Width\", 2.5, \"mm\", true);\n"
                       "    form.addErrorConstraint(\"width\", \"width < 2\", \"too wide\");\n"
                       "    form.addProperty(\"round\", \"Round\", true, true);\n"
                       "    return 0;\n}\n")
                     .failed())
        << messages();
    EXPECT_EQ(stops.size(), 1u);
}

}  // namespace
}  // namespace korvant::test
