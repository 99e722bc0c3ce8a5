// Keys, clicks and sizes in any order over a form with everything: it stays whole, and what is not
// confirmed changes nothing. KORVANT_STORM is the number of acts, KORVANT_STORM_SEEDS of storms.
#include <gtest/gtest.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <cstdlib>
#include <random>

#include "form_objects.h"
#include "form_probe.h"
#include "ui/form/form_choosers.h"
#include "ui/kit/clipboard.h"

namespace korvant::test {
namespace {

struct Press {
    int code;
    int modifiers;
};
constexpr Press kPresses[] = {
    {'1', 0},
    {'5', 0},
    {'A', 0},
    {'S', 0},
    {'-', 0},
    {'.', 0},
    {WXK_SPACE, 0},
    {WXK_RETURN, 0},
    {WXK_RETURN, 0},
    {WXK_TAB, 0},
    {WXK_TAB, wxMOD_SHIFT},
    {WXK_ESCAPE, 0},
    {WXK_UP, 0},
    {WXK_DOWN, 0},
    {WXK_DOWN, 0},
    {WXK_LEFT, 0},
    {WXK_RIGHT, 0},
    {WXK_PAGEDOWN, 0},
    {WXK_PAGEUP, 0},
    {WXK_HOME, 0},
    {WXK_END, 0},
    {WXK_BACK, 0},
    {WXK_DELETE, 0},
    {WXK_F2, 0},
    {WXK_F4, 0},
    {WXK_F6, 0},
    {WXK_F9, 0},
    {WXK_DOWN, wxMOD_ALT},
    {WXK_PAGEDOWN, wxMOD_CONTROL},
    {WXK_PAGEUP, wxMOD_CONTROL},
    {WXK_RETURN, wxMOD_CONTROL},
    {'F', wxMOD_CONTROL},
    {'Z', wxMOD_CONTROL},
    {'Z', wxMOD_CONTROL},
    {'Y', wxMOD_CONTROL},
    {'R', wxMOD_CONTROL},
    {'A', wxMOD_CONTROL},
    {'C', wxMOD_CONTROL},
    {'V', wxMOD_CONTROL},
    {'A', wxMOD_ALT},
    {'O', wxMOD_ALT},
    {'R', wxMOD_ALT},
};

int numberIn(const char* name, int usual) {
    const char* const value = std::getenv(name);
    return value ? std::atoi(value) : usual;
}

/// Every value that the object has, its bits included.
std::string valuesOf(ScriptObject& object) {
    std::string all;
    for (int i = 0; !object.getPropertyName(i).empty(); ++i) {
        const std::string name = object.getPropertyName(i);
        char real[40];
        std::snprintf(real, sizeof real, "%a", realOf(object, name));
        all += name + "=" + textOf(object, name) + "," + std::to_string(integerOf(object, name)) +
               "," + real + (booleanOf(object, name) ? ",1\n" : ",0\n");
    }
    return all;
}

void makeEverything(ScriptObject& object) {
    ScriptObject pump, hole;
    makePump(pump);
    makeDrillHole(hole);
    object.append(pump);
    object.append(hole);
    object.setTitle("Storm");
    object.addClass("Long", true);
    for (int i = 0; i < 60; ++i)
        object.addProperty("row" + std::to_string(i), "Row " + std::to_string(i), i, "mm", true);
}

class FormStorm : public testing::Test {
  protected:
    FormStorm() : before_(ui::formChoosers()) {
        ui::formChoosers().file = [](const ui::FileRequest&) {
            return wxString("/data/other.txt");
        };
        ui::formChoosers().mayOverwrite = [](wxWindow*, const wxString&) { return true; };
        ui::formChoosers().colour = [](wxWindow*, const wxString&, const wxColour&) {
            return *wxBLUE;
        };
        ui::copyToClipboard("12,5\nand more");
    }
    ~FormStorm() override { ui::formChoosers() = before_; }

