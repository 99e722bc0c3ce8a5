// What the window does by itself: while one types, when a script runs, stops, fails and ends.
#include <wx/clipbrd.h>
#include <wx/textctrl.h>

#include <fstream>

#include "editor_full_window.h"
#include "ui/editor/assist/tip_pop_up.h"
#include "ui/editor/assist/value_pop_up.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/time_used.h"
#include "ui/editor/panels/welcome_pane.h"
#include "ui/kit/painted_check.h"

using namespace korvant;
using korvant::test::coveredOf;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

constexpr int kStopBand = 1 << 20, kExceptionBand = 1 << 21, kCallerBand = 1 << 22,
              kCallerMark = 1 << 15, kClassicMark = 1;
constexpr int kArrowTop = 0x2000;  // of a line that folds

class EditorEvents : public FullWindow {
  protected:
    EditorEvents() { use(ThemeChoice::light); }
    /// Messages at the ends of lines, from top to bottom.
    std::vector<std::string> notes() const {
        std::vector<std::string> found;
        for (const wxWindow* child : editor()->GetChildren())
            if (child->IsShown() && !child->GetToolTipText().empty())
                found.push_back(child->GetToolTipText().utf8_string());
        return found;
    }
    void clickIn(std::function<wxPoint()> onScreen, int button = wxMOUSE_BTN_LEFT) {
        driver.run([onScreen, button] {
            wxUIActionSimulator simulator;
            simulator.MouseMove(onScreen());
            simulator.MouseClick(button);
        });
    }
    /// Beside the number of a line.
    std::function<wxPoint()> beside(int line) {
        return [this, line] {
            const int y = editor()->PointFromPosition(editor()->PositionFromLine(line - 1)).y;
            return editor()->ClientToScreen(wxPoint(editor()->GetMarginWidth(0) + 8, y + 8));
        };
    }
    bool shows(int command) const {
        const ui::PaintedButton* button = part<ui::MainToolbar>()->button(command);
        return button && button->IsShown();
    }
    std::string changedRows() const {
        std::string names;
        const ui::RowList* shown = list(ui::DebugPanel::kVariables);
        for (int i = 0; i < shown->count(); ++i)
            if (shown->row(i).changed) names += shown->row(i).name.utf8_string() + "\n";
        return names;
    }
    bool marked(int line, int marks) const { return (editor()->MarkerGet(line - 1) & marks) != 0; }
    void untilNoPanel() {
        driver.when("no panel", [this] { return frame() && !part<ui::DebugPanel>(); });
    }
};

TEST_F(EditorEvents, MessagesStandAtTheEndsOfLines) {
    const std::string wide(200, 'x');
    const std::string script = "int main() {\n    int a = one + two;\n    int b = three; // " +
                               wide + "\n    int c = four;\n    return 0;\n}\n";
    ready();
    driver.when("both messages", [this] {
        return notes() ==
               std::vector<std::string>{"No matching symbol 'one'", "No matching symbol 'four'"};
    });
    check([this] { EXPECT_EQ(part<ui::ProblemList>(), nullptr) << "opens by itself"; });
    gotoLine(4);
    driver.when("not where the caret is",
                [this] { return notes() == std::vector<std::string>{"No matching symbol 'one'"}; });
    driver.when("but below", [this] {
        return part<ui::StatusLine>()->content().remark == "No matching symbol 'four'";
    });
    clickIn([this] { return part<ui::StatusLine>()->ClientToScreen(wxPoint(50, 14)); });
    driver.when("the list", [this] { return part<ui::ProblemList>() != nullptr; });
    closeBox();
    edit(script);
}

/// Those that are not needed are hidden meanwhile, of which the toolkit complained at each line.
TEST_F(EditorEvents, MessagesScrollWithTheTextAndWithoutComplaints) {
    std::string script = "int main() {\n";
    for (int i = 0; i < 200; ++i)
        script += i % 9 == 0 ? "    a" + std::to_string(i) + ";\n" : "    Print(\"\");\n";
    script += "    return 0;\n}\n";
    ready();
    driver.when("messages", [this] { return notes().size() > 1; });
    driver.run([] { testing::internal::CaptureStderr(); });
    for (const int lines : {120, -60, 70, 3, -1}) {
        driver.run([this, lines] { editor()->LineScroll(0, lines); });
        driver.when("others", [this] {
            const std::vector<std::string> shown = notes();
            const int first = editor()->GetFirstVisibleLine() + 1;
            return !shown.empty() && std::stoi(shown.front().substr(21)) + 2 >= first;
        });
    }
    check([] { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); });
    closeBox();
    edit(script);
}

