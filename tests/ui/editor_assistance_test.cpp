// What the editor offers while somebody writes and looks.
#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"

using namespace korvant;
using korvant::test::EditorWindowTest;

namespace {

class EditorAssistance : public EditorWindowTest {
  protected:
    void untilList() {
        driver.when("a list of names", [this] { return editor()->AutoCompActive(); });
    }
    void moveMouse(std::function<wxPoint()> place, bool click) {
        driver.run([this, place, click] {
            wxUIActionSimulator simulator;
            simulator.MouseMove(editor()->ClientToScreen(place()));
            if (click) simulator.MouseClick();
        });
    }
};

TEST_F(EditorAssistance, ThreeLettersBringNames) {
    type("Str");
    untilList();
    driver.type("ToL").key(WXK_RETURN);
    driver.when("the name", [this] { return text() == "StrToLower"; });
    closeBox();
    edit("");
}

TEST_F(EditorAssistance, ControlSpaceBringsNamesAndEscapeTakesThemAway) {
    ready();
    driver.key(WXK_SPACE, wxMOD_CONTROL);
    untilList();
    driver.key(WXK_ESCAPE);
    driver.when("no list", [this] { return !editor()->AutoCompActive(); });
    check([this] { EXPECT_EQ(text(), ""); });
    closeBox();
    edit("");
}

TEST_F(EditorAssistance, BracketBringsTheParameters) {
    type("sqrt(");
    driver.when("a tip", [this] { return editor()->CallTipActive(); });
    closeBox();
    edit("");
}

TEST_F(EditorAssistance, BookmarkMarginTogglesABreakpoint) {
    ready();
    const auto place = [this] {
        const int numbers = editor()->GetMarginWidth(0);
        return wxPoint(numbers + 8, editor()->PointFromPosition(0).y + 4);
    };
    moveMouse(place, true);
    driver.when("a breakpoint", [this] { return markedLines() == std::vector<int>({1}); });
    moveMouse(place, true);
    driver.when("none", [this] { return markedLines().empty(); });
    closeBox();
    edit("int main() { return 0; }\n");
}

TEST_F(EditorAssistance, MouseAtRestShowsAValueWhileStopped) {
    ready();
    gotoLine(3);
    driver.key(WXK_F9).key(WXK_F5);
    untilStoppedAt(3);
    moveMouse(
        [this] {
            editor()->ScrollToLine(0);
            return editor()->PointFromPosition(editor()->FindText(0, 99, "width")) + wxPoint(6, 6);
        },
        false);
    driver.when("a tip", [this] { return editor()->CallTipActive(); });
    closeBox();
    edit("int main() {\n    int width = 7;\n    return 0;\n}\n");
}

TEST_F(EditorAssistance, ControlKeysZoomTheText) {
    ready();
    driver.key('=', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("larger text", [this] { return editor()->GetZoom() == 1; });
    driver.key('-', wxMOD_CONTROL).key('-', wxMOD_CONTROL);
    driver.when("smaller text", [this] { return editor()->GetZoom() == -1; });
    driver.key('0', wxMOD_CONTROL);
    driver.when("normal text", [this] { return editor()->GetZoom() == 0; });
    closeBox();
    edit("");
}

TEST_F(EditorAssistance, ControlKeysBelongToThePaneWhileItHasTheKeyboard) {
    type("x");
    driver.run([this] { pane()->SetFocus(); });
    driver.when("the pane's keyboard", [this] { return pane()->HasFocus(); });
    driver.key('Z', wxMOD_CONTROL).key('A', wxMOD_CONTROL);
    driver.run([this] { editor()->SetFocus(); });
    ready();
    check([this] { EXPECT_EQ(text(), "x"); });
    driver.key('Z', wxMOD_CONTROL);
    driver.when("undo", [this] { return text().empty(); });
    closeBox();
    edit("");
}

}  // namespace
