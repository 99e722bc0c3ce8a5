// What shows at which moment of a run, and the way through everything by keyboard.
#include <wx/image.h>
#include <wx/textctrl.h>
#include <wx/time.h>

#include "editor_full_window.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/tip_pop_up.h"
#include "ui/editor/assist/value_pop_up.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/file_tabs.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/time_used.h"
#include "ui/editor/panels/welcome_pane.h"

using namespace korvant;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

class EditorMoments : public FullWindow {
  protected:
    EditorMoments() { use(ThemeChoice::light); }
    /// Pixels of a window about as red, green and blue as a colour.
    int pixels(wxWindow& window, const wxColour& colour) const {
        const wxImage picture = test::pictureOf(window);
        int found = 0;
        const auto near = [](int a, int b) { return std::abs(a - b) < 8; };
        for (int y = 0; picture.IsOk() && y < picture.GetHeight(); ++y)
            for (int x = 0; x < picture.GetWidth(); ++x)
                found += near(picture.GetRed(x, y), colour.Red()) &&
                         near(picture.GetGreen(x, y), colour.Green()) &&
                         near(picture.GetBlue(x, y), colour.Blue());
        return found;
    }
    ui::TimeUsed* time() const {
        for (wxWindow* child : part<ui::MainToolbar>()->GetChildren())
            if (auto* found = dynamic_cast<ui::TimeUsed*>(child)) return found;
        return nullptr;
    }
    void pointAt(const std::string& text, wxPoint off) {
        driver.run([this, text, off] {
            const int at = editor()->FindText(0, editor()->GetLength(), text) + 2;
            wxUIActionSimulator simulator;
            simulator.MouseMove(
                editor()->ClientToScreen(editor()->PointFromPosition(at) + wxPoint(90, 90)));
            simulator.MouseMove(editor()->ClientToScreen(editor()->PointFromPosition(at) + off));
        });
    }
};

TEST_F(EditorMoments, FirstStartShowsATourAndSaysNothing) {
    ready();
    driver.when("the tour", [this] { return text().find("A tour") != std::string::npos; });
    check([this] {
        EXPECT_NE(part<ui::WelcomePane>(), nullptr);
        EXPECT_EQ(output(), "");
        EXPECT_EQ(part<ui::ProblemList>(), nullptr);
        EXPECT_EQ(part<ui::DebugPanel>(), nullptr);
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    driver.when("the table", [this] {
        return part<ui::ConsolePane>() &&
               part<ui::ConsolePane>()->printed().find("NR-0") != std::string::npos;
    });
    closeBox();
    edit("");
}

/// What the last run had printed stood there until this one printed something.
TEST_F(EditorMoments, NextRunBeginsWithAnEmptyConsole) {
    bool paintedEmpty = false;
    ready();
    driver.key(WXK_F5);
    driver.when("what is printed", [this] {
        return part<ui::ConsolePane>() &&
               part<ui::ConsolePane>()->printed().find("done") != std::string::npos;
    });
    untilStatus("Ready");
    driver.run([&] {
        part<ui::ConsolePane>()->canvas().Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
            paintedEmpty = paintedEmpty || part<ui::ConsolePane>()->empty();
            event.Skip();
        });
    });
    driver.key(WXK_F5);
    driver.when("an empty console", [&paintedEmpty] { return paintedEmpty; });
    untilStatus("Ready");
    closeBox();
    edit(
        "int main() {\n    uint begun = GetSystemTime();\n"
        "    while (GetSystemTime() - begun < 1500) {}\n    Print(\"done\\n\");\n    return "
        "0;\n}\n");
}