TEST_F(EditorEvents, CheckThatFindsErrorsOpensTheirList) {
    ready();
    driver.key(WXK_F7);
    driver.when("the list", [this] { return part<ui::ProblemList>() != nullptr; });
    check([this] {
        EXPECT_NE(output().find("at line 2"), std::string::npos) << output();
        EXPECT_TRUE(marked(2, kClassicMark));
        EXPECT_TRUE(editor()->HasFocus());
    });
    driver.key(WXK_F8);
    driver.when("the error", [this] { return caretLine() == 2; });
    closeBox();
    edit("int main() {\n    return nothing;\n}\n");
}

TEST_F(EditorEvents, RunShowsWhatPausesAndStopsIt) {
    const char* script =
        "int main() {\n"
        "    SetMaxRunTime(60000);\n"
        "    string s;\n"
        "    Input(s);\n"
        "    return 0;\n"
        "}\n";
    ready();
    driver.key(WXK_F7);
    untilOutput("Builded, no error.");
    driver.key(WXK_F5);
    driver.when("the question",
                [this] { return part<ui::ConsolePane>() && part<ui::ConsolePane>()->waiting(); });
    check([this] {
        EXPECT_EQ(output(), "");
        EXPECT_TRUE(shows(command_id::kPause));
        EXPECT_TRUE(shows(command_id::kStop));
        EXPECT_FALSE(shows(command_id::kExecute));
        EXPECT_FALSE(shows(command_id::kBuild));
        EXPECT_EQ(part<ui::TimeUsed>(), nullptr) << "no time of the run's passes";
    });
    driver.type("x").key(WXK_RETURN);
    untilStatus("Ready");
    ready();
    check([this] {
        EXPECT_TRUE(shows(command_id::kExecute));
        EXPECT_TRUE(shows(command_id::kBuild));
        EXPECT_EQ(part<ui::TimeUsed>(), nullptr);
        EXPECT_NE(part<ui::ConsolePane>(), nullptr);
    });
    closeBox();
    edit(script);
}

TEST_F(EditorEvents, NothingCoversAnotherInASmallWindow) {
    const auto checkSizes = [this] {
        for (const int width : {1240, 1110, 900, 790, 760, 700, 660, 640}) {
            driver.run([this, width] { frame()->SetClientSize(width, 480); });
            driver.when("the size", [this, width] {
                return part<ui::MainToolbar>()->GetClientSize().x == width;
            });
            check([this, width] {
                const ui::MainToolbar* toolbar = part<ui::MainToolbar>();
                EXPECT_EQ(coveredOf(toolbar), std::vector<std::string>()) << width;
                EXPECT_EQ(coveredOf(frame()), std::vector<std::string>()) << width;
                EXPECT_TRUE(toolbar->GetClientRect().Contains(
                    toolbar->button(command_id::kHelp)->GetRect()))
                    << width;
            });
        }
    };
    ready();
    checkSizes();
    breakAt({2});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 2 in main");
    checkSizes();
    driver.key(WXK_F5);
    driver.when("the question", [this] {
        return part<ui::ConsolePane>() && part<ui::ConsolePane>()->waiting() &&
               part<ui::ConsolePane>()->IsShownOnScreen();
    });
    checkSizes();
    driver.type("x").key(WXK_RETURN);
    untilStatus("Ready");
    closeBox();
    edit("int main() {\n    string s;\n    Input(s);\n    return 0;\n}\n");
}

