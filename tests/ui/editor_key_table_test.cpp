// Each key of the window with everything around the text, in groups, pressed as a user would.
#include <wx/clipbrd.h>
#include <wx/textctrl.h>

#include "base/system/user_folders.h"
#include "editor_full_window.h"
#include "support/ui_x_keys.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/tip_pop_up.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"

using namespace korvant;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::FullWindow;
using korvant::test::kTour;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

constexpr char kAsksAndLoops[] =
    "int[] counts = {3, 1, 2};\n"
    "int main() {\n"
    "    Print(\"Name: \");\n"
    "    string name;\n"
    "    Input(name);\n"
    "    for (uint i = 0; i < counts.length(); i++)\n"
    "        Print(name + counts[i] + \"\\n\");\n"
    "    return 0;\n"
    "}\n";

class EditorKeyTable : public FullWindow {
  protected:
    EditorKeyTable() { use(ThemeChoice::light); }
    void untilText(const std::string& wanted) {
        driver.when("text " + wanted, [this, wanted] { return frame() && text() == wanted; });
    }
    void untilLine(int line) {
        driver.when("line " + std::to_string(line),
                    [this, line] { return caretLine() == line && editor()->HasFocus(); });
    }
    ui::FindBar* bar() const { return part<ui::FindBar>(); }
    void untilSaid(const std::string& wanted) {
        driver.when("said " + wanted, [this, wanted] { return bar() && bar()->said() == wanted; });
    }
    void untilFocus(const std::string& what, std::function<const wxWindow*()> window) {
        driver.when("the focus on " + what, [window] {
            const wxWindow* wanted = window();
            return wanted && wxWindow::FindFocus() == wanted;
        });
    }
    wxWindow* canvas() const {
        return part<ui::ConsolePane>() ? &part<ui::ConsolePane>()->canvas() : nullptr;
    }
    static std::string clipboard() {
        wxClipboardLocker locker;
        wxTextDataObject data;
        wxTheClipboard->GetData(data);
        return data.GetText().utf8_string();
    }
    void untilCopied(const std::string& wanted) {
        driver.when("copied " + wanted, [wanted] { return clipboard() == wanted; });
    }
};

TEST_F(EditorKeyTable, SaveAsAndGoToLine) {
    const std::string path = folder.file("other.as");
    writeFile(path, "");
    ui::setFileChooser([path](wxWindow*, const FileDialogRequest& request) {
        EXPECT_TRUE(request.saving);
        return path;
    });
    ready();
    driver.key('S', wxMOD_CONTROL | wxMOD_SHIFT);
    untilTitle("Script Editor - other.as");
    driver.when("the file", [path] { return readFile(path) == "a\nb\nc\n"; });
    driver.key('G', wxMOD_CONTROL);
    driver.window("Goto line").type("3").key(WXK_RETURN).gone("Goto line");
    untilLine(3);
    closeBox();
    edit("a\nb\nc\n");
}

TEST_F(EditorKeyTable, MenusByTheirLetters) {
    ready();
    gotoLine(2);
    driver.key('D', wxMOD_ALT);
    driver.when("the Debug menu", test::menuIsOpen);
    driver.key('B');
    driver.when("a breakpoint",
                [this] { return !test::menuIsOpen() && markedLines() == std::vector<int>{2}; });
    ready();
    driver.key('P', wxMOD_ALT);
    driver.when("the Program menu", test::menuIsOpen);
    driver.key('B');
    untilOutput("Builded, no error.");
    closeBox();
    edit("int main() {\n    return 0;\n}\n");
}

TEST_F(EditorKeyTable, FindBar) {
    ready();
    driver.run([this] { editor()->SetSelection(0, 3); });
    driver.key('F', wxMOD_CONTROL);
    untilSaid("1 of 3");
    untilFocus("the field", [this] { return bar()->field(); });
    check([this] { EXPECT_FALSE(bar()->hasReplaceRow()); });
    driver.key(WXK_RETURN);
    untilSaid("2 of 3");
    driver.key(WXK_RETURN, wxMOD_SHIFT);
    untilSaid("1 of 3");
    driver.key(WXK_F3).key(WXK_F3);
    untilSaid("3 of 3");
    driver.key(WXK_F3);
    untilSaid("1 of 3, first again");
    // From the text the keys go on finding.
    driver.key(WXK_F6, wxMOD_CONTROL);
    ready();
    driver.key(WXK_F3);
    untilSaid("2 of 3");
    driver.key('H', wxMOD_CONTROL);
    driver.when("the row to replace with", [this] { return bar()->hasReplaceRow(); });
    untilFocus("the field", [this] { return bar()->field(); });
    driver.key(WXK_RETURN, wxMOD_ALT);
    ready();
    check([this] { EXPECT_EQ(editor()->GetSelections(), 3); });
    driver.type("x");
    untilText("x x x\n");
    untilSaid("No match");
    driver.key('F', wxMOD_CONTROL);
    untilFocus("the field", [this] { return bar()->field(); });
    driver.key(WXK_ESCAPE);
    driver.when("no bar", [this] { return !bar() && editor()->HasFocus(); });
    closeBox();
    edit("one one one\n");
}

