// The four prompts, answered with real keys.
#include <gtest/gtest.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <cmath>
#include <limits>
#include <string>

#include "korvantide/script_object.h"
#include "support/fake_frontend.h"
#include "support/ui_driver.h"
#include "support/ui_x_keys.h"
#include "ui/boxes/wx_frontend.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"
#include "ui/kit/ui_texts.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::UiDriver;

namespace {

const wxString kTitle = "KorvantIDE";

class Prompts : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_TRUE(driver.done());
        EXPECT_TRUE(fallback.labels.empty()) << "there is a display";
        ScriptObject::m_locale = 0;
    }

    /// Replaces what stands in the field and presses Return.
    void enter(const std::string& text) {
        driver.window(kTitle).key('A', wxMOD_CONTROL).type(text).key(WXK_RETURN);
    }
    /// A remark below the field; the dialog stays open.
    void expectRemark(ui::UiText text) {
        const wxString wanted = ui::uiText(text);
        driver.when("a remark", [wanted] {
            for (int i = 0; const auto label = findChild<wxStaticText>(findWindow(kTitle), i); ++i)
                if (label->GetLabelText() == wanted) return true;
            return false;
        });
    }

    test::FakeFrontend fallback;
    ui::WxFrontend frontend{fallback};
    UiDriver driver;
};

/// What a script does next may take long and show nothing.
TEST_F(Prompts, ClosedPromptIsOffTheScreenAtOnce) {
    enter("1");
    frontend.promptInt("Depth", 5);
    EXPECT_EQ(test::windowFingerprint("KorvantIDE"), 0u);
}

TEST_F(Prompts, ReturnTakesTheValue) {
    enter("42");
    EXPECT_EQ(frontend.promptInt("Depth", 5), 42);
    enter("-2.5e3");
    EXPECT_EQ(frontend.promptDouble("Depth", 5), -2500);
    enter("0,1");
    EXPECT_EQ(frontend.promptFloat("Depth", 5), 0.1F) << "a comma is read as the decimal mark";
    enter("north 7");
    EXPECT_EQ(frontend.promptString("Name", "south"), "north 7");
}

TEST_F(Prompts, LeavingWithoutOkGivesTheInitialValue) {
    driver.window(kTitle).type("77").key(WXK_ESCAPE);
    EXPECT_EQ(frontend.promptInt("Depth", 5), 5);
    driver.window(kTitle).type("77").close(kTitle);
    EXPECT_EQ(frontend.promptDouble("Depth", 2.5), 2.5);
    driver.window(kTitle).type("x").key(WXK_TAB).key(WXK_TAB).key(WXK_SPACE);
    EXPECT_EQ(frontend.promptString("Name", "south"), "south") << "the second button is Cancel";
}

TEST_F(Prompts, AnUntouchedValueKeepsEveryBit) {
    const double reals[] = {0.1,    -0.0,         1e300,
                            5e-324, std::nan(""), std::numeric_limits<double>::infinity()};
    for (const double value : reals) {
        driver.window(kTitle).key(WXK_RETURN);
        const double taken = frontend.promptDouble("Depth", value);
        EXPECT_EQ(std::signbit(taken), std::signbit(value)) << value;
        EXPECT_TRUE(taken == value || (std::isnan(taken) && std::isnan(value))) << value;
    }
    const std::string texts[] = {"", "\xE9t\xE9", std::string("zero\0byte", 9), " blanks "};
    for (const std::string& text : texts) {
        driver.window(kTitle).key(WXK_RETURN);
        EXPECT_EQ(frontend.promptString("Name", text), text);
    }
}

TEST_F(Prompts, SeveralLinesAreEditedAsSuch) {
    driver.window(kTitle).key(WXK_TAB).key(WXK_RETURN);
    EXPECT_EQ(frontend.promptString("Name", "two\nlines"), "two\nlines");
    driver.window(kTitle).key(WXK_END, wxMOD_CONTROL).type("9").key(WXK_TAB).key(WXK_RETURN);
    EXPECT_EQ(frontend.promptString("Name", "two\nlines"), "two\nlines9");
}

TEST_F(Prompts, ATextThatNoFieldCanTakeStaysAsItIs) {
    const std::string texts[] = {std::string(8'000, 'x'), std::string(1'000'000, 'x')};
    for (const std::string& text : texts) {
        driver.window(kTitle).key(WXK_RETURN);
        EXPECT_EQ(frontend.promptString("Name", text), text);
    }
}

TEST_F(Prompts, ATextThatIsNoValueIsExplainedBesideTheField) {
    enter("12.5");
    expectRemark(ui::UiText::needsWholeNumber);
    enter("2147483648");
    expectRemark(ui::UiText::needsWholeNumber);
    enter("-2147483648");
    EXPECT_EQ(frontend.promptInt("Depth", 5), std::numeric_limits<std::int32_t>::min());

    enter("abc");
    expectRemark(ui::UiText::needsNumber);
    driver.type("1");
    driver.when("no remark",
                [] { return findChild<wxStaticText>(findWindow(kTitle), 1) == nullptr; });
    driver.key(WXK_ESCAPE);
    EXPECT_EQ(frontend.promptDouble("Depth", 5), 5);

    enter("1e39");
    expectRemark(ui::UiText::beyondFloat);
    driver.key(WXK_ESCAPE);
    EXPECT_EQ(frontend.promptFloat("Depth", 5), 5);

    ScriptObject::m_locale = 1;
    enter("nan");
    expectRemark(ui::UiText::needsNumber);
    driver.key(WXK_ESCAPE);
    EXPECT_EQ(frontend.promptDouble("Profondeur", 5), 5);
}

TEST_F(Prompts, TypedAccentsReachTheScriptAsItsBytes) {
    ui::copyToClipboard(ui::fromUtf8("\xC3\xA9t\xC3\xA9"));
    driver.window(kTitle).key('A', wxMOD_CONTROL).key('V', wxMOD_CONTROL);
    driver.when("the paste",
                [] { return findChild<wxTextCtrl>(findWindow(kTitle))->GetValue().length() == 3; });
    driver.key(WXK_RETURN);
    EXPECT_EQ(frontend.promptString("Saison", ""), "\xE9t\xE9");
}

TEST_F(Prompts, PastedTextsAreTakenWholeOrRefused) {
    const auto paste = [&](std::size_t length) {
        ui::copyToClipboard(wxString('x', length));
        driver.window(kTitle).key('A', wxMOD_CONTROL).key('V', wxMOD_CONTROL);
        driver.when("the paste", [] {
            return findChild<wxTextCtrl>(findWindow(kTitle))->GetValue().length() > 9'999;
        });
        driver.key(WXK_RETURN);
    };
    paste(50'000);
    EXPECT_EQ(frontend.promptString("Name", "").size(), 50'000u);
    paste(70'000);
    expectRemark(ui::UiText::tooLongForField);
    driver.key(WXK_ESCAPE);
    EXPECT_EQ(frontend.promptString("Name", "before"), "before");
}

TEST_F(Prompts, LabelsOfAnySizeFitTheScreen) {
    for (const std::string& label :
         {std::string(), std::string("one & two"), std::string(5'000'000, 'x'),
          std::string(20'000, '\n'), std::string("<b>not markup</b>")}) {
        driver.window(kTitle)
            .run([] { EXPECT_LE(findWindow(kTitle)->GetSize().y, 1024); })
            .key(WXK_ESCAPE);
        EXPECT_EQ(frontend.promptInt(label, 5), 5);
    }
}

}  // namespace
