// What the panes offer: variables found by name, what stands for a value, examples, a bar that
// fits.
#include <wx/image.h>
#include <wx/textctrl.h>

#include <filesystem>

#include "editor/control/live_help.h"
#include "editor_full_window.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/editor_file_dialog.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/editor/panels/outline_pane.h"
#include "ui/editor/panels/welcome_pane.h"
#include "ui/kit/pane_heading.h"

using namespace korvant;
using korvant::test::coveredOf;
using korvant::test::findChild;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

class EditorPanes : public FullWindow {
  protected:
    EditorPanes() { use(ThemeChoice::light); }
    const ui::PaneHeading* heading(const wxString& title) const {
        for (int i = 0; const auto found = part<ui::PaneHeading>(i); ++i)
            if (found->accessibleName().StartsWith(title)) return found;
        return nullptr;
    }
    void stopInTheLoop() {
        ready();
        breakAt({20});
        driver.key(WXK_F5);
        untilStatus("Stopped at line 20 in Hole::grade");
    }
    std::string variables() const { return rows(list(ui::DebugPanel::kVariables)); }
};

/// What opens and shows while a script computes was neither placed nor painted before its end.
TEST_F(EditorPanes, WhatARunningScriptOpensIsPainted) {
    const auto seen = [](wxWindow& window, const std::function<bool(wxColour)>& wanted) {
        const wxImage picture = test::pictureOf(window);
        int found = 0;
        for (int y = 0; picture.IsOk() && y < picture.GetHeight(); ++y)
            for (int x = 0; x < picture.GetWidth(); ++x)
                found +=
                    wanted({picture.GetRed(x, y), picture.GetGreen(x, y), picture.GetBlue(x, y)});
        return found;
    };
    frontend.meanwhile = [&] {
        const auto isRed = [](wxColour c) { return c.Red() > 150 && c.Green() < 90; };
        const auto isDark = [](wxColour c) { return c.Red() < 90 && c.Green() < 90; };
        EXPECT_GT(seen(*part<ui::MainToolbar>()->button(command_id::kStop), isRed), 40);
        EXPECT_GT(seen(*part<ui::ConsolePane>(), isDark), 40);
    };
    ready();
    driver.key(WXK_F5);
    untilStatus("Ready");
    driver.when("its end", [this] { return !frontend.labels.empty(); });
    closeBox();
    edit(
        "int main() {\n    Print(\"begins here\\n\");\n    uint begin = GetSystemTime();\n"
        "    while (GetSystemTime() - begin < 600) {}\n    Information(\"\");\n"
        "    return 0;\n}\n");
    EXPECT_EQ(frontend.labels.size(), 1U);
}

TEST_F(EditorPanes, VariablesAreFoundByName) {
    stopInTheLoop();
    driver.click([this] { return findChild<ui::PaintedButton>(heading("Variables"), 0); });
    driver.when("the field", [this] { return part<ui::DebugPanel>()->filter()->HasFocus(); });
    driver.type("LEN");
    driver.when("one variable", [this] { return variables() == "length=2.5\n"; });
    driver.key(WXK_ESCAPE);
    driver.when("all of them", [this] {
        return list(ui::DebugPanel::kVariables)->HasFocus() && variables().rfind("metal=", 0) == 0;
    });
    closeBox();
    edit(kTour);
}

/// A class without texts by its first members, an element without the type that its array tells.
TEST_F(EditorPanes, ElementsTellWhatIsInThem) {
    stopInTheLoop();
    for (const int row : {4, 6})
        driver.run([this, row] { list(ui::DebugPanel::kVariables)->onFold(row); });
    driver.when("elements", [this] {
        return variables().find("  [1]=2.5, 5, 1.4, granite\n") != std::string::npos;
    });
    check([this] {
        EXPECT_EQ(list(ui::DebugPanel::kVariables)->row(4).right, "Hole");
        EXPECT_EQ(list(ui::DebugPanel::kVariables)->row(7).right, "");
    });
    closeBox();
    edit(kTour);
}

