// Dialogs as questions on a terminal, and without one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text/plain_text.h"
#include "host/terminal/terminal_frontend.h"
#include "support/fake_console.h"

namespace korvant {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class TerminalDialogs : public testing::Test {
  protected:
    TerminalFrontend onTerminal(const std::string& typed) {
        console.input += typed;
        TerminalFrontend::Options options;
        options.terminal = &console;
        return TerminalFrontend(options);
    }
    TerminalFrontend alone() {
        TerminalFrontend::Options options;
        options.notice = [this](const std::string& line) { notices.push_back(line); };
        return TerminalFrontend(options);
    }
    static MessageBoxRequest box(std::uint32_t style, const std::string& text = "Text") {
        MessageBoxRequest request;
        request.caption = kModuleCaption;
        request.text = text;
        request.style = style;
        request.plain = true;
        return request;
    }
    test::FakeConsole console;
    std::vector<std::string> notices;
};

TEST_F(TerminalDialogs, AnswersNameButtonsByTheirCaptionsOrBeginnings) {
    using namespace box_button;
    const std::uint32_t skips = box_style::kSkipSkipAllCancel;
    const std::uint32_t all = box_style::kYesNoCancel | box_style::kYesToAll | box_style::kNoToAll;
    const struct {
        std::uint32_t style;
        const char* typed;
        int answer;
    } cases[] = {
        {box_style::kYesNo, "y\n", kYes},
        {box_style::kYesNo, " NO \n", kNo},
        {box_style::kYesNo, "\n", kYes},
        {box_style::kYesNo, "maybe\nx\nn\n", kNo},
        {box_style::kYesNo, "", kNo},
        {box_style::kOkCancel | box_style::kIconWarning, "\n", kCancel},
        {box_style::kOk, "\n", kOk},
        {box_style::kOk, "", kOk},
        {box_style::kAbortRetryIgnore, "", 0},
        {skips, "skip\n", kSkip},
        {skips, "skip a\n", kSkipAll},
        {skips, "s\nc\n", kCancel},
        {all, "yes to all\n", kYesToAll},
        {all, "no t\n", kNoToAll},
        {box_style::kCancelTryContinue, "t\n", kTryAgain},
        {box_style::kIgnoreIgnoreAllCancel, "ignore all\n", kIgnoreAll},
    };
    for (const auto& each : cases) {
        console.input.clear();
        test::FakeConsole fresh;
        fresh.input = each.typed;
        TerminalFrontend::Options options;
        options.terminal = &fresh;
        EXPECT_EQ(each.answer, TerminalFrontend(options).messageBox(box(each.style)))
            << each.style << " " << each.typed;
    }
}

TEST_F(TerminalDialogs, ABoxSaysWhatItIsAndWhatCanBeAnswered) {
    onTerminal("n\n").messageBox(box(box_style::kYesNo | box_style::kIconQuestion, "Go on?"));
    EXPECT_EQ("Question: Go on?\n[Yes/No; Return: Yes] ", console.output);
    console.output.clear();
    MessageBoxRequest request =
        box(box_style::kOkCancel | box_style::kIconError, "<b>a</b> &lt; 5<br>next");
    request.plain = false;
    request.caption = "Checks";
    request.captions = {{box_button::kCancel, "Annuler"}};
    request.offerStop = true;
    EXPECT_EQ(box_button::kStopScript, onTerminal("stop\n").messageBox(request));
    EXPECT_EQ("Error (Checks): a < 5\nnext\n[OK/Annuler/Stop the script; Return: Annuler] ",
              console.output);
}

TEST_F(TerminalDialogs, DetailsAreShownOnRequest) {
    MessageBoxRequest request = box(box_style::kOk);
    request.details = "All of it";
    EXPECT_EQ(box_button::kOk, onTerminal("more\nok\n").messageBox(request));
    EXPECT_THAT(console.output, HasSubstr("All of it\n"));
}

TEST_F(TerminalDialogs, ACountdownChoosesTheDefaultButton) {
    /// Nobody types anything.
    class Silent : public test::FakeConsole {
      public:
        int readChar(StopQuery shouldStop) override {
            while (!shouldStop()) {
            }
            return kStopped;
        }
    } silent;
    TerminalFrontend::Options options;
    options.terminal = &silent;
    TerminalFrontend frontend(options);
    MessageBoxRequest request = box(box_style::kYesNo);
    request.countdownSeconds = 1;
    EXPECT_EQ(box_button::kYes, frontend.messageBox(request));
    options.shouldStop = [] { return true; };
    EXPECT_EQ(box_button::kNo, TerminalFrontend(options).messageBox(request));
}

TEST_F(TerminalDialogs, PromptsAskUntilTheAnswerIsValid) {
    EXPECT_EQ(42, onTerminal("many\n4.5\n99999999999\n 42 \n").promptInt("Holes", 5));
    EXPECT_EQ(
        "Holes [5]: Please enter an integer.\nHoles [5]: Please enter an integer.\n"
        "Holes [5]: Please enter an integer.\nHoles [5]: ",
        console.output);
    EXPECT_EQ(2.5, onTerminal("x\n2,5\n").promptDouble("Depth", 1));
    EXPECT_EQ(-0.5f, onTerminal("-5e-1\n").promptFloat("Grade", 1));
    EXPECT_EQ("two words ", onTerminal("two words \n").promptString("Name", "old"));
}

TEST_F(TerminalDialogs, AnEmptyAnswerAndTheEndOfInputKeepWhatWasOffered) {
    for (const char* typed : {"\n", ""}) {
        console.input.clear();
        EXPECT_EQ(5, onTerminal(typed).promptInt("i", 5));
        EXPECT_EQ(0.1f, onTerminal(typed).promptFloat("f", 0.1f));
        EXPECT_EQ(0.1, onTerminal(typed).promptDouble("d", 0.1));
        EXPECT_EQ("old", onTerminal(typed).promptString("s", "old"));
    }
    EXPECT_THAT(console.output, HasSubstr("f [0.1]: "));
    EXPECT_THAT(console.output, HasSubstr("d [0.1]: "));
}

TEST_F(TerminalDialogs, WithoutATerminalEveryDialogIsAsIfClosedAndSaysSoOnce) {
    TerminalFrontend frontend = alone();
    EXPECT_EQ(box_button::kNo,
              frontend.messageBox(box(box_style::kYesNo | box_style::kIconQuestion)));
    EXPECT_EQ(5, frontend.promptInt("Holes", 5));
    EXPECT_EQ("old", frontend.promptString("Name", "old"));
    EXPECT_THAT(notices,
                ElementsAre("Question: Text",
                            "no terminal to ask on: dialogs are answered as if they were closed",
                            "Prompt: Holes", "Prompt: Name"));
    EXPECT_EQ(nullptr, frontend.makeProgressWindow());
}

TEST_F(TerminalDialogs, AProgramThatTellsTheEndItselfShowsNoBoxForIt) {
    TerminalFrontend::Options options;
    options.terminal = &console;
    options.omitRunReports = true;
    MessageBoxRequest request = box(box_style::kOk | box_style::kIconError);
    request.runReport = true;
    EXPECT_EQ(0, TerminalFrontend(options).messageBox(request));
    EXPECT_EQ("", console.output);
}

TEST(PlainText, LeavesTheWordsOfMarkup) {
    EXPECT_EQ("a\nb & c", plainFromHtml("<p>a</p><b>b</b> &amp; c<br>"));
    EXPECT_EQ("- one\n- two", plainFromHtml("<ul><li>one</li><li>two</li></ul>"));
    EXPECT_EQ("5 > 3 < unclosed", plainFromHtml("5 &gt; 3 < unclosed"));
}

}  // namespace
}  // namespace korvant
