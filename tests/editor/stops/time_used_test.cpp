// The time of a run that the window shows beside the time that it may take.
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using TimeUsed = EditorFixture;

std::function<void()> look;
void lookNow() {
    look();
}

TEST_F(TimeUsed, StandsStillForAQuestionAndBeginsAnewBehindIt) {
    FakeClock clock;
    useClock(&clock);
    std::vector<std::uint32_t> seen;
    look = [&] {
        clock.advance(1500);
        seen.push_back(editor().status().runMilliseconds);
    };
    ASSERT_GE(engine()->RegisterGlobalFunction("void look()", asFUNCTION(lookNow), asCALL_CDECL),
              0);
    frontend.meanwhile = [&] {
        clock.advance(5000);
        seen.push_back(editor().status().runMilliseconds);
    };
    open(
        "int main() {\n    SetMaxRunTime(60000);\n    look();\n    look();\n    "
        "Information(\"\");\n"
        "    look();\n    return 0;\n}\n");
    editor().functionKey(5);
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{1500, 3000, 0, 1500}));
    EXPECT_EQ(editor().status().runMilliseconds, 0u);
}

TEST_F(TimeUsed, IsNeverMoreThanAllowedInTheBoxAboutTheEnd) {
    FakeClock clock;
    useClock(&clock);
    look = [&] { clock.advance(2500); };
    ASSERT_GE(engine()->RegisterGlobalFunction("void look()", asFUNCTION(lookNow), asCALL_CDECL),
              0);
    std::vector<std::uint32_t> seen;
    frontend.meanwhile = [&] {
        clock.advance(5000);
        seen.push_back(editor().status().runMilliseconds);
    };
    open("int main() {\n    SetMaxRunTime(2000);\n    while (true) look();\n    return 0;\n}\n");
    editor().functionKey(5);
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{2000}));
}

}  // namespace
}  // namespace korvant::test
