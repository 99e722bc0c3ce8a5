// Writing, running, stopping and looking, with real keys in the real window.
#include <wx/combobox.h>
#include <wx/textctrl.h>

#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::MarkerLook;

namespace {

constexpr char kFinished[] = "Application finished normaly.\n";

constexpr char kLoop[] =
    "int twice(int x) {\n"
    "    int y = x * 2;\n"
    "    return y;\n"
    "}\n"
    "int main() {\n"
    "    int sum = 0;\n"
    "    for (int i = 0; i < 5; i++) {\n"
    "        sum += twice(i);\n"
    "    }\n"
    "    return 0;\n"
    "}\n";

class EditorDebugging : public EditorWindowTest {
  protected:
    /// Selects the first `word` at or behind the beginning of a line, as a double click would.
    void select(int line, const wxString& word) {
        driver.run([this, line, word] {
            const int from = editor()->PositionFromLine(line - 1);
            const int found = editor()->FindText(from, editor()->GetLength(), word);
            editor()->SetSelection(found, found + static_cast<int>(word.length()));
        });
    }
    /// On a row of the output pane, counted from 0.
    void clickTwice(int row) {
        driver.run([this, row] {
            const auto place = pane()->PointFromPosition(pane()->PositionFromLine(row));
            const wxPoint onScreen = pane()->ClientToScreen(place + wxPoint(2, 4));
            wxUIActionSimulator simulator;
            simulator.MouseMove(onScreen);
            simulator.MouseDblClick();
        });
    }
    void untilMarked(const std::vector<int>& lines) {
        driver.when("markers", [this, lines] { return frame() && markedLines() == lines; });
    }
};

TEST_F(EditorDebugging, TypedScriptRuns) {
    type("int main() {\nint a = 1;\nreturn 0;\n}\n");
    driver.key(WXK_F5);
    untilOutput(kFinished);
    closeBox();
    EXPECT_EQ(edit(""), "int main() {\n    int a = 1;\n    return 0;\n}\n");
}

TEST_F(EditorDebugging, StopStepLookAndGoOn) {
    ready();
    gotoLine(8);
    driver.key(WXK_F9);
    untilMarked({8});
    driver.key(WXK_F5);
    untilStoppedAt(8);
    untilOutput("Breakpoint reached at line 8\n");
    driver.key(WXK_F12);
    untilStoppedAt(2);
    driver.key(WXK_F11);
    untilStoppedAt(3);
    select(2, "x");
    driver.key(WXK_F4);
    untilOutput("int x = 0\nBreakpoint reached at line 3\n");
    check([this] { EXPECT_TRUE(editor()->CallTipActive()); });
    driver.key(WXK_F5);
    untilStoppedAt(8);
    select(8, "sum");
    driver.key(WXK_F4);
    untilOutput("int sum = 0\nBreakpoint reached at line 8\n");
    choose(command_id::kDeleteBreakpoints);
    driver.key(WXK_F5);
    untilOutput(kFinished);
    check([this] {
        EXPECT_FALSE(isEnabled(command_id::kStepOver));
        EXPECT_FALSE(isEnabled(command_id::kStepInto));
        EXPECT_FALSE(isEnabled(command_id::kStop));
        EXPECT_EQ(markedLines(), std::vector<int>());
    });
    closeBox();
    EXPECT_EQ(edit(kLoop), kLoop);
}

TEST_F(EditorDebugging, ConditionIsTypedIntoThePrompt) {
    useWindows();
    ready();
    gotoLine(8);
    choose(command_id::kAddCondition);
    driver.window("KorvantIDE").type("i==3").key(WXK_RETURN);
    ready();
    driver.key(WXK_F5);
    untilOutput("Conditional breakpoint reached at line 8 (i==3)\n");
    untilStoppedAt(8);
    choose(command_id::kStop);
    driver.when("the end of debugging", [this] { return !isEnabled(command_id::kStop); });
    untilMarked({8});
    closeBox();
    edit(kLoop);
}

TEST_F(EditorDebugging, WrongConditionIsExplainedAtOnce) {
    useWindows();
    ready();
    choose(command_id::kAddCondition);
    driver.window("KorvantIDE").type("i==").key(WXK_RETURN);
    untilBox();
    driver.key(WXK_RETURN);
    ready();
    closeBox();
    edit(kLoop);
}

TEST_F(EditorDebugging, BuildErrorsAreMarkedAndAreAClickAway) {
    ready();
    driver.key(WXK_F7);
    driver.when("build messages",
                [this] { return output().find("at line 3") != std::string::npos; });
    check([this] {
        EXPECT_EQ(markedLines(), std::vector<int>({1, 3}));
        EXPECT_EQ(markerLook(), MarkerLook::error);
    });
    clickTwice(1);
    driver.when("a jump", [this] { return caretLine() == 3 && editor()->HasFocus(); });
    driver.run([this] {
        editor()->SetSelection(editor()->PositionFromLine(2), editor()->GetLineEndPosition(2));
    });
    type("a = 1;");
    driver.key(WXK_F7);
    untilOutput("Builded, no error.");
    closeBox();
    edit("int main() {\n    int a = 0;\n    b = 1;\n    return a;\n}\n");
}

TEST_F(EditorDebugging, FailureLeadsToItsPlaces) {
    ready();
    driver.key(WXK_F5);
    untilOutput(
        "Application terminated in run time error.\n"
        "Index out of bounds at line 3 in int second(int)\n"
        "  called at line 6 in int main()\n");
    for (const auto& [row, line] : {std::pair{2, 6}, {1, 3}}) {
        clickTwice(row);
        driver.when("a jump", [this, line] { return caretLine() == line && editor()->HasFocus(); });
    }
    closeBox();
    edit(
        "int second(int i) {\n    int[] a(1);\n    return a[i];\n}\nint main() {\n"
        "    return second(1);\n}\n");
}

TEST_F(EditorDebugging, FailedRunGoesToTheFirstErrorNotToItsFunction) {
    ready();
    driver.key(WXK_F5);
    driver.when("build messages",
                [this] { return output().find("at line 3") != std::string::npos; });
    driver.when("the caret on the error", [this] { return caretLine() == 3; });
    closeBox();
    edit("int main() {\n    int a = 0;\n    b = 1;\n    return a;\n}\n");
}

TEST_F(EditorDebugging, OtherBreakpointsAndConditionsCanBeSeenWhileStopped) {
    constexpr int kCondition = 1 << 1, kWaiting = 1 << 9;
    frontend.text = "1";
    ready();
    for (const int line : {8, 10}) {
        gotoLine(line);
        driver.key(WXK_F9);
    }
    choose(command_id::kAddCondition);
    driver.when("a condition", [this] { return editor()->MarkerNext(0, kCondition) == 9; });
    driver.key(WXK_F5);
    untilStoppedAt(8);
    check([this] {
        EXPECT_EQ(editor()->MarkerGet(7) & (kCondition | kWaiting), 0);
        EXPECT_EQ(editor()->MarkerGet(9) & (kCondition | kWaiting), kCondition | kWaiting);
    });
    choose(command_id::kDeleteBreakpoints);
    driver.when("no marks",
                [this] { return editor()->MarkerNext(0, 1 | kCondition | kWaiting) < 0; });
    closeBox();
    edit(kLoop);
}

TEST_F(EditorDebugging, KeysWorkOnceAndEverywhereInTheWindow) {
    ready();
    gotoLine(6);
    driver.key(WXK_F9);
    untilMarked({6});
    driver.run([this] { pane()->SetFocus(); });
    driver.when("the pane's keyboard", [this] { return pane()->HasFocus(); });
    driver.key(WXK_F9);
    untilMarked({});
    driver.key(WXK_F9);
    untilMarked({6});
    driver.key(WXK_F10);
    driver.key(WXK_ESCAPE);
    driver.key(WXK_F5);
    untilStoppedAt(6);
    driver.key(WXK_ESCAPE).key(WXK_F11);
    untilStoppedAt(7);
    closeBox();
    edit(kLoop);
}

TEST_F(EditorDebugging, KeysWorkInTheFindWindow) {
    ready();
    choose(command_id::kFind);
    driver.window("Search").key(WXK_F7);
    untilOutput("Builded, no error.");
    driver.when("the Find window", [] { return test::findWindow("Search") != nullptr; });
    closeBox();
    edit(kLoop);
}

}  // namespace
