// The console window, typed into with real keys.
#include "ui/console/console_window.h"

#include <gtest/gtest.h>
#include <wx/menu.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include "support/fake_console.h"
#include "support/ui_driver.h"
#include "support/ui_x_keys.h"
#include "ui/console/console_frame.h"
#include "ui/kit/clipboard.h"
#include "ui/kit/text_conversion.h"

using namespace korvant;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::UiDriver;

namespace {

std::atomic<bool> stopAsked{false};

void stop() noexcept {
    stopAsked = true;
}
bool shouldStop() {
    return stopAsked;
}

class ConsoleWindowTest : public testing::Test {
  protected:
    void SetUp() override {
        stopAsked = false;
        ASSERT_EQ(console.allocate(info), 0U);
        console.onInterrupt(stop);
        console.setUp(info);
        console.setTitle("Output");
        console.show();
        ASSERT_NE(console.frame(), nullptr);
        driver.onTimeout = [] { stopAsked = true; };
    }
    void TearDown() override {
        EXPECT_TRUE(driver.done());
        console.release();
    }

    std::string readLine() {
        std::string line;
        for (int byte = console.readChar(shouldStop); byte > 0 && byte != '\n';
             byte = console.readChar(shouldStop))
            line += static_cast<char>(byte);
        return line;
    }
    ui::ConsoleCanvas& canvas() { return console.frame()->canvas(); }
    wxWindow* canvasWindow() { return &canvas(); }
    UiDriver::Condition shows(const std::string& text) {
        return [this, text] { return console.grid().text().find(text) != std::string::npos; };
    }

