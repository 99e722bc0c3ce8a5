// Data breakpoints, beside what a look at every statement sees.
#include <gmock/gmock.h>

#include "debug/debug_fixture.h"
#include "support/choices.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;

class Data : public DebugFixture {
  protected:
    int watch(const std::string& expression, const std::string& condition = {},
              unsigned calls = 0) {
        BreakpointWish wish;
        wish.kind = BreakpointKind::data;
        wish.name = expression;
        wish.condition = condition;
        wish.calls = calls;
        return debug.breakpoints().add(std::move(wish));
    }
    static std::string placeOf(const StopInfo& info) {
        return std::to_string(info.place.line) + ":" + std::to_string(info.place.column);
    }
};

/// Programs in which one name is that of a global variable, one of a namespace, members,
/// parameters and local variables, changed from everywhere.
class Maker {
  public:
    explicit Maker(unsigned seed) : choices_(seed) {}

    std::string program() {
        std::string text =
            "funcdef void Act(int);\nint g = 1;\nint h = f1(2);\n"
            "namespace ns {\nint g = 2;\nint k = 3;\n" +
            function("void n1(int k)", 0) + function("void n2(int g)", 0) +
            "class Box {\nint g = 4;\nBox() {\n" + body(0) + "}\n~Box() {\n" + body(0) + "}\n" +
            "int get_size() const property {\n::g++;\nreturn g;\n}\n" +
            "void set_size(int v) property {\n" + body(0) + "}\n" + function("void m(int h)", 0) +
            "}\n}\n";
        text += "int f1(int h) {\n" + body(1) + "return h;\n}\n" + function("void f2(int g)", 1) +
                function("void call(Act@ act)", -1);
        return text + "int main() {\nint own = 0;\n" + body(2) + "own++;\n" + body(2) +
               "own += g;\n" + body(2) + "return 0;\n}\n";
    }

  private:
    std::string function(const std::string& head, int level) {
        return head + " {\n" + (level < 0 ? "act(1);\nact(2);\n" : body(level)) + "}\n";
    }
    std::string body(int level) {
        std::string text;
        for (auto i = choices_.below(4) + 1; i > 0; --i) text += statement(level);
        return text;
    }
    std::string change() {
        static const char* const kChanges[] = {"g++;",         "::g += 2;", "ns::g++;", "::g = 7;",
                                               "ns::g = ::g;", "g = 5;",    "ns::k--;", "::h++;"};
        return choices_.one(kChanges);
    }
    std::string statement(int level) {
        static const char* const kCalls[] = {
            "ns::n1(3);", "ns::n2(4);",
            "{\nns::Box box;\nbox.m(1);\nbox.size = 3;\n::h = box.size;\n}"};
        static const char* const kOuterCalls[] = {"f1(2);", "f2(5);",
                                                  "call(function(int g) {\ng++;\n::g += g;\n});",
                                                  "call(function(int n) {\ng += n;\n});",
                                                  "for (int i = 0; i < 2; i++) {\ng++;\nf2(i);\n}"};
        switch (choices_.below(level == 0 ? 3u : level == 1 ? 5u : 6u)) {
            case 0:
                return "if (::g % 2 == 0) {\n" + change() + "\n}\n";
            case 1:
                return "{\nint g = 6;\ng++;\n" + change() + "\n}\n";
            case 2:
                return change() + "\n";
            case 3:
            case 4:
                return choices_.one(kCalls) + "\n";
            default:
                return choices_.one(kOuterCalls) + "\n";
        }
    }

    SeededChoices choices_;
};

TEST_F(Data, StopsWhereverALookAtEveryStatementSeesAChange) {
    const std::vector<std::string> watched = {"::g", "ns::g", "::h", "ns::k", "own"};
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const std::string text = Maker(seed).program();
        std::vector<std::string> expected;
        std::vector<std::string> before(watched.size());
        debug.rules().entry = true;
        stops.clear();
        atStop = [&](const StopInfo& info) {
            std::string changes;
            for (std::size_t i = 0; i < watched.size(); ++i) {
                const unsigned frame = debug.frames().count() - 1;
                const ShownValue now = debug.show(frame, watched[i], EvaluationPurpose::watch);
                if (!before[i].empty() && now.value.value != before[i])
                    changes += " " + watched[i] + "=" + now.value.value;
                if (now.error.empty()) before[i] = now.value.value;
            }
            if (!changes.empty()) expected.push_back(placeOf(info) + changes);
            EXPECT_TRUE(debug.stepInto(StepBy::statement));
        };
        ASSERT_FALSE(start(text).failed()) << messages() << text;
        std::vector<std::string> seen;
        std::vector<int> ids;
        atStop = [&](const StopInfo& info) {
            if (info.reason == StopReason::entry)
                for (const std::string& each : watched) ids.push_back(watch(each));
            std::string changes;
            for (std::size_t i = 0; i < ids.size(); ++i)
                for (const int hit : info.hitIds)
                    if (hit == ids[i])
                        changes +=
                            " " + watched[i] + "=" + debug.breakpoints().find(hit)->lastValue;
            if (!changes.empty()) seen.push_back(placeOf(info) + changes);
        };
        ASSERT_FALSE(start(text).failed());
        ASSERT_EQ(seen, expected) << "seed " << seed << "\n" << text;
        debug.breakpoints().clear();
    }
}

/// The window's way: a run that leaves at each stop.
TEST_F(Data, StopsOfASuspendedRunAreTheSame) {
    constexpr char kScript[] =
        "int g = 1;\nvoid raise(int by) {\n    g += by;\n    by = 0;\n}\nint main() {\n"
        "    int g = 5;\n    for (int i = 0; i < 4; i++) {\n        raise(i);\n        g++;\n"
        "    }\n    return g;\n}\n";
    std::vector<std::string> seen;
    breakAt(3, "by == 0");
    atStop = [&](const StopInfo& info) {
        if (info.reason == StopReason::breakpoint) watch("g", "i == 1", debug.callsOf(1));
        seen.push_back(placeOf(info) + " " + info.text + " " + info.before + ">" + info.now);
    };
    debug.setStyle(StopStyle::suspend);
    watch("::g", "g > 2");
    BreakpointWish logged;
    logged.kind = BreakpointKind::data;
    logged.name = "::g";
    logged.hitCondition = "%2";
    for (const char* const text : {"a {::g}", "b {::g}"}) {
        logged.logText = text;
        debug.breakpoints().add(logged);
    }
    start(kScript);
    for (int i = 0; i < 20 && debug.state() == DebugState::suspended; ++i) debug.goOn();
    EXPECT_THAT(seen, ElementsAre("3:5  >", "8:28 g 6>7", "4:5 ::g 2>4", "4:5 ::g 4>7"));
    EXPECT_EQ(output, "a 2\nb 2\na 7\nb 7\n");
}

}  // namespace
}  // namespace korvant::test