TEST_F(EditorKeyTable, SearchGoesOnWhereTheBarIsClosed) {
    const auto untilFound = [this](int from) {
        driver.when("a match", [this, from] { return editor()->GetSelectionStart() == from; });
        ready();
    };
    ready();
    driver.key(WXK_F3);
    untilFocus("the field", [this] { return bar() ? bar()->field() : nullptr; });
    driver.type("one").key(WXK_RETURN);
    untilSaid("1 of 2");
    driver.key(WXK_ESCAPE);
    driver.when("no bar", [this] { return !bar() && editor()->HasFocus(); });
    driver.key(WXK_F3);
    untilFound(8);
    untilSaid("2 of 2");
    driver.key(WXK_F3);
    untilFound(0);
    untilSaid("1 of 2, first again");
    closeBox();
    edit("one two one\n");
}

TEST_F(EditorKeyTable, TabGoesRoundInTheFindBar) {
    ready();
    driver.run([this] { editor()->SetSelection(4, 11); });
    driver.key('H', wxMOD_CONTROL);
    untilFocus("the field", [this] { return bar() ? bar()->field() : nullptr; });
    driver.type("one").key(WXK_TAB);
    untilFocus("the replacement", [this] { return bar()->replacement(); });
    driver.type("2").key(WXK_TAB, wxMOD_SHIFT).key(WXK_TAB, wxMOD_SHIFT);
    driver.key(WXK_TAB, wxMOD_SHIFT).key(WXK_TAB, wxMOD_SHIFT);
    untilFocus("the check", [this] { return findChild<ui::PaintedCheck>(bar()); });
    check([this] { EXPECT_EQ(bar()->replaceAllButton()->face().label, "Replace all 4"); });
    driver.key(WXK_SPACE);
    driver.when("those in the selection",
                [this] { return bar()->replaceAllButton()->face().label == "Replace all 2"; });
    driver.key(WXK_TAB, wxMOD_SHIFT).key(WXK_SPACE);
    untilText("one 2 2 one\n");
    driver.key(WXK_ESCAPE);
    ready();
    closeBox();
    edit("one one one one\n");
}

TEST_F(EditorKeyTable, TabGoesRoundInTheBreakpointsBox) {
    ready();
    breakAt({2});
    driver.key(WXK_F9, wxMOD_ALT);
    driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
    untilFocus("the choice",
               [this] { return findChild<ui::PaintedCheck>(part<ui::BreakpointBox>()); });
    driver.key(WXK_DOWN);
    untilFocus("its field", [this] { return findChild<wxTextCtrl>(part<ui::BreakpointBox>()); });
    driver.type("x").key(WXK_TAB).key(WXK_SPACE);
    driver.when("switched off", [this] {
        return !findChild<ui::PaintedCheck>(part<ui::BreakpointBox>(), 4)->value();
    });
    driver.key(WXK_TAB).key(WXK_RETURN);
    driver.when("no breakpoint",
                [this] { return !part<ui::BreakpointBox>() && markedLines().empty(); });
    ready();
    closeBox();
    EXPECT_EQ(edit("int main() {\n    return 0;\n}\n"), "int main() {\n    return 0;\n}\n");
}

TEST_F(EditorKeyTable, ReplacedByKeys) {
    ready();
    driver.key('H', wxMOD_CONTROL);
    untilFocus("the field", [this] { return bar() ? bar()->field() : nullptr; });
    driver.type("a");
    untilSaid("4");
    driver.key(WXK_RETURN);
    untilSaid("1 of 4");
    driver.key(WXK_TAB);
    untilFocus("the replacement", [this] { return bar()->replacement(); });
    driver.type("b").key(WXK_RETURN);
    untilText("b\na\na a\n");
    driver.key(WXK_ESCAPE);
    ready();
    driver.run([this] { editor()->SetSelection(4, 5); });
    closeBox();
    edit("a\na\na a\n");
}