    test::FakeConsole fallback;
    ui::ConsoleWindow console{fallback};
    ConsoleInfo info;
    UiDriver driver;
};

TEST_F(ConsoleWindowTest, IsTitledAndHasNoWayToBeClosed) {
    EXPECT_EQ(console.frame()->GetTitle(), "Output");
    EXPECT_FALSE(console.frame()->HasFlag(wxCLOSE_BOX));
    EXPECT_FALSE(console.frame()->Close());
    EXPECT_EQ(info.columns, 80);
    EXPECT_EQ(info.rows, 300);
    EXPECT_EQ(canvas().shownRows(), 25);
    console.hide();
    EXPECT_FALSE(console.frame()->IsShown());
    console.write("again");
    console.show();
    EXPECT_TRUE(console.frame()->IsShown());
}

TEST_F(ConsoleWindowTest, ALineIsTypedEditedAndEntered) {
    console.write("depth? ");
    driver.window("Output").type("12.75").key(WXK_LEFT).key(WXK_BACK).key(WXK_RETURN);
    EXPECT_EQ(readLine(), "12.5");
    EXPECT_EQ(console.grid().text(), "depth? 12.5\n\n");
    driver.window("Output").key(WXK_UP).key(WXK_RETURN);
    EXPECT_EQ(readLine(), "12.5");
}

TEST_F(ConsoleWindowTest, APasteOfSeveralLinesAnswersSeveralReads) {
    ui::copyToClipboard(ui::fromUtf8("one\r\ntwo \xC3\xA9\nthr"));
    driver.window("Output").key('V', wxMOD_CONTROL);
    EXPECT_EQ(readLine(), "one");
    EXPECT_EQ(readLine(), "two \xE9") << "bytes as scripts hold them";
    driver.key('E').key('E').key(WXK_RETURN);
    EXPECT_EQ(readLine(), "three");
}

TEST_F(ConsoleWindowTest, EndOfInputIsControlD) {
    driver.window("Output").key('D', wxMOD_CONTROL);
    EXPECT_EQ(console.readChar(shouldStop), Console::kEndOfInput);
    driver.key('7').key(WXK_RETURN);
    EXPECT_EQ(readLine(), "7") << "the input goes on";
}

TEST_F(ConsoleWindowTest, SingleKeysHaveTheirCodes) {
    driver.window("Output").key('A').key(WXK_UP).key(WXK_F1).key(WXK_ESCAPE).key(WXK_RETURN);
    std::vector<int> codes;
    for (int i = 0; i < 7; ++i) codes.push_back(console.readKey(shouldStop));
    EXPECT_EQ(codes, (std::vector<int>{'a', 224, 72, 0, 59, 27, 13}));
    EXPECT_EQ(console.grid().text(), "\n") << "without echo";
}

TEST_F(ConsoleWindowTest, ControlCEndsAWait) {
    driver.window("Output").type("half").key('C', wxMOD_CONTROL);
    EXPECT_EQ(console.readChar(shouldStop), Console::kStopped);
    EXPECT_TRUE(stopAsked);
    EXPECT_EQ(console.grid().text(), "half\n\n");
}

TEST_F(ConsoleWindowTest, ControlCIsHeardWhileTheThreadIsBusy) {
    ASSERT_TRUE(driver.window("Output").finish());
    std::thread user([] { test::pressInWindow("Output", "c", true); });
    const auto end = std::chrono::steady_clock::now() + UiDriver::kPatience;
    while (!stopAsked && std::chrono::steady_clock::now() < end) {
    }
    user.join();
    EXPECT_TRUE(stopAsked);
}

TEST_F(ConsoleWindowTest, KeysTypedDuringOutputAreKept) {
    ASSERT_TRUE(driver.window("Output").finish());
    std::thread user([] { test::pressInWindow("Output", "7", false); });
    user.join();
    std::string line;
    driver.when("the key", [] { return true; }).key(WXK_RETURN);
    console.flush();
    EXPECT_EQ(readLine(), "7");
}

TEST_F(ConsoleWindowTest, TextIsSelectedAndCopied) {
    console.write("first line\nsecond line\n");
    const wxSize cell = canvas().sizeFor(1, 1);
    const auto target = [this] { return canvasWindow(); };
    driver.window("Output")
        .dragIn(target, {6 * cell.x, cell.y / 2}, {6 * cell.x + 2, cell.y + cell.y / 2})
        .when("a selection", [this] { return canvas().hasSelection(); })
        .key('C', wxMOD_CONTROL | wxMOD_SHIFT)
        .when("a copy", [] { return ui::textFromClipboard() == "line\nsecond"; });
    EXPECT_TRUE(driver.finish());
    EXPECT_FALSE(stopAsked) << "copying is no stop request";
}

TEST_F(ConsoleWindowTest, ScrollsBackAndReturnsToTheCursorWithAKey) {
    for (int i = 0; i < 500; ++i) console.write(std::to_string(i) + "\n");
    console.flush();
    const std::int64_t end = canvas().firstShown();
    EXPECT_EQ(end, 500 - 24);
    driver.window("Output")
        .key(WXK_PAGEUP, wxMOD_SHIFT)
        .when("a page up", [&] { return canvas().firstShown() == end - 25; })
        .key(WXK_HOME, wxMOD_CONTROL)
        .when("the start", [&] { return canvas().firstShown() == 0; })
        .run([this] { console.write("more\n"); })
        .when("no jump", [&] { return canvas().firstShown() == 0; })
        .key('X')
        .when("the cursor", [&] { return canvas().firstShown() == end + 1; });
    EXPECT_TRUE(driver.finish());
}

TEST_F(ConsoleWindowTest, ManyLinesAreFastAndNothingIsLost) {
    std::string expected;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 100'000; ++i) {
        const std::string line = "line " + std::to_string(i) + " of many\n";
        console.write(line);
        expected += line;
    }
    console.flush();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(console.grid().text(), expected + "\n");
    EXPECT_LT(took.count(), 10) << "seconds; a fraction of one is usual";
    RecordProperty("seconds", std::to_string(took.count()));
}

TEST(ConsoleWindow, WithoutAWindowTheFallbackIsTheConsole) {
    test::FakeConsole fallback;
    fallback.input = "5\n";
    ui::ConsoleWindow console(fallback);
    console.onInterrupt(stop);
    EXPECT_EQ(fallback.interrupt, nullptr) << "signals are the host's";
    console.write("text");
    EXPECT_EQ(fallback.output, "text");
    EXPECT_EQ(console.readChar(nullptr), '5');
    console.show();
    console.hide();
    console.moveCursor(3, 4);
    EXPECT_EQ(fallback.calls, (std::vector<std::string>{"show", "hide", "move 3 4"}));
}

}  // namespace
