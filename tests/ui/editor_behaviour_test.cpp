// What the window does when something happens, and what its keys mean: with real keys and clicks.
#include <angelscript.h>
#include <wx/app.h>
#include <wx/textctrl.h>

#include <chrono>
#include <cstdlib>
#include <fstream>

#include "editor_full_window.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/frame_chooser.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/welcome_pane.h"

using namespace korvant;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

constexpr int kMeasureMargin = 3, kCallerMark = 1 << 15, kFailedMark = 1 << 17,
              kUnverified = 1 << 13, kStopBand = 1 << 20, kExceptionBand = 1 << 21;

const char kCalls[] =
    "int twice(int x) {\n"
    "    int y = x * 2;\n"
    "    return y;\n"
    "}\n"
    "// nothing here\n"
    "int main() {\n"
    "    int sum = 0;\n"
    "    for (int i = 0; i < 3; i++) {\n"
    "        sum += twice(i);\n"
    "    }\n"
    "    if (sum < 0)\n"
    "        sum = 0;\n"
    "    return 0;\n"
    "}\n";

class EditorBehaviour : public FullWindow {
  protected:
    EditorBehaviour() { use(ThemeChoice::light); }
    void untilStopped(int line, const std::string& function) {
        untilStatus("Stopped at line " + std::to_string(line) + " in " + function);
    }
    std::string remark() const { return part<ui::StatusLine>()->content().remark.utf8_string(); }
};

