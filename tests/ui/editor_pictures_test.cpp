// Pictures of the window in each of its states, for the manual and to be looked at: ./dev pictures.
// Without a folder for them only their sharpness is tried.
#include <wx/image.h>
#include <wx/textctrl.h>
#include <wx/time.h>

#include <cstdlib>

#include "editor_full_window.h"
#include "support/tree.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/value_pop_up.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/function_chooser.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/problem_list.h"
#include "ui/editor/panels/time_used.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::FullWindow;

namespace {

const wxSize kUsual{1280, 860}, kSmall{1100, 700};
constexpr int kMenuBar = 32;    // at most
constexpr long kSettled = 400;  // milliseconds

class Pictures : public FullWindow {
  protected:
    Pictures() {
        ownFile = folder.file("drill_report.as");
        script_ = test::readFile(test::sourceFolder() + "/tests/ui/pictures/drill_report.as");
    }
    void SetUp() override {
        FullWindow::SetUp();
        if (!std::getenv("KORVANT_SCREENSHOTS")) GTEST_SKIP() << "no folder for pictures";
    }
    std::string& script() { return script_; }
    void begin(ThemeChoice theme, wxSize size = kUsual) {
        ui::EditorSettings settings;
        settings.theme = theme;
        settings.welcome = settings.tour = false;
        settings.width = size.x;
        settings.height = size.y;
        settings.outline = outline;
        settings.findMatchCase = true;
        ui::saveEditorSettings(settings);
        dark_ = theme == ThemeChoice::dark;
        ready();
        // What a window manager is about to do may undo it.
        driver.when("its size", [this, size, since = wxGetUTCTimeMillis()]() mutable {
            const wxSize content = frame()->ToDIP(frame()->GetClientSize());
            if (content.x == size.x && content.y <= size.y && content.y >= size.y - kMenuBar)
                return (wxGetUTCTimeMillis() - since) > kSettled;
            since = wxGetUTCTimeMillis();
            test::resizeContent(*frame(), frame()->FromDIP(size));
            return false;
        });
        ready();
    }
    /// A second file, behind the one of the pictures.
    void openHoles() {
        test::writeFile(folder.file("holes.as"), "int main() {\n    return 0;\n}\n");
        driver.run([path = folder.file("holes.as")] {
            ui::setFileChooser([path](wxWindow*, const FileDialogRequest&) { return path; });
        });
        driver.key('O', wxMOD_CONTROL);
        untilTitle("Script Editor - holes.as");
        driver.key(WXK_TAB, wxMOD_CONTROL | wxMOD_SHIFT);
        untilTitle("Script Editor - drill_report.as");
        ready();
    }
    /// The end of the states; what was typed is not kept.
    void end() {
        closeBox();
        edit(script_);
    }
    void take(const std::string& name) { picture("look-" + name + (dark_ ? "-dark" : "")); }
    void picture(const std::string& name) {
        const char* pictures = std::getenv("KORVANT_SCREENSHOTS");
        if (!pictures) return;
        driver.run([] {
            for (wxWindow* window : wxTopLevelWindows) window->Update();
        });
        driver.when("the painting", [turns = 0]() mutable { return ++turns > 40; });
        driver.run([this, path = std::string(pictures) + "/" + name + ".png"] {
            test::saveWindow(*frame(), path);
        });
    }
    void savePicture(const std::string& name) {
        const char* pictures = std::getenv("KORVANT_SCREENSHOTS");
        test::saveWindow(*frame(), pictures + ("/look-" + name + (dark_ ? "-dark" : "") + ".png"));
    }
    /// From elsewhere, in two steps: of moves that follow each other some systems tell the last.
    void pointAt(const std::string& text) {
        for (const wxPoint beside : {wxPoint(80, 80), wxPoint(3, 8)})
            driver.run([this, text, beside] {
                const int at =
                    editor()->FindText(editor()->PositionFromLine(28), editor()->GetLength(), text);
                const wxPoint place = editor()->PointFromPosition(at + 1) + beside;
                wxUIActionSimulator().MouseMove(editor()->ClientToScreen(place));
            });
    }
    /// One that stops when, or only prints.
    void breakpointWith(int line, int choice, const std::string& text) {
        gotoLine(line);
        driver.key(WXK_F9, wxMOD_ALT);
        driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
        for (int i = 0; i < choice; ++i) driver.key(WXK_DOWN);
        driver.when("its field",
                    [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
        driver.run([text] { dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus())->SetValue(text); });
    }
    void closedBreakpoint() {
        driver.key(WXK_RETURN);
        ready();
    }
    void showFirstVariable() {
        for (const int row : {0, -1}) list(ui::DebugPanel::kVariables)->select(row);
    }
    void openRow(int index) {
        driver.run([this, index] {
            list(ui::DebugPanel::kVariables)->select(index);
            list(ui::DebugPanel::kVariables)->onFold(index);
        });
    }
    /// In the second hole, with every kind of breakpoint.
    void stopInTheSecondHole() {
        openHoles();
        breakAt({32, 35});
        breakpointWith(37, 3, "best {best}");
        closedBreakpoint();
        gotoLine(39);
        driver.key(WXK_F9).key(WXK_F9, wxMOD_CONTROL);
        driver.key(WXK_F5);
        untilStatus("Stopped at line 32 in Hole::grade");
        breakpointWith(30, 1, "metres > 10");
        closedBreakpoint();
        driver.key(WXK_F5);
        untilStatus("Stopped at line 30 in Hole::grade");
        driver.run([this] {
            for (const char* watch : {"metal / metres", "samples[i].rock", "grade() >= 1"})
                part<ui::DebugPanel>()->addWatch(watch);
        });
        // From one pass of the loop to the next two values change.
        runToTheSum();
        driver.key(WXK_F5);
        untilStatus("Stopped at line 30 in Hole::grade");
        runToTheSum();
        driver.run([this] { editor()->SetFirstVisibleLine(28); });
    }
    void runToTheSum() {
        gotoLine(29);
        driver.key(WXK_F10, wxMOD_CONTROL);
        untilStatus("Stopped at line 29 in Hole::grade");
    }
    bool outline = false;

  private:
    std::string script_;
    bool dark_ = false;
};

class EditorPictures : public Pictures, public testing::WithParamInterface<ThemeChoice> {};

TEST_P(EditorPictures, Welcome) {
    ownFile.clear();
    script().clear();
    begin(GetParam());
    driver.run([this] { frame()->Close(); });
    edit("");
    ui::EditorSettings settings = ui::loadEditorSettings();
    settings.welcome = settings.tour = true;
    ui::saveEditorSettings(settings);
    ready();
    take("1-welcome");
    end();
}

TEST_P(EditorPictures, Typing) {
    const int reads = static_cast<int>(script().find("    if (!readHoles"));
    const int report = static_cast<int>(script().find("    report(holes);"));
    outline = true;
    begin(GetParam());
    openHoles();
    driver.key(WXK_F7);
    untilStatus("No problems found");
    driver.run([this, reads, report] {
        editor()->SetTargetStart(reads);
        editor()->SetTargetEnd(report);
        editor()->ReplaceTarget(
            "    double metal = 0, metres = 0;\n"
            "    double mean = metal / metrs;\n"
            "    string line = \"NR-01,0,2.5,0.40\";\n"
            "    string hole = StrSubstring(line, 0);\n"
            "    string id = ;\n");
    });
    driver.key('4', wxMOD_CONTROL);
    driver.key('1', wxMOD_CONTROL);
    ready();
    driver.run([this] {
        editor()->SetFirstVisibleLine(47);
        editor()->GotoPos(editor()->GetLineEndPosition(61) - 1);
        editor()->SetFirstVisibleLine(47);
    });
    driver.when("the outline", [this] { return part<ui::OutlinePane>()->list()->count() > 8; });
    driver.type("Str");
    driver.when("the list", [this] { return part<ui::SuggestionPopUp>() != nullptr; });
    for (int i = 0; i < 5; ++i) driver.key(WXK_DOWN);
    driver.when("documentation",
                [this] { return part<ui::SuggestionPopUp>()->described() == "StrSubstring"; });
    driver.when("problems", [this] { return part<ui::ProblemList>() != nullptr; });
    take("2-typing");
    driver.key(WXK_ESCAPE);
    driver.run([this] { editor()->SetSavePoint(); });
    end();
}

TEST_P(EditorPictures, Stopped) {
    begin(GetParam());
    stopInTheSecondHole();
    driver.when("the variables", [this] { return list(ui::DebugPanel::kVariables)->count() >= 5; });
    for (const int row : {4, 6, 9, 15}) openRow(row);
    driver.run([this] { showFirstVariable(); });
    driver.run([this] {
        const int at =
            editor()->FindText(editor()->PositionFromLine(28), editor()->GetLength(), "metal");
        editor()->SetSelection(at, at + 5);
    });
    driver.key(WXK_F4).key(WXK_ESCAPE);
    driver.run([this] { editor()->GotoLine(28); });
    take("3-stopped-plain");
    pointAt("samples");
    driver.when("the value", [this] { return part<ui::ValuePopUp>() != nullptr; });
    take("3-stopped");
    driver.key(WXK_ESCAPE);
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    end();
}

TEST_P(EditorPictures, StoppedInASmallWindow) {
    begin(GetParam(), kSmall);
    stopInTheSecondHole();
    for (const int row : {4, 6, 9, 15}) openRow(row);
    driver.run([this] { showFirstVariable(); });
    driver.key('2', wxMOD_CONTROL).key('1', wxMOD_CONTROL);
    pointAt("samples");
    driver.when("the value", [this] { return part<ui::ValuePopUp>() != nullptr; });
    take("7-small");
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    end();
}

TEST_P(EditorPictures, Exception) {
    script().replace(script().find("samples[best].rock"), 18, "samples[best + 1].rock");
    script().replace(script().find("1 + i % 4"), 9, "1 + (count == 14 ? i : i % 4)");
    script().replace(script().find("        if (grade >= kCutOff)"), 0,
                     "        Rock rock = holes[i].carrier();\n");
    begin(GetParam());
    openHoles();
    breakAt({32});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 32 in Hole::grade");
    driver.run([this] {
        for (const char* watch : {"metal / metres", "samples[14].rock", "grade() >= 1"})
            part<ui::DebugPanel>()->addWatch(watch);
    });
    // Of the second hole.
    driver.key(WXK_F5);
    driver.when("its breakpoint", [this] {
        return rows(list(ui::DebugPanel::kVariables)).find("NR-02") != std::string::npos;
    });
    driver.key(WXK_F5);
    driver.when("the box", [this] { return part<ui::ExceptionBox>() != nullptr; });
    for (const int row : {1, 3, 6}) openRow(row);
    driver.run([this] { showFirstVariable(); });
    take("4-exception");
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    end();
}

TEST_P(EditorPictures, Running) {
    script().replace(script().find("    report(holes);"), 18,
                     "    report(holes);\n    compare(holes);\n");
    script() +=
        "\nvoid compare(Hole[] &inout) {\n    const uint begin = GetSystemTime();\n"
        "    while (GetSystemTime() - begin < 4600) {}\n}\n";
    begin(GetParam());
    openHoles();
    gotoLine(47);
    driver.run([this] { editor()->SetFirstVisibleLine(35); });
    // There are no events while the script runs but those of painting.
    driver.run([this] {
        for (wxWindow* child : part<ui::MainToolbar>()->GetChildren())
            if (auto* time = dynamic_cast<ui::TimeUsed*>(child))
                time->Bind(wxEVT_PAINT, [this, time](wxPaintEvent& event) {
                    if (time->accessibleName() > "0:04") savePicture("5-running");
                    event.Skip();
                });
    });
    driver.key(WXK_F5);
    driver.when("the run", [this] { return statusText() == "Ready" && part<ui::ConsolePane>(); });
    end();
}

TEST_P(EditorPictures, Find) {
    outline = true;
    begin(GetParam());
    openHoles();
    driver.key(WXK_F7);
    untilStatus("No problems found");
    driver.key('H', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    driver.type("samples");
    for (int i = 0; i < 5; ++i) driver.key(WXK_F3);
    driver.run([this] { editor()->SetFirstVisibleLine(16); });
    take("8-find");
    driver.key(WXK_ESCAPE);
    end();
}

TEST_P(EditorPictures, Tabs) {
    begin(GetParam());
    openHoles();
    gotoLine(29);
    driver.run([this] { editor()->SetFirstVisibleLine(16); });
    driver.click([this] { return part<ui::FunctionChooser>(); });
    driver.when("the functions", [this] {
        return part<ui::ChoiceBox>() && dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus());
    });
    take("tabs");
    driver.key(WXK_ESCAPE);
    ready();
    end();
}

TEST_P(EditorPictures, FailedBuild) {
    script() =
        "int main() {\n    Print(\"Depth to end of hole: \");\n    double depth\n    "
        "Input(depth);\n"
        "    Print(\"That is \" + depth / 0.3048 + \" feet.\\n\");\n    return 0;\n}\n";
    begin(GetParam(), {1000, 500});
    driver.key(WXK_F7);
    driver.when("the list", [this] { return part<ui::ProblemList>() != nullptr; });
    take("build-errors");
    end();
}

TEST_P(EditorPictures, Breakpoint) {
    begin(GetParam());
    openHoles();
    driver.key(WXK_F7);
    driver.run([this] { editor()->SetFirstVisibleLine(16); });
    breakpointWith(30, 1, "metres > 10");
    closedBreakpoint();
    driver.run([this] { editor()->SetFirstVisibleLine(16); });
    breakpointWith(30, 0, "metres > 10");
    take("9-breakpoint");
    driver.key(WXK_ESCAPE);
    ready();
    end();
}

INSTANTIATE_TEST_SUITE_P(Themes, EditorPictures,
                         testing::Values(ThemeChoice::light, ThemeChoice::dark));

/// Marks in the margin, enlarged from a picture for coarser screens, would be made of squares.
TEST_F(FullWindow, MarksAreAsFineAsTheScreen) {
    use(ThemeChoice::light);
    wxImage picture;
    wxRect mark;
    wxSize text;
    ready();
    breakAt({2});
    driver.when("the painting", [turns = 0]() mutable { return ++turns > 40; });
    driver.run([&] {
        const int top = editor()->PointFromPosition(editor()->PositionFromLine(1)).y;
        mark = wxRect(editor()->GetMarginWidth(0), top, 16, editor()->TextHeight(1));
        text = editor()->GetSize();
        picture = test::pictureOf(*editor());
    });
    closeBox();
    edit("int main() {\n    return 0;\n}\n");
    ASSERT_TRUE(picture.IsOk());
    const int scale = picture.GetWidth() / text.x;
    const auto at = [&](int x, int y) {
        return picture.GetRed(x, y) << 16 | picture.GetGreen(x, y) << 8 | picture.GetBlue(x, y);
    };
    int red = 0, mixed = 0;
    for (int y = mark.y * scale; y < mark.GetBottom() * scale; y += scale)
        for (int x = mark.x * scale; x < mark.GetRight() * scale; x += scale) {
            red += picture.GetRed(x, y) > 180 && picture.GetBlue(x, y) < 90;
            bool same = true;
            for (int i = 0; i < scale * scale; ++i)
                same = same && at(x + i % scale, y + i / scale) == at(x, y);
            mixed += !same;
        }
    EXPECT_GT(red, 40);
    if (scale > 1) {
        EXPECT_GT(mixed, 12);
    }
}

}  // namespace
