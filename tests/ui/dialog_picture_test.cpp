// Pictures of the dialogs for people to look at; only when KORVANT_SCREENSHOTS names a folder.
#include <gtest/gtest.h>
#include <wx/stattext.h>

#include <cstdlib>
#include <string>

#include "host/services/frontend.h"
#include "korvantide/script_object.h"
#include "support/ui_driver.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/boxes/prompt_dialogs.h"
#include "ui/kit/html_view.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::UiDriver;

namespace {

const char* const kLanguages[] = {"en", "fr", "es"};

class DialogPictures : public testing::Test {
  protected:
    void SetUp() override {
        if (!std::getenv("KORVANT_SCREENSHOTS")) GTEST_SKIP() << "no folder for pictures";
    }
    void TearDown() override { ScriptObject::m_locale = 0; }

    static UiDriver& painted(UiDriver& driver) {
        return driver.when("the paint", [turns = 0]() mutable { return ++turns > 80; });
    }

    template <class Show>
    void inEveryLanguage(const std::string& name, const wxString& title, Show show) {
        for (int locale = 0; locale < 3; ++locale) {
            ScriptObject::m_locale = locale;
            UiDriver driver;
            painted(driver.window(title)).picture(name + "-" + kLanguages[locale]);
            driver.key(WXK_ESCAPE);
            show(driver);
            EXPECT_TRUE(driver.done());
        }
    }
};

MessageBoxRequest request(std::uint32_t style, const std::string& text) {
    MessageBoxRequest made;
    made.caption = "Survey";
    made.text = text;
    made.style = style;
    return made;
}

TEST_F(DialogPictures, ShortBox) {
    inEveryLanguage("box-short", "Survey", [](UiDriver&) {
        ui::showMessageBox(request(box_style::kYesNo | box_style::kIconQuestion, "Carry on?"));
    });
}

TEST_F(DialogPictures, ManyButtons) {
    auto made = request(box_style::kYesNoCancel | box_style::kIconWarning | box_style::kYesToAll |
                            box_style::kNoToAll,
                        "The file <b>north ridge.dat</b> has been changed since it was read.\n\n"
                        "Overwrite it with the <i>corrected</i> depths?");
    made.offerDoNotShow = true;
    made.company = "ZVK-Korvant";
    made.module = "Pictures";
    made.countdownSeconds = 30;
    inEveryLanguage("box-many", "Survey", [&](UiDriver&) { ui::showMessageBox(made); });
}

TEST_F(DialogPictures, Details) {
    auto made = request(box_style::kRetryCancel | box_style::kIconError,
                        "Three of the 412 samples could not be placed.");
    made.details =
        "<b>Samples outside the grid</b><table cellpadding=3>"
        "<tr><th>Sample</th><th>Easting</th><th>Northing</th></tr>"
        "<tr><td>N-117</td><td>431 220.5</td><td>5 220 118.0</td></tr>"
        "<tr><td>N-118</td><td>431 224.1</td><td>5 220 121.7</td></tr>"
        "<tr><td>S-009</td><td>430 001.0</td><td>5 219 870.2</td></tr></table><hr>"
        "The grid ends at <font color=#c00000>431 200</font>.<ul><li>Check the datum.</li>"
        "<li>Enlarge the grid.</li></ul>";
    inEveryLanguage("box-details", "Survey", [&](UiDriver&) { ui::showMessageBox(made); });
    ScriptObject::m_locale = 0;
    UiDriver driver;
    const auto opened = [] { return findChild<ui::HtmlView>(findWindow("Survey"), 1) != nullptr; };
    driver.window("Survey").key('M', wxMOD_ALT).when("the details", opened);
    painted(driver).picture("box-details-open").key(WXK_ESCAPE);
    ui::showMessageBox(made);
    EXPECT_TRUE(driver.done());
}

TEST_F(DialogPictures, LongText) {
    std::string text;
    for (int i = 1; i <= 120; ++i)
        text += "Line " + std::to_string(i) + " of a report that is longer than any screen.\n";
    inEveryLanguage("box-long", "Survey", [&](UiDriver&) {
        ui::showMessageBox(request(box_style::kOk | box_style::kIconInformation, text));
    });
}

TEST_F(DialogPictures, Prompts) {
    inEveryLanguage("prompt-string", "KorvantIDE", [](UiDriver&) {
        ui::PromptString(nullptr, "Name of the site", "North Ridge").ask();
    });
    inEveryLanguage("prompt-lines", "KorvantIDE", [](UiDriver&) {
        ui::PromptString(nullptr, "Remarks", "Two lines\nof text").ask();
    });
    inEveryLanguage("prompt-double", "KorvantIDE", [](UiDriver&) {
        ui::PromptDouble(nullptr, "Depth of each hole in m", 150.25).ask();
    });
    inEveryLanguage("prompt-float", "KorvantIDE",
                    [](UiDriver&) { ui::PromptFloat(nullptr, "Grade", 0.1F).ask(); });
}

TEST_F(DialogPictures, RefusedNumber) {
    for (int locale = 0; locale < 3; ++locale) {
        ScriptObject::m_locale = locale;
        UiDriver driver;
        driver.window("KorvantIDE").type("12 holes").key(WXK_RETURN);
        driver.when("the refusal", [] {
            const auto remark = findChild<wxStaticText>(findWindow("KorvantIDE"), 1);
            return remark && remark->IsShown();
        });
        painted(driver).picture(std::string("prompt-refused-") + kLanguages[locale]);
        driver.key(WXK_ESCAPE);
        ui::PromptInt(nullptr, "Number of holes", 12).ask();
        EXPECT_TRUE(driver.done());
    }
}

}  // namespace
