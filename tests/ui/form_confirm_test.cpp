// OK, Check and everything that keeps a form open.
#include <gtest/gtest.h>
#include <wx/html/htmlwin.h>
#include <wx/stattext.h>

#include "form_objects.h"
#include "form_probe.h"
#include "object/form/form_memory.h"
#include "ui/form/form_report.h"
#include "ui/kit/html_view.h"

namespace korvant::test {
namespace {

class FormConfirm : public testing::Test {
  protected:
    bool edit(ScriptObject& object) {
        const bool confirmed = object.edit();
        EXPECT_TRUE(driver_.done());
        return confirmed;
    }

    /// The text of the pop-up.
    static std::string report() {
        const auto popUp = findChild<ui::FormReport>(shownForm());
        const auto view = popUp ? findChild<ui::HtmlView>(popUp) : nullptr;
        return view ? std::string(view->text().utf8_str()) : std::string();
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    FormDriver driver_;
};

void makeTwoFailing(ScriptObject& object) {
    object.setTitle("Two");
    for (const char* name : {"First", "Good", "Third"}) {
        object.addClass(name, true);
        const std::string key = std::string(name) + "value";
        object.addProperty(key, key, 1.0, "", true);
        object.addErrorConstraint(key, key + (key == "Goodvalue" ? ">0" : ">1"), "too small");
    }
}

TEST_F(FormConfirm, FailingPagesKeepTheSheetOpenWithTheExactReport) {
    ScriptObject object;
    makeTwoFailing(object);
    driver_.form("Two").press(WXK_PAGEDOWN, wxMOD_CONTROL).row("Goodvalue");
    driver_.press(WXK_RETURN, wxMOD_CONTROL).untilReport().row("Firstvalue").run([] {
        EXPECT_EQ(report(),
                  "There are errors : \n1) First\n2) Third\n\nFirstvalue : too small\n"
                  "Thirdvalue : too small");
    });
    driver_.press(WXK_ESCAPE).when("end of the report", [] { return report().empty(); });
    driver_.enter("2").press(WXK_RETURN, wxMOD_CONTROL).untilReport().row("Thirdvalue").run([] {
        EXPECT_EQ(report(), "There is an error : \nThird\n\nThirdvalue : too small");
    });
    driver_.click([] { return shownList(); });
    driver_.when("end of the report", [] { return report().empty(); }).window("Two");
    driver_.press(WXK_UP).row("Thirdvalue").enter("3").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit(object));
    EXPECT_EQ(realOf(object, "Thirdvalue"), 3);
}

TEST_F(FormConfirm, DialogNamesTheFailingRows) {
    ScriptObject object;
    object.setTitle("One");
    object.addProperty("a", "Length", 0.0, "m", true);
    object.addProperty("b", "Width", 0.0, "m", true);
    object.addErrorConstraint("a", "a>0", "A");
    object.addErrorConstraint("b", "b>0", "B");
    object.addWarningConstraint("b", "b>5", "W");
    driver_.form("One").press(WXK_RETURN, wxMOD_CONTROL).untilReport().run([] {
        EXPECT_EQ(report(), "There are errors : \n1) Length\n2) Width\n\nLength : A\nWidth : B");
    });
    driver_.press(WXK_ESCAPE).enter("1").press(WXK_TAB).row("Width").enter("1");
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    EXPECT_TRUE(edit(object)) << "a warning does not keep it open";
}

TEST_F(FormConfirm, FailingElementOfAGroupBecomesCurrent) {
    ScriptObject hole;
    makeDrillHole(hole);
    ScriptObject layer;
    ASSERT_TRUE(hole.getGroup("Layers", 1, &layer));
    layer.setProperty("bottom", -1.0);
    hole.addGroupElement(layer);
    driver_.form("Drill hole").press(WXK_RETURN, wxMOD_CONTROL).untilReport().row("Bottom");
    driver_.untilShows("-1").press(WXK_ESCAPE).enter("70").press(WXK_RETURN, wxMOD_CONTROL);
    ASSERT_TRUE(edit(hole));
    EXPECT_EQ(hole.getGroupElement("Layers"), 3);
    ASSERT_TRUE(hole.getGroup("Layers", 3, &layer));
    EXPECT_EQ(realOf(layer, "bottom"), 70);
}

/// What a script reads afterwards does not depend on whether somebody typed.
TEST_F(FormConfirm, OkStoresTheSameWhetherSomebodyTypedOrNot) {
    std::string stored[2];
    for (const bool types : {false, true}) {
        ScriptObject object;
        object.setTitle("Box");
        object.addProperty("a", "Width", 2.0, "m", true);
        object.addProperty("b", "Area", 1.0, "m2", false);
        object.addComputation("b", "a*a");
        driver_.form("Box");
        if (types)
            driver_.enter("3").press(WXK_RETURN).untilShows("3").enter("2").press(WXK_RETURN);
        if (types) driver_.untilShows("2");
        driver_.press(WXK_RETURN, wxMOD_CONTROL);
        ASSERT_TRUE(edit(object));
        stored[types] =
            std::to_string(realOf(object, "a")) + " " + std::to_string(realOf(object, "b"));
    }
    EXPECT_EQ(stored[0], stored[1]);
    EXPECT_EQ(stored[0], "2.000000 4.000000");
}

TEST_F(FormConfirm, LinksOfTheCheckLeadToTheirRows) {
    ScriptObject pump;
    makePump(pump);
    driver_.form("Pump sizing").press(WXK_F9).window("Check").press(WXK_DOWN).press(WXK_RETURN);
    driver_.form("Pump sizing").row("Speed").press(WXK_F9).window("Check").press(WXK_RETURN);
    driver_.form("Pump sizing").row("Rated motor power").press(WXK_ESCAPE);
    EXPECT_FALSE(edit(pump));
}

/// The script's texts are in an encoding without the pointer's character.
TEST_F(FormConfirm, CheckShowsItsPointerInEveryLanguage) {
    const char* titles[] = {"Check", "V\303\251rifier", "Comprobar"};
    for (int locale = 0; locale < 3; ++locale) {
        const LocaleFor language(locale);
        ScriptObject object;
        object.setTitle("One");
        object.addProperty("a", "D\351bit", 0.0, "m", true);
        object.addErrorConstraint("a", "a>0", "D\351bit \340 0");
        const wxString title = wxString::FromUTF8(titles[locale]);
        driver_.form("One").press(WXK_F9).window(title).run([title] {
            const wxString text = findChild<ui::HtmlView>(findWindow(title))->text();
            EXPECT_TRUE(text.Contains(wxString::FromUTF8("\342\226\270 D\303\251bit"))) << text;
        });
        driver_.press(WXK_RETURN).form("One").press(WXK_ESCAPE);
        EXPECT_FALSE(edit(object));
    }
}

TEST_F(FormConfirm, CheckOfASoundFormSaysSoInItsLanguage) {
    const char* sentences[] = {"No errors or warnings", "Aucune erreur ni avertissement",
                               "No hay errores ni advertencias"};
    const char* titles[] = {"Check", "V\303\251rifier", "Comprobar"};
    for (int locale = 0; locale < 3; ++locale) {
        const LocaleFor language(locale);
        ScriptObject object;
        object.setTitle("Sound");
        object.addProperty("a", "A", 1.0, "", true);
        driver_.form("Sound").press(WXK_F9).window(wxString::FromUTF8(titles[locale]));
        driver_.run([sentence = sentences[locale], title = titles[locale]] {
            const wxWindow* window = findActive(wxString::FromUTF8(title));
            EXPECT_EQ(findChild<ui::HtmlView>(window)->text(), sentence);
        });
        driver_.press(WXK_RETURN).form("Sound").press(WXK_ESCAPE);
        EXPECT_FALSE(edit(object));
    }
}

TEST_F(FormConfirm, CancelAndCloseLeaveEverythingAsItWas) {
    for (const bool byKey : {true, false}) {
        ScriptObject hole;
        makeDrillHole(hole);
        driver_.form("Drill hole").enter("other").press(WXK_RETURN).untilShows("other");
        driver_.press(WXK_PAGEDOWN, wxMOD_CONTROL).row("Name").enter("X").press(WXK_RETURN);
        driver_.untilShows("X");
        if (byKey)
            driver_.press(WXK_ESCAPE);
        else
            driver_.close("Drill hole");
        driver_.discard();
        EXPECT_FALSE(edit(hole));
        EXPECT_EQ(textOf(hole, "driller"), "N. Prado");
        ScriptObject layer;
        ASSERT_TRUE(hole.getGroup("Layers", 0, &layer));
        EXPECT_EQ(textOf(layer, "layer"), "Fill");
    }
}

TEST_F(FormConfirm, ChangesAreNotDroppedWithoutAQuestion) {
    ScriptObject hole;
    makeDrillHole(hole);
    driver_.form("Drill hole").enter("other").press(WXK_RETURN).untilShows("other");
    driver_.press(WXK_ESCAPE).window("KorvantIDE").press(WXK_ESCAPE).form("Drill hole");
    driver_.row("Driller").press(WXK_ESCAPE).window("KorvantIDE").press('Y');
    ASSERT_TRUE(edit(hole)) << "kept";
    EXPECT_EQ(textOf(hole, "driller"), "other");
    driver_.form("Drill hole").enter("third").press(WXK_RETURN).untilShows("third");
    driver_.press('Z', wxMOD_CONTROL).untilShows("other").press(WXK_ESCAPE);
    EXPECT_FALSE(edit(hole)) << "nothing is lost";
    driver_.form("Drill hole").press('F', wxMOD_CONTROL).enter("depth").press(WXK_RETURN);
    driver_.row("Depth").press(WXK_ESCAPE).when("all rows", [] {
        return !shownList()->rowRect(0).IsEmpty();
    });
    driver_.form("Drill hole").press(WXK_ESCAPE);
    EXPECT_FALSE(edit(hole)) << "the first key took the search away";
}

TEST_F(FormConfirm, FormsComeBackWhereTheyWereClosed) {
    rememberedRectangle(FormKind::dialog) = {};
    ScriptObject object;
    object.setTitle("Place");
    object.addProperty("a", "A", 1.0, "", true);
    wxRect first, second;
    driver_.form("Place").run([&] {
        first = findWindow("Place")->GetRect();
        findWindow("Place")->SetSize(100, 60, 500, 500);
    });
    // What the window manager said of the old size may still be on its way.
    driver_.when("its new size, for good", [looks = 0]() mutable {
        looks = findWindow("Place")->GetSize() == wxSize(500, 500) ? looks + 1 : 0;
        return looks >= 50;
    });
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit(object));
    const FormRectangle kept = rememberedRectangle(FormKind::dialog);
    driver_.form("Place").run([&] { second = findWindow("Place")->GetRect(); });
    driver_.press(WXK_ESCAPE);
    EXPECT_FALSE(edit(object));
    EXPECT_TRUE(kept.known);
    EXPECT_EQ(second, wxRect(kept.x, kept.y, kept.width, kept.height));
    EXPECT_NE(second.GetSize(), first.GetSize());
    rememberedRectangle(FormKind::dialog) = {-5000, 9000, 9000, 400, true};
    driver_.form("Place").run([&] { second = findWindow("Place")->GetRect(); }).key(WXK_ESCAPE);
    EXPECT_FALSE(edit(object));
    EXPECT_TRUE(wxRect(0, 0, 1280, 1024).Contains(second.GetPosition()));
    EXPECT_LE(second.width, 1280);
    rememberedRectangle(FormKind::dialog) = {};
}

TEST_F(FormConfirm, AnotherFormMayOpenMeanwhile) {
    ScriptObject pump, hole;
    makePump(pump);
    makeDrillHole(hole);
    pump.setProperty("motor", 99.0);
    bool inner = false;
    driver_.form("Pump sizing").enter("outer").press(WXK_RETURN).untilShows("outer");
    FormDriver second;
    driver_.run([&] {
        second.form("Drill hole").enter("inner").press(WXK_RETURN, wxMOD_CONTROL);
        inner = hole.edit();
        pump.clear();
    });
    driver_.when("the inner one", [&] { return second.done(); });
    driver_.form("Pump sizing").press(WXK_RETURN, wxMOD_CONTROL);
    EXPECT_TRUE(edit(pump));
    EXPECT_TRUE(inner);
    EXPECT_EQ(textOf(hole, "driller"), "inner");
    EXPECT_EQ(pump.getPropertiesCount(), 0) << "properties that are gone stay gone";
}

}  // namespace
}  // namespace korvant::test
