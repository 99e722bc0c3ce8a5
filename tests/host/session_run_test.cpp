// How runs begin, end and are reported.
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class Run : public ScriptFixture {};

TEST_F(Run, AScriptPrintsAndFinishes) {
    EXPECT_EQ(output("Print(\"a\" + 0.5);"), "a0.5");
    EXPECT_EQ(state().lastStoppedLine, 0);
}

}  // namespace
}  // namespace korvant::test
