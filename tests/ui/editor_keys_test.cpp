// What the keys of the keyboard do in the editor's window, pressed one by one.
#include <wx/clipbrd.h>
#include <wx/textctrl.h>

#include "base/system/user_folders.h"
#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "ui/editor/editor_file_dialog.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

constexpr char kFailing[] =
    "int runs = 0;\n"
    "int main() {\n"
    "    int[] a;\n"
    "    a[1] = 2;\n"
    "    return 0;\n"
    "}\n";

class EditorKeys : public EditorWindowTest {
  protected:
    void untilText(const std::string& wanted) {
        driver.when("text " + wanted, [this, wanted] { return frame() && text() == wanted; });
    }
    void untilSelected(int from, int to) {
        driver.when("a selection", [this, from, to] {
            return editor()->GetSelectionStart() == from && editor()->GetSelectionEnd() == to;
        });
    }
    void select(int from, int to) {
        driver.run([this, from, to] { editor()->SetSelection(from, to); });
    }
};

// A key whose command opened windows came back when they had closed, and acted a second time.
TEST_F(EditorKeys, KeyThatOpenedABoxActsOnce) {
    useWindows();
    ready();
    driver.key(WXK_F5);
    untilBox();
    driver.key(WXK_RETURN);
    driver.when("the end", [this] { return output().find("Application terminated") == 0; });
    ready();
    // A second run would show its box by now, and this key would go there.
    type("x");
    untilText("x" + std::string(kFailing));
    closeBox();
    edit(kFailing);
}

TEST_F(EditorKeys, BreakpointBehindABoxIsNotRunPast) {
    useWindows();
    ready();
    gotoLine(2);
    driver.key(WXK_F9).key(WXK_DOWN).key(WXK_F9).key(WXK_F5);
    untilStoppedAt(2);
    driver.key(WXK_F5);
    untilBox();
    driver.key(WXK_RETURN);
    untilStoppedAt(3);
    ready();
    driver.key(WXK_F11);
    untilStoppedAt(4);
    closeBox();
    edit("int main() {\n    Information(\"box\");\n    int a = 1;\n    return a;\n}\n");
}

TEST_F(EditorKeys, HelpThatFailsSaysSoOnce) {
    const test::Variable browser("PATH", folder.path().string());
    ready();
    driver.key(WXK_F1);
    untilBox();
    driver.key(WXK_RETURN);
    ready();
    type("x");
    untilText("x");
    closeBox();
    edit("");
}

TEST_F(EditorKeys, FilesAreOpenedSavedAndBegunByKeys) {
    const std::string path = folder.file("typed.as");
    writeFile(path, "old\n");
    ui::setFileChooser([path](wxWindow*, const FileDialogRequest&) { return path; });
    ready();
    driver.key('O', wxMOD_CONTROL);
    untilTitle("Script Editor - typed.as");
    type("new ");
    driver.key('S', wxMOD_CONTROL);
    untilTitle("Script Editor - typed.as");
    driver.when("the file", [path] { return readFile(path) == "new old\n"; });
    driver.key('N', wxMOD_CONTROL);
    untilTitle("Script Editor - Untitled");
    closeBox();
    edit("");
}

TEST_F(EditorKeys, TextIsEditedByTheUsualKeys) {
    type("ab");
    driver.key('Z', wxMOD_CONTROL);
    untilText("");
    driver.key('Y', wxMOD_CONTROL);
    untilText("ab");
    driver.key('Z', wxMOD_CONTROL);
    driver.key('Z', wxMOD_CONTROL | wxMOD_SHIFT);
    untilText("ab");
    driver.key('A', wxMOD_CONTROL).key('X', wxMOD_CONTROL);
    untilText("");
    driver.key('V', wxMOD_CONTROL).key('V', wxMOD_CONTROL);
    untilText("abab");
    driver.key('A', wxMOD_CONTROL).key('C', wxMOD_CONTROL);
    driver.key(WXK_END).key('V', wxMOD_CONTROL);
    untilText("abababab");
    closeBox();
    edit("");
}

TEST_F(EditorKeys, MatchesAreFoundByKeys) {
    ready();
    driver.key('F', wxMOD_CONTROL);
    driver.window("Search").type("one").key(WXK_RETURN);
    untilSelected(4, 7);
    driver.close("Search").gone("Search");
    ready();
    driver.key(WXK_F3);
    untilSelected(13, 16);
    driver.key(WXK_F3, wxMOD_SHIFT);
    untilSelected(4, 7);
    driver.key('H', wxMOD_CONTROL);
    driver.window("Search and replace").key(WXK_ESCAPE).gone("Search and replace");
    ready();
    driver.key('G', wxMOD_CONTROL);
    driver.window("Goto line").type("2").key(WXK_RETURN).gone("Goto line");
    driver.when("the second line", [this] { return caretLine() == 2; });
    closeBox();
    edit("   \none two \none\n");
}

TEST_F(EditorKeys, LinesBecomeCommentsAndCodeAgain) {
    ready();
    select(0, 4);
    driver.key('/', wxMOD_CONTROL);
    untilText("//a\n//b\nc\n");
    driver.key('/', wxMOD_CONTROL);
    untilText("a\nb\nc\n");
    closeBox();
    edit("a\nb\nc\n");
}

TEST_F(EditorKeys, IndentationIsKeptAndTakenBack) {
    type("if (a) {\nb();\nc();\n");
    untilText("if (a) {\n    b();\n    c();\n    ");
    type("}\nd();");
    untilText("if (a) {\n    b();\n    c();\n}\nd();");
    closeBox();
    edit("");
}

TEST_F(EditorKeys, ShiftMakesAnotherKeyOfF5) {
    ready();
    gotoLine(2);
    driver.key(WXK_F9).key(WXK_F5);
    untilStoppedAt(2);
    driver.key(WXK_F5, wxMOD_SHIFT);
    driver.when("the end of debugging", [this] { return !isEnabled(command_id::kStop); });
    check([this] { EXPECT_EQ(markedLines(), std::vector<int>{2}); });
    closeBox();
    edit("int main() {\n    int a = 1;\n    a = 2;\n    return a;\n}\n");
}

TEST_F(EditorKeys, KeysOfTheTextAreThePanesWhereThatHasTheKeyboard) {
    ready();
    driver.key(WXK_F7);
    untilOutput("Builded, no error.");
    driver.run([this] { pane()->SetFocus(); });
    driver.when("the pane's keyboard", [this] { return pane()->HasFocus(); });
    driver.key('A', wxMOD_CONTROL).key('X', wxMOD_CONTROL);
    untilOutput("");
    check([this] { EXPECT_EQ(text(), "int main() { return 0; }\n"); });
    closeBox();
    edit("int main() { return 0; }\n");
}

}  // namespace