TEST_F(EditorMoments, MistakesWaitForAPauseAndForTheirWord) {
    const auto count = [this] {
        return part<ui::ProblemList>() ? part<ui::ProblemList>()->count() : 0;
    };
    ready();
    driver.key(WXK_F8);
    driver.when("the list of two", [count] { return count() == 2; });
    driver.run([this] {
        editor()->InsertText(editor()->PositionFromLine(5), "    int size = ;\n");
        editor()->GotoPos(editor()->GetLineEndPosition(5) - 1);
    });
    // While names are offered for it a name has not been written.
    driver.type("StrS");
    driver.when("the names", [this] { return part<ui::SuggestionPopUp>() != nullptr; });
    driver.when("an answer", [this, count, began = wxLongLong(0)]() mutable {
        if (began == 0) began = wxGetUTCTimeMillis();
        return count() == 2 && statusText() == "2 errors" && wxGetUTCTimeMillis() - began > 1200;
    });
    driver.key(WXK_ESCAPE);
    driver.when("one more", [this, count] { return count() > 2 && statusText() != "2 errors"; });
    check([this] {
        for (int line = 0; line < editor()->GetLineCount(); ++line)
            EXPECT_EQ(editor()->MarkerGet(line), 0) << line;
    });
    closeBox();
    edit(
        "int main() {\n    int a = one;\n    int b = two;\n    int c = 1;\n    c = 2;\n"
        "    return 0;\n}\n");
}

/// The toolkit painted those over the box that were made after it.
TEST_F(EditorMoments, MessagesGiveWayToABox) {
    const wxColour red(0xC4, 0x23, 0x1F);
    const auto mend = [this](const char* name) {
        driver.run([this, name] { editor()->GotoPos(editor()->FindText(0, 100, name)); });
        driver.key('.', wxMOD_CONTROL);
        driver.when("the box", [this] {
            return part<ui::ChoiceBox>() && part<ui::ChoiceBox>()->field()->HasFocus();
        });
    };
    ready();
    untilStatus("1 error");
    mend("one = onee");
    driver.key(WXK_RETURN);
    untilStatus("3 errors");
    mend("onee");
    driver.when("everything painted", [turns = 0]() mutable { return ++turns > 20; });
    check([this, red] { EXPECT_EQ(pixels(*part<ui::ChoiceBox>(), red), 0); });
    driver.key(WXK_ESCAPE);
    driver.when("the message", [this, red] { return pixels(*editor(), red) > 50; });
    closeBox();
    edit(
        "int main() {\n    int one = 0\n    one = onee;\n    one = two;\n    one = six;\n    "
        "return one;\n}\n");
}

/// The bar moved once a second, whatever the limit.
TEST_F(EditorMoments, TimeIsShownAgainstWhatIsAllowed) {
    const wxColour red(0xC4, 0x23, 0x1F);
    std::vector<std::string> names;
    int reddest = 0, before = 0;
    ready();
    driver.run([&] {
        for (wxWindow* child : part<ui::MainToolbar>()->GetChildren())
            if (auto* shown = dynamic_cast<ui::TimeUsed*>(child))
                shown->Bind(wxEVT_PAINT, [&, shown](wxPaintEvent& event) {
                    event.Skip();
                    const std::string name = shown->accessibleName().utf8_string();
                    if (names.empty() || names.back() != name) names.push_back(name);
                    const int found = pixels(*shown, red);
                    (name.rfind("0:01", 0) == 0 ? before : reddest) = found;
                });
    });
    driver.key(WXK_F5);
    driver.when("the end of the time", [this] { return part<ui::ExceptionBox>() != nullptr; });
    untilStatus("Stopped: The time of this run is over, line 3 in main. F5 lets the script end.");
    driver.key(WXK_F5);
    untilStatus("The run took 0:03, the time allowed, and was ended.");
    check([&] {
        EXPECT_EQ(names.front(), "0:01 of 0:03 allowed");
        EXPECT_GT(names.size(), 1U);
        EXPECT_EQ(before, 0);
        EXPECT_GT(reddest, 100);
        EXPECT_FALSE(time() && time()->IsShown());
    });
    closeBox();
    edit("int main() {\n    SetMaxRunTime(3000);\n    while (true) {}\n    return 0;\n}\n");
}

TEST_F(EditorMoments, TheTimeThatWasAllowedIsNamedWhole) {
    ready();
    driver.key(WXK_F5);
    driver.when("the end of the time", [this] { return part<ui::ExceptionBox>() != nullptr; });
    driver.key(WXK_F5);
    untilStatus("The run took 0:00.3, the time allowed, and was ended.");
    closeBox();
    edit("int main() {\n    SetMaxRunTime(300);\n    while (true) {}\n    return 0;\n}\n");
}

