// What breakpoints can do beyond stopping every time, beside the classic markers.
#include "editor/stops/breakpoint_plan.h"

#include <gtest/gtest.h>

#include "support/editor_fixture.h"

using namespace korvant;

namespace {

class BreakpointPlans : public test::EditorFixture {
  protected:
    BreakpointPlans() { open("int main() {\n    int a = 1;\n    a = 2;\n    return 0;\n}\n"); }
    std::string planned() {
        std::string all;
        for (const PlannedBreakpoint& one : editor().plannedBreakpoints())
            all += std::to_string(one.line) + (one.wishes.enabled ? "" : " off") + "; ";
        return all;
    }
    void edit(const std::function<void(BreakpointPlan&)>& action) {
        editor().editBreakpoints(action);
    }
};

TEST_F(BreakpointPlans, OneThatIsOffHasNoMarkerAndComesBack) {
    edit([](BreakpointPlan& plan) { plan.toggle(2); });
    edit([](BreakpointPlan& plan) { plan.toggle(3); });
    edit([](BreakpointPlan& plan) { plan.switchOnOff(3); });
    EXPECT_EQ(planned(), "2; 3 off; ");
    EXPECT_EQ(marks(), std::vector<int>{2});
    edit([](BreakpointPlan& plan) { plan.switchAll(); });
    EXPECT_EQ(planned(), "2; 3; ");
    edit([](BreakpointPlan& plan) { plan.switchAll(); });
    EXPECT_EQ(planned(), "2 off; 3 off; ");
    // A click on a ring takes it away.
    edit([](BreakpointPlan& plan) { plan.toggle(2); });
    EXPECT_EQ(planned(), "3 off; ");
    edit([](BreakpointPlan& plan) { plan.removeAll(); });
    EXPECT_EQ(planned(), "");
}

TEST_F(BreakpointPlans, WishesGoToTheRunAndFollowTheirLine) {
    BreakpointWishes wishes;
    wishes.condition = "a > 1";
    editor().changeBreakpoint(3, wishes);
    std::vector<BreakpointWish> refined;
    edit([&](BreakpointPlan& plan) {
        LineShift shift;
        shift.first = ControlLine{0};
        shift.count = 2;
        plan.follow(shift);
        refined = plan.refined();
    });
    ASSERT_EQ(refined.size(), 1u);
    EXPECT_EQ(refined[0].place.line, 5);
    EXPECT_EQ(refined[0].condition, "a > 1");
    wishes = {};
    wishes.passes = 4;
    editor().changeBreakpoint(5, wishes);
    edit([&](BreakpointPlan& plan) { refined = plan.refined(); });
    ASSERT_EQ(refined.size(), 1u);
    EXPECT_EQ(refined[0].hitCondition, ">=4");
}

}  // namespace