TEST_F(EditorEvents, PanelOpensAtAStopAndGoesWithTheRun) {
    ready();
    breakAt({19, 22});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 19 in Hole::grade");
    check([this] {
        EXPECT_TRUE(editor()->HasFocus());
        EXPECT_TRUE(marked(19, kStopBand));
        EXPECT_NE(part<ui::DebugPanel>(), nullptr);
    });
    clickIn([this] {
        const ui::DebugPanel* panel = part<ui::DebugPanel>();
        return panel->ClientToScreen(wxPoint(panel->GetSize().x - 20, 18));
    });
    untilNoPanel();
    choose(command_id::kDeleteBreakpoints);
    breakAt({22});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 22 in Hole::grade");
    check([this] { EXPECT_EQ(part<ui::DebugPanel>(), nullptr) << "closed by hand"; });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    check([this] {
        for (int line = 1; line < 45; ++line)
            EXPECT_FALSE(marked(line, kStopBand | kExceptionBand | kCallerBand | kCallerMark));
    });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 22 in Hole::grade");
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    untilNoPanel();
    // Opened by hand it stays.
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.key(WXK_F5);
    untilStatus("Stopped at line 22 in Hole::grade");
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    check([this] {
        ASSERT_NE(part<ui::DebugPanel>(), nullptr);
        EXPECT_EQ(list(ui::DebugPanel::kStack)->count(), 0);
        EXPECT_EQ(list(ui::DebugPanel::kVariables)->count(), 0);
    });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, ChosenFrameLeavesTheStopWhereItIs) {
    ready();
    breakAt({19});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 19 in Hole::grade");
    clickIn([this] { return list(ui::DebugPanel::kStack)->ClientToScreen(wxPoint(60, 36)); });
    driver.when("the caller's line",
                [this] { return caretLine() == 30 && marked(30, kCallerBand); });
    check([this] {
        EXPECT_TRUE(marked(30, kCallerMark));
        EXPECT_TRUE(marked(19, kStopBand));
        EXPECT_EQ(rows(list(ui::DebugPanel::kVariables)).rfind("hole", 0), 0u);
    });
    clickIn([this] { return list(ui::DebugPanel::kStack)->ClientToScreen(wxPoint(60, 12)); });
    driver.when("the function itself", [this] { return !marked(30, kCallerBand | kCallerMark); });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, ChangedValuesAreMarkedUntilTheNextStop) {
    ready();
    breakAt({19});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 19 in Hole::grade");
    check([this] { EXPECT_EQ(changedRows(), ""); });
    driver.key(WXK_F10);
    untilStatus("Stopped at line 20 in Hole::grade");
    check([this] { EXPECT_EQ(changedRows(), "metal\n"); });
    driver.key(WXK_F10);
    driver.when("the next line", [this] { return changedRows() == "metres\n"; });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, ExceptionThatTheScriptCatches) {
    ready();
    driver.key(WXK_F5);
    driver.when("the end", [this] { return output() == "Application finished normaly.\n"; });
    check([this] { EXPECT_EQ(part<ui::ExceptionBox>(), nullptr); });
    closeBox();
    edit(
        "int main() {\n    int[] a;\n    try { a[1] = 2; } catch { return 0; }\n    return "
        "1;\n}\n");
}

