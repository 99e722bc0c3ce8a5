// The elements of a group.
#include <gtest/gtest.h>
#include <wx/button.h>

#include "form_objects.h"
#include "form_probe.h"

namespace korvant::test {
namespace {

class FormGroup : public testing::Test {
  protected:
    FormGroup() {
        makeDrillHole(hole_);
        driver_.form("Drill hole").press(WXK_PAGEDOWN, wxMOD_CONTROL).row("Name");
        driver_.untilShows("Fill");
    }

    /// The names of the elements after the form was confirmed.
    std::vector<std::string> confirmed() {
        driver_.key(WXK_RETURN, wxMOD_CONTROL);
        EXPECT_TRUE(hole_.edit());
        EXPECT_TRUE(driver_.done());
        std::vector<std::string> names;
        ScriptObject layer;
        for (int i = 0; hole_.getGroup("Layers", i, &layer); ++i)
            names.push_back(textOf(layer, "layer"));
        return names;
    }

    using Names = std::vector<std::string>;
    FormsInstalled forms_;
    LocaleFor english_{0};
    ScriptObject hole_;
    FormDriver driver_;
};

TEST_F(FormGroup, ElementsAreAddedCopiedAndRemovedByTheirKeys) {
    driver_.press('A', wxMOD_ALT).row("Name").untilShows("").enter("New").press(WXK_TAB);
    driver_.row("Rock").press('P', wxMOD_ALT).row("Name").untilShows("New").enter("Copy");
    driver_.press(WXK_RETURN).untilShows("Copy").press('R', wxMOD_ALT);
    driver_.when("one less", [] {
        return shownList()->session().groupBar(shownList()->page()).elements.size() == 4;
    });
    EXPECT_EQ(confirmed(), (Names{"Fill", "New", "Grey clay", "Karst"}));
}

TEST_F(FormGroup, OrderIsChangedByKeys) {
    driver_.press('D', wxMOD_ALT).window("Order").press(WXK_DOWN, wxMOD_ALT);
    driver_.press(WXK_UP).press(WXK_END, wxMOD_ALT).press(WXK_RETURN).window("Drill hole");
    EXPECT_EQ(confirmed(), (Names{"Fill", "Karst", "Grey clay"}));
    EXPECT_EQ(hole_.getGroupElement("Layers"), 0);
}

TEST_F(FormGroup, UndoGoesThroughValuesAndElements) {
    driver_.enter("Top soil").press(WXK_RETURN).untilShows("Top soil").press('A', wxMOD_ALT);
    driver_.untilShows("").enter("Peat").press(WXK_RETURN).untilShows("Peat");
    driver_.press('Z', wxMOD_CONTROL).untilShows("").press('Z', wxMOD_CONTROL);
    driver_.untilShows("Top soil").press('Z', wxMOD_CONTROL).untilShows("Fill");
    driver_.press('Y', wxMOD_CONTROL).untilShows("Top soil").press('Y', wxMOD_CONTROL);
    driver_.untilShows("").press('Y', wxMOD_CONTROL).untilShows("Peat");
    EXPECT_EQ(confirmed(), (Names{"Top soil", "Peat", "Grey clay", "Karst"}));
}

TEST_F(FormGroup, BrowsingTakesWhatIsBeingTyped) {
    driver_.enter("Rubble").untilTyped("Rubble").press(WXK_TAB, wxMOD_SHIFT);
    driver_.when("focus on the elements",
                 [] { return !shownList()->IsDescendant(wxWindow::FindFocus()); });
    driver_.run([] {
        EXPECT_EQ(shownList()->session().groupBar(shownList()->page()).elements[0], "1: Rubble");
    });
    EXPECT_EQ(confirmed(), (Names{"Rubble", "Grey clay", "Karst"}));
}

TEST_F(FormGroup, HiddenButtonsBelongToFalseFlags) {
    ScriptObject object, layer;
    layer.addProperty("x", "X", 1.0, "", true);
    object.setTitle("Fixed");
    object.addGroup("Only", layer, false, true, false, true);
    object.addGroupElement(layer);
    FormDriver driver;
    driver.form("Fixed").run([] {
        EXPECT_EQ(groupButton(2), nullptr);
        EXPECT_EQ(static_cast<wxButton*>(groupButton(0))->GetLabelText(), "Copy");
        EXPECT_EQ(static_cast<wxButton*>(groupButton(1))->GetLabelText(), "Order...");
    });
    driver.press(WXK_ESCAPE);
    EXPECT_FALSE(object.edit());
    EXPECT_TRUE(driver.done());
    EXPECT_EQ(confirmed(), (Names{"Fill", "Grey clay", "Karst"}));
}

}  // namespace
}  // namespace korvant::test
