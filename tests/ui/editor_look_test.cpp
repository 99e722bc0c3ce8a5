// The window with everything around the text: each state once, as a picture and as what it says.
#include <wx/textctrl.h>
#include "editor/control/command_ids.h"
#include "editor_full_window.h"
#include "support/ui_x_keys.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"

#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/main_toolbar.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/status_line.h"
#include "ui/editor/panels/welcome_pane.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

constexpr int kErrorIndicator = 1 << 8;

class EditorLook : public FullWindow, public testing::WithParamInterface<ThemeChoice> {
  protected:
    EditorLook() { use(GetParam()); }
    std::string named(const std::string& picture) const {
        return picture + (GetParam() == ThemeChoice::dark ? "-dark" : "");
    }
};

TEST_P(EditorLook, Idle) {
    ready();
    driver.key('7', wxMOD_CONTROL);
    driver.when("the outline", [this] {
        return part<ui::OutlinePane>() &&
               rows(part<ui::OutlinePane>()->list()).find("Hole\n grade()\n carrier(...)\n") !=
                   std::string::npos;
    });
    picture(named("look-idle"));
    closeBox();
    edit(kTour);
}

TEST_P(EditorLook, StoppedAtALine) {
    ready();
    breakAt({22});
    driver.key(WXK_F9, wxMOD_CONTROL);
    driver.when("it is off", [this] { return markedLines().empty(); });
    breakAt({19, 20});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 19 in Hole::grade");
    driver.run([this] { part<ui::DebugPanel>()->addWatch("metal + metres"); });
    driver.run([this] { part<ui::DebugPanel>()->addWatch("nonsense"); });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 20 in Hole::grade");
    check([this] {
        EXPECT_EQ(rows(list(ui::DebugPanel::kStack)), "Hole::grade\nreport\nmain\n");
        const std::string values = rows(list(ui::DebugPanel::kVariables));
        EXPECT_NE(values.find("metal=1\nmetres=0\ni=0\nlength=2.5\nthis="), std::string::npos)
            << values;
        EXPECT_EQ(rows(list(ui::DebugPanel::kWatches)),
                  "metal + metres=1 (was 0)\nnonsense=not known in this function\n"
                  "Add an expression...\n");
        EXPECT_EQ(rows(list(ui::DebugPanel::kBreakpoints)),
                  "line 19\nline 20\nline 22 (switched off)\n");
    });
    picture(named("look-stopped"));
    // A value is set in place, and the caller is looked at, by keys alone.
    driver.key('5', wxMOD_CONTROL);
    driver.key(WXK_HOME);
    driver.key(WXK_F2);
    driver.type("5.5").key(WXK_RETURN);
    driver.when("the new value",
                [this] { return rows(list(ui::DebugPanel::kVariables)).find("metal=5.5\n") == 0; });
    driver.key('6', wxMOD_CONTROL);
    driver.key(WXK_DOWN);
    driver.when("the caller's variables", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("hole") == 0 && caretLine() == 30;
    });
    picture(named("look-caller"));
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