TEST_F(EditorEvents, LinksOfTheExceptionBox) {
    const test::PageProgram browser(folder.path());
    const auto link = [this](int index) {
        return [this, index]() -> wxWindow* {
            return korvant::test::findChild<ui::PaintedButton>(part<ui::ExceptionBox>(), index);
        };
    };
    ready();
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    driver.click(link(0));
    const std::string page = "exceptions.html#index-out-of-bounds";
    driver.when("the page", [&] { return browser.opened().ends_with(page); });
    driver.click(link(1));
    driver.when("the text", [] {
        wxClipboardLocker locker;
        wxTextDataObject data;
        wxTheClipboard->GetData(data);
        return data.GetText() == "Index out of bounds";
    });
    driver.click(link(3));
    driver.when("no box", [this] { return part<ui::ExceptionBox>() == nullptr; });
    check([this] { EXPECT_TRUE(marked(25, kExceptionBand)); });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, MarginIsClicked) {
    ready();
    clickIn(beside(20));
    driver.when("a breakpoint", [this] { return markedLines() == std::vector<int>{20}; });
    clickIn(beside(20));
    driver.when("none", [this] { return markedLines().empty(); });
    for (const int line : {16, 20}) {
        clickIn(beside(line), wxMOUSE_BTN_RIGHT);
        driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
        driver.key(WXK_RETURN);
        driver.when("the breakpoint", [this, line] {
            return !part<ui::BreakpointBox>() && marked(line, kClassicMark);
        });
    }
    clickIn(beside(16), wxMOUSE_BTN_RIGHT);
    driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
    driver.when("its place", [turns = 0]() mutable { return ++turns > 20; });
    driver.click([this]() -> wxWindow* {
        for (int i = 0; const auto button = korvant::test::findChild<ui::PaintedButton>(
                            part<ui::BreakpointBox>(), i);
             ++i)
            if (button->face().label == "Delete") return button;
        return nullptr;
    });
    driver.when("the other one", [this] { return markedLines() == std::vector<int>{20}; });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, PointerBringsWhatIsKnownAndTakesItAway) {
    const auto pointAt = [this](const std::string& text, wxPoint off) {
        driver.run([this, text, off] {
            const int at = editor()->FindText(0, editor()->GetLength(), text) + 2;
            wxUIActionSimulator simulator;
            simulator.MouseMove(
                editor()->ClientToScreen(editor()->PointFromPosition(at) + wxPoint(90, 90)));
            simulator.MouseMove(editor()->ClientToScreen(editor()->PointFromPosition(at) + off));
        });
    };
    ready();
    breakAt({22});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 22 in Hole::grade");
    driver.run([this] { editor()->SetFirstVisibleLine(10); });
    pointAt("metal = 0", wxPoint(3, 6));
    driver.when("the value", [this] { return part<ui::ValuePopUp>() != nullptr; });
    driver.click([this]() -> wxWindow* {
        return korvant::test::findChild<ui::PaintedButton>(part<ui::ValuePopUp>(), 1);
    });
    driver.when("a copy", [this] {
        wxClipboardLocker locker;
        wxTextDataObject data;
        wxTheClipboard->GetData(data);
        return data.GetText().StartsWith("metal = ") && !part<ui::ValuePopUp>();
    });
    pointAt("metal = 0", wxPoint(3, 6));
    driver.when("the value again", [this] { return part<ui::ValuePopUp>() != nullptr; });
    pointAt("double metal", wxPoint(-40, -60));
    driver.when("nothing", [this] { return !part<ui::ValuePopUp>() && !part<ui::TipPopUp>(); });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, TextFoldsAsTheLanguageHasIt) {
    const char* script =
        "/* Two\n"
        "   lines. */\n"
        "class Hole {\n"
        "    string name = \"{\";\n"
        "    void one() { }\n"
        "    void two()\n"
        "    {\n"
        "        if (true) {\n"
        "            one();\n"
        "        } else {\n"
        "            one();\n"
        "        }\n"
        "    }\n"
        "}\n"
        "int main() { return 0; }\n";
    const auto folding = [this] {
        std::vector<int> lines;
        for (int line = 0; line < editor()->GetLineCount(); ++line)
            if ((editor()->GetFoldLevel(line) & kArrowTop) != 0) lines.push_back(line + 1);
        return lines;
    };
    const auto hidden = [this] {
        std::vector<int> lines;
        for (int line = 0; line < editor()->GetLineCount(); ++line)
            if (!editor()->GetLineVisible(line)) lines.push_back(line + 1);
        return lines;
    };
    ready();
    driver.when("what folds", [folding] { return folding() == std::vector<int>{1, 3, 7, 8, 10}; });
    clickIn([this] {
        const int x = editor()->GetMarginWidth(0) + editor()->GetMarginWidth(1) + 8;
        const int y = editor()->PointFromPosition(editor()->PositionFromLine(7)).y;
        return editor()->ClientToScreen(wxPoint(x, y + 8));
    });
    // The line that closes stays, as in other editors that ask for the language's folds.
    driver.when("a folded block", [hidden] { return hidden() == std::vector<int>{9}; });
    picture("look-folded");
    // Where nothing folds any more everything shows.
    driver.run([this] { editor()->GotoPos(editor()->GetLineEndPosition(7)); });
    driver.key(WXK_BACK);
    driver.when("the lines again", [hidden] { return hidden().empty(); });
    choose(command_id::kClassicLayout);
    driver.when("the lexer's folds", [folding] {
        return folding() != std::vector<int>({1, 3, 7, 8, 10}) && !folding().empty();
    });
    choose(command_id::kClassicLayout);
    closeBox();
    edit(script);
}

