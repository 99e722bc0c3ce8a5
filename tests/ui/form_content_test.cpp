// Filter, large forms, the wheel, what opening leaves alone, and handlers that fail.
#include <gtest/gtest.h>
#include <wx/srchctrl.h>

#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <new>
#include <random>

#include "form_objects.h"
#include "form_probe.h"
#include "support/ui_x_keys.h"
#include "ui/form/form_choosers.h"

namespace korvant::test {
namespace {

class FormContent : public testing::Test {
  protected:
    bool edit(ScriptObject& object) {
        const bool confirmed = object.edit();
        EXPECT_TRUE(driver_.done());
        return confirmed;
    }

    static int shownRows() {
        int count = 0;
        for (int i = 0; i < shownList()->session().rowCount(); ++i)
            count += shownList()->rowRect(i).IsEmpty() ? 0 : 1;
        return count;
    }

    FormDriver& untilRows(int count) {
        return driver_.when(std::to_string(count) + " rows",
                            [count] { return shownRows() == count; });
    }

    static void pointAt(int property) {
        const wxRect row = shownList()->rowRect(property);
        wxUIActionSimulator().MouseMove(shownList()->ClientToScreen(
            row.GetTopLeft() + wxPoint(row.width * 6 / 10, row.height / 2)));
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    FormDriver driver_;
};

TEST_F(FormContent, TheFilterHidesRowsButNotTheirErrors) {
    ScriptObject object;
    object.setTitle("Filter");
    object.addProperty("depth", "Depth of hole", 3.0, "m", true);
    object.addProperty("site", "Site", "north hole", true, false);
    object.addProperty("cost", "Cost", -1.0, "EUR", true);
    object.addErrorConstraint("cost", "cost>=0", "negative");
    driver_.form("Filter").press('F', wxMOD_CONTROL).enter("hole");
    untilRows(2).press(WXK_DOWN).row("Depth of hole").press(WXK_DOWN).row("Site");
    driver_.press('F', wxMOD_CONTROL).enter("DEPTH of");
    untilRows(1).press(WXK_ESCAPE);
    untilRows(3).press('F', wxMOD_CONTROL).enter("site");
    untilRows(1).press(WXK_RETURN, wxMOD_CONTROL).untilReport().row("Cost");
    untilRows(3).press(WXK_ESCAPE).enter("5").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit(object));
    EXPECT_EQ(realOf(object, "cost"), 5);
}

TEST_F(FormContent, FiveThousandRowsAreWalkedFilteredAndFilled) {
    ScriptObject object;
    makeLarge(object, 5000);
    driver_.form("Large").press(WXK_END).row("Property 4999").press(WXK_UP).row("Property 4998");
    driver_.enter("7").press(WXK_RETURN).untilShows("7").press(WXK_DOWN).untilShows("14");
    driver_.press('F', wxMOD_CONTROL).enter("4321");
    untilRows(1)
        .press(WXK_DOWN)
        .row("Property 4321")
        .enter("-1")
        .press(WXK_RETURN)
        .untilShows("-1");
    driver_.press(WXK_RETURN, wxMOD_CONTROL).untilReport().press(WXK_ESCAPE).row("Property 4321");
    driver_.press('Z', wxMOD_CONTROL).untilShows("2160.5").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit(object));
    EXPECT_EQ(realOf(object, "p4998"), 7);
    EXPECT_EQ(realOf(object, "p4999"), 14);
}

/// Every kind of property with values that a plain conversion would change.
class AnyObject {
  public:
    explicit AnyObject(unsigned seed) : random_(seed) {
        object.setTitle("Any");
        for (int i = 0; i < 24; ++i) {
            if (i % 8 == 0) object.addClass("Page " + std::to_string(i / 8), random_() % 4 != 0);
            add("v" + std::to_string(i), i % 6);
        }
    }

    /// The bits of all values.
    std::string bits() {
        std::string all;
        for (int i = 0; i < object.getPropertiesCount(); ++i) {
            const std::string name = "v" + std::to_string(i);
            std::string text;
            double real = 0;
            object.getProperty(name, &text);
            object.getProperty(name, &real);
            all += name + " " + text + " " + std::to_string(std::bit_cast<std::uint64_t>(real)) +
                   " " + std::to_string(integerOf(object, name)) + "\n";
        }
        return all;
    }

    ScriptObject object;

  private:
    double anyReal() {
        const std::array<double, 8> odd = {std::numeric_limits<double>::quiet_NaN(),
                                           -0.0,
                                           0.1f,
                                           std::numeric_limits<double>::infinity(),
                                           5e-324,
                                           1e300,
                                           1.0 / 3,
                                           std::bit_cast<double>(random_())};
        return odd[random_() % odd.size()];
    }

