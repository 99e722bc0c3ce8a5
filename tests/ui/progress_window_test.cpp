// The progress window: it lives while the script's thread is busy.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "host/library/progress.h"
#include "host/run/run_state.h"
#include "support/ui_driver.h"
#include "support/ui_x_keys.h"
#include "ui/boxes/message_box_dialog.h"
#include "ui/boxes/progress_window.h"

using namespace korvant;
using korvant::test::answerWindow;
using korvant::test::awaitWindow;
using korvant::test::distanceFromCentre;
using korvant::test::pressInWindow;
using korvant::test::UiDriver;
using korvant::test::windowFingerprint;

namespace {

class Progress : public testing::Test {
  protected:
    void start() {
        progress = CThreadedProgressText::begin(caption, text, ui::makeProgressWindow,
                                                [this] { escaped = true; });
    }
    void show(const std::string& title, const std::string& what) {
        writeProgress(text, what);
        writeProgress(caption, title);
        progress->setVisible(true);
    }
    void TearDown() override {
        if (progress) progress->end();
    }

    /// Keeps this thread from everything else until the condition holds.
    template <class Condition>
    bool busyUntil(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + UiDriver::kPatience;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) return false;
        }
        return true;
    }

    ProgressBuffer caption, text;
    std::atomic<bool> escaped{false};
    std::shared_ptr<CThreadedProgressText> progress;
};

TEST_F(Progress, ShowsHidesAndEnds) {
    start();
    show("Survey", "first");
    ASSERT_TRUE(awaitWindow("Survey"));
    progress->setVisible(false);
    EXPECT_TRUE(awaitWindow("Survey", false));
    progress->setVisible(true);
    EXPECT_TRUE(awaitWindow("Survey"));
    progress->end();
    EXPECT_FALSE(progress->IsAlive());
    EXPECT_TRUE(awaitWindow("Survey", false));
}

/// Above the middle, where dialogs stand.
TEST_F(Progress, OpensBetweenTheSidesOfTheScreen) {
    start();
    show("Survey", "first");
    EXPECT_TRUE(busyUntil([] {
        const int distance = distanceFromCentre("Survey");
        return distance >= 0 && distance <= 2;
    })) << distanceFromCentre("Survey");
}

TEST_F(Progress, PaintsWhileTheScriptsThreadIsBusy) {
    start();
    show("Survey", "step 1");
    ASSERT_TRUE(awaitWindow("Survey"));
    unsigned long before = 0;
    ASSERT_TRUE(busyUntil([&] { return (before = windowFingerprint("Survey")) > 1; }));
    show("Survey", "step 2, which is another text");
    EXPECT_TRUE(busyUntil([&] { return windowFingerprint("Survey") != before; }));
}

TEST_F(Progress, EscapeIsHeardWhileTheScriptsThreadIsBusy) {
    start();
    show("Survey", "working");
    std::thread user([] { EXPECT_TRUE(pressInWindow("Survey", "Escape", false)); });
    EXPECT_TRUE(busyUntil([this] { return escaped.load(); }));
    user.join();
}

TEST_F(Progress, TextsOfAnyKindAreShown) {
    start();
    for (const std::string& what :
         {std::string("\xE9t\xE9 \xFF\x81"), std::string("two\nlines\n"), std::string(99, 'W'),
          std::string("\xF0\x9F\x8E\x89 \xE4\xB8\xAD"), std::string("\x1B[31m")}) {
        show("Survey", what);
        ASSERT_TRUE(awaitWindow("Survey"));
        EXPECT_TRUE(busyUntil([this, &what] { return readProgress(text) == what; }));
    }
}

TEST_F(Progress, LeavesTheKeyboardToAnOpenDialog) {
    UiDriver driver;
    driver.window("Question").run([this] {
        start();
        show("Survey", "meanwhile");
    });
    // Answers no earlier than the window is there: the driver's steps end with the question.
    std::thread user([] {
        EXPECT_TRUE(awaitWindow("Survey"));
        EXPECT_TRUE(answerWindow("Question", "n"));
    });
    MessageBoxRequest request;
    request.caption = "Question";
    request.text = "Carry on?";
    request.style = box_style::kYesNo;
    EXPECT_EQ(ui::showMessageBox(request), box_button::kNo);
    user.join();
    EXPECT_TRUE(driver.done());
}

TEST_F(Progress, ThousandTimes) {
    for (int i = 0; i < 1000; ++i) {
        if (i % 100 == 0) {
            if (progress) progress->end();
            start();
        }
        show("Survey " + std::to_string(i), "step " + std::to_string(i));
    }
    EXPECT_TRUE(awaitWindow("Survey 999"));
}

TEST(ProgressStyle, FollowsTheUsersTheme) {
    const ui::ProgressStyle style = ui::progressStyle();
    EXPECT_NE(style.background, style.text);
    EXPECT_GE(style.scale, 1);
}

}  // namespace
