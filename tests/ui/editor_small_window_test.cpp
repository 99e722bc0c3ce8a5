// Windows that are small, and become it: what there is to press can be pressed, and an exception
// stays in view.
#include <wx/textctrl.h>

#include "editor_full_window.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/exception_box.h"
#include "ui/editor/panels/find_bar.h"
#include "ui/kit/painted_check.h"

using namespace korvant;
using korvant::test::coveredOf;
using korvant::test::findChild;
using korvant::test::FullWindow;
using korvant::test::kTour;

namespace {

class EditorSmallWindow : public FullWindow {
  protected:
    /// What of a part lies outside of it.
    static std::vector<std::string> cutIn(const wxWindow* part) {
        std::vector<std::string> cut;
        const wxRect all(part->GetClientSize());
        for (const wxWindow* child : part->GetChildren())
            if (child->IsShown() && !all.Contains(child->GetRect()))
                cut.push_back(typeid(*child).name() + std::string(" ") +
                              std::to_string(child->GetRect().x));
        return cut;
    }
    void untilWidth(int width) {
        driver.when("its width", [this, width] {
            return frame() && std::abs(frame()->GetSize().x - width) < 3;
        });
    }
    void pick(int command) {
        driver.run([this, command] {
            wxCommandEvent event(wxEVT_MENU, menuItem(command)->GetId());
            frame()->GetEventHandler()->ProcessEvent(event);
        });
    }
    bool boxIsWhole() const {
        const auto box = part<ui::ExceptionBox>();
        return box && box->GetPosition().y >= 0 &&
               box->GetRect().GetBottom() < editor()->GetClientSize().y;
    }
    int rowOf(int line) const {
        return editor()->PointFromPosition(editor()->PositionFromLine(line - 1)).y /
               editor()->TextHeight(0);
    }
};

/// Its lower rows lay outside the text.
TEST_F(EditorSmallWindow, BreakpointBoxIsWhole) {
    use(ThemeChoice::light, 640, 424);
    ready();
    untilWidth(640);
    for (const int line : {1, 4, 20}) {
        gotoLine(line);
        driver.key(WXK_F9, wxMOD_ALT);
        driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
        check([this] {
            const auto box = part<ui::BreakpointBox>();
            EXPECT_TRUE(wxRect(frame()->GetClientSize()).Contains(box->GetRect()));
            EXPECT_EQ(cutIn(box), std::vector<std::string>());
        });
        picture("small-breakpoint-" + std::to_string(line));
        driver.key(WXK_ESCAPE);
        ready();
    }
    driver.key(WXK_F9, wxMOD_ALT);
    driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
    for (int i = 0; i < 3; ++i) driver.key(WXK_DOWN);
    driver.when("its last field",
                [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
    driver.type("metres");
    driver.click([this] { return part<ui::BreakpointBox>()->doneButton(); });
    ready();
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    check([this] {
        EXPECT_EQ(rows(list(ui::DebugPanel::kBreakpoints)), "line 20 (prints “metres”)\n");
    });
    closeBox();
    edit(kTour);
}

/// "Only in the selection" was left out, and "Mark all".
TEST_F(EditorSmallWindow, FindBarLeavesNothingOut) {
    use(ThemeChoice::light, 640, 500);
    ready();
    untilWidth(640);
    driver.key('7', wxMOD_CONTROL).key('1', wxMOD_CONTROL);
    ready();
    driver.run([this] { editor()->SetSelection(0, 4); });
    for (const int key : {'F', 'H'}) {
        driver.key(key, wxMOD_CONTROL);
        driver.when("the bar", [this, key] {
            return part<ui::FindBar>() && part<ui::FindBar>()->hasReplaceRow() == (key == 'H');
        });
        check([this] {
            EXPECT_EQ(cutIn(part<ui::FindBar>()), std::vector<std::string>());
            EXPECT_EQ(coveredOf(part<ui::FindBar>()), std::vector<std::string>());
            EXPECT_GE(editor()->GetSize().y, 80);
        });
        picture("small-find-" + std::string(1, static_cast<char>(key)));
    }
    driver.run([this] { editor()->SetSelection(0, editor()->PositionFromLine(2)); });
    driver.click([this] { return findChild<ui::PaintedCheck>(part<ui::FindBar>()); });
    driver.run([this] { part<ui::FindBar>()->field()->SetFocus(); });
    driver.when("the field", [this] { return part<ui::FindBar>()->field()->HasFocus(); });
    driver.key('A', wxMOD_CONTROL).type("rock");
    driver.when("the count", [this] { return part<ui::FindBar>()->said() == "3"; });
    driver.click([this] { return part<ui::FindBar>()->replaceAllButton(); });
    driver.when("the first two lines alone", [this] { return text() == "\n\nrock\n"; });
    closeBox();
    edit("rock\nrock\nrock\n");
}

/// The text went elsewhere, and the box was cut.
TEST_F(EditorSmallWindow, ExceptionStaysInViewInOtherThemesAndSizes) {
    use(ThemeChoice::light, 900, 620);
    ready();
    driver.key(WXK_F5);
    driver.when("the box", [this] { return boxIsWhole(); });
    driver.run([this] { editor()->SetFirstVisibleLine(editor()->VisibleFromDocLine(21)); });
    driver.when("its line above", [this] { return rowOf(25) == 3 && boxIsWhole(); });
    for (const int theme :
         {command_id::kThemeDark, command_id::kThemeClassic, command_id::kThemeLight,
          command_id::kBlackBackground, command_id::kBlackBackground}) {
        pick(theme);
        driver.when("the place in another theme",
                    [this] { return rowOf(25) == 3 && boxIsWhole(); });
        picture("small-theme-" + std::to_string(theme));
    }
    for (const wxSize size : {wxSize(640, 424), wxSize(1200, 800), wxSize(700, 500)}) {
        driver.run([this, size] { frame()->SetSize(size); });
        untilWidth(size.x);
        driver.when("the box in another window", [this] { return boxIsWhole(); });
        picture("small-exception-" + std::to_string(size.x));
    }
    for (const int zoom : {3, -2, 0}) {
        const char key = zoom > 0 ? '+' : '-';
        for (int i = 0; i < (zoom > 0 ? 3 : 5) && zoom != 0; ++i) driver.key(key, wxMOD_CONTROL);
        if (zoom == 0) driver.key('0', wxMOD_CONTROL);
        driver.when("the box in other letters", [this, zoom] {
            const int line = editor()->PointFromPosition(editor()->PositionFromLine(24)).y;
            return editor()->GetZoom() == zoom && boxIsWhole() &&
                   part<ui::ExceptionBox>()->GetPosition().y >= line + editor()->TextHeight(0);
        });
        picture("small-zoom-" + std::to_string(zoom));
    }
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kTour);
}

}  // namespace
