// A user with a mouse.
#include <gtest/gtest.h>

#include "form_objects.h"
#include "form_probe.h"

namespace korvant::test {
namespace {

class FormMouse : public testing::Test {
  protected:
    FormMouse() { object_.setTitle("Mouse"); }

    bool edit() {
        const bool confirmed = object_.edit();
        EXPECT_TRUE(driver_.done());
        return confirmed;
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    ScriptObject object_;
    FormDriver driver_;
};

TEST_F(FormMouse, AClickInAScrolledPageActsOnTheRowUnderThePointer) {
    for (int i = 0; i < 100; ++i)
        object_.addProperty("r" + std::to_string(i), "Choice " + std::to_string(i), i == 40, true,
                            3L);
    object_.addProperty("name", "Name of it", "short", true, false);
    object_.addProperty("long", "Remark", std::string(200, 'w').c_str(), true, false);
    driver_.form("Mouse").press(WXK_END).row("Remark").clickValue("Choice 97").row("Choice 97");
    driver_.untilShows("Yes").pointAtValue("Remark").when(
        "the tip of the row", [] { return shownList()->GetToolTipText() == wxString('w', 200); });
    driver_.clickValue("Name of it").row("Name of it").untilTyped("short").enter("new");
    driver_.press(WXK_RETURN).untilShows("new").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(booleanOf(object_, "r" + std::to_string(i)), i == 97) << i;
    EXPECT_EQ(textOf(object_, "name"), "new");
}

TEST_F(FormMouse, TheMenuActsOnTheRowThatWasClicked) {
    for (const char* name : {"first", "second"}) object_.addProperty(name, name, 1.0, "", true);
    driver_.form("Mouse").enter("5").press(WXK_TAB).row("second").enter("6").press(WXK_RETURN);
    driver_.untilShows("6").clickValue("first", wxMOUSE_BTN_RIGHT).untilMenu().press(WXK_UP);
    driver_.press(WXK_UP).press(WXK_RETURN).row("first").untilShows("1");
    driver_.press(WXK_F2).untilEditing().enter("8").untilTyped("8");
    driver_.clickValue("second", wxMOUSE_BTN_RIGHT).untilMenu().press(WXK_ESCAPE).row("second");
    driver_.untilIdle().press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    EXPECT_EQ(realOf(object_, "first"), 8);
    EXPECT_EQ(realOf(object_, "second"), 6);
}

}  // namespace
}  // namespace korvant::test