TEST_F(EditorEvents, ValuesOfTheScriptAreNotColouredAsFunctionsOfTheLibrary) {
    constexpr int kFunctionStyle = 16;
    const auto styleOf = [this](const std::string& name) {
        return editor()->GetStyleAt(editor()->FindText(0, editor()->GetLength(), name)) & 31;
    };
    ready();
    driver.when("the colours", [styleOf] {
        return styleOf("sqrt") == kFunctionStyle && styleOf("log") != kFunctionStyle;
    });
    closeBox();
    edit("int main() {\n    double log = 2;\n    return int(sqrt(log));\n}\n");
}

TEST_F(EditorEvents, WindowIsFoundAsItWasLeft) {
    const auto drag = [this](std::function<wxPoint()> from, wxPoint by) {
        driver.run([from, by] {
            wxUIActionSimulator simulator;
            const wxPoint begin = from();
            simulator.MouseMove(begin);
            simulator.MouseDown();
            simulator.MouseMove(begin + by / 2);
        });
        driver.when("the layout", [turns = 0]() mutable { return ++turns > 20; });
        driver.run([by] {
            wxUIActionSimulator simulator;
            simulator.MouseMove(wxGetMousePosition() + by / 2);
            simulator.MouseUp();
        });
    };
    const auto outline = [this] { return part<ui::OutlinePane>()->GetSize().x; };
    ready();
    driver.key('7', wxMOD_CONTROL);
    driver.when("the outline", [this] { return part<ui::OutlinePane>() != nullptr; });
    drag([this] { return part<ui::OutlinePane>()->ClientToScreen(wxPoint(206, 300)); }, {40, 0});
    driver.when("a wider outline", [outline] { return outline() > 240; });
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    clickIn([this] { return part<ui::DebugPanel>()->ClientToScreen(wxPoint(60, 18)); });
    driver.when("a folded section", [this] { return part<ui::DebugPanel>()->folded() == 1; });
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    driver.click([this]() -> wxWindow* {
        for (int i = 0; const auto button =
                            korvant::test::findChild<ui::PaintedButton>(part<ui::FindBar>(), i);
             ++i)
            if (button->face().label == "Aa") return button;
        return nullptr;
    });
    choose(command_id::kThemeDark);
    driver.key('1', wxMOD_CONTROL);
    ready();
    driver.key('+', wxMOD_CONTROL);
    driver.when("larger letters", [this] { return editor()->GetZoom() == 1; });
    closeBox();
    edit(kTour);
    const ui::EditorSettings kept = ui::loadEditorSettings();
    EXPECT_TRUE(kept.findMatchCase);
    EXPECT_EQ(kept.theme, ThemeChoice::dark);
    EXPECT_EQ(kept.foldedSections, 1);
    ready();
    driver.when("the outline",
                [this, outline] { return part<ui::OutlinePane>() && outline() > 240; });
    check([this] { EXPECT_EQ(editor()->GetZoom(), 1); });
    choose(command_id::kResetLayout);
    driver.when("the usual width", [outline] { return outline() == 209; });
    check([this] { EXPECT_EQ(pane()->GetSize().y, 144); });
    closeBox();
    edit(kTour);
}

TEST_F(EditorEvents, WelcomeStaysAwayWhenItIsToldTo) {
    ready();
    driver.when("the pane", [this] { return part<ui::WelcomePane>() != nullptr; });
    driver.click([this]() -> wxWindow* {
        return korvant::test::findChild<ui::PaintedCheck>(part<ui::WelcomePane>());
    });
    driver.when("no tick", [this] {
        return !korvant::test::findChild<ui::PaintedCheck>(part<ui::WelcomePane>())->value();
    });
    driver.click([this]() -> wxWindow* {
        const auto welcome = part<ui::WelcomePane>();
        for (int i = 0; const auto button = korvant::test::findChild<ui::PaintedButton>(welcome, i);
             ++i)
            if (button->face().icon == ui::Icon::close) return button;
        return nullptr;
    });
    driver.when("no pane", [this] { return !part<ui::WelcomePane>() && editor()->HasFocus(); });
    closeBox();
    edit("");
    ready();
    check([this] { EXPECT_EQ(part<ui::WelcomePane>(), nullptr); });
    closeBox();
    edit("");
}

}  // namespace