/// A function of the host's shows another window and waits until the user is in it.
TEST_F(EditorBehaviour, AStopComesToTheFront) {
    if (!std::getenv("KORVANT_WINDOW_MANAGER")) GTEST_SKIP() << "nobody gives windows the keyboard";
    static wxFrame* other;
    other = nullptr;
    const auto show = [] {
        const auto until = std::chrono::steady_clock::now() + korvant::test::UiDriver::kPatience;
        other = new wxFrame(nullptr, wxID_ANY, "Another window");
        other->Show();
        other->Raise();
        while (!other->IsActive() && std::chrono::steady_clock::now() < until) wxYield();
#ifdef _WIN32
        // What stands in for the system hears later from the display that the window has it.
        for (int i = 0; i < 50; ++i) wxMilliSleep(10), wxYield();
#endif
        EXPECT_TRUE(other->IsActive());
    };
    ASSERT_GE(
        engine()->RegisterGlobalFunction("void showAnother()", asFUNCTION(+show), asCALL_CDECL), 0);
    ready();
    breakAt({3});
    driver.key(WXK_F5);
    untilStopped(3, "main");
    driver.when("the editor in front", [this] { return frame()->IsActive(); });
    ready();
    driver.run([] { other->Destroy(); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit("int main() {\n    showAnother();\n    return 0;\n}\n");
}

TEST_F(EditorBehaviour, KeysThatGoOn) {
    ready();
    breakAt({9});
    driver.key(WXK_F5);
    untilStopped(9, "main");
    driver.key(WXK_F12);
    untilStopped(2, "twice");
    driver.key(WXK_F10);
    untilStopped(3, "twice");
    driver.key(WXK_F11, wxMOD_SHIFT);
    untilStopped(8, "main");
    driver.key(WXK_F10);
    untilStopped(9, "main");
    choose(command_id::kDeleteBreakpoints);
    driver.key(WXK_F10);
    untilStopped(8, "main");
    gotoLine(13);
    driver.key(WXK_F10, wxMOD_CONTROL);
    untilStopped(13, "main");
    driver.key(WXK_F5, wxMOD_CONTROL | wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, WhatBreakpointsOnlyPrintOutlivesTheRun) {
    ready();
    breakAt({13});
    breakpointWith(9, 3, "i {i}");
    breakpointWith(3, 3, "y {y}");
    driver.key(WXK_F5);
    untilStopped(13, "main");
    const std::string printed = "i 0\ny 0\ni 1\ny 2\ni 2\ny 4\n";
    check([this, printed] { EXPECT_EQ(output(), "Breakpoint reached at line 13\n" + printed); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    check([this, printed] { EXPECT_EQ(output(), "Application finished normaly.\n" + printed); });
    driver.key(WXK_F7);
    untilOutput("Builded, no error.");
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, RestartBeginsAnew) {
    ready();
    breakAt({7, 13});
    driver.key(WXK_F5);
    untilStopped(7, "main");
    driver.key(WXK_F5);
    untilStopped(13, "main");
    driver.key(WXK_F5, wxMOD_CONTROL | wxMOD_SHIFT);
    untilStopped(7, "main");
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, TextThatChangesUnderAStopIsTold) {
    ready();
    breakAt({9});
    driver.key(WXK_F5);
    untilStopped(9, "main");
    check([this] { EXPECT_NE(editor()->MarkerGet(8) & kStopBand, 0); });
    gotoLine(5);
    driver.key(WXK_END).type("x");
    driver.when("the remark", [this] {
        return remark() == "The text has changed since the run began" &&
               (editor()->MarkerGet(8) & kStopBand) == 0;
    });
    picture("look-edited");
    driver.key('Z', wxMOD_CONTROL);
    driver.when("the band again",
                [this] { return remark().empty() && (editor()->MarkerGet(8) & kStopBand) != 0; });
    driver.key('A', wxMOD_CONTROL).type("x");
    driver.when("all of it gone", [this] { return text() == "x"; });
    driver.key('Z', wxMOD_CONTROL);
    driver.when("its text again", [this] { return text() == kCalls && remark().empty(); });
    untilStopped(9, "main");
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, BreakpointWithoutCodeIsTold) {
    ready();
    gotoLine(5);
    driver.key(WXK_F9);
    untilOutput("Line 5 has no code: the script does not stop there.\n");
    driver.when("its mark", [this] { return (editor()->MarkerGet(4) & kUnverified) != 0; });
    gotoLine(9);
    driver.key(WXK_F9);
    driver.when("both", [this] { return markedLines().size() == 2; });
    driver.key(WXK_F5);
    untilStopped(9, "main");
    check([this] {
        EXPECT_EQ(rows(list(ui::DebugPanel::kBreakpoints)),
                  "line 5 (no code on this line)\nline 9\n");
    });
    closeBox();
    edit(kCalls);
}

/// What was typed at an exception could not be undone, copied or saved before the run had ended.
TEST_F(EditorBehaviour, TextIsEditedAtAnException) {
    ownFile = folder.file("tour.as");
    std::ofstream(ownFile) << kTour;
    ready();
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    driver.type(" ");
    driver.when("a letter", [this] { return text() != kTour; });
    driver.key('Z', wxMOD_CONTROL);
    driver.when("none", [this] { return text() == kTour; });
    driver.key('Y', wxMOD_CONTROL);
    driver.when("it again", [this] { return text() != kTour; });
    driver.key('S', wxMOD_CONTROL);
    driver.when("the file", [this] { return korvant::test::readFile(ownFile) == text(); });
    driver.key('A', wxMOD_CONTROL);
    driver.when("all of it", [this] { return editor()->GetSelectionEnd() > 100; });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

/// A theme that was chosen at a stop put the caret's line over the band.
TEST_F(EditorBehaviour, StopStaysMarkedInAnotherTheme) {
    const auto bandIsSeen = [this] {
        return (editor()->MarkerGet(24) & kExceptionBand) != 0 && !editor()->GetCaretLineVisible();
    };
    const auto pick = [this](int command) {
        check([this, command] {
            wxCommandEvent event(wxEVT_MENU, menuItem(command)->GetId());
            frame()->GetEventHandler()->ProcessEvent(event);
        });
    };
    ready();
    driver.key(WXK_F5);
    driver.when("the band", bandIsSeen);
    pick(command_id::kThemeDark);
    driver.when("it in the dark", bandIsSeen);
    pick(command_id::kThemeClassic);
    driver.when("it in classic colours", [this, bandIsSeen] {
        return bandIsSeen() && (editor()->MarkerGet(24) & kFailedMark) != 0;
    });
    pick(command_id::kThemeLight);
    driver.when("it again", bandIsSeen);
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

/// In small letters the box lay over the line below.
TEST_F(EditorBehaviour, ExceptionBoxKeepsItsRoomInSmallLetters) {
    ready();
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    check([this] { editor()->SetZoom(-4); });
    driver.when("its room", [this] {
        const wxRect box = part<ui::ExceptionBox>()->GetRect();
        const int below = editor()->PointFromPosition(editor()->PositionFromLine(25)).y;
        return editor()->TextHeight(0) < 18 && box.GetBottom() < below;
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

TEST_F(EditorBehaviour, ExceptionTellsWhatItsLineTells) {
    ready();
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    check([this] {
        EXPECT_EQ(part<ui::ExceptionBox>()->detail(),
                  "samples has 14 elements, numbered 0 to 13; the number here was 14.");
        EXPECT_NE(editor()->MarkerGet(24) & kFailedMark, 0);
        EXPECT_NE(editor()->MarkerGet(30) & kCallerMark, 0);
    });
    // A line that is typed above moves all of it, and the caret stays where it was.
    driver.key(WXK_RETURN);
    driver.when("the box below it", [this] {
        const int line = editor()->PointFromPosition(editor()->PositionFromLine(25)).y;
        return part<ui::ExceptionBox>()->GetPosition().y >= line + editor()->TextHeight(25);
    });
    check([this] {
        EXPECT_EQ(editor()->MarkerGet(24) & kFailedMark, 0);
        EXPECT_NE(editor()->MarkerGet(25) & kFailedMark, 0);
        EXPECT_NE(editor()->MarkerGet(31) & kCallerMark, 0);
        EXPECT_EQ(editor()->GetCurrentLine(), 25);
        EXPECT_EQ(editor()->AnnotationGetLines(24), 0);
        EXPECT_GT(editor()->AnnotationGetLines(25), 0);
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

TEST_F(EditorBehaviour, LineCountsStandInTheMargin) {
    ready();
    check([this] { EXPECT_EQ(editor()->GetMarginWidth(kMeasureMargin), 0); });
    choose(command_id::kLineCounts);
    driver.when("the check mark", [this] { return isChecked(command_id::kLineCounts); });
    driver.key(WXK_F5);
    driver.when("the margin", [this] { return editor()->GetMarginWidth(kMeasureMargin) > 0; });
    check([this] {
        EXPECT_EQ(editor()->MarginGetText(1), "3");
        EXPECT_EQ(editor()->MarginGetText(6), "1");
        EXPECT_EQ(editor()->MarginGetText(11), "0");
        EXPECT_EQ(editor()->MarginGetText(4), "");
    });
    picture("look-counts");
    choose(command_id::kLineCounts);
    driver.when("no margin", [this] { return editor()->GetMarginWidth(kMeasureMargin) == 0; });
    closeBox();
    edit(kCalls);
    EXPECT_FALSE(ui::loadEditorSettings().lineCounts);
}

TEST_F(EditorBehaviour, FileIsFoundAsItWasLeft) {
    ownFile = (folder.path() / "calls.as").string();
    std::ofstream(ownFile) << kCalls;
    ready();
    breakAt({2, 9});
    gotoLine(9);
    driver.key(WXK_F9, wxMOD_CONTROL);
    driver.when("it is off", [this] { return markedLines().size() == 1; });
    driver.run([this] { editor()->SetSelection(14, 15); });
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.key(WXK_F9, wxMOD_SHIFT);
    driver.when("the watch",
                [this] { return rows(list(ui::DebugPanel::kWatches)).rfind("x\n", 0) == 0; });
    gotoLine(13);
    driver.run([this] { editor()->ToggleFold(5); });
    closeBox();
    edit(kCalls);
    ready();
    check([this] {
        EXPECT_EQ(caretLine(), 13);
        EXPECT_FALSE(editor()->GetFoldExpanded(5));
    });
    closeBox();
    edit(kCalls);
    // Somebody has put a line on top meanwhile.
    const std::string changed = std::string("// new\n") + kCalls;
    std::ofstream(ownFile) << changed;
    ready();
    driver.key(WXK_F5);
    untilStopped(3, "twice");
    check([this] {
        EXPECT_EQ(rows(list(ui::DebugPanel::kBreakpoints)), "line 3\nline 10 (switched off)\n");
        EXPECT_EQ(rows(list(ui::DebugPanel::kWatches)).substr(0, 4), "x=0\n");
    });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(changed);
}

TEST_F(EditorBehaviour, CleanCheckSaysSo) {
    ready();
    driver.key(WXK_F7);
    untilStatus("No problems found");
    untilOutput("Builded, no error.");
    type("x");
    driver.when("not any more", [this] { return statusText() != "No problems found"; });
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, KeysThatMoveText) {
    ready();
    gotoLine(2);
    driver.key(WXK_DOWN, wxMOD_ALT);
    driver.when("the line below",
                [this] { return editor()->GetLine(2) == "    int y = x * 2;\n"; });
    driver.key(WXK_UP, wxMOD_ALT);
    driver.when("the line above", [this] { return editor()->GetText() == kCalls; });
    driver.key('D', wxMOD_CONTROL);
    driver.when("two of it", [this] { return editor()->GetLine(2) == "    int y = x * 2;\n"; });
    closeBox();
    edit(kCalls);
}

TEST_F(EditorBehaviour, FramesAreChosenAboveTheVariablesOfASmallWindow) {
    use(ThemeChoice::light, 1100, 724);
    ready();
    breakAt({3});
    driver.key(WXK_F5);
    untilStopped(3, "twice");
    driver.run([this] { part<ui::FrameChooser>()->SetFocus(); });
    driver.key(WXK_DOWN);
    driver.when("the caller", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("sum=0\n") == 0 && caretLine() == 9;
    });
    driver.key(WXK_UP);
    driver.when("the function itself",
                [this] { return rows(list(ui::DebugPanel::kVariables)).find("x=0\n") == 0; });
    closeBox();
    edit(kCalls);
}

/// The host gets the tour only if somebody has made something of it.
TEST_F(EditorBehaviour, TourIsShownOnceAndIsNotTheHosts) {
    ready();
    driver.when("the tour", [this] {
        return text().find("A tour") != std::string::npos && part<ui::WelcomePane>()->isOfTour();
    });
    driver.key('N', wxMOD_CONTROL);
    driver.when("another text",
                [this] { return text().empty() && !part<ui::WelcomePane>()->isOfTour(); });
    closeBox();
    EXPECT_EQ(edit(""), "");
    ready();
    check([this] {
        EXPECT_EQ(text(), "");
        EXPECT_NE(part<ui::WelcomePane>(), nullptr);
    });
    closeBox();
    EXPECT_EQ(edit(""), "");
}

/// "Nothing was built in the module", without a line, was the first that an author saw.
TEST_F(EditorBehaviour, TextInWhichNothingIsDeclaredYetIsNoError) {
    ready();
    driver.type("x");
    untilStatus("1 error");
    driver.key(WXK_BACK);
    untilStatus("Ready");
    closeBox();
    edit("// What is to come.\n");
}

}  // namespace
