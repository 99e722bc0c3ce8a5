// Boxes that the user does not want to see again.
#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/confbase.h>
#include <wx/toplevel.h>

#include <string>

#include "host/services/frontend.h"
#include "support/ui_driver.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/kit/settings_store.h"
#include "ui/kit/ui_runtime.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::UiDriver;

namespace {

constexpr char kCompany[] = "KorvantIDE tests", kModule[] = "Answers";

class KeptAnswers : public testing::Test {
  protected:
    KeptAnswers() {
        EXPECT_TRUE(ui::startToolkit());
        forget();
    }
    ~KeptAnswers() override { forget(); }

    static void forget() {
        const auto store = ui::openSettings(kCompany, kModule);
        if (store) store->DeleteAll();
    }

    static MessageBoxRequest question(const std::string& text) {
        MessageBoxRequest request;
        request.caption = "Box";
        request.text = text;
        request.style = box_style::kYesNoCancel;
        request.offerDoNotShow = true;
        request.company = kCompany;
        request.module = kModule;
        return request;
    }

    /// The answer to a box that comes up, ticked and closed by a key.
    static int ticked(const MessageBoxRequest& request, int key) {
        UiDriver driver;
        driver.window("Box").run([] {
            const auto tick = findChild<wxCheckBox>(findWindow("Box"));
            ASSERT_NE(tick, nullptr);
            tick->SetValue(true);
        });
        driver.key(key);
        const int answer = ui::showMessageBox(request);
        EXPECT_TRUE(driver.done());
        return answer;
    }
};

TEST_F(KeptAnswers, ATickedBoxIsNotShownAgain) {
    EXPECT_EQ(ticked(question("Carry on?"), 'N'), box_button::kNo);
    EXPECT_EQ(ui::showMessageBox(question("Carry on?")), box_button::kNo);
    EXPECT_EQ(ticked(question("Another text?"), 'Y'), box_button::kYes);
    EXPECT_EQ(ui::showMessageBox(question("Another text?")), box_button::kYes);
    EXPECT_EQ(ui::showMessageBox(question("Carry on?")), box_button::kNo);
}

TEST_F(KeptAnswers, CancelIsNoAnswerToKeep) {
    EXPECT_EQ(ticked(question("Carry on?"), WXK_ESCAPE), box_button::kCancel);
    EXPECT_EQ(ticked(question("Carry on?"), 'Y'), box_button::kYes);
}

TEST_F(KeptAnswers, NothingIsKeptWithoutAPlaceForIt) {
    MessageBoxRequest request = question("Carry on?");
    request.module.clear();
    for (const int key : {'Y', 'N'})
        EXPECT_EQ(ticked(request, key), key == 'Y' ? box_button::kYes : box_button::kNo);
}

}  // namespace