/// The field gives way: its buttons were covered by the close button.
TEST_F(EditorPanes, FindBarFitsIntoASmallWindow) {
    ready();
    driver.key('7', wxMOD_CONTROL).key('H', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    driver.type("int");
    driver.run([this] { frame()->SetClientSize(640, 480); });
    driver.when("the size", [this] { return part<ui::MainToolbar>()->GetClientSize().x == 640; });
    check([this] {
        ui::FindBar* bar = part<ui::FindBar>();
        EXPECT_EQ(coveredOf(bar), std::vector<std::string>());
        for (const wxWindow* child : bar->GetChildren())
            EXPECT_TRUE(!child->IsShown() || bar->GetClientRect().Contains(child->GetRect()));
    });
    driver.key(WXK_ESCAPE);
    closeBox();
    edit("int main() {\n    return 0;\n}\n");
}

/// It opened over the line that it was about.
TEST_F(EditorPanes, WhatMendsAProblemLeavesItsLineInSight) {
    std::string script = "int average = 1;\n";
    for (int i = 0; i < 60; ++i) script += "// line\n";
    script += "int main() { return averge; }\n";
    ready();
    driver.key(WXK_F8);
    driver.when("the error", [this] { return caretLine() == 62; });
    driver.key('.', wxMOD_CONTROL);
    driver.when("the choices", [this] {
        return part<ui::ChoiceBox>() && part<ui::ChoiceBox>()->list()->count() > 0;
    });
    check([this] {
        const int top = editor()->PointFromPosition(editor()->PositionFromLine(61)).y;
        const wxRect line(0, top, 2000, editor()->TextHeight(61));
        EXPECT_FALSE(part<ui::ChoiceBox>()->GetRect().Intersects(line));
        EXPECT_GE(part<ui::ChoiceBox>()->GetPosition().y, 0);
    });
    driver.key(WXK_ESCAPE);
    ready();
    closeBox();
    edit(script);
}

/// It did nothing before a pause in typing.
TEST_F(EditorPanes, NextProblemWaitsForTheFirstAnswer) {
    type("int main() { return averge; }\n");
    driver.key(WXK_F8);
    driver.when("the error", [this] { return caretLine() == 1; });
    closeBox();
    edit("// more\n");
}

/// A key in such a text took a second, and a mistake in it nobody's time but the script's author.
TEST_F(EditorPanes, ALongScriptIsLookedAtWhenAskedFor) {
    std::string script;
    for (int i = 0; script.size() <= std::size_t{kLongestLive}; ++i)
        script += "int depth" + std::to_string(i) + "(int hole) {\n    return hole;\n}\n";
    const auto outline = [this] { return part<ui::OutlinePane>()->list()->count(); };
    const auto remark = [this] { return part<ui::StatusLine>()->content().remark; };
    const auto isLong = [remark] { return remark() == "A long script: F7 checks it"; };
    ready();
    choose(command_id::kShowOutline);
    driver.when("it says so", isLong);
    driver.type("averge ").key(WXK_F8);
    untilStatus("1 error");
    check([&] { EXPECT_EQ(outline(), 0); });
    driver.key('O', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("its functions", [this] {
        const auto choices = findChild<ui::ChoiceBox>(editor(), 0);
        return choices && choices->IsShown();
    });
    driver.key(WXK_ESCAPE);
    ready();
    driver.run([this] { editor()->SetText("int main() { return averge; }\n"); });
    driver.when("an outline", [&] { return outline() == 1 && !isLong(); });
    untilStatus("1 error");
    driver.run([this, script] { editor()->AppendText(script); });
    driver.when("nothing of before", [&] { return outline() == 0 && isLong(); });
    untilStatus("Ready");
    closeBox();
    edit(script);
}

/// Keys went to a window that could not be seen.
TEST_F(EditorPanes, AHiddenPaneGivesTheKeyboardBack) {
    ready();
    driver.key('2', wxMOD_CONTROL);
    driver.when("the output", [this] { return pane()->HasFocus(); });
    driver.key('J', wxMOD_CONTROL);
    ready();
    driver.type("x");
    driver.when("a letter", [this] { return text() == "xtext\n"; });
    closeBox();
    edit("text\n");
}

TEST_F(EditorPanes, WelcomeLeadsToTheExamples) {
    std::string begun;
    ui::setFileChooser([&begun](wxWindow*, const FileDialogRequest& request) {
        begun = request.folder;
        return std::optional<std::string>();
    });
    ready();
    driver.click([this]() -> wxWindow* {
        for (int i = 0; const auto link = findChild<ui::PaintedButton>(part<ui::WelcomePane>(), i);
             ++i)
            if (link->face().label == "More examples...") return link;
        return nullptr;
    });
    driver.when("a folder", [&begun] { return !begun.empty(); });
    closeBox();
    edit("");
    ui::setFileChooser({});
    EXPECT_TRUE(std::filesystem::exists(begun + "/hello.as")) << begun;
}

}  // namespace
