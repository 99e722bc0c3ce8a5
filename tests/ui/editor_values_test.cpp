// Values and watches of a script that stands still, changed in place.
#include <wx/textctrl.h>

#include "editor_full_window.h"

using namespace korvant;
using korvant::test::FullWindow;

namespace {

const char kScript[] =
    "class Hole {\n"
    "    int depth = 3;\n"
    "}\n"
    "enum Rock { granite, schist }\n"
    "int deeper(int by) {\n"  // 5
    "    Hole hole;\n"
    "    int[] counts = {3, 1, 2};\n"
    "    string name = \"NR-02\";\n"
    "    const int limit = 9;\n"
    "    Rock rock = schist;\n"  // 10
    "    hole.depth += by;\n"
    "    return hole.depth + counts[0];\n"
    "}\n"
    "int main() {\n"
    "    return deeper(4) - 10;\n"  // 15
    "}\n";

class EditorValues : public FullWindow {
  protected:
    EditorValues() { use(ThemeChoice::light); }
    ui::RowList* values() const { return list(ui::DebugPanel::kVariables); }
    const ui::RowField& field() const { return part<ui::DebugPanel>()->variableField(); }
    int rowOf(const wxString& name) const {
        for (int i = 0; i < values()->count(); ++i)
            if (values()->row(i).name == name) return i;
        return -1;
    }
    std::string valueOf(const wxString& name) const {
        return values()->row(rowOf(name)).value.utf8_string();
    }
    std::string note() const {
        return field().note() ? field().note()->said().utf8_string() : std::string();
    }
    void stop() {
        ready();
        breakAt({11});
        driver.key(WXK_F5);
        untilStatus("Stopped at line 11 in deeper");
    }
    void begin(const wxString& name) {
        driver.run([this, name] {
            values()->SetFocus();
            values()->select(rowOf(name));
        });
        driver.when("the list", [this] { return values()->HasFocus(); });
        driver.key(WXK_F2);
        driver.when("the field", [this] { return field().field() && field().field()->HasFocus(); });
    }
    void untilNote(const std::string& wanted) {
        driver.when("the note " + wanted, [this, wanted] { return note() == wanted; });
    }
};

TEST_F(EditorValues, WhatIsRefusedStaysToBeMended) {
    stop();
    begin("by");
    driver.type("nonsense").key(WXK_RETURN);
    untilNote("No matching symbol 'nonsense'");
    check([this] {
        EXPECT_EQ(field().field()->GetValue(), "nonsense");
        EXPECT_TRUE(field().field()->HasFocus());
        const wxRect panel(part<ui::DebugPanel>()->GetClientSize());
        EXPECT_TRUE(panel.Contains(field().note()->GetRect()));
        EXPECT_TRUE(field().note()->IsShown());
    });
    picture("value-refused");
    // Looking something up in the text loses nothing.
    driver.click([this] { return editor(); });
    ready();
    check([this] {
        EXPECT_EQ(field().row(), rowOf("by"));
        EXPECT_EQ(field().field()->GetValue(), "nonsense");
    });
    begin("by");
    driver.key('A', wxMOD_CONTROL).type("5 + limit");
    driver.when("no note", [this] { return note().empty(); });
    driver.key(WXK_RETURN);
    driver.when("the value", [this] { return valueOf("by") == "14" && values()->HasFocus(); });
    begin("by");
    driver.type("7").key(WXK_ESCAPE);
    driver.when("the list again", [this] { return values()->HasFocus(); });
    check([this] { EXPECT_EQ(valueOf("by"), "14"); });
    // Where the script goes on there is nothing left to be set.
    begin("by");
    driver.type("x +").key(WXK_RETURN);
    driver.when("a note", [this] { return !note().empty(); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    driver.key('D', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the panel", [this] { return part<ui::DebugPanel>() != nullptr; });
    check([this] {
        EXPECT_LT(field().row(), 0);
        EXPECT_FALSE(field().field()->IsShown());
        EXPECT_EQ(note(), "");
    });
    closeBox();
    edit(kScript);
}

TEST_F(EditorValues, ArraysTextsAndEnumsAreSetAsTheyAreWritten) {
    stop();
    begin("counts");
    check([this] { EXPECT_EQ(field().field()->GetValue(), "{3, 1, 2}"); });
    driver.run([this] { field().field()->SetValue("{8, \"x\"}"); });
    driver.key(WXK_RETURN);
    driver.when("a note", [this] { return !note().empty(); });
    check([this] { EXPECT_EQ(valueOf("counts"), "3 elements"); });
    driver.run([this] { field().field()->SetValue("{8, 9}"); });
    driver.key(WXK_RETURN);
    driver.when("the list again", [this] { return values()->HasFocus(); });
    driver.key(WXK_F10);
    untilStatus("Stopped at line 12 in deeper");
    driver.when("two elements", [this] { return valueOf("counts") == "2 elements"; });
    driver.run([this] {
        values()->SetFocus();
        values()->select(rowOf("counts"));
    });
    driver.key(WXK_RIGHT);
    driver.when("its elements", [this] { return rowOf("[1]") > 0 && valueOf("[1]") == "9"; });
    begin("[0]");
    driver.type("20").key(WXK_RETURN);
    driver.when("one element", [this] { return valueOf("[0]") == "20"; });
    begin("rock");
    check([this] { EXPECT_EQ(field().field()->GetValue(), "schist"); });
    driver.type("granite").key(WXK_RETURN);
    driver.when("the rock", [this] { return valueOf("rock") == "granite (0)"; });
    begin("name");
    check([this] { EXPECT_EQ(field().field()->GetValue(), "\"NR-02\""); });
    driver.key(WXK_END).key(WXK_LEFT).type("7").key(WXK_RETURN);
    driver.when("the name", [this] { return valueOf("name") == "\"NR-027\""; });
    // A class has no value that could be typed.
    begin("hole");
    check([this] { EXPECT_EQ(field().field()->GetValue(), ""); });
    driver.type("4").key(WXK_RETURN);
    driver.when("a note", [this] { return !note().empty(); });
    driver.key(WXK_ESCAPE).key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kScript);
}

TEST_F(EditorValues, WhatCannotBeSetSaysWhy) {
    stop();
    driver.run([this] {
        values()->SetFocus();
        values()->select(rowOf("limit"));
    });
    driver.key(WXK_F2);
    untilNote("This value is constant.");
    driver.key(WXK_UP);
    untilNote("");
    // A double click does what the key does.
    driver.run([this] {
        wxUIActionSimulator simulator;
        const wxRect row = values()->valueRect(rowOf("by"));
        simulator.MouseMove(values()->ClientToScreen(row.GetPosition() + wxPoint(6, 10)));
        simulator.MouseDblClick();
    });
    driver.when("the field", [this] { return field().field() && field().field()->HasFocus(); });
    driver.key(WXK_ESCAPE);
    closeBox();
    edit(kScript);
}

TEST_F(EditorValues, FrameHasItsOwnWatchesAndListsLeadToTheirPlaces) {
    stop();
    driver.click([this]() -> wxWindow* { return list(ui::DebugPanel::kWatches); });
    driver.when("the field",
                [] { return dynamic_cast<wxTextCtrl*>(wxWindow::FindFocus()) != nullptr; });
    driver.type("by").key(WXK_RETURN);
    driver.run([this] { part<ui::DebugPanel>()->addWatch("deeper(1)"); });
    driver.when("values",
                [this] { return rows(list(ui::DebugPanel::kWatches)).rfind("by=4\n", 0) == 0; });
    driver.key('6', wxMOD_CONTROL);
    driver.key(WXK_DOWN);
    driver.when("those of the caller", [this] {
        return rows(list(ui::DebugPanel::kWatches)).rfind("by=not known in this function\n", 0) ==
               0;
    });
    check([this] { EXPECT_EQ(caretLine(), 15); });
    driver.key(WXK_UP).key(WXK_RETURN);
    driver.when("the function itself", [this] { return caretLine() == 11; });
    driver.run([this] { list(ui::DebugPanel::kBreakpoints)->SetFocus(); });
    driver.run([this] { editor()->GotoLine(0); });
    driver.key(WXK_HOME).key(WXK_RETURN);
    driver.when("the breakpoint", [this] { return caretLine() == 11; });
    driver.key(WXK_F5);
    untilStatus("Ready");
    closeBox();
    edit(kScript);
}

}  // namespace
