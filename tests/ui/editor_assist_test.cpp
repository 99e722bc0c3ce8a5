// Help while one writes and reads, in the window: with real keys and the pointer.
#include <wx/textctrl.h>

#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"
#include "ui/editor/assist/choice_box.h"
#include "ui/editor/assist/rename_box.h"
#include "ui/editor/assist/suggestion_pop_up.h"
#include "ui/editor/assist/tip_pop_up.h"
#include "ui/editor/assist/value_pop_up.h"
#include "ui/editor/editor_run.h"
#include "ui/editor/editor_settings.h"
#include "ui/editor/panels/outline_pane.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findChild;

namespace {

const char kScript[] =
    "enum Rock { granite, schist }\n"  // 1
    "\n"
    "// One sample of a hole.\n"
    "class Sample {\n"
    "    double grade = 0;\n"  // 5
    "    string name = \"NR-02\";\n"
    "    // By its length.\n"
    "    double weighed(double by) const { return grade * by; }\n"
    "    double weighed(double by, int times) const { return grade * by * times; }\n"
    "}\n"  // 10
    "\n"
    "double total(Sample[] &in samples) {\n"
    "    double metal = 0;\n"
    "    for (uint i = 0; i < samples.length(); i++)\n"
    "        metal += samples[i].weighed(2);\n"  // 15
    "    return metal;\n"
    "}\n"
    "\n"
    "int main() {\n"
    "    Sample[] samples(3);\n"  // 20
    "    samples[0].grade = 1.5;\n"
    "    double sum = total(samples);\n"
    "    return sum > 0 ? 0 : 1;\n"
    "}\n";

constexpr int kOccurrences = 12;

class EditorHelp : public EditorWindowTest, public testing::WithParamInterface<ThemeChoice> {
  protected:
    EditorHelp() {
        ui::setEditorLayout(ui::EditorLayoutWish::full);
        ui::EditorSettings settings;
        settings.theme = GetParam();
        settings.width = 1280;
        settings.height = 884;
        settings.welcome = false;
        ui::saveEditorSettings(settings);
    }
    template <class Part>
    korvant::test::Found<Part> part() const {
        return findChild<Part>(frame(), 0);
    }
    void look(const std::string& name) {
        picture(name + (GetParam() == ThemeChoice::dark ? "-dark" : ""));
    }
    int placeOf(const std::string& what, int into = 0) const {
        const int at = editor()->FindText(0, editor()->GetLength(), what, wxSTC_FIND_MATCHCASE);
        EXPECT_GE(at, 0) << what;
        return at + into;
    }
    /// The caret goes into the first place of `what`.
    void caretAt(const std::string& what, int into = 0) {
        ready();
        driver.run([this, what, into] {
            const int at = placeOf(what, into);
            editor()->SetSelection(at, at);
            editor()->EnsureCaretVisible();
        });
    }
    void pointAt(const std::string& what, int into, bool click = false, bool control = false) {
        driver.run([this, what, into, click, control] {
            wxUIActionSimulator simulator;
            const wxPoint at = editor()->PointFromPosition(placeOf(what, into));
            // It may stand there already, and rests after a move only.
            simulator.MouseMove(editor()->ClientToScreen(at + wxPoint(60, 60)));
            simulator.MouseMove(editor()->ClientToScreen(at + wxPoint(3, 6)));
            if (control) simulator.KeyDown(WXK_CONTROL);
            if (click) simulator.MouseClick();
            if (control) simulator.KeyUp(WXK_CONTROL);
        });
    }
    void untilLine(int line) {
        driver.when("line " + std::to_string(line),
                    [this, line] { return caretLine() == line && editor()->HasFocus(); });
    }
    void untilDescribed(const std::string& name) {
        driver.when("documentation of " + name, [this, name] {
            const auto list = part<ui::SuggestionPopUp>();
            return list && list->described() == name;
        });
    }
    void untilTip(const std::string& words) {
        driver.when("a tip: " + words, [this, words] {
            return part<ui::TipPopUp>() &&
                   part<ui::TipPopUp>()->words().utf8_string().find(words) != std::string::npos;
        });
    }
    void untilNone() {
        driver.when("no pop-up", [this] {
            return !part<ui::SuggestionPopUp>() && !part<ui::TipPopUp>() && !part<ui::ValuePopUp>();
        });
    }
    void untilChoice(int rows) {
        driver.when("a choice", [this, rows] {
            return part<ui::ChoiceBox>() && part<ui::ChoiceBox>()->field()->HasFocus() &&
                   part<ui::ChoiceBox>()->list()->count() == rows;
        });
    }
    static std::string names(const ui::RowList* list) {
        std::string all;
        for (int i = 0; i < list->count(); ++i) all += list->row(i).name.utf8_string() + "\n";
        return all;
    }
};

TEST_P(EditorHelp, NamesWithTheirDocumentation) {
    caretAt("return sum");
    type("string id = StrS");
    untilDescribed("StrSize");
    driver.key(WXK_DOWN);
    untilDescribed("StrSubstring");
    look("help-completion");
    driver.key(WXK_ESCAPE);
    untilNone();
    driver.key(WXK_SPACE, wxMOD_CONTROL);
    untilDescribed("StrSize");
    driver.key(WXK_TAB);
    driver.when("the name", [this] { return text().find("= StrSize") != std::string::npos; });
    check([this] { EXPECT_EQ(part<ui::SuggestionPopUp>(), nullptr); });
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, MembersBehindADotAndSnippets) {
    caretAt("return sum");
    type("samples[0].");
    driver.when("the members", [this] { return part<ui::SuggestionPopUp>() != nullptr; });
    look("help-members");
    driver.type("we").key(WXK_RETURN);
    driver.when("the member",
                [this] { return text().find("samples[0].weighed") != std::string::npos; });
    driver.key(WXK_END);
    type("\nfor");
    driver.when("the words", [this] { return part<ui::SuggestionPopUp>() != nullptr; });
    driver.key(WXK_TAB);
    driver.when("the loop", [this] {
        return text().find("for (int i = 0; i < count; i++) {") != std::string::npos;
    });
    driver.type("row").key(WXK_TAB);
    driver.type("9").key(WXK_TAB);
    driver.type("x");
    driver.when("a filled loop", [this] {
        return text().find("for (int row = 0; row < 9; row++) {\n        x\n    }") !=
               std::string::npos;
    });
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, ParametersOfEveryForm) {
    caretAt("return sum");
    type("sum = samples[0].weighed(");
    untilTip("weighed(double by");
    look("help-parameters");
    type("1, ");
    untilTip("int times)");
    driver.key(WXK_ESCAPE);
    untilNone();
    driver.key(WXK_SPACE, wxMOD_CONTROL | wxMOD_SHIFT);
    untilTip("int times)");
    driver.key(WXK_UP);
    untilNone();
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, DocumentationByKeyAndByPointer) {
    caretAt("total(samples)");
    driver.key(WXK_F1, wxMOD_CONTROL);
    untilTip("double total(Sample[] &in samples)");
    driver.key(WXK_ESCAPE);
    untilNone();
    pointAt("Sample[] samples(3)", 2);
    untilTip("One sample of a hole.");
    look("help-hover");
    pointAt("enum Rock", 1);
    untilNone();
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, ToTheDeclarationAndBack) {
    ready();
    pointAt("weighed(2)", 3, true, true);
    driver.when("both forms or the one meant",
                [this] { return caretLine() == 8 || part<ui::ChoiceBox>() != nullptr; });
    driver.key(WXK_LEFT, wxMOD_ALT);
    untilLine(1);
    caretAt("total(samples)", 2);
    driver.key('B', wxMOD_CONTROL);
    untilLine(12);
    driver.key(WXK_LEFT, wxMOD_ALT);
    untilLine(22);
    driver.key(WXK_RIGHT, wxMOD_ALT);
    untilLine(12);
    caretAt("total(samples)", 2);
    driver.key(WXK_F12, wxMOD_CONTROL);
    untilLine(12);
    // What the library has is nowhere to be gone to.
    caretAt("length()", 2);
    driver.key('B', wxMOD_CONTROL);
    untilTip("belongs to the library");
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, UsesAreListedAndMarked) {
    caretAt("metal = 0", 2);
    driver.when("marks", [this] {
        return (editor()->IndicatorAllOnFor(placeOf("metal;")) & 1 << kOccurrences) != 0;
    });
    driver.key(WXK_F12, wxMOD_SHIFT);
    untilChoice(3);
    look("help-uses");
    check([this] {
        EXPECT_EQ(names(part<ui::ChoiceBox>()->list()),
                  "double metal = 0;\nmetal += samples[i].weighed(2);\nreturn metal;\n");
    });
    driver.type("ret");
    untilChoice(1);
    driver.key(WXK_RETURN);
    untilLine(16);
    driver.key(WXK_LEFT, wxMOD_ALT);
    untilLine(13);
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, NewNameOrTheReasonWhyNot) {
    caretAt("grade = 0", 2);
    driver.key(WXK_F2);
    driver.when("the field", [this] {
        return part<ui::RenameBox>() && part<ui::RenameBox>()->field()->HasFocus();
    });
    driver.type("name").key(WXK_RETURN);
    driver.when("the reason", [this] { return !part<ui::RenameBox>()->reason().empty(); });
    look("help-rename");
    driver.run([this] { part<ui::RenameBox>()->field()->SelectAll(); });
    driver.type("content").key(WXK_RETURN);
    driver.when("the new name", [this] {
        return text().find("double content = 0") != std::string::npos &&
               text().find("samples[0].content = 1.5") != std::string::npos && editor()->HasFocus();
    });
    driver.key('Z', wxMOD_CONTROL);
    driver.when("the old text", [this] { return text() == kScript; });
    caretAt("length()", 2);
    driver.key('R', wxMOD_CONTROL);
    untilTip("belongs to the library");
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, AClickIntoTheTextLeavesItsBoxes) {
    const auto clickInto = [this](const char* word) {
        pointAt(word, 0, true);
        driver.when("the text", [this] { return editor()->HasFocus(); });
        type("x");
    };
    caretAt("grade = 0", 2);
    driver.key(WXK_F2);
    driver.when("the field", [this] {
        return part<ui::RenameBox>() && part<ui::RenameBox>()->field()->HasFocus();
    });
    clickInto("Rock");
    driver.when("what is typed", [this] { return text() != kScript; });
    check([this] { EXPECT_EQ(part<ui::RenameBox>(), nullptr); });
    driver.key(WXK_ESCAPE).key('Z', wxMOD_CONTROL);
    driver.when("the old text", [this] { return text() == kScript; });
    driver.key('O', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the list", [this] {
        return part<ui::ChoiceBox>() && part<ui::ChoiceBox>()->field()->HasFocus();
    });
    clickInto("return sum");
    driver.when("what is typed", [this] { return text() != kScript; });
    check([this] { EXPECT_EQ(part<ui::ChoiceBox>(), nullptr); });
    driver.key(WXK_ESCAPE).key('Z', wxMOD_CONTROL);
    driver.when("the old text", [this] { return text() == kScript; });
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, FunctionFoundByTyping) {
    ready();
    driver.key('7', wxMOD_CONTROL);
    driver.when("the outline", [this] {
        return part<ui::OutlinePane>() && part<ui::OutlinePane>()->list()->count() == 6;
    });
    driver.key(WXK_ESCAPE);
    ready();
    driver.key('O', wxMOD_CONTROL | wxMOD_SHIFT);
    untilChoice(6);
    look("help-functions");
    driver.type("wei");
    untilChoice(2);
    driver.key(WXK_DOWN).key(WXK_RETURN);
    untilLine(9);
    driver.key('O', wxMOD_CONTROL | wxMOD_SHIFT);
    untilChoice(6);
    driver.key(WXK_ESCAPE);
    untilLine(9);
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, ProblemsAreMended) {
    std::string script = kScript;
    script.replace(script.find("return metal"), 12, "return metl");
    ready();
    driver.key(WXK_F8);
    untilLine(16);
    driver.key('.', wxMOD_CONTROL);
    untilChoice(1);
    look("help-mend");
    driver.key(WXK_RETURN);
    driver.when("the right name",
                [this] { return text().find("return metal;") != std::string::npos; });
    caretAt("Sample {");
    driver.key('.', wxMOD_CONTROL);
    untilTip("There is no problem on this line.");
    closeBox();
    edit(script);
}

