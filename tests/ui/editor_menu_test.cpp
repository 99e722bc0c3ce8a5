// The commands of the menu bar and of the context menu, chosen in the window.
#include <wx/dialog.h>
#include <wx/stattext.h>

#include "base/system/user_folders.h"
#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "ui/editor/editor_file_dialog.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::menuIsOpen;
using korvant::test::PageProgram;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

constexpr char kMenuScript[] =
    "int main() {\n"
    "    int a = 1;\n"
    "    int b = 2;\n"
    "    return 0;\n"
    "}\n";

class EditorMenu : public EditorWindowTest {
  protected:
    void untilCaretAt(int line) {
        driver.when("the caret in line " + std::to_string(line),
                    [this, line] { return frame() && caretLine() == line; });
    }
    /// Takes the item with this underlined letter from the context menu that opens.
    void takeFromMenu(int letter) {
        driver.when("a menu", menuIsOpen);
        driver.key(letter);
        driver.when("no menu", [] { return !menuIsOpen(); });
    }
};

TEST_F(EditorMenu, BreakpointsAreVisitedAndDeleted) {
    ready();
    for (const std::vector<int>& lines : {std::vector<int>{2}, std::vector<int>{2, 4}}) {
        gotoLine(lines.back());
        choose(command_id::kToggleBreakpoint);
        driver.when("a breakpoint", [this, lines] { return markedLines() == lines; });
    }
    choose(command_id::kPreviousBreakpoint);
    untilCaretAt(2);
    choose(command_id::kNextBreakpoint);
    untilCaretAt(4);
    choose(command_id::kDeleteBreakpoints);
    driver.when("no breakpoints", [this] { return markedLines().empty(); });
    closeBox();
    edit(kMenuScript);
}

TEST_F(EditorMenu, ProgramIsBuiltRunAndStepped) {
    ready();
    choose(command_id::kBuild);
    untilOutput("Builded, no error.");
    gotoLine(2);
    choose(command_id::kToggleBreakpoint);
    choose(command_id::kExecute);
    untilStoppedAt(2);
    choose(command_id::kStepOver);
    untilStoppedAt(3);
    driver.run([this] {
        const int at = editor()->FindText(0, editor()->GetLength(), "a = 1");
        editor()->SetSelection(at, at + 1);
    });
    choose(command_id::kDisplayVariable);
    untilOutput("int a = 1\nBreakpoint reached at line 3\n");
    choose(command_id::kStepInto);
    untilStoppedAt(4);
    choose(command_id::kStop);
    driver.when("the end", [this] { return !isEnabled(command_id::kStop); });
    closeBox();
    edit(kMenuScript);
}

TEST_F(EditorMenu, SaveAsWritesTheChosenFile) {
    const std::string path = folder.file("chosen.as");
    writeFile(path, "old");
    ui::setFileChooser([path](wxWindow*, const FileDialogRequest& request) {
        EXPECT_TRUE(request.saving);
        EXPECT_STREQ(request.title, "Open Source File");
        return path;
    });
    ready();
    choose(command_id::kSaveAs);
    untilTitle("Script Editor - chosen.as");
    closeBox();
    edit(kMenuScript);
    EXPECT_EQ(readFile(path), kMenuScript);
}

TEST_F(EditorMenu, BookmarkMarginComesAndGoes) {
    ready();
    for (const int width : {0, 16}) {
        choose(command_id::kBookmarks);
        driver.when("the margin", [this, width] {
            return editor()->GetMarginWidth(1) == width &&
                   isChecked(command_id::kBookmarks) == (width > 0);
        });
    }
    closeBox();
    edit("");
}

TEST_F(EditorMenu, AboutBoxSaysWhatThisIs) {
    ready();
    choose(command_id::kAbout);
    driver.window("About Script Editor");
    check([] {
        EXPECT_EQ(findChild<wxStaticText>(findActive("About Script Editor"))->GetLabel(),
                  "Korvant Script Editor Version 2.0");
    });
    driver.key(WXK_ESCAPE).gone("About Script Editor");
    ready();
    closeBox();
    edit("");
}

TEST_F(EditorMenu, HelpKeyOpensTheManualInTheBrowser) {
    const PageProgram browser(folder.path());
    ready();
    driver.key(WXK_F1);
    driver.when("the browser", [&] { return browser.opened() == manualPage(programFolder()); });
    closeBox();
    edit("");
    EXPECT_EQ(std::filesystem::path(browser.opened()).filename(), "index.html");
}

TEST_F(EditorMenu, ContextMenuOpensByMouseAndByKey) {
    type("12");
    driver.click([this] { return editor(); }, wxMOUSE_BTN_RIGHT);
    takeFromMenu('U');
    driver.when("an undone text", [this] { return text() == kMenuScript; });
    ready();
    driver.key(WXK_F10, wxMOD_SHIFT);
    takeFromMenu('A');
    driver.when("the whole text selected", [this] {
        return editor()->GetSelectionEnd() == editor()->GetLength() &&
               editor()->GetSelectionStart() == 0;
    });
    closeBox();
    edit(kMenuScript);
}

}  // namespace
