// A run that is held inside itself, at an exception or in what the library called: what can be done
// meanwhile, and how the window is left.
#include <wx/textctrl.h>

#include "editor_full_window.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/file_tabs.h"

using namespace korvant;
using korvant::test::FullWindow;
using korvant::test::kTour;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

/// Stops in a comparator, which the library calls.
const char kSorts[] =
    "class Hole {\n"
    "    int depth;\n"
    "    int opCmp(const Hole &in other) const {\n"
    "        int less = depth - other.depth;\n"
    "        return less;\n"
    "    }\n"
    "}\n"
    "int main() {\n"
    "    Hole[] holes(2);\n"
    "    holes[0].depth = 9;\n"
    "    holes.sortAsc();\n"
    "    int first = holes[0].depth;\n"
    "    return first;\n"
    "}\n";

class EditorHeld : public FullWindow {
  protected:
    EditorHeld() {
        use(ThemeChoice::light);
        ownFile = folder.file("tour.as");
        writeFile(ownFile, kTour);
    }
    void failAtTheTour() {
        ready();
        driver.key(WXK_F5);
        driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
        ready();
    }
    /// With the menu open, which asks what can be done.
    void checkMenu(int letter, std::function<void()> expectations) {
        driver.key(letter, wxMOD_ALT);
        driver.when("the menu", test::menuIsOpen);
        check(std::move(expectations));
        driver.run(test::leaveMenuBar);
        driver.when("no menu", [] { return !test::menuIsOpen(); });
        ready();
    }
    std::string breakpoints() const { return rows(list(ui::DebugPanel::kBreakpoints)); }
    std::size_t texts() const {
        return part<ui::FileTabs>() ? part<ui::FileTabs>()->tabs().size() : 1;
    }
};

