// The editor's window with everything around the text, used with real keys and clicks.
#pragma once

#include <wx/textctrl.h>

#include <string>
#include <typeinfo>
#include <vector>

#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"
#include "ui/editor/panels/breakpoint_box.h"
#include "ui/editor/panels/debug_panel.h"
#include "ui/editor/panels/main_toolbar.h"
#include "ui/editor/panels/status_line.h"

namespace korvant::test {

/// Weighs the samples of a drilling campaign, and looks for one too far.
inline constexpr char kTour[] =
    "// The samples of a drilling campaign, weighed by their length.\n"  // 1
    "enum Rock { granite, schist, quartzVein }\n"
    "\n"
    "class Interval {\n"
    "    double from = 0;\n"  // 5
    "    double to = 0;\n"
    "    double grade = 0;\n"
    "    Rock rock = granite;\n"
    "    double length() const { return to - from; }\n"
    "}\n"  // 10
    "\n"
    "class Hole {\n"
    "    string name = \"NR-02\";\n"
    "    Interval[] samples;\n"
    "    double grade() const {\n"  // 15
    "        double metal = 0, metres = 0;\n"
    "        for (uint i = 0; i < samples.length(); i++) {\n"
    "            double length = samples[i].length();\n"
    "            metal += samples[i].grade * length;\n"
    "            metres += length;\n"  // 20
    "        }\n"
    "        return metres > 0 ? metal / metres : 0;\n"
    "    }\n"
    "    Rock carrier(uint best) const {\n"
    "        return samples[best + 1].rock;\n"  // 25
    "    }\n"
    "}\n"
    "\n"
    "void report(Hole &in hole) {\n"
    "    double grade = hole.grade();\n"  // 30
    "    Rock rock = hole.carrier(13);\n"
    "}\n"
    "\n"
    "int main() {\n"
    "    Hole hole;\n"  // 35
    "    hole.samples.resize(14);\n"
    "    for (uint i = 0; i < 14; i++) {\n"
    "        hole.samples[i].from = i * 2.5;\n"
    "        hole.samples[i].to = (i + 1) * 2.5;\n"
    "        hole.samples[i].grade = 0.4 + i;\n"  // 40
    "    }\n"
    "    report(hole);\n"
    "    return 0;\n"
    "}\n";

/// Pairs of windows that stand in the same place; those at the edges are grips.
inline std::vector<std::string> coveredOf(const wxWindow* parent) {
    constexpr int kGrip = 8;
    std::vector<const wxWindow*> shown;
    for (const wxWindow* child : parent->GetChildren())
        if (child->IsShown() && !child->IsTopLevel() && child->GetSize().x > kGrip &&
            child->GetSize().y > kGrip)
            shown.push_back(child);
    std::vector<std::string> covered;
    for (std::size_t i = 0; i < shown.size(); ++i)
        for (std::size_t k = i + 1; k < shown.size(); ++k)
            if (shown[i]->GetRect().Intersects(shown[k]->GetRect()))
                covered.push_back(std::string(typeid(*shown[i]).name()) + " and " +
                                  typeid(*shown[k]).name());
    return covered;
}

class FullWindow : public EditorWindowTest {
  protected:
    FullWindow() { ui::setEditorLayout(ui::EditorLayoutWish::full); }

    void use(ThemeChoice theme, int width = 1280, int height = 884) {
        ui::EditorSettings settings;
        settings.theme = theme;
        settings.width = width;
        settings.height = height;
        ui::saveEditorSettings(settings);
    }
    template <class Part>
    korvant::test::Found<Part> part(int index = 0) const {
        return findChild<Part>(frame(), index);
    }
    korvant::test::Found<ui::RowList> list(ui::DebugPanel::Section section) const {
        const auto panel = part<ui::DebugPanel>();
        return panel ? panel->list(section) : nullptr;
    }
    std::string statusText() const { return part<ui::StatusLine>()->content().text.utf8_string(); }
    /// "name=value" of the rows of a list.
    static std::string rows(const ui::RowList* list) {
        std::string all;
        for (int i = 0; i < list->count(); ++i) {
            const ui::ListRow row = list->row(i);
            all += std::string(static_cast<std::size_t>(row.depth), ' ') + row.name.utf8_string();
            if (!row.value.empty()) all += "=" + row.value.utf8_string();
            if (!row.remark.empty()) all += " (" + row.remark.utf8_string() + ")";
            all += "\n";
        }
        return all;
    }
    void untilStatus(const std::string& wanted) {
        driver.when("status " + wanted, [this, wanted] {
            return frame() && part<ui::StatusLine>() && statusText() == wanted;
        });
    }
    /// Breakpoints by key, on lines below those that have one.
    void breakAt(std::vector<int> lines) {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            gotoLine(lines[i]);
            driver.key(WXK_F9);
            driver.when("a breakpoint",
                        [this, count = i + 1] { return markedLines().size() == count; });
        }
    }
    /// By the box: the choice of this number, from 1 on, and what its field gets.
    void breakpointWith(int line, int choice, const std::string& text) {
        gotoLine(line);
        driver.key(WXK_F9, wxMOD_ALT);
        driver.when("the box", [this] { return part<ui::BreakpointBox>() != nullptr; });
        for (int i = 0; i < choice; ++i) driver.key(WXK_DOWN);
        driver.when("its field",
                    [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
        driver.run([text] { dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus())->SetValue(text); });
        driver.key(WXK_RETURN);
        ready();
    }
    void focus(std::function<wxWindow*()> window) {
        driver.run([window] { window()->SetFocus(); });
        driver.when("the focus", [window] { return window()->HasFocus(); });
    }
};

}  // namespace korvant::test