TEST_F(EditorMoments, TimeIsShownAfterASecond) {
    std::vector<std::string> seen;
    frontend.meanwhile = [&] {
        const bool shown = time() && time()->IsShown();
        seen.push_back(shown ? time()->accessibleName().utf8_string() : "");
    };
    ready();
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(
        "int main() {\n    uint begin = GetSystemTime();\n    "
        "Information(\"\");\n"
        "    while (GetSystemTime() - begin < 1300) {}\n    Information(\"\");\n"
        "    return 0;\n}\n");
    EXPECT_EQ(seen, (std::vector<std::string>{"", "0:01 of 0:10 allowed"}));
}

TEST_F(EditorMoments, LineThatIsAskedForIsTinted) {
    const wxColour tint(0xD6, 0xE6, 0xF8);
    ready();
    driver.key(WXK_F5);
    driver.when("the question",
                [this] { return part<ui::ConsolePane>() && part<ui::ConsolePane>()->waiting(); });
    driver.when("the tint",
                [this, tint] { return pixels(part<ui::ConsolePane>()->canvas(), tint) > 2000; });
    driver.type("x").key(WXK_RETURN);
    untilStatus("Ready");
    driver.when("none",
                [this, tint] { return pixels(part<ui::ConsolePane>()->canvas(), tint) == 0; });
    closeBox();
    edit("int main() {\n    Print(\"a\\nb: \");\n    string s;\n    Input(s);\n    return 0;\n}\n");
}

