// Walks through everything that a form shows, in each language. With KORVANT_SCREENSHOTS naming a
// folder, pictures of it are kept there.
#include <gtest/gtest.h>

#include "form_objects.h"
#include "form_probe.h"
#include "ui/kit/text_conversion.h"

namespace korvant::test {
namespace {

class FormLooks : public testing::TestWithParam<int> {
  protected:
    FormLooks() : locale_(GetParam()) {}

    std::string named(const std::string& name) const {
        const char* languages[] = {"en", "fr", "es"};
        return name + "_" + languages[GetParam()];
    }

    FormsInstalled forms_;
    LocaleFor locale_;
    FormDriver driver_;
};

TEST_P(FormLooks, SheetWithEveryKindOfRow) {
    ScriptObject pump;
    makePump(pump);
    driver_.form("Pump sizing").shot(named("sheet"));
    driver_.press(WXK_DOWN)
        .press(WXK_F9)
        .windowOverForm()
        .shot(named("check"))
        .press(WXK_ESCAPE)
        .form("Pump sizing");
    for (int i = 0; i < 6; ++i) driver_.press(WXK_DOWN);
    driver_.shot(named("hint"));
    driver_.press(WXK_RETURN).untilEditing().enter("1.5e").untilTyped("1.5e").shot(named("typing"));
    driver_.press(WXK_TAB).untilRefused().shot(named("refused")).press(WXK_ESCAPE).untilIdle();
    driver_.press(WXK_RETURN, wxMOD_CONTROL).untilReport().shot(named("report"));
    driver_.press(WXK_ESCAPE).shot(named("results"));
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(pump.edit());
    EXPECT_TRUE(driver_.done());
}

TEST_P(FormLooks, EveryEditor) {
    ScriptObject pump;
    makePump(pump);
    driver_.form("Pump sizing").press(WXK_DOWN).shot(named("locked"));
    driver_.press(WXK_DOWN)
        .press(WXK_RETURN)
        .windowOverForm()
        .shot(named("lines"))
        .press(WXK_ESCAPE)
        .form("Pump sizing");
    driver_.press(WXK_DOWN).press(WXK_F2).untilEditing().shot(named("file"));
    driver_.press(WXK_DOWN).press(WXK_DOWN).untilIdle().press(WXK_F2).untilEditing();
    driver_.shot(named("colour")).press(WXK_ESCAPE).untilIdle();
    for (int i = 0; i < 6; ++i) driver_.press(WXK_DOWN);
    driver_.press(WXK_F4).untilEditing().shot(named("options")).press(WXK_ESCAPE).untilIdle();
    driver_.press(WXK_END).shot(named("end")).press(WXK_ESCAPE);
    EXPECT_FALSE(pump.edit());
    EXPECT_TRUE(driver_.done());
}

TEST_P(FormLooks, GroupPageAndOrder) {
    ScriptObject hole;
    makeDrillHole(hole);
    driver_.form("Drill hole").press(WXK_PAGEDOWN, wxMOD_CONTROL).form("Drill hole");
    driver_.shot(named("group"));
    driver_.click([] { return groupButton(3); })
        .windowOverForm()
        .shot(named("order"))
        .press(WXK_ESCAPE)
        .window("Drill hole");
    driver_.key(WXK_ESCAPE);
    EXPECT_FALSE(hole.edit());
    EXPECT_TRUE(driver_.done());
}

INSTANTIATE_TEST_SUITE_P(InEveryLanguage, FormLooks, testing::Values(0, 1, 2));

}  // namespace
}  // namespace korvant::test
