// A user at the keyboard.
#include <gtest/gtest.h>
#include <wx/button.h>

#include "form_objects.h"
#include "form_probe.h"
#include "ui/form/form_choosers.h"

namespace korvant::test {
namespace {

class FormKeyboard : public testing::Test {
  protected:
    FormKeyboard() {
        makePump(pump_);
        driver_.form("Pump sizing").row("Name of the pump");
    }

    bool edit() {
        const bool confirmed = pump_.edit();
        EXPECT_TRUE(driver_.done());
        return confirmed;
    }

    /// Moves down until the row with this label is selected.
    FormDriver& down(int steps, const std::string& label) {
        for (int i = 0; i < steps; ++i) driver_.press(WXK_DOWN);
        return driver_.row(label);
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    ScriptObject pump_;
    FormDriver driver_;
};

TEST_F(FormKeyboard, FillsAFormFromTheFirstFieldToOk) {
    driver_.enter("P-7").untilTyped("P-7").press(WXK_TAB).row("Remarks");
    driver_.press(WXK_TAB).row("Curve file").untilIdle();
    down(4, "Flow rate").enter("96,5").press(WXK_RETURN).untilIdle().untilShows("96.5");
    driver_.press(WXK_TAB).row("Head").enter("20*2").press(WXK_TAB).row("Efficiency");
    driver_.untilTyped("71").enter("80").press(WXK_DOWN).row("Speed").untilIdle();
    driver_.press(WXK_F2).untilEditing().enter("2900").press(WXK_TAB).row("Liquid");
    driver_.press(WXK_F4).untilEditing().press(WXK_DOWN).press(WXK_RETURN).untilIdle();
    driver_.untilShows("Oil");
    down(2, "Variable speed drive").press(WXK_SPACE).press(WXK_TAB).row("Lowest speed");
    driver_.enter("700").press(WXK_TAB).row("Horizontal").press(WXK_TAB).row("Vertical");
    driver_.press(WXK_SPACE).press(WXK_PAGEDOWN, wxMOD_CONTROL).row("Rated motor power");
    driver_.enter("15").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    EXPECT_EQ(textOf(pump_, "name"), "P-7");
    EXPECT_EQ(realOf(pump_, "flow"), 96.5);
    EXPECT_EQ(realOf(pump_, "head"), 40);
    EXPECT_EQ(integerOf(pump_, "efficiency"), 80);
    EXPECT_EQ(integerOf(pump_, "speed"), 2900);
    EXPECT_EQ(integerOf(pump_, "liquid"), 1);
    EXPECT_TRUE(booleanOf(pump_, "drive"));
    EXPECT_EQ(integerOf(pump_, "lowest"), 700);
    EXPECT_FALSE(booleanOf(pump_, "horizontal"));
    EXPECT_TRUE(booleanOf(pump_, "vertical"));
    EXPECT_EQ(realOf(pump_, "motor"), 15);
    EXPECT_EQ(textOf(pump_, "remarks"), "Stand-by unit.\nSpare impeller in store.");
}

TEST_F(FormKeyboard, OkByMouseStoresWhatIsStillBeingTyped) {
    pump_.setProperty("motor", 99.0);
    driver_.enter("typed").untilTyped("typed").click(
        [] { return wxWindow::FindWindowById(wxID_OK, shownForm()); });
    ASSERT_TRUE(edit());
    EXPECT_EQ(textOf(pump_, "name"), "typed");
}

TEST_F(FormKeyboard, RefusedTextKeepsItsRowWhateverIsTried) {
    down(7, "Flow rate").enter("twelve").untilTyped("twelve");
    driver_.press(WXK_RETURN).untilRefused().untilTyped("twelve");
    driver_.press(WXK_TAB).untilRefused().press(WXK_DOWN).untilRefused().row("Flow rate");
    driver_.press(WXK_PAGEDOWN, wxMOD_CONTROL).untilRefused().row("Flow rate");
    driver_.press(WXK_RETURN, wxMOD_CONTROL).untilRefused().untilTyped("twelve");
    driver_.click([] { return wxWindow::FindWindowById(wxID_OK, shownForm()); });
    driver_.untilRefused().when("focus back in the field", [] {
        return shownList() && shownList()->GetEditorControl() == wxWindow::FindFocus();
    });
    driver_.press(WXK_ESCAPE).untilIdle().untilShows("120.5").press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
    EXPECT_EQ(realOf(pump_, "flow"), 120.5);
}

TEST_F(FormKeyboard, NumbersAreTypedWholeOrRefused) {
    down(7, "Flow rate");
    for (const char* text : {"-", "--", "5-", "2 3", "5=5", "1,2,3"}) {
        driver_.enter(text).untilTyped(text).press(WXK_RETURN).untilRefused().untilTyped(text);
        driver_.press(WXK_ESCAPE).untilIdle();
    }
    driver_.enter("1,5*2").untilTyped("1,5*2").press(WXK_RETURN).untilIdle().untilShows("3");
    driver_.enter("1.5*2+1").press(WXK_RETURN).untilIdle().untilShows("4");
    driver_.press(WXK_ESCAPE).discard();
    EXPECT_FALSE(edit());
}

TEST_F(FormKeyboard, EscapeClosesOneThingAtATime) {
    driver_.press(WXK_F2).untilEditing().enter("x").press(WXK_ESCAPE).untilIdle();
    driver_.untilShows("P-101 A");
    down(11, "Liquid").press(WXK_DOWN, wxMOD_ALT).untilEditing().press(WXK_ESCAPE).untilIdle();
    driver_.untilShows("Water").press(WXK_F9).windowOverForm();
    driver_.press(WXK_ESCAPE).form("Pump sizing").press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
}

TEST_F(FormKeyboard, UndoRedoAndResetOfCommittedChanges) {
    driver_.enter("one").press(WXK_RETURN).untilShows("one");
    driver_.enter("two").press(WXK_RETURN).untilShows("two");
    driver_.press('Z', wxMOD_CONTROL).untilShows("one").press('Z', wxMOD_CONTROL);
    driver_.untilShows("P-101 A").press('Y', wxMOD_CONTROL).untilShows("one");
    driver_.press(WXK_DOWN).press(WXK_DOWN).press(WXK_DOWN).row("Curve file");
    driver_.press('Y', wxMOD_CONTROL).row("Name of the pump").untilShows("two");
    driver_.press('R', wxMOD_CONTROL).untilShows("P-101 A").enter("open").untilTyped("open");
    driver_.press('Z', wxMOD_CONTROL).untilTyped("P-101 A").press(WXK_ESCAPE).untilIdle();
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
}

TEST_F(FormKeyboard, DisabledAndLockedRowsTakeNothing) {
    driver_.press(WXK_DOWN).row("Serial number").press(WXK_RETURN).enter("zz").press(WXK_F4);
    down(13, "Lowest speed").enter("5").press(WXK_DELETE).press(WXK_SPACE).press(WXK_F2);
    driver_.untilIdle().press(WXK_UP).row("Variable speed drive").press(WXK_SPACE);
    driver_.press(WXK_DOWN).row("Lowest speed").enter("5").untilTyped("5").press(WXK_RETURN);
    driver_.untilShows("5").press(WXK_ESCAPE).discard();
    EXPECT_FALSE(edit());
    EXPECT_EQ(textOf(pump_, "serial"), "KX-2291-07");
}

TEST_F(FormKeyboard, TabLeavesBehindTheLastRowAndShiftTabBeforeTheFirst) {
    const auto inList = [] { return shownList()->IsDescendant(wxWindow::FindFocus()); };
    driver_.press(WXK_TAB, wxMOD_SHIFT).when("focus before the list", [inList] {
        return !inList() && wxWindow::FindFocus();
    });
    driver_.press('F', wxMOD_CONTROL).press(WXK_RETURN).form("Pump sizing");
    driver_.press(WXK_END).row("Vertical").press(WXK_TAB).when("focus behind the list", [inList] {
        return !inList() && dynamic_cast<wxButton*>(wxWindow::FindFocus());
    });
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
}

TEST_F(FormKeyboard, SpaceAfterAClickOnALabelDoesNotPressOk) {
    driver_.run([] {
        const wxRect row = shownList()->rowRect(8);
        wxUIActionSimulator simulator;
        simulator.MouseMove(shownList()->ClientToScreen(row.GetPosition() + wxPoint(80, 9)));
        simulator.MouseClick();
    });
    driver_.row("Efficiency").press(WXK_SPACE).untilTyped(" ").press(WXK_ESCAPE).untilIdle();
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
}

TEST_F(FormKeyboard, SeveralLinesAreWrittenInTheirOwnWindow) {
    pump_.setProperty("motor", 99.0);
    down(2, "Remarks").press(WXK_RETURN).window("Remarks").enter("x").press(WXK_ESCAPE);
    driver_.form("Pump sizing").press(WXK_F4).window("Remarks").press(WXK_RETURN).enter("end");
    driver_.press(WXK_RETURN, wxMOD_CONTROL).form("Pump sizing");
    driver_.untilShows("Stand-by unit.\nSpare impeller in store.\nend");
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    EXPECT_EQ(textOf(pump_, "remarks"), "Stand-by unit.\nSpare impeller in store.\nend");
}

TEST_F(FormKeyboard, FilesAndColoursCanBeChosenOrTyped) {
    pump_.setProperty("motor", 99.0);
    const ui::FormChoosers before = ui::formChoosers();
    ui::FileRequest asked;
    int overwriteQuestions = 0;
    ui::formChoosers().file = [&](const ui::FileRequest& request) {
        asked = request;
        return std::optional<wxString>(request.save ? "/etc/passwd" : "/data/other.csv");
    };
    ui::formChoosers().mayOverwrite = [&](wxWindow*, const wxString&) {
        return ++overwriteQuestions == 2;
    };
    ui::formChoosers().colour = [](wxWindow*, const wxString&, const wxColour&) {
        return std::optional<wxColour>(wxColour(1, 2, 255));
    };
    down(3, "Curve file").press(WXK_F4).untilShows("/data/other.csv").run([&] {
        EXPECT_EQ(asked.wildcard, "Curves|*.csv;*.txt|All files|*");
        EXPECT_EQ(asked.path, "/data/curves/p101.csv");
    });
    driver_.press(WXK_DOWN).row("Report file").press(WXK_F4).untilShows("/etc/passwd");
    driver_.press(WXK_DOWN).press(WXK_DOWN, wxMOD_ALT).untilShows("#0102FF");
    driver_.enter("10,20,30").press(WXK_RETURN).untilShows("#0A141E");
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    ui::formChoosers() = before;
    EXPECT_EQ(overwriteQuestions, 2);
    EXPECT_EQ(textOf(pump_, "curve"), "/data/other.csv");
    EXPECT_EQ(integerOf(pump_, "shade"), 0x001E140A);
}

TEST_F(FormKeyboard, OptionRowsTakeTheLetterThatOpensThem) {
    pump_.setProperty("motor", 99.0);
    down(11, "Liquid").enter("s").untilEditing().press(WXK_RETURN).untilIdle();
    driver_.untilShows("Slurry").enter("o").untilEditing().press(WXK_ESCAPE).untilIdle();
    driver_.untilShows("Slurry").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit());
    EXPECT_EQ(integerOf(pump_, "liquid"), 2);
}

TEST_F(FormKeyboard, CaptionsFold) {
    driver_.press(WXK_LEFT).when("caption", [] { return shownList()->selectedProperty() < 0; });
    driver_.press(WXK_LEFT).press(WXK_DOWN).press(WXK_DOWN).row("Flow rate");
    driver_.press(WXK_UP).press(WXK_UP).press(WXK_RIGHT).press(WXK_DOWN).row("Name of the pump");
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit());
}

}  // namespace
}  // namespace korvant::test