TEST_P(EditorHelp, LinesAreIndentedAnew) {
    caretAt("return metal");
    driver.key(WXK_BACK);
    driver.when("a wrong line", [this] { return text() != kScript; });
    driver.key('I', wxMOD_CONTROL | wxMOD_SHIFT);
    driver.when("the right one", [this] { return text() == kScript; });
    closeBox();
    edit(kScript);
}

TEST_P(EditorHelp, ValueUnderThePointerWhileStopped) {
    ready();
    gotoLine(16);
    driver.key(WXK_F9).key(WXK_F5);
    driver.when("the stop", [this] {
        return frame() && editor()->MarkerNext(0, 1 << 20) == 15 && editor()->HasFocus();
    });
    driver.run([this] { editor()->SetFirstVisibleLine(0); });
    pointAt("samples[i].weighed", 3);
    driver.when("the value", [this] {
        return part<ui::ValuePopUp>() && part<ui::ValuePopUp>()->list()->count() == 3;
    });
    look("help-value");
    driver.run([this] {
        ui::RowList* list = part<ui::ValuePopUp>()->list();
        wxUIActionSimulator simulator;
        simulator.MouseMove(list->ClientToScreen(wxPoint(14, 16)));
        simulator.MouseClick();
    });
    driver.when("the members", [this] { return part<ui::ValuePopUp>()->list()->count() == 5; });
    check([this] {
        EXPECT_EQ(names(part<ui::ValuePopUp>()->list()), "[0]\ngrade\nname\n[1]\n[2]\n");
        EXPECT_TRUE(editor()->HasFocus());
    });
    driver.click([this]() -> wxWindow* { return part<ui::ValuePopUp>()->watchLink(); });
    untilNone();
    caretAt("metal = 0", 2);
    driver.key(WXK_F1, wxMOD_CONTROL);
    driver.when("the value by key", [this] { return part<ui::ValuePopUp>() != nullptr; });
    driver.key(WXK_ESCAPE);
    untilNone();
    closeBox();
    edit(kScript);
}

INSTANTIATE_TEST_SUITE_P(Themes, EditorHelp,
                         testing::Values(ThemeChoice::light, ThemeChoice::dark));

using EditorWithoutHelp = EditorHelp;
TEST_P(EditorWithoutHelp, ClassicLayoutHasTheClassicList) {
    ready();
    choose(command_id::kClassicLayout);
    caretAt("return sum");
    type("StrS");
    driver.when("the control's own list", [this] { return editor()->AutoCompActive(); });
    check([this] { EXPECT_EQ(part<ui::SuggestionPopUp>(), nullptr); });
    driver.key(WXK_ESCAPE);
    driver.key('O', wxMOD_CONTROL | wxMOD_SHIFT).key(WXK_F2);
    ready();
    check([this] {
        EXPECT_EQ(part<ui::ChoiceBox>(), nullptr);
        EXPECT_EQ(part<ui::RenameBox>(), nullptr);
    });
    choose(command_id::kClassicLayout);
    closeBox();
    edit(kScript);
}
INSTANTIATE_TEST_SUITE_P(Theme, EditorWithoutHelp, testing::Values(ThemeChoice::light));

}  // namespace
