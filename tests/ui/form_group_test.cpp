// The elements of a group.
#include <gtest/gtest.h>
#include <wx/button.h>
#include <wx/choice.h>
#include <wx/notebook.h>

#include "form_objects.h"
#include "form_probe.h"
#include "ui/kit/html_view.h"

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

/// The list of elements and the tab show what is wrong with the others.
TEST_F(FormGroup, ElementsThatFailAreMarkedWhileAnotherIsShown) {
    driver_.press(WXK_END).row("Bottom").enter("-5").press(WXK_RETURN).untilShows("-5");
    driver_.run([] { findChild<wxChoice>(shownForm())->SetFocus(); });
    driver_.when("focus on the elements",
                 [] { return dynamic_cast<wxChoice*>(wxWindow::FindFocus()) != nullptr; });
    driver_.press(WXK_DOWN).when("the second element", [] {
        return shownList()->session().groupBar(shownList()->page()).current == 1;
    });
    driver_.run([] {
        const auto choice = findChild<wxChoice>(shownForm());
        ASSERT_NE(choice, nullptr);
        EXPECT_EQ(choice->GetString(0), wxString::FromUTF8("\xE2\x9C\x96 1: Fill"));
        EXPECT_EQ(choice->GetString(1), "2: Grey clay");
        const auto book = findChild<wxNotebook>(shownForm());
        EXPECT_NE(book->GetPageImage(1), wxNotebook::NO_IMAGE);
        EXPECT_EQ(book->GetPageImage(0), wxNotebook::NO_IMAGE);
    });
    driver_.press(WXK_RETURN, wxMOD_CONTROL).untilReport().row("Bottom").untilShows("-5");
    driver_.press(WXK_ESCAPE).enter("5");
    EXPECT_EQ(confirmed(), (Names{"Fill", "Grey clay", "Karst"}));
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

TEST(FormGroupInside, SaysWhichElementIsMissing) {
    const FormsInstalled forms;
    const LocaleFor english(0);
    ScriptObject sample, layer, object;
    sample.addProperty("grade", "Grade", 0.5, "g/t", true);
    layer.addClass("Layers", true);
    layer.addProperty("rock", "Rock", "sand", true, false);
    layer.addClass("Samples", true);
    layer.addGroup("Samples", sample, true, true, true, true);
    object.setTitle("Nested");
    object.addClass("Layers", true);
    object.addGroup("Layers", layer, true, true, true, true);
    FormDriver driver;
    driver.window("Nested").press(WXK_PAGEDOWN, wxMOD_CONTROL).when("the inner page", [] {
        const wxWindow* add = groupButton(0);
        return shownList() && shownList()->page() == 1 && add && !add->IsEnabled();
    });
    driver.run([] {
        const auto text = findChild<ui::HtmlView>(shownList()->GetGrandParent());
        EXPECT_TRUE(text->text().Contains("Layers")) << text->text();
        EXPECT_FALSE(text->text().Contains("Press Add")) << text->text();
    });
    driver.press(WXK_ESCAPE);
    EXPECT_FALSE(object.edit());
    EXPECT_TRUE(driver.done());
}

}  // namespace
}  // namespace korvant::test
