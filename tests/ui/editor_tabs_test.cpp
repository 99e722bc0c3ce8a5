// Several files in one window: tabs, what they keep apart, and the function at the caret.
#include <wx/textctrl.h>
#include <wx/tooltip.h>

#include "base/system/user_folders.h"
#include "editor/document/recovery_store.h"
#include "editor_full_window.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/file_tabs.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/function_chooser.h"

using namespace korvant;
using korvant::test::FullWindow;
using korvant::test::kTour;
using korvant::test::readFile;
using korvant::test::writeFile;

namespace {

constexpr char kHoles[] =
    "// The holes of the campaign.\n"
    "int main() {\n"
    "    int holes = 1;\n"
    "    return holes;\n"
    "}\n";

class EditorTabs : public FullWindow {
  protected:
    EditorTabs() {
        use(ThemeChoice::light);
        ownFile = folder.file("drill_report.as");
        writeFile(ownFile, kTour);
        writeFile(folder.file("holes.as"), kHoles);
    }
    ui::FileTabs* tabs() const { return part<ui::FileTabs>(); }
    void untilOpen(const std::string& wanted) {
        driver.when("open " + wanted, [this, wanted] { return names() == wanted; });
    }
    /// "drill_report.as*! holes.as": changed, in view.
    std::string names() const {
        std::string all;
        if (!tabs()) return all;
        for (const DocumentTab& tab : tabs()->tabs())
            all += (all.empty() ? "" : " ") + tab.name + (tab.modified ? "*" : "") +
                   (tab.id == tabs()->shown() ? "!" : "");
        return all;
    }
    void openFile(const std::string& name) {
        ready();
        driver.run([this, name] {
            ui::setFileChooser(
                [path = folder.file(name)](wxWindow*, const FileDialogRequest&) { return path; });
        });
        driver.key('O', wxMOD_CONTROL);
        untilTitle("Script Editor - " + name);
        driver.when("its tab",
                    [this, name] { return names().find(name + "!") != std::string::npos; });
    }
    /// A click in the window at a place that is looked up then.
    void clickAt(const std::function<wxWindow*()>& target, const std::function<wxPoint()>& place,
                 int button = wxMOUSE_BTN_LEFT) {
        driver.run([target, place, button] {
            wxUIActionSimulator simulator;
            simulator.MouseMove(target()->ClientToScreen(place()));
            simulator.MouseClick(button);
        });
    }
    void clickTab(std::size_t index, int button = wxMOUSE_BTN_LEFT) {
        clickAt([this] { return tabs(); },
                [this, index] {
                    const wxRect tab = tabs()->tabPlace(index);
                    return wxPoint(tab.x + 20, tab.height / 2);
                },
                button);
    }
    void clickCross(std::size_t index) {
        clickAt([this] { return tabs(); },
                [this, index] {
                    const wxRect cross = tabs()->crossPlace(index);
                    return wxPoint(cross.x + cross.width / 2, cross.y + cross.height / 2);
                });
    }
    void untilText(const std::string& wanted) {
        driver.when("the text", [this, wanted] { return frame() && text() == wanted; });
    }
    void untilMarked(const std::vector<int>& lines) {
        driver.when("markers", [this, lines] { return frame() && markedLines() == lines; });
    }
};

TEST_F(EditorTabs, KeysMakeShowAndCloseThem) {
    ready();
    check([this] { EXPECT_EQ(tabs(), nullptr); });
    driver.key('N', wxMOD_CONTROL);
    untilOpen("drill_report.as Untitled!");
    type("abc");
    untilOpen("drill_report.as Untitled*!");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as! Untitled*");
    check([this] { EXPECT_EQ(text(), kTour); });
    driver.key(WXK_TAB, wxMOD_CONTROL | wxMOD_SHIFT);
    untilOpen("drill_report.as Untitled*!");
    check([this] { EXPECT_EQ(text(), "abc"); });
    driver.key('W', wxMOD_CONTROL);
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    untilOpen("drill_report.as Untitled*!");
    driver.run([this] {
        ui::setFileChooser([this](wxWindow*, const FileDialogRequest& request) {
            EXPECT_EQ(request.suggestedName, "Untitled.as");
            return folder.file("made.as");
        });
    });
    driver.key('W', wxMOD_CONTROL);
    untilBox();
    driver.key('Y');
    ready();
    untilTitle("Script Editor - drill_report.as");
    driver.when("no tabs", [this] { return tabs() == nullptr; });
    check([this] { EXPECT_EQ(readFile(folder.file("made.as")), "abc"); });
    openFile("holes.as");
    type("x");
    driver.key('W', wxMOD_CONTROL);
    untilBox();
    driver.key('N');
    ready();
    untilTitle("Script Editor - drill_report.as");
    closeBox();
    edit(kTour);
    EXPECT_EQ(readFile(folder.file("holes.as")), kHoles);
}

TEST_F(EditorTabs, ClicksShowAndCloseThem) {
    openFile("holes.as");
    untilOpen("drill_report.as holes.as!");
    type("x");
    untilOpen("drill_report.as holes.as*!");
    picture("look-tabs");
    clickTab(0);
    untilOpen("drill_report.as! holes.as*");
    clickCross(1);
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    clickTab(1, wxMOUSE_BTN_MIDDLE);
    untilBox();
    driver.key('N');
    ready();
    driver.when("no tabs", [this] { return tabs() == nullptr; });
    openFile("holes.as");
    clickCross(0);
    untilTitle("Script Editor - holes.as");
    closeBox();
    edit(kTour);
    EXPECT_EQ(readFile(folder.file("holes.as")), kHoles);
}

TEST_F(EditorTabs, DraggedAndMovedByKeysTheyChangePlaces) {
    openFile("holes.as");
    driver.dragIn([this] { return tabs(); }, {200, 18}, {30, 18});
    untilOpen("holes.as! drill_report.as");
    focus([this] { return tabs(); });
    driver.key(WXK_RIGHT, wxMOD_CONTROL);
    untilOpen("drill_report.as holes.as!");
    driver.key(WXK_RIGHT, wxMOD_CONTROL).key(WXK_LEFT);
    untilOpen("drill_report.as! holes.as");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as holes.as!");
    closeBox();
    edit(kTour);
}

/// In the classic layout the star stays until the text is saved.
TEST_F(EditorTabs, TheStarGoesWhenEverythingIsUndone) {
    ready();
    driver.type("xy").key('S', wxMOD_CONTROL);
    untilTitle("Script Editor - drill_report.as");
    driver.type("z");
    untilTitle("Script Editor - drill_report.as*");
    driver.key('Z', wxMOD_CONTROL);
    untilTitle("Script Editor - drill_report.as");
    driver.key('Z', wxMOD_CONTROL);
    untilTitle("Script Editor - drill_report.as*");
    driver.key('Y', wxMOD_CONTROL);
    untilTitle("Script Editor - drill_report.as");
    choose(command_id::kClassicLayout);
    driver.type("z").key('Z', wxMOD_CONTROL);
    driver.when("undone", [this] { return text().rfind("xy//", 0) == 0; });
    untilTitle("Script Editor - drill_report.as*");
    closeBox();
    edit(kTour);
}

TEST_F(EditorTabs, TheTipTellsTheWholePath) {
    openFile("holes.as");
    driver.run([this] {
        wxUIActionSimulator simulator;
        simulator.MouseMove(
            tabs()->ClientToScreen(tabs()->tabPlace(0).GetPosition() + wxPoint(30, 15)));
    });
    driver.when("the tip",
                [this] { return tabs()->GetToolTipText() == folder.file("drill_report.as"); });
    closeBox();
    edit(kTour);
}

TEST_F(EditorTabs, TheFunctionAtTheCaretOpensTheOutline) {
    openFile("holes.as");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as! holes.as");
    gotoLine(18);
    driver.when("the function",
                [this] { return tabs() && tabs()->chooser()->function() == "Hole::grade"; });
    driver.click([this] { return tabs()->chooser(); });
    driver.when("the list", [this] {
        const auto box = part<ui::ChoiceBox>();
        return box && box->field()->HasFocus() &&
               box->list()->row(box->list()->selected()).name == "grade()";
    });
    picture("look-tabs-functions");
    driver.type("report").key(WXK_RETURN);
    driver.when("the place", [this] { return caretLine() == 29 && editor()->HasFocus(); });
    driver.when("its name", [this] { return tabs()->chooser()->function() == "report"; });
    // Of the other file the list is another one.
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as holes.as!");
    gotoLine(3);
    driver.when("main", [this] { return tabs()->chooser()->function() == "main"; });
    closeBox();
    edit(kTour);
}

TEST_F(EditorTabs, UndoBreakpointsAndMarksStayWithTheirFile) {
    ready();
    breakAt({30});
    openFile("holes.as");
    breakAt({3});
    type("y");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilMarked({30});
    driver.key('Z', wxMOD_CONTROL);
    untilText(kTour);
    driver.key(WXK_F5);
    untilStatus("Stopped at line 30 in report");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as holes.as*!");
    check([this] {
        EXPECT_EQ(statusText(), "Stopped at line 30 in report");
        EXPECT_EQ(markedLines(), std::vector<int>{3});
        // No band, no arrow of the other text's.
        for (int line = 0; line < editor()->GetLineCount(); ++line)
            EXPECT_EQ(editor()->MarkerGet(line) & (1 << 20 | 1 << 16), 0) << line;
    });
    driver.key('Z', wxMOD_CONTROL);
    untilText(kHoles);
    driver.key(WXK_F10);
    untilStatus("Stopped at line 31 in report");
    untilOpen("drill_report.as! holes.as");
    check([this] { EXPECT_NE(editor()->MarkerGet(30) & 1 << 20, 0); });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    untilMarked({30});
    exit();
    edit(kTour);
}

TEST_F(EditorTabs, AStopInTheDark) {
    use(ThemeChoice::dark);
    openFile("holes.as");
    type("x");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as! holes.as*");
    breakAt({19});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 19 in Hole::grade");
    driver.when("the function", [this] { return tabs()->chooser()->function() == "Hole::grade"; });
    check([this] {
        EXPECT_EQ(list(ui::DebugPanel::kStack)->row(1).right, "drill_report.as, line 30");
    });
    picture("look-tabs-dark");
    driver.run([this] { frame()->SetSize(frame()->FromDIP(wxSize(760, 560))); });
    driver.when("a small window", [this] { return tabs()->GetSize().x < frame()->FromDIP(780); });
    picture("look-tabs-small");
    exit();
    untilBox();
    driver.key('N');
    edit(kTour);
}

TEST_F(EditorTabs, AnExceptionInAnotherFileIsShownThere) {
    const std::string library = "int shareOf(int parts) {\n    return 10 / parts;\n}\n";
    writeFile(folder.file("library.as"), library);
    shareLibrary(folder.file("library.as"), library, "shareOf");
    const std::string script = "int main() {\n    int parts = 0;\n    return share(parts);\n}\n";
    writeFile(ownFile, script);
    ready();
    driver.key(WXK_F5);
    untilOpen("drill_report.as library.as!");
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    check([this] {
        EXPECT_EQ(statusText(),
                  "Stopped: Divide by zero, line 2 in shareOf. F5 lets the script end.");
        EXPECT_NE(editor()->MarkerGet(1) & 1 << 21, 0);
    });
    picture("look-tabs-exception");
    driver.key('6', wxMOD_CONTROL);
    driver.key(WXK_DOWN);
    untilOpen("drill_report.as! library.as");
    driver.when("the caller's line", [this] { return (editor()->MarkerGet(2) & 1 << 22) != 0; });
    check([this] { EXPECT_EQ(part<ui::ExceptionBox>(), nullptr); });
    driver.key(WXK_UP);
    untilOpen("drill_report.as library.as!");
    driver.key(WXK_F5);
    untilOpen("drill_report.as! library.as");
    untilStatus("Ready");
    closeBox();
    edit(script);
}

TEST_F(EditorTabs, ABreakpointInAnotherFileStopsThereAndOneHereDoesNot) {
    const std::string library =
        "int twice(int n) {\n    int r = n;\n    r += n;\n    return r;\n}\n";
    writeFile(folder.file("library.as"), library);
    shareLibrary(folder.file("library.as"), library, "twice");
    const std::string script =
        "int main() {\n    int a = share(1);\n    a += 1;\n    return a;\n}\n";
    writeFile(ownFile, script);
    ready();
    breakAt({3});
    openFile("library.as");
    breakAt({4});
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as! library.as");
    driver.key(WXK_F5);
    untilOpen("drill_report.as library.as!");
    untilStatus("Stopped at line 4 in twice");
    driver.key(WXK_F5);
    untilOpen("drill_report.as! library.as");
    untilStatus("Stopped at line 3 in main");
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(script);
}

TEST_F(EditorTabs, ProblemsAndMatchesAreThoseOfTheFileInView) {
    openFile("holes.as");
    driver.run([this] { editor()->AppendText("int wrong = nothing;\n"); });
    driver.key(WXK_F7);
    untilStatus("1 error");
    driver.key('F', wxMOD_CONTROL);
    driver.when("the field",
                [this] { return part<ui::FindBar>() && part<ui::FindBar>()->field()->HasFocus(); });
    driver.type("int");
    driver.when("matches", [this] { return !part<ui::FindBar>()->said().empty(); });
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilOpen("drill_report.as! holes.as*");
    driver.when("no problems", [this] { return statusText().find("error") == std::string::npos; });
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilStatus("1 error");
    driver.key(WXK_ESCAPE);
    driver.key('Z', wxMOD_CONTROL);
    untilOpen("drill_report.as holes.as!");
    exit();
    edit(kTour);
}

TEST_F(EditorTabs, ExitAsksForEachChangedFile) {
    type("a");
    openFile("holes.as");
    type("b");
    exit();
    untilBox();
    driver.key('N');
    untilOpen("drill_report.as* holes.as*!");
    untilBox();
    driver.key(WXK_ESCAPE);
    ready();
    untilOpen("drill_report.as* holes.as*!");
    exit();
    untilOpen("drill_report.as*! holes.as*");
    untilBox();
    driver.key('Y');
    untilOpen("drill_report.as holes.as*!");
    untilBox();
    driver.key('N');
    EXPECT_EQ(edit(kTour), kTour);
    EXPECT_EQ(readFile(ownFile), std::string("a") + kTour);
    EXPECT_EQ(readFile(folder.file("holes.as")), kHoles);
}

TEST_F(EditorTabs, EveryUnsavedTextOfACrashComesBack) {
    const auto leave = [](const std::string& path, const std::string& text, std::int64_t time) {
        RecoveryRecord record;
        record.path = path;
        record.text = text;
        record.time = time;
        RecoveryStore store(systemFiles(), userDataFolder() + "/recovery");
        EXPECT_EQ(store.keepCurrent(record), 0);
    };
    leave(ownFile, "// the report\n", 2);
    leave(folder.file("holes.as"), "// the holes\n", 1);
    untilBox();
    driver.key('Y');
    untilTitle("Script Editor - drill_report.as*");
    untilBox();
    driver.key('Y');
    untilOpen("drill_report.as* holes.as*!");
    check([this] { EXPECT_EQ(text(), "// the holes\n"); });
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilText("// the report\n");
    exit();
    untilBox();
    driver.key('Y');
    untilOpen("drill_report.as holes.as*!");
    untilBox();
    driver.key('N');
    edit(kTour);
    EXPECT_EQ(readFile(ownFile), "// the report\n");
    EXPECT_EQ(readFile(folder.file("holes.as")), kHoles);
}

TEST_F(EditorTabs, ManyAreScrolledAndListed) {
    for (int i = 0; i < 12; ++i)
        writeFile(folder.file("campaign_of_the_year_" + std::to_string(i) + ".as"), kHoles);
    for (int i = 0; i < 12; ++i) openFile("campaign_of_the_year_" + std::to_string(i) + ".as");
    check([this] {
        EXPECT_TRUE(tabs()->more()->IsShown());
        EXPECT_LE(tabs()->tabPlace(12).GetRight(), tabs()->more()->GetPosition().x);
        EXPECT_LT(tabs()->tabPlace(0).x, 0);
    });
    picture("look-tabs-many");
    driver.click([this] { return tabs()->more(); });
    driver.when("a menu", korvant::test::menuIsOpen);
    driver.key(WXK_HOME).key(WXK_RETURN);
    untilTitle("Script Editor - drill_report.as");
    check([this] { EXPECT_EQ(tabs()->tabPlace(0).x, 0); });
    // By keyboard alone: toolbar, tabs, text.
    focus([this] { return part<ui::MainToolbar>()->tabStop(); });
    driver.key(WXK_F6, wxMOD_CONTROL);
    driver.when("the tabs", [this] { return tabs()->HasFocus(); });
    driver.key(WXK_RIGHT).key(WXK_RIGHT);
    untilTitle("Script Editor - campaign_of_the_year_1.as");
    check([this] {
        EXPECT_TRUE(tabs()->HasFocus());
        EXPECT_EQ(tabs()->accessibleName(), "campaign_of_the_year_1.as, 3 of 13");
    });
    driver.key(WXK_DELETE);
    untilTitle("Script Editor - campaign_of_the_year_2.as");
    driver.key(WXK_END);
    untilTitle("Script Editor - campaign_of_the_year_11.as");
    driver.key(WXK_RIGHT);
    driver.when("the function", [this] { return tabs()->chooser()->HasFocus(); });
    driver.key(WXK_LEFT).key(WXK_RETURN);
    ready();
    closeBox();
    edit(kTour);
}

TEST_F(EditorTabs, TheClassicLayoutShowsOneTextAndLosesNone) {
    openFile("holes.as");
    type("b");
    choose(command_id::kClassicLayout);
    driver.when("no tabs", [this] { return tabs() == nullptr; });
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilTitle("Script Editor - holes.as*");
    choose(command_id::kClassicLayout);
    untilOpen("drill_report.as holes.as*!");
    driver.key(WXK_TAB, wxMOD_CONTROL);
    untilText(kTour);
    exit();
    untilBox();
    driver.key('Y');
    edit(kTour);
    EXPECT_EQ(readFile(folder.file("holes.as")), std::string("b") + kHoles);
}

}  // namespace