    std::string anyText() {
        std::string text;
        for (std::uint64_t length = random_() % 40; length > 0; --length)
            text += static_cast<char>(random_() % 256);
        return text;
    }

    void add(const std::string& name, int kind) {
        const bool editable = random_() % 4 != 0;
        if (kind == 0)
            object.addProperty(name, name, anyText().c_str(), editable, random_() % 2 == 0);
        if (kind == 1) object.addProperty(name, name, anyReal(), "m", editable);
        if (kind == 2) object.addProperty(name, name, static_cast<int>(random_()), "", editable);
        if (kind == 3) object.addProperty(name, name, random_() % 2 == 0, editable, 1);
        if (kind == 4)
            object.addProperty(name, name, static_cast<int>(random_()), "color", editable);
        if (kind != 5) return;
        object.addOption("one");
        object.addOption("two");
        object.addOptionProperty(name, name, static_cast<int>(random_() % 9) - 3, editable);
    }

    std::mt19937_64 random_;
};

TEST_F(FormContent, OpeningAndConfirmingChangesNoBitOfAnyValue) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        AnyObject any(seed);
        const std::string before = any.bits();
        driver_.form("Any");
        for (int page = 0; page < 3; ++page) {
            for (int i = 0; i < 3; ++i) driver_.press(WXK_TAB);
            driver_.press(WXK_DOWN).press(WXK_PAGEDOWN, wxMOD_CONTROL);
        }
        driver_.press(WXK_RETURN, wxMOD_CONTROL);
        EXPECT_TRUE(edit(any.object));
        EXPECT_EQ(any.bits(), before) << "seed " << seed;
    }
}

TEST_F(FormContent, TheWheelScrollsAndChangesNoValue) {
    ScriptObject object;
    object.setTitle("Wheel");
    object.addOption("one");
    object.addOption("two");
    object.addOption("three");
    for (int i = 0; i < 60; ++i)
        object.addOptionProperty("o" + std::to_string(i), "Option " + std::to_string(i), 1, true);
    const auto top = [] { return shownList()->rowRect(0).y; };
    for (const bool selected : {false, true}) {
        driver_.form("Wheel").press(WXK_HOME);
        if (selected) driver_.press(WXK_DOWN).press(WXK_DOWN).row("Option 2");
        driver_.run([] { pointAt(2); }).run([] { turnWheel(false); });
        driver_.when("rows that move", [top] { return top() < 0; }).run([] { turnWheel(true); });
        driver_.when("rows back", [top] { return top() >= 0; }).press(WXK_RETURN, wxMOD_CONTROL);
        EXPECT_TRUE(edit(object));
    }
    for (int i = 0; i < 60; ++i) EXPECT_EQ(integerOf(object, "o" + std::to_string(i)), 1) << i;
}

TEST_F(FormContent, TheWheelOverTheElementsChoosesNone) {
    ScriptObject hole;
    makeDrillHole(hole);
    driver_.form("Drill hole").press(WXK_PAGEDOWN, wxMOD_CONTROL).row("Name").untilShows("Fill");
    driver_.run([] {
        const wxRect add = groupButton(0)->GetScreenRect();
        wxUIActionSimulator().MouseMove(add.x - 60, add.y + add.height / 2);
        turnWheel(false);
    });
    driver_.press(WXK_DOWN).row("Rock").press(WXK_UP).untilShows("Fill").press(WXK_ESCAPE);
    EXPECT_FALSE(edit(hole));
}

TEST_F(FormContent, WhatAHandlerThrowsStaysInsideTheForm) {
    ScriptObject pump;
    makePump(pump);
    pump.setProperty("motor", 99.0);
    const ui::FormChoosers before = ui::formChoosers();
    int thrown = 0;
    ui::formChoosers().file = [&](const ui::FileRequest&) -> std::optional<wxString> {
        ++thrown;
        throw std::bad_alloc();
    };
    const std::string file = textOf(pump, "curve");
    driver_.form("Pump sizing").press(WXK_DOWN).press(WXK_DOWN).press(WXK_DOWN).row("Curve file");
    driver_.press(WXK_F4).when("the fault", [&] { return thrown == 1; });
    driver_.press(WXK_F2).untilEditing().click(
        []() -> wxWindow* { return shownList()->GetEditorControlSecondary(); });
    driver_.when("the second fault", [&] { return thrown == 2; }).press(WXK_ESCAPE).untilIdle();
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    EXPECT_TRUE(edit(pump));
    ui::formChoosers() = before;
    EXPECT_EQ(textOf(pump, "curve"), file);
}

}  // namespace
}  // namespace korvant::test