TEST_F(EditorMoments, StopsStandWhereTheyAreReadBest) {
    std::string script = kTour;
    for (int i = 0; i < 60; ++i) script += "// the end\n";
    ready();
    breakAt({17});
    driver.key(WXK_F5);
    driver.when("the stop",
                [this] { return frame() && statusText() == "Stopped at line 17 in Hole::grade"; });
    ready();
    check([this] { EXPECT_EQ(editor()->GetFirstVisibleLine(), 16); });
    choose(command_id::kDeleteBreakpoints);
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    check([this] {
        const int above = 24 - editor()->GetFirstVisibleLine();
        EXPECT_GE(above, editor()->LinesOnScreen() / 3);
        EXPECT_LT(above, editor()->LinesOnScreen());
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(script);
}

TEST_F(EditorMoments, AStopBelowAFoldIsSeen) {
    std::string script =
        "void f() {\n    int a;\n    int b;\n    int c;\n}\n"
        "int main() {\n    int n = 1;\n    return n - 1;\n}\n";
    for (int i = 0; i < 60; ++i) script += "// the end\n";
    ready();
    breakAt({8});
    driver.when("something to fold",
                [this] { return (editor()->GetFoldLevel(0) & wxSTC_FOLDLEVELHEADERFLAG) != 0; });
    driver.run([this] { editor()->ToggleFold(0); });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 8 in main");
    check([this] {
        EXPECT_FALSE(editor()->GetLineVisible(2));
        EXPECT_EQ(editor()->DocLineFromVisible(editor()->GetFirstVisibleLine()), 7);
    });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(script);
}

TEST_F(EditorMoments, WhatIsKnownStaysUnderThePointerAndNotBeside) {
    ready();
    breakAt({22});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 22 in Hole::grade");
    driver.run([this] { editor()->SetFirstVisibleLine(10); });
    pointAt("samples.length", wxPoint(3, 6));
    driver.when("the value", [this] { return part<ui::ValuePopUp>() != nullptr; });
    const auto stays = [this] {
        driver.when("a while", [this, began = wxLongLong(0)]() mutable {
            if (began == 0) began = wxGetUTCTimeMillis();
            return wxGetUTCTimeMillis() - began > 800 || !part<ui::ValuePopUp>();
        });
        check([this] { EXPECT_NE(part<ui::ValuePopUp>(), nullptr); });
    };
    const auto pointerTo = [this](wxPoint fromCorner) {
        driver.run([this, fromCorner] {
            if (!part<ui::ValuePopUp>()) return;
            const wxPoint corner = part<ui::ValuePopUp>()->GetScreenRect().GetBottomRight();
            wxUIActionSimulator().MouseMove(corner + fromCorner);
        });
    };
    pointerTo({-20, -10});
    stays();
    pointerTo({5, -10});
    stays();
    pointerTo({14, -10});
    driver.when("nothing", [this] { return !part<ui::ValuePopUp>(); });
    closeBox();
    edit(kTour);
}

/// Everything open at once, and the focus goes through all of it, there and back.
TEST_F(EditorMoments, KeyboardGoesThroughEveryPane) {
    ownFile = folder.file("tour.as");
    std::string script = kTour;
    script.replace(script.find("    double grade = hole"), 0, "    Print(\"x\\n\");\n");
    test::writeFile(ownFile, script);
    ready();
    driver.key('N', wxMOD_CONTROL);
    driver.when("two files", [this] { return part<ui::FileTabs>() != nullptr; });
    driver.key(WXK_TAB, wxMOD_CONTROL);
    driver.when("the tour", [this, script] { return text() == script; });
    breakAt({32});
    driver.key('7', wxMOD_CONTROL);
    driver.key(WXK_F5);
    untilStatus("Stopped at line 32 in report");
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    driver.key('1', wxMOD_CONTROL);
    ready();
    std::vector<std::pair<const char*, std::function<const wxWindow*()>>> stops{
        {"outline", [this] { return part<ui::OutlinePane>()->list(); }},
        {"output", [this] { return pane(); }},
        {"console", [this] { return &part<ui::ConsolePane>()->canvas(); }},
        {"stack", [this] { return list(ui::DebugPanel::kStack); }},
        {"variables", [this] { return list(ui::DebugPanel::kVariables); }},
        {"watches", [this] { return list(ui::DebugPanel::kWatches); }},
        {"breakpoints", [this] { return list(ui::DebugPanel::kBreakpoints); }},
        {"toolbar", [this] { return part<ui::MainToolbar>()->button(command_id::kContinue); }},
        {"tabs", [this] { return part<ui::FileTabs>(); }},
        {"find", [this] { return part<ui::FindBar>()->field(); }},
        {"text", [this] { return editor(); }}};
    const auto walk = [&](int modifiers) {
        for (const auto& [name, window] : stops) {
            driver.key(WXK_F6, modifiers);
            driver.when(name, [window] { return wxWindow::FindFocus() == window(); });
        }
    };
    walk(wxMOD_CONTROL);
    stops.pop_back();
    std::reverse(stops.begin(), stops.end());
    stops.emplace_back("text", [this] { return editor(); });
    walk(wxMOD_CONTROL | wxMOD_SHIFT);
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(script);
}

TEST_F(EditorMoments, ClassicKeysKeepTheirMeanings) {
    const test::PageProgram browser(folder.path());
    ready();
    // Nothing stands still: there is nothing to step.
    driver.key(WXK_F11).key(WXK_F12).key(WXK_F10).key(WXK_F11, wxMOD_SHIFT);
    check([this] {
        EXPECT_EQ(statusText(), "Ready");
        EXPECT_EQ(output(), "");
    });
    driver.key(WXK_F1);
    driver.when("the manual", [&browser] { return !browser.opened().empty(); });
    gotoLine(4);
    driver.key('/', wxMOD_CONTROL);
    driver.when("a comment", [this] { return editor()->GetLine(3).Contains("//"); });
    driver.key('Z', wxMOD_CONTROL);
    driver.when("code", [this] { return editor()->GetLine(3) == "    b = a;\n"; });
    driver.key('Z', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("a comment again", [this] { return editor()->GetLine(3).Contains("//"); });
    driver.key('Z', wxMOD_CONTROL);
    breakAt({4});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 4 in main");
    ready();
    // Of the word at the caret, with nothing selected.
    driver.run([this] { editor()->GotoPos(editor()->PositionFromLine(1) + 9); });
    driver.key(WXK_F9, wxMOD_SHIFT);
    driver.when("the watch",
                [this] { return rows(list(ui::DebugPanel::kWatches)).rfind("first=7\n", 0) == 0; });
    driver.run([this] {
        const int at = editor()->FindText(0, 90, "first");
        editor()->SetSelection(at, at + 5);
    });
    driver.key(WXK_F4);
    driver.when("its value", [this] { return output().find("int first = 7") == 0; });
    driver.key(WXK_ESCAPE).key(WXK_F11);
    untilStatus("Stopped at line 5 in main");
    driver.key(WXK_F9);
    driver.when("two breakpoints",
                [this] { return list(ui::DebugPanel::kBreakpoints)->count() == 2; });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(
        "int main() {\n    int first = 7;\n    int a = 1, b = 0;\n    b = a;\n"
        "    return b - a;\n}\n");
}

}  // namespace