TEST_F(EditorHeld, MenusAndToolbarTellWhatCanBeDone) {
    failAtTheTour();
    checkMenu('P', [this] {
        using namespace command_id;
        for (const int id : {kDisplayVariable, kExecute, kStop, kRestart})
            EXPECT_TRUE(isEnabled(id)) << id;
        for (const int id :
             {kBuild, kStepOver, kStepInto, kStepNext, kStepOut, kRunToCaret, kPause})
            EXPECT_FALSE(isEnabled(id)) << id;
    });
    checkMenu('F', [this] {
        using namespace command_id;
        for (const int id : {kNew, kOpen, kSave, kSaveAs, kExit}) EXPECT_TRUE(isEnabled(id)) << id;
        EXPECT_FALSE(isEnabled(kCloseTab)) << "its script runs";
    });
    checkMenu('V', [this] { EXPECT_FALSE(isEnabled(command_id::kClassicLayout)); });
    check([this] {
        for (const int id : {command_id::kNew, command_id::kOpen})
            EXPECT_TRUE(part<ui::MainToolbar>()->button(id)->IsEnabled());
        EXPECT_FALSE(part<ui::MainToolbar>()->button(command_id::kStepOver)->IsEnabled());
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    checkMenu('P', [this] {
        EXPECT_TRUE(isEnabled(command_id::kBuild));
        EXPECT_FALSE(isEnabled(command_id::kPause));
    });
    closeBox();
    edit(kTour);
}

TEST_F(EditorHeld, PlacesValuesAndOtherFilesAreAtHand) {
    failAtTheTour();
    driver.key('G', wxMOD_CONTROL);
    driver.window("Goto line").type("31").key(WXK_RETURN).gone("Goto line");
    driver.when("line 31", [this] { return caretLine() == 31 && editor()->HasFocus(); });
    driver.key(WXK_F9);
    driver.when("a breakpoint", [this] { return breakpoints() == "line 31\n"; });
    // What opens is shown once the window has had a moment.
    driver.key(WXK_F9, wxMOD_ALT).key(WXK_DOWN);
    driver.when("a field of the box",
                [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
    driver.key(WXK_ESCAPE);
    ready();
    driver.key(WXK_F9, wxMOD_CONTROL);
    driver.when("it is off", [this] { return breakpoints() == "line 31 (switched off)\n"; });
    driver.key(WXK_F9);
    driver.when("none", [this] { return breakpoints().empty(); });
    driver.run([this] {
        const int at = editor()->FindText(editor()->PositionFromLine(24), 9000, "best");
        editor()->SetSelection(at, at + 4);
    });
    driver.key(WXK_F4);
    driver.when("the value", [this] { return output().find("uint best = 13") == 0; });
    // Another file comes and goes; the one that runs stays.
    driver.key('N', wxMOD_CONTROL);
    driver.when("two files", [this] { return texts() == 2 && text().empty(); });
    driver.key('W', wxMOD_CONTROL);
    driver.when("one file", [this] { return texts() == 1 && text() == kTour; });
    driver.key('W', wxMOD_CONTROL);
    ready();
    check([this] { EXPECT_EQ(text(), kTour); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

/// Breakpoints that were set at such a stop were not met by the run, and were lost at its next
/// stop.
TEST_F(EditorHeld, BreakpointsSetMeanwhileHold) {
    ownFile.clear();
    ready();
    breakAt({4});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 4 in Hole::opCmp");
    ready();
    check([this] {
        const auto* over = part<ui::MainToolbar>()->button(command_id::kStepOver);
        EXPECT_TRUE(over->IsEnabled());
    });
    gotoLine(5);
    driver.key(WXK_F10, wxMOD_CONTROL);
    untilStatus("Stopped at line 5 in Hole::opCmp");
    ready();
    gotoLine(4);
    driver.key(WXK_F9);
    driver.when("none", [this] { return breakpoints().empty(); });
    gotoLine(12);
    driver.key(WXK_F9);
    gotoLine(13);
    driver.key(WXK_F9);
    driver.when("two", [this] { return breakpoints() == "line 12\nline 13\n"; });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 12 in main");
    check([this] { EXPECT_EQ(breakpoints(), "line 12\nline 13\n"); });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 13 in main");
    driver.key(WXK_F5);
    untilStatus("Ready");
    check([this] { EXPECT_EQ(markedLines(), (std::vector<int>{12, 13})); });
    closeBox();
    edit(kSorts);
}

TEST_F(EditorHeld, ExitEndsTheRunAndAsks) {
    failAtTheTour();
    type(" ");
    choose(command_id::kExit);
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    untilStatus("Ready");
    choose(command_id::kExit);
    untilBox();
    driver.key('N');
    edit(kTour);
    EXPECT_EQ(readFile(ownFile), kTour);
}

/// Whoever changed his mind about closing had each later run stopped as it began.
TEST_F(EditorHeld, StayingAfterTheCloseBoxLetsScriptsRun) {
    writeFile(folder.file("other.as"), "int main() {\n    return 0;\n}\n");
    ready();
    driver.run([this] {
        ui::setFileChooser(
            [path = folder.file("other.as")](wxWindow*, const FileDialogRequest&) { return path; });
    });
    driver.key('O', wxMOD_CONTROL);
    untilTitle("Script Editor - other.as");
    type(" ");
    closeBox();
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    driver.key(WXK_F5);
    untilOutput("Application finished normaly.\n");
    closeBox();
    untilBox();
    driver.key('N');
    edit(kTour);
}

/// Closed at an exception the window asks as it does otherwise.
TEST_F(EditorHeld, CloseBoxEndsTheRunAndAsksAboutOthers) {
    ready();
    driver.key('N', wxMOD_CONTROL);
    driver.when("two files", [this] { return texts() == 2; });
    type("x");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    failAtTheTour();
    closeBox();
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    untilStatus("Ready");
    closeBox();
    untilBox();
    driver.key('N');
    edit(kTour);
}

}  // namespace
