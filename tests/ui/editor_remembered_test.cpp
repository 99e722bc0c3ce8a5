// What is found again at the next opening, and what is not.
#include <wx/display.h>
#include <wx/textctrl.h>

#include "editor_full_window.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/console_pane.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/kit/pane_heading.h"

using namespace korvant;
using korvant::test::findChild;
using korvant::test::FullWindow;
using korvant::test::writeFile;

namespace {

const char kScript[] =
    "int main() {\n"
    "    int sum = 0;\n"
    "    for (int i = 0; i < 9; i++)\n"
    "        sum += i;\n"
    "    Print(\"sum\\n\");\n"
    "    sum += 1;\n"
    "    return sum > 40 ? 0 : 1;\n"
    "}\n";

class EditorRemembered : public FullWindow {
  protected:
    EditorRemembered() {
        use(ThemeChoice::light, 1200, 780);
        ownFile = folder.file("sums.as");
        writeFile(ownFile, kScript);
    }
    void drag(std::function<wxPoint()> from, wxPoint by) {
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
    }
    void press(const wxString& label) {
        driver.click([this, label]() -> wxWindow* {
            for (int i = 0; const auto one = findChild<ui::PaintedButton>(part<ui::FindBar>(), i);
                 ++i)
                if (one->face().label == label) return one;
            return nullptr;
        });
    }
    std::string breakpoints() const { return rows(list(ui::DebugPanel::kBreakpoints)); }
};

TEST_F(EditorRemembered, BreakpointsOfEveryKind) {
    const std::string all =
        "line 2\nline 4 (when i == 3)\nline 5 (after 1 passes)\nline 6 (prints “{sum}”)\n"
        "line 7 (switched off)\n";
    ready();
    breakAt({2, 7});
    driver.key(WXK_F9, wxMOD_CONTROL);
    breakpointWith(4, 1, "i == 3");
    breakpointWith(5, 2, "1");
    breakpointWith(6, 3, "{sum}");
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("all kinds", [this, all] { return breakpoints() == all; });
    closeBox();
    edit(kScript);
    ready();
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("all kinds again", [this, all] { return breakpoints() == all; });
    closeBox();
    edit(kScript);
}

TEST_F(EditorRemembered, PlaceSizesAndOptions) {
    wxRect place;
    int side = 0, output = 0;
    ready();
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.when("its place", [turns = 0]() mutable { return ++turns > 20; });
    drag([this] { return part<ui::DebugPanel>()->ClientToScreen(wxPoint(2, 300)); }, {-60, 0});
    driver.when("a wider panel", [this] { return part<ui::DebugPanel>()->GetSize().x > 360; });
    drag(
        [this] {
            return pane()->GetParent()->ClientToScreen(wxPoint(80, pane()->GetPosition().y - 32));
        },
        {0, -60});
    driver.when("a higher output", [this] { return pane()->GetSize().y > 180; });
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    press("W");
    press(".*");
    driver.run([this] { frame()->SetSize(90, 70, 1180, 800); });
    driver.when("another place", [this] { return frame()->GetSize() == wxSize(1180, 800); });
    driver.when("its end", [turns = 0]() mutable { return ++turns > 30; });
    check([&] {
        place = frame()->GetRect();
        side = part<ui::DebugPanel>()->GetSize().x;
        output = pane()->GetSize().y;
    });
    closeBox();
    edit(kScript);
    EXPECT_TRUE(ui::loadEditorSettings().findWholeWord);
    EXPECT_TRUE(ui::loadEditorSettings().findExpression);
    EXPECT_FALSE(ui::loadEditorSettings().findMatchCase);
    ready();
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.when("the same widths", [&] {
        return part<ui::DebugPanel>()->GetSize().x == side && pane()->GetSize().y == output;
    });
    check([&] { EXPECT_EQ(frame()->GetRect(), place); });
    closeBox();
    edit(kScript);
}

TEST_F(EditorRemembered, FontOfTheCode) {
    const wxString face = "DejaVu Sans";
    const auto sizeOf = [](wxStyledTextCtrl* text) {
        return std::pair{text->StyleGetFaceName(wxSTC_C_WORD), text->StyleGetSize(wxSTC_C_WORD)};
    };
    ready();
    choose(command_id::kFont);
    driver.when("the fonts",
                [&] { return korvant::test::answerFontDialog(face.utf8_string(), 16); });
    driver.when("the chosen font", [&] {
        return frame() && sizeOf(editor()) == std::pair{face, 16};
    });
    closeBox();
    edit(kScript);
    ready();
    check([&] { EXPECT_EQ(sizeOf(editor()), std::pair(face, 16)); });
    check([&] { EXPECT_EQ(sizeOf(pane()), std::pair(face, 16)); });
    closeBox();
    edit(kScript);
}

TEST_F(EditorRemembered, NotWhatWasPrintedClosedOrLookedFor) {
    ready();
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    driver.type("sum");
    driver.when("matches", [this] { return !part<ui::FindBar>()->said().empty(); });
    driver.key(WXK_ESCAPE);
    ready();
    breakAt({6});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 6 in main");
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("no panel", [this] { return !part<ui::DebugPanel>(); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kScript);
    ready();
    check([this] { EXPECT_EQ(part<ui::ConsolePane>(), nullptr); });
    driver.run([this] { editor()->SetSelection(0, 0); });
    driver.key('F', wxMOD_CONTROL);
    driver.when("the bar", [this] { return part<ui::FindBar>() != nullptr; });
    check([this] { EXPECT_EQ(part<ui::FindBar>()->field()->GetValue(), ""); });
    driver.key(WXK_ESCAPE);
    ready();
    driver.key(WXK_F5);
    untilStatus("Stopped at line 6 in main");
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kScript);
}

}  // namespace
