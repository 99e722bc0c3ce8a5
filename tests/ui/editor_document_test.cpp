// Files, the host's text, and that nothing typed is lost.
#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "ui/editor/editor_file_dialog.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findWindow;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

constexpr char kScript[] = "int main() { return 0; }\n";

class EditorDocuments : public EditorWindowTest {
  protected:
    /// The file dialog's answer from here on.
    void choosePath(const std::string& path) {
        ui::setFileChooser([path](wxWindow*, const FileDialogRequest&) { return path; });
    }
    /// The output pane shows its text to the last letter.
    bool allOfThePaneIsInSight() const {
        const wxRect room = pane()->GetClientRect();
        for (int at = 0; at <= pane()->GetLength(); ++at) {
            const wxPoint place = pane()->PointFromPosition(at);
            if (place.x < 0 || place.x >= room.width || place.y < 0 ||
                place.y + pane()->TextHeight(0) > room.height)
                return false;
        }
        return pane()->GetLength() > 0;
    }
};

TEST_F(EditorDocuments, CloseBoxReturnsTheTextAndExitDoesNot) {
    type("x");
    driver.when("the letter", [this] { return text().front() == 'x'; });
    closeBox();
    EXPECT_EQ(edit(kScript), std::string("x") + kScript);
}

TEST_F(EditorDocuments, ExitReturnsTheTextThatWasGiven) {
    type("x");
    exit();
    EXPECT_EQ(edit(kScript), kScript);
}

TEST_F(EditorDocuments, TextLostByExitIsOfferedAtTheNextOpening) {
    type("x");
    exit();
    EXPECT_EQ(edit(kScript), kScript);
    untilBox();
    driver.key('Y');
    ready();
    driver.when("the text", [this] { return text() == std::string("x") + kScript; });
    closeBox();
    EXPECT_EQ(edit(kScript), std::string("x") + kScript);
}

TEST_F(EditorDocuments, OpenEditSaveAndReopen) {
    const std::string path = folder.file("survey.as");
    writeFile(path, kScript);
    choosePath(path);
    ready();
    choose(command_id::kOpen);
    untilTitle("Script Editor - survey.as");
    type("// ");
    untilTitle("Script Editor - survey.as*");
    choose(command_id::kSave);
    untilTitle("Script Editor - survey.as");
    choose(command_id::kNew);
    untilTitle("Script Editor - Untitled");
    choose(command_id::kOpen);
    untilTitle("Script Editor - survey.as");
    check([this] { EXPECT_EQ(text(), std::string("// ") + kScript); });
    exit();
    edit("");
    EXPECT_EQ(readFile(path), std::string("// ") + kScript);
}

TEST_F(EditorDocuments, RecentFileOpensFromTheMenu) {
    const std::string path = folder.file("recent.as");
    writeFile(path, kScript);
    choosePath(path);
    ready();
    choose(command_id::kOpen);
    untilTitle("Script Editor - recent.as");
    choose(command_id::kNew);
    untilTitle("Script Editor - Untitled");
    driver.run([this] {
        const wxMenu* file = frame()->GetMenuBar()->GetMenu(0);
        for (wxMenuItem* item : file->GetMenuItems())
            if (item->GetItemLabelText().Contains("recent.as"))
                frame()->GetEventHandler()->AddPendingEvent(
                    wxCommandEvent(wxEVT_MENU, item->GetId()));
    });
    untilTitle("Script Editor - recent.as");
    exit();
    edit("");
}

TEST_F(EditorDocuments, EditorOfAFileKnowsIt) {
    ownFile = folder.file("own.as");
    writeFile(ownFile, kScript);
    untilTitle("Script Editor - own.as");
    type("a");
    untilTitle("Script Editor - own.as*");
    driver.key('S', wxMOD_CONTROL);
    untilTitle("Script Editor - own.as");
    check([this] { EXPECT_EQ(readFile(ownFile), std::string("a") + kScript); });
    type("b");
    closeBox();
    edit(kScript);
    EXPECT_EQ(readFile(ownFile), std::string("ab") + kScript);
}

TEST_F(EditorDocuments, ExitOfAFilesEditorAsksAboutChanges) {
    ownFile = folder.file("own.as");
    writeFile(ownFile, kScript);
    for (const char answer : {'N', 'Y'}) {
        type("x");
        exit();
        untilBox();
        driver.key(WXK_ESCAPE);
        ready();
        exit();
        untilBox();
        driver.key(answer);
        edit(kScript);
        EXPECT_EQ(readFile(ownFile), (answer == 'Y' ? "x" : "") + std::string(kScript));
    }
}

TEST_F(EditorDocuments, FileThatDoesNotExistYetIsWrittenAtTheEnd) {
    ownFile = folder.file("new.as");
    untilTitle("Script Editor - new.as");
    type("x");
    driver.when("the letter", [this] { return text().front() == 'x'; });
    closeBox();
    edit("");
    EXPECT_EQ(readFile(ownFile), "x");
}

TEST_F(EditorDocuments, NewAsksAboutChanges) {
    type("x");
    choose(command_id::kNew);
    untilBox();
    driver.key('N');
    untilTitle("Script Editor - Untitled");
    check([this] { EXPECT_EQ(text(), ""); });
    exit();
    edit(kScript);
}

TEST_F(EditorDocuments, ScrambledTextIsRestoredWithTheSameKey) {
    useWindows();
    ready();
    for (int time = 0; time < 2; ++time) {
        choose(command_id::kCrypt);
        driver.window("KorvantIDE").key('A', wxMOD_CONTROL).type("42").key(WXK_RETURN);
        ready();
        check([this, time] {
            EXPECT_EQ(text() == kScript, time == 1);
            EXPECT_TRUE(allOfThePaneIsInSight());
        });
    }
    closeBox();
    EXPECT_EQ(edit(kScript), kScript);
}

}  // namespace
