#include "editor/assist/tour_script.h"

#include "support/fake_console.h"
#include "support/script_fixture.h"

namespace korvant {
namespace {

class TourScript : public test::ScriptFixture {};

TEST_F(TourScript, BuildsWithoutAMessageAndPrintsItsTable) {
    EXPECT_TRUE(run(kTourScript)) << messages();
    EXPECT_EQ(messages(), "");
    EXPECT_EQ(console.output,
              "Hole     Samples     Depth  Gold g/t\n"
              "NR-01          3     42.00      0.48\n"
              "NR-02          3     55.50      0.70\n"
              "NR-03          3     38.00      0.28\n");
}

}  // namespace
}  // namespace korvant