TEST_F(EditorKeyTable, Zoom) {
    const auto percent = [this] { return part<ui::StatusLine>()->content().right.back(); };
    ready();
    driver.key('+', wxMOD_CONTROL).key('+', wxMOD_CONTROL);
    driver.when("larger", [this] { return editor()->GetZoom() == 2; });
    driver.key('-', wxMOD_CONTROL);
    driver.when("smaller", [this] { return editor()->GetZoom() == 1; });
    driver.when("what is said of it", [percent] { return percent() == "110 %"; });
    driver.key('0', wxMOD_CONTROL);
    driver.when("the usual size", [percent] { return percent() == "100 %"; });
    driver.run([this] {
        wxUIActionSimulator simulator;
        simulator.MouseMove(editor()->ClientToScreen(wxPoint(200, 100)));
        simulator.KeyDown(WXK_CONTROL);
        test::turnWheel(true);
        simulator.KeyUp(WXK_CONTROL);
    });
    driver.when("larger by the wheel", [percent] { return percent() == "110 %"; });
    driver.key('0', wxMOD_CONTROL);
    driver.when("the usual size again", [percent] { return percent() == "100 %"; });
    closeBox();
    edit("text\n");
}

TEST_F(EditorKeyTable, PanesByNumberAndBack) {
    ready();
    driver.key('2', wxMOD_CONTROL);
    untilFocus("the output", [this] { return pane(); });
    driver.key('3', wxMOD_CONTROL);
    untilFocus("the empty console", [this] { return part<ui::ConsolePane>(); });
    driver.key('4', wxMOD_CONTROL);
    untilFocus("the problems", [this] { return part<ui::ProblemList>(); });
    driver.key('5', wxMOD_CONTROL);
    untilFocus("the variables", [this] { return list(ui::DebugPanel::kVariables); });
    driver.key('6', wxMOD_CONTROL);
    untilFocus("the stack", [this] { return list(ui::DebugPanel::kStack); });
    driver.key('7', wxMOD_CONTROL);
    untilFocus("the outline", [this] {
        return part<ui::OutlinePane>() ? part<ui::OutlinePane>()->list() : nullptr;
    });
    driver.key('1', wxMOD_CONTROL);
    ready();
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("no panel", [this] { return !part<ui::DebugPanel>(); });
    driver.key('J', wxMOD_CONTROL);
    driver.when("no panes", [this] { return !part<ui::ProblemList>() && !pane(); });
    driver.key('2', wxMOD_CONTROL);
    untilFocus("the output", [this] { return pane(); });
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.key(WXK_ESCAPE);
    ready();
    closeBox();
    edit(kTour);
}

TEST_F(EditorKeyTable, EscapeClosesOneThingAfterTheOther) {
    ready();
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return bar() && bar()->field()->HasFocus(); });
    driver.key('1', wxMOD_CONTROL);
    ready();
    driver.run([this] { editor()->GotoLine(41); });
    driver.key(WXK_END).type("StrS");
    driver.when("the list", [this] { return part<ui::SuggestionPopUp>() != nullptr; });
    driver.key(WXK_ESCAPE);
    driver.when("no list", [this] { return !part<ui::SuggestionPopUp>(); });
    check([this] { EXPECT_NE(bar(), nullptr); });
    driver.run([this] { editor()->GotoPos(editor()->FindText(0, 9000, "report(hole)") + 2); });
    driver.key(WXK_F1, wxMOD_CONTROL);
    driver.when("what is known of it", [this] { return part<ui::TipPopUp>() != nullptr; });
    driver.key(WXK_ESCAPE);
    driver.when("no tip", [this] { return !part<ui::TipPopUp>(); });
    check([this] { EXPECT_NE(bar(), nullptr); });
    driver.key(WXK_ESCAPE);
    driver.when("no bar", [this] { return !bar(); });
    driver.key('2', wxMOD_CONTROL);
    untilFocus("the output", [this] { return pane(); });
    driver.key(WXK_ESCAPE);
    ready();
    closeBox();
    edit(kTour);
}

/// A script that asks and stands still, with each pane used by keys.
class EditorByKeysAlone : public EditorKeyTable {
  protected:
    void next(const std::string& what, std::function<const wxWindow*()> window) {
        driver.key(WXK_F6, wxMOD_CONTROL);
        untilFocus(what, std::move(window));
    }
    std::function<const wxWindow*()> section(ui::DebugPanel::Section which) {
        return [this, which]() -> const wxWindow* { return list(which); };
    }
    void stopBehindAQuestion();
    void useVariables();
    void useWatches();
    void useBreakpoints();
};