    int any(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    void act() {
        wxTopLevelWindow* form = shownForm();
        if (!form || !wxGetActiveWindow()) return;
        wxUIActionSimulator simulator;
        const int kind = any(20);
        if (kind == 0) {
            resizeContent(*form, wxSize(360 + any(500), 400 + any(400)));
        } else if (kind < 4) {
            const wxRect place = form->GetClientRect();
            simulator.MouseMove(form->ClientToScreen(wxPoint(any(place.width), any(place.height))));
            kind == 1 ? simulator.MouseDblClick() : simulator.MouseClick();
        } else {
            const Press press = kPresses[any(std::size(kPresses))];
            simulator.Char(press.code, press.modifiers);
        }
    }

    /// Acts on the form until there were enough; then closes whatever is open, without storing.
    void rage(int acts) {
        acts_ = acts;
        for (int i = 0; i < acts; ++i)
            driver_.run([this] {
                act();
                --acts_;
            });
        driver_.when("the end of all windows", [this, turn = 0]() mutable {
            if (!shownForm()) return true;
            if (closing_ || ++turn % 8 != 0) return false;
            closing_ = true;
            const int answer = findActive("KorvantIDE") ? static_cast<int>('N') : WXK_ESCAPE;
            wxUIActionSimulator().Char(answer);
            closing_ = false;
            return false;
        });
    }

    FormsInstalled forms_;
    LocaleFor english_{0};
    FormDriver driver_;
    std::mt19937_64 random_;
    const ui::FormChoosers before_;
    int acts_ = 0;  ///< left
    bool closing_ = false;
};

TEST_F(FormStorm, AnyKeysAndClicksLeaveAWholeForm) {
    if (!std::getenv("KORVANT_WINDOW_MANAGER")) GTEST_SKIP() << "nobody gives windows the keyboard";
    for (int seed = 1; seed <= numberIn("KORVANT_STORM_SEEDS", 1); ++seed) {
        SCOPED_TRACE(seed);
        random_.seed(static_cast<unsigned>(seed));
        ScriptObject object;
        makeEverything(object);
        rage(numberIn("KORVANT_STORM", 60));
        while (acts_ > 0 && !HasFailure()) {
            const std::string before = valuesOf(object);
            const bool confirmed = object.edit();
            EXPECT_TRUE(confirmed || valuesOf(object) == before);
        }
        EXPECT_TRUE(driver_.finish());
    }
}

/// The toolkit's fields cut texts of 65,535 bytes and more, pasted ones and those that are opened.
TEST_F(FormStorm, TextsThatNoFieldTakesAreRefusedAloudAndNeverCut) {
    ScriptObject pump;
    makePump(pump);
    pump.setProperty("motor", 99.0);
    const std::string text(1 << 20, 'x');
    pump.setProperty("remarks", text);
    pump.setProperty("curve", text);
    ui::copyToClipboard(text);
    driver_.form("Pump sizing").press(WXK_F2).untilEditing().press('A', wxMOD_CONTROL);
    driver_.press('V', wxMOD_CONTROL).when("some text", [] { return typedText().size() > 9999; });
    driver_.press(WXK_RETURN).untilRefused().press(WXK_ESCAPE).untilIdle().untilShows("P-101 A");
    for (const char* label : {"Remarks", "Curve file"}) {
        driver_.press(WXK_DOWN);
        if (std::string(label) == "Remarks") driver_.press(WXK_DOWN);
        driver_.row(label).press(WXK_RETURN).window(label).run([label] {
            const auto field = findChild<wxTextCtrl>(findWindow(label));
            EXPECT_FALSE(field->IsEditable());
            EXPECT_LT(field->GetValue().size(), 10'000U);
        });
        driver_.press(WXK_RETURN, wxMOD_CONTROL).form("Pump sizing");
    }
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    EXPECT_TRUE(pump.edit());
    EXPECT_TRUE(driver_.done());
    EXPECT_EQ(textOf(pump, "name"), "P-101 A");
    EXPECT_TRUE(textOf(pump, "remarks") == text);
    EXPECT_TRUE(textOf(pump, "curve") == text);
}

/// The field goes with its row, keeps its text, and is found again.
TEST_F(FormStorm, AnOpenFieldSurvivesSizesAndSearches) {
    ScriptObject pump;
    makePump(pump);
    pump.setProperty("motor", 99.0);
    driver_.form("Pump sizing").press(WXK_F2).untilEditing().press('A', wxMOD_CONTROL).enter("new");
    for (const wxSize size : {wxSize(380, 420), wxSize(800, 700), wxSize(620, 640)}) {
        driver_.run([size] { resizeContent(*shownForm(), size); });
        driver_.when("the size", [size] { return shownForm()->GetClientSize() == size; });
        driver_.untilTyped("new").when("the field in its row", [] {
            const wxRect row = shownList()->rowRect(shownList()->selectedProperty());
            return row.Contains(shownList()->GetEditorControl()->GetRect());
        });
    }
    // What hides the row takes what was typed first.
    driver_.press('F', wxMOD_CONTROL).enter("head").when("the row is gone", [] {
        return shownList()->rowRect(0).IsEmpty() && !shownList()->editing();
    });
    driver_.press(WXK_ESCAPE).when("all rows", [] { return !shownList()->rowRect(0).IsEmpty(); });
    driver_.press(WXK_RETURN, wxMOD_CONTROL);
    EXPECT_TRUE(pump.edit());
    EXPECT_TRUE(driver_.done());
    EXPECT_EQ(textOf(pump, "name"), "new");
}

}  // namespace
}  // namespace korvant::test