TEST_P(EditorLook, StoppedAtAnException) {
    ready();
    driver.key(WXK_F5);
    untilStatus("Stopped: Index out of bounds, line 25 in Hole::carrier. F5 lets the script end.");
    check([this] {
        EXPECT_EQ(rows(list(ui::DebugPanel::kStack)), "Hole::carrier\nreport\nmain\n");
        EXPECT_EQ(rows(list(ui::DebugPanel::kVariables)).find("best=13\nthis="), 0u);
        EXPECT_FALSE(part<ui::MainToolbar>()->button(command_id::kStepOver)->IsEnabled());
    });
    picture(named("look-exception"));
    driver.key(WXK_F5);
    driver.when("the classic end", [this] {
        return output().rfind("Application terminated in run time error.\n", 0) == 0;
    });
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

TEST_P(EditorLook, Problems) {
    std::string script = kTour;
    script.replace(script.find("report(hole);"), 13, "reprt(hole);");
    script.replace(script.find("metres += length"), 16, "metrs += length");
    ready();
    driver.key(WXK_F7);
    untilStatus("2 errors");
    driver.key(WXK_F8);
    driver.when("the first problem", [this] { return caretLine() == 20; });
    gotoLine(1);
    picture(named("look-problems"));
    driver.key(WXK_F8, wxMOD_SHIFT);
    driver.when("the last problem", [this] { return caretLine() == 42; });
    driver.key('4', wxMOD_CONTROL);
    driver.when("the list", [this] { return part<ui::ProblemList>()->HasFocus(); });
    driver.key(WXK_HOME).key(WXK_RETURN);
    driver.when("the place of the problem",
                [this] { return caretLine() == 20 && editor()->HasFocus(); });
    closeBox();
    edit(script);
}

/// The word that grows is counted and not marked; a mistake goes as it came.
TEST_P(EditorLook, MistakeWhileTyping) {
    const auto goBehind = [this](const std::string& text) {
        const int at = editor()->FindText(0, editor()->GetLength(), text, wxSTC_FIND_MATCHCASE);
        editor()->GotoPos(at + static_cast<int>(text.size()));
    };
    const auto marked = [this] {
        return (editor()->IndicatorAllOnFor(static_cast<int>(std::string(kTour).find("hole);"))) &
                kErrorIndicator) != 0;
    };
    ready();
    driver.run([goBehind] { goBehind("report(hole"); });
    type("x");
    untilStatus("1 error");
    check([this, marked] {
        EXPECT_FALSE(marked());
        EXPECT_EQ(part<ui::ProblemList>(), nullptr) << "opens by itself";
    });
    driver.key(WXK_HOME);
    driver.when("the word's mark", marked);
    driver.key('4', wxMOD_CONTROL);
    driver.when("the list", [this] { return part<ui::ProblemList>() != nullptr; });
    check([this] {
        EXPECT_EQ(rows(part<ui::ProblemList>()), "No matching symbol 'holex'\n");
        editor()->GotoLine(39);
    });
    picture(named("look-typing"));
    driver.key(WXK_ESCAPE);
    ready();
    driver.run([goBehind] { goBehind("report(holex"); });
    driver.key(WXK_BACK);
    driver.when("nothing marked", [this, marked] { return statusText() == "Ready" && !marked(); });
    closeBox();
    EXPECT_EQ(edit(kTour), kTour);
}

TEST_P(EditorLook, FindBar) {
    ready();
    driver.key('H', wxMOD_CONTROL);
    driver.when("the bar",
                [this] { return part<ui::FindBar>() && part<ui::FindBar>()->field()->HasFocus(); });
    driver.type("metres");
    driver.when("the count", [this] { return part<ui::FindBar>()->said() == "4"; });
    driver.key(WXK_F3);
    driver.when("the first", [this] { return part<ui::FindBar>()->said() == "1 of 4"; });
    picture(named("look-find"));
    driver.key(WXK_F3, wxMOD_SHIFT);
    driver.when("the last, again",
                [this] { return part<ui::FindBar>()->said() == "4 of 4, first again"; });
    driver.key(WXK_ESCAPE);
    driver.when("the text", [this] { return editor()->HasFocus() && !part<ui::FindBar>(); });
    closeBox();
    edit(kTour);
}

TEST_P(EditorLook, BreakpointThatStopsWhen) {
    ready();
    breakAt({20});
    driver.key(WXK_F9, wxMOD_ALT);
    driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
    driver.key(WXK_DOWN);
    driver.when("its field",
                [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
    driver.type("i == 3");
    picture(named("look-breakpoint"));
    driver.key(WXK_RETURN);
    ready();
    driver.key(WXK_F5);
    untilStatus("Stopped at line 20 in Hole::grade");
    check([this] {
        EXPECT_NE(rows(list(ui::DebugPanel::kVariables)).find("\ni=3\n"), std::string::npos);
        EXPECT_EQ(rows(list(ui::DebugPanel::kBreakpoints)), "line 20 (when i == 3)\n");
    });
    driver.key(WXK_F11, wxMOD_SHIFT);
    untilStatus("Stopped at line 31 in report");
    closeBox();
    edit(kTour);
}

INSTANTIATE_TEST_SUITE_P(Themes, EditorLook,
                         testing::Values(ThemeChoice::light, ThemeChoice::dark));

TEST_F(FullWindow, ClassicLayoutAndBack) {
    use(ThemeChoice::light);
    ready();
    choose(command_id::kClassicLayout);
    driver.when("the classic layout", [this] {
        const wxSize client = frame()->GetClientSize();
        return !part<ui::MainToolbar>() && !part<ui::StatusLine>() &&
               pane()->GetSize() == wxSize(client.x, 144) &&
               editor()->GetSize() == wxSize(client.x, client.y - 144) &&
               editor()->StyleGetForeground(5) == wxColour(0, 0, 255);
    });
    picture("look-classic");
    choose(command_id::kClassicLayout);
    driver.when("everything again", [this] {
        return part<ui::MainToolbar>() && pane()->GetSize().y == 144 &&
               editor()->StyleGetForeground(5) == wxColour(0x0B, 0x4F, 0xB3);
    });
    closeBox();
    edit(kTour);
    EXPECT_FALSE(ui::loadEditorSettings().classic);
}

TEST_F(FullWindow, Welcome) {
    use(ThemeChoice::light);
    ready();
    picture("look-welcome");
    check([this] { EXPECT_NE(part<ui::WelcomePane>(), nullptr); });
    closeBox();
    edit("");
}

TEST_F(FullWindow, EveryPaneByKeyboard) {
    use(ThemeChoice::dark);
    ready();
    breakAt({20});
    driver.key('7', wxMOD_CONTROL);
    driver.key(WXK_F5);
    untilStatus("Stopped at line 20 in Hole::grade");
    const auto next = [this](const std::string& pane, std::function<wxWindow*()> window) {
        driver.key(WXK_F6, wxMOD_CONTROL);
        driver.when(pane, [window] { return window() && window()->HasFocus(); });
    };
    ready();
    next("outline", [this] { return part<ui::OutlinePane>()->list(); });
    next("output", [this] { return pane(); });
    for (const auto section : {ui::DebugPanel::kStack, ui::DebugPanel::kVariables,
                               ui::DebugPanel::kWatches, ui::DebugPanel::kBreakpoints})
        next("a section", [this, section] { return list(section); });
    next("the toolbar", [this] { return part<ui::MainToolbar>()->button(command_id::kContinue); });
    driver.key(WXK_RIGHT);
    driver.when("the next button", [this] {
        return part<ui::MainToolbar>()->button(command_id::kStepOver)->HasFocus();
    });
    driver.key(WXK_SPACE);
    driver.when("the next line", [this] {
        return statusText().rfind("Stopped at line ", 0) == 0 &&
               statusText() != "Stopped at line 20 in Hole::grade";
    });
    closeBox();
    edit(kTour);
}

TEST_F(FullWindow, EndlessRunIsPausedLookedAtAndStopped) {
    use(ThemeChoice::light);
    ready();
    driver.key(WXK_F5);
    driver.when("a pause",
                [this] { return frame() && statusText().rfind("Paused at line ", 0) == 0; });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    frontend.meanwhile = [] { EXPECT_TRUE(test::pressInWindow("Script Editor", "F6", false)); };
    edit(
        "int main() {\n    Information(\"go\");\n    int i = 0;\n    while (true) i++;\n"
        "    return 0;\n}\n");
}

TEST_F(FullWindow, SmallWindow) {
    use(ThemeChoice::light, 1100, 724);
    ready();
    breakAt({20});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 20 in Hole::grade");
    picture("look-small");
    closeBox();
    edit(kTour);
}

}  // namespace