void EditorByKeysAlone::stopBehindAQuestion() {
    ready();
    driver.key('7', wxMOD_CONTROL);
    driver.when("the outline", [this] {
        return part<ui::OutlinePane>() && part<ui::OutlinePane>()->list()->count() == 1;
    });
    driver.key(WXK_HOME).key(WXK_RETURN);
    untilLine(2);
    for (int i = 0; i < 5; ++i) driver.key(WXK_DOWN);
    driver.key(WXK_F9);
    driver.when("a breakpoint", [this] { return markedLines() == std::vector<int>{7}; });
    driver.key(WXK_F5);
    untilFocus("the console", [this] { return canvas(); });
    driver.when("the question", [this] { return part<ui::ConsolePane>()->waiting(); });
    driver.type("n").key(WXK_RETURN);
    untilStatus("Stopped at line 7 in main");
    ready();
}

void EditorByKeysAlone::useVariables() {
    next("the variables", section(ui::DebugPanel::kVariables));
    driver.key(WXK_HOME).key('C', wxMOD_CONTROL);
    untilCopied("name = \"n\"");
    driver.key(WXK_F2).type("\"m\"").key(WXK_RETURN);
    driver.when("the new value", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("name=\"m\"\n") != std::string::npos;
    });
    driver.key(WXK_END).key(WXK_RIGHT).key(WXK_DOWN);
    driver.when("the global variables", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find(" counts=3 elements") !=
               std::string::npos;
    });
    driver.key(WXK_RIGHT);
    driver.when("the elements", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("  [2]=2") != std::string::npos;
    });
    driver.key(WXK_LEFT);
    driver.when("no elements", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("  [2]=2") == std::string::npos;
    });
}

void EditorByKeysAlone::useWatches() {
    next("the watches", section(ui::DebugPanel::kWatches));
    driver.key(WXK_HOME).key(WXK_RETURN).type("i + 1").key(WXK_RETURN);
    driver.when("the watch",
                [this] { return rows(list(ui::DebugPanel::kWatches)).rfind("i + 1=1\n", 0) == 0; });
    driver.key(WXK_HOME).key('C', wxMOD_CONTROL);
    untilCopied("i + 1 = 1");
    driver.key(WXK_F2);
    driver.when("a field", [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()); });
    driver.key('A', wxMOD_CONTROL).type("i + 2").key(WXK_RETURN);
    driver.when("the other watch",
                [this] { return rows(list(ui::DebugPanel::kWatches)).rfind("i + 2=2\n", 0) == 0; });
    driver.key(WXK_DELETE);
    driver.when("no watch", [this] {
        return rows(list(ui::DebugPanel::kWatches)) ==
               "Add an expression to see its value at every stop.\n";
    });
}

void EditorByKeysAlone::useBreakpoints() {
    next("the breakpoints", section(ui::DebugPanel::kBreakpoints));
    driver.key(WXK_HOME).key(WXK_SPACE);
    driver.when("it is off", [this] { return markedLines().empty(); });
    driver.key(WXK_SPACE);
    driver.when("it is on", [this] { return markedLines() == std::vector<int>{7}; });
    driver.key(WXK_DELETE);
    driver.when("none", [this] { return list(ui::DebugPanel::kBreakpoints)->count() == 0; });
}

/// Everything there is to do while a script stands still and runs, without the mouse.
TEST_F(EditorByKeysAlone, EveryPaneAndTheConsole) {
    stopBehindAQuestion();
    next("the outline", [this] { return part<ui::OutlinePane>()->list(); });
    next("the output", [this] { return pane(); });
    next("the console", [this] { return canvas(); });
    driver.key('C', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("what was printed", [] { return clipboard().rfind("Name: n", 0) == 0; });
    next("the stack", section(ui::DebugPanel::kStack));
    useVariables();
    useWatches();
    useBreakpoints();
    next("the toolbar", [this] { return part<ui::MainToolbar>()->button(command_id::kContinue); });
    driver.key(WXK_TAB, wxMOD_SHIFT);
    untilFocus("the breakpoints", section(ui::DebugPanel::kBreakpoints));
    driver.key(WXK_TAB);
    untilFocus("the toolbar",
               [this] { return part<ui::MainToolbar>()->button(command_id::kContinue); });
    driver.key(WXK_F6, wxMOD_CONTROL | wxMOD_SHIFT);
    untilFocus("the breakpoints", section(ui::DebugPanel::kBreakpoints));
    driver.key(WXK_F6, wxMOD_CONTROL);
    driver.key(WXK_RETURN);
    untilStatus("Ready");
    driver.when("the whole text", [this] {
        return part<ui::ConsolePane>()->printed().find("m3\nm1\nm2\n") != std::string::npos;
    });
    closeBox();
    edit(kAsksAndLoops);
}

}  // namespace
