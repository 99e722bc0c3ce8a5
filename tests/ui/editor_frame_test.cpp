// The window itself: its menus, its layout, and how it gets along with the host's windows.
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/menu.h>

#include <chrono>
#include <fstream>
#include <sstream>

#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "module/families.h"
#include "support/tree.h"
#include "support/ui_x_keys.h"
#include "ui/editor/editor_icon.h"
#include "ui/editor/editor_run.h"
#include "ui/kit/ui_runtime.h"

using namespace korvant;
using korvant::test::EditorWindowTest;

namespace {

class EditorFrame : public EditorWindowTest {};

TEST_F(EditorFrame, MenusShowEveryRecordInItsPlace) {
    ready();
    check([this] {
        const wxMenuBar& bar = *frame()->GetMenuBar();
        ASSERT_EQ(bar.GetMenuCount(), 6u);
        for (std::size_t i = 0; i < 6; ++i) {
            std::string shown, wanted;
            for (const wxMenuItem* item : bar.GetMenu(i)->GetMenuItems())
                shown += item->IsSeparator() ? "-\n" : item->GetItemLabel().utf8_string() + "\n";
            for (const EditorCommand& command : editorCommands()) {
                if (command.menu != static_cast<EditorMenu>(i)) continue;
                if (command.has(kSeparatorBefore)) wanted += "-\n";
                wanted += wxString(command.label).BeforeFirst('\t').utf8_string() + "\n";
                if (command.has(kSeparatorAfter)) wanted += "-\n";
            }
            EXPECT_EQ(shown, wanted);
        }
        EXPECT_FALSE(isEnabled(command_id::kStepOver));
        EXPECT_TRUE(isChecked(command_id::kLineNumbers));
        EXPECT_FALSE(isChecked(command_id::kBlackBackground));
    });
    closeBox();
    edit("");
}

TEST_F(EditorFrame, NoMenuItemHasAnAcceleratorOfItsOwn) {
    ready();
    check([this] {
        for (std::size_t i = 0; i < frame()->GetMenuBar()->GetMenuCount(); ++i)
            for (const wxMenuItem* item : frame()->GetMenuBar()->GetMenu(i)->GetMenuItems())
                EXPECT_EQ(item->GetAccel(), nullptr) << item->GetItemLabel();
    });
    closeBox();
    edit("");
}

TEST_F(EditorFrame, PaneKeepsItsHeightWhenTheWindowIsResized) {
    ready();
    driver.run([this] { frame()->SetClientSize(640, 480); });
    driver.when("the new layout", [this] {
        const wxSize client = frame()->GetClientSize();
        return pane()->GetSize() == wxSize(client.x, 144) &&
               editor()->GetSize() == wxSize(client.x, client.y - 144) && client.x == 640;
    });
    closeBox();
    edit("");
}

TEST_F(EditorFrame, ViewTogglesChangeMarginsAndChecks) {
    ready();
    choose(command_id::kLineNumbers);
    choose(command_id::kFolding);
    driver.when("no margins", [this] {
        return editor()->GetMarginWidth(0) == 0 && editor()->GetMarginWidth(2) == 0 &&
               !isChecked(command_id::kLineNumbers) && !isChecked(command_id::kFolding);
    });
    choose(command_id::kBlackBackground);
    driver.when("the black scheme", [this] {
        return editor()->StyleGetBackground(32) == *wxBLACK &&
               editor()->StyleGetBackground(33) == wxColour(32, 32, 32) &&
               editor()->StyleGetForeground(33) == wxColour(150, 150, 150) &&
               isChecked(command_id::kBlackBackground);
    });
    closeBox();
    edit("");
}

TEST_F(EditorFrame, LineNumbersHaveRoomForTheLastOne) {
    const auto fits = [this] {
        const int digits = static_cast<int>(std::to_string(editor()->GetLineCount()).size());
        return editor()->GetMarginWidth(0) >=
               editor()->TextWidth(wxSTC_STYLE_LINENUMBER, wxString('9', digits + 1));
    };
    ready();
    check([&] { EXPECT_TRUE(fits()); });
    driver.run([this] { editor()->GotoPos(editor()->GetLength()); });
    type("\n");
    driver.when("10,000 lines", [&] { return editor()->GetLineCount() == 10'000 && fits(); });
    driver.key('+', wxMOD_CONTROL).key('+', wxMOD_CONTROL);
    driver.when("larger numbers", [&] { return editor()->GetZoom() == 2 && fits(); });
    choose(command_id::kNew);
    untilBox();
    driver.key('N');
    untilTitle("Script Editor - Untitled");
    closeBox();
    edit(std::string(9'998, '\n'));
}

TEST_F(EditorFrame, HostWindowCannotBeUsedMeanwhile) {
    auto* host = new wxFrame(nullptr, wxID_ANY, "Host");
    host->Show();
    // The editor is opened from there, and not while it still comes.
    driver.when("the host's window", [host] { return host->IsActive(); });
    EXPECT_TRUE(driver.finish());
    ready();
    check([host] { EXPECT_FALSE(host->IsEnabled()); });
    closeBox();
    edit("");
    EXPECT_TRUE(host->IsEnabled());
    host->Destroy();
}

TEST_F(EditorFrame, SecondEditorIsNotOpened) {
    ready();
    driver.run([this] {
        std::string other = "other";
        ui::runScriptEditor({engine(), context(), other, "host", allFamilies()});
        EXPECT_EQ(other, "other");
    });
    ready();
    closeBox();
    EXPECT_EQ(edit("first"), "first");
}

TEST_F(EditorFrame, ScriptThatRunsCannotOpenAnEditor) {
    std::string text = "text";
    frontend.meanwhile = [&] { ui::runScriptEditor({engine(), context(), text, "host", {}}); };
    EXPECT_TRUE(run("int main() { Information(\"box\"); return 0; }"));
    EXPECT_EQ(text, "text");
    EXPECT_FALSE(ui::lastEditedFile());
}

TEST_F(EditorFrame, CloseWhileAScriptRunsWaitsForItsEnd) {
    frontend.meanwhile = [this] {
        frame()->Close();
        EXPECT_NE(frame(), nullptr);
    };
    ready();
    driver.key(WXK_F5);
    const std::string script = "int main() { Information(\"box\"); while (true) {} return 0; }\n";
    EXPECT_EQ(edit(script), script);
}

TEST_F(EditorFrame, EscapeEndsARunWhoseConditionIsNeverTrue) {
    frontend.text = "0";
    ready();
    gotoLine(4);
    choose(command_id::kAddCondition);
    driver.run([this] {
        frontend.meanwhile = [] {
            EXPECT_TRUE(test::pressInWindow("Script Editor", "Escape", false));
        };
    });
    const auto begin = std::chrono::steady_clock::now();
    driver.key(WXK_F5);
    driver.when("the end of the run", [this] { return output().find("Application") == 0; });
    closeBox();
    edit(
        "int main() {\n    Information(\"go\");\n    while (true) {\n        int a = 1;\n"
        "        a = 2;\n    }\n    return 0;\n}\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(8));
}

TEST_F(EditorFrame, OpensInsideALoopOfTheHosts) {
    std::string text = "text";
    bool ended = false;
    type("x");
    driver.when("the letter", [this] { return this->text() == "xtext"; });
    closeBox();
    wxEventLoop host;
    wxTheApp->CallAfter([&] {
        text = edit(text);
        ended = true;
        host.ScheduleExit();
    });
    host.Run();
    EXPECT_TRUE(ended);
    EXPECT_EQ(text, "xtext");
}

TEST_F(EditorFrame, StaysOpenWhenTheHostEndsItsLoop) {
    std::string text = "text";
    wxEventLoop host;
    ready();
    driver.run([&] { host.ScheduleExit(); });
    type("x");
    driver.when("the letter", [this] { return this->text() == "xtext"; });
    closeBox();
    wxTheApp->CallAfter([&] { text = edit(text); });
    host.Run();
    EXPECT_EQ(text, "xtext");
}

TEST(EditorIcon, IsThePackagesPicture) {
    std::ifstream file(korvant::test::sourceFolder() + "/packaging/korvant.png", std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    EXPECT_EQ(bytes.str(), std::string(reinterpret_cast<const char*>(ui::kEditorIconPng),
                                       ui::kEditorIconPngSize));
}

}  // namespace
