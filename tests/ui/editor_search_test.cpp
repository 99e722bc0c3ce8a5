// Find, Replace and Go to line with real keys.
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/dialog.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <set>

#include "editor/control/command_ids.h"
#include "editor_window_fixture.h"

using namespace korvant;
using korvant::test::EditorWindowTest;
using korvant::test::findActive;
using korvant::test::findChild;
using korvant::test::findWindow;
using korvant::test::giveKeyboard;

namespace {

class EditorSearch : public EditorWindowTest {
  protected:
    void untilSelected(int from, int to) {
        driver.when("a selection", [this, from, to] {
            return frame() && editor()->GetSelectionStart() == from &&
                   editor()->GetSelectionEnd() == to;
        });
    }
    /// What is typed into a dialog arrives a moment later.
    void untilField(const wxString& wanted) {
        driver.when("the field's text", [wanted] {
            const auto field = findChild<wxTextCtrl>(findActive("Goto line"));
            return field && field->GetValue() == wanted;
        });
    }
    void backTo(const wxString& title) {
        driver.run([title] { giveKeyboard(*findWindow(title)); });
        driver.window(title);
    }
};

std::set<std::string> captionsOf(const wxWindow* window) {
    std::set<std::string> captions;
    for (const wxWindow* child : window->GetChildren())
        if (dynamic_cast<const wxButton*>(child) || dynamic_cast<const wxCheckBox*>(child))
            captions.insert(std::string(child->GetLabel().utf8_str()));
    return captions;
}

TEST_F(EditorSearch, FindsTheNextAndThePreviousMatch) {
    ready();
    choose(command_id::kFind);
    driver.window("Search").type("ab").key(WXK_RETURN);
    untilSelected(5, 7);
    ready();
    backTo("Search");
    driver.key('N', wxMOD_ALT);
    untilSelected(10, 12);
    backTo("Search");
    driver.key('P', wxMOD_ALT);
    untilSelected(5, 7);
    backTo("Search");
    driver.key(WXK_ESCAPE).gone("Search");
    closeBox();
    edit("cd   ab   ab");
}

TEST_F(EditorSearch, WindowsHaveTheirCaptions) {
    ready();
    choose(command_id::kFind);
    driver.window("Search");
    check([] {
        EXPECT_EQ(
            captionsOf(findWindow("Search")),
            (std::set<std::string>{"Match case", "Match whole words only", "Regular expressions",
                                   "Close", "&Next match", "&Previous Match"}));
    });
    driver.key(WXK_ESCAPE).gone("Search");
    choose(command_id::kReplace);
    driver.window("Search and replace");
    check([] {
        EXPECT_EQ(
            captionsOf(findWindow("Search and replace")),
            (std::set<std::string>{"Match case", "Match whole words only", "Regular expressions",
                                   "Replace in selection only", "&Close", "&Replace",
                                   "Replace &All", "&Next match", "&Previous match"}));
    });
    driver.key(WXK_ESCAPE).gone("Search and replace");
    closeBox();
    edit("");
}

TEST_F(EditorSearch, ReplacesTheSelectionAndThenTheRest) {
    ready();
    choose(command_id::kReplace);
    driver.window("Search and replace").type("ab").key(WXK_TAB).type("xyz");
    driver.key('N', wxMOD_ALT);
    untilSelected(1, 3);
    backTo("Search and replace");
    driver.key('R', wxMOD_ALT);
    driver.when("one replacement", [this] { return text() == " xyz ab ab"; });
    backTo("Search and replace");
    driver.key('A', wxMOD_ALT);
    driver.when("all replacements", [this] { return text() == " xyz xyz xyz"; });
    driver.close("Search and replace").gone("Search and replace");
    closeBox();
    edit(" ab ab ab");
}

TEST_F(EditorSearch, SelectionOnlyTurnsTheSingleStepsOff) {
    ready();
    choose(command_id::kReplace);
    driver.window("Search and replace");
    driver.click([] { return findChild<wxCheckBox>(findWindow("Search and replace"), 3); });
    driver.when("disabled buttons", [] {
        const auto* window = findWindow("Search and replace");
        return !findChild<wxButton>(window, 0)->IsEnabled() &&
               !findChild<wxButton>(window, 1)->IsEnabled() &&
               !findChild<wxButton>(window, 2)->IsEnabled() &&
               findChild<wxButton>(window, 3)->IsEnabled();
    });
    driver.close("Search and replace").gone("Search and replace");
    closeBox();
    edit("");
}

TEST_F(EditorSearch, HistoryIsOfferedNewestFirst) {
    ready();
    for (const char* word : {"one", "two"}) {
        choose(command_id::kFind);
        driver.window("Search").type(word).key(WXK_RETURN);
        ready();
        driver.close("Search").gone("Search");
        ready();
    }
    driver.run([this] { editor()->SetSelection(0, 0); });
    choose(command_id::kFind);
    driver.window("Search");
    check([] {
        const auto list = findChild<wxComboBox>(findWindow("Search"));
        ASSERT_EQ(list->GetCount(), 2u);
        EXPECT_EQ(list->GetString(0), "two");
        EXPECT_EQ(list->GetString(1), "one");
    });
    closeBox();
    edit(" one two");
}

TEST_F(EditorSearch, GotoLineExplainsWhatIsNoNumber) {
    ready();
    choose(command_id::kGotoLine);
    driver.window("Goto line").type("x");
    untilField("x");
    driver.key(WXK_RETURN);
    driver.when("an explanation", [] {
        const auto* dialog = findActive("Goto line");
        return dialog && findChild<wxStaticText>(dialog, 1) != nullptr;
    });
    driver.type("3");
    untilField("3");
    driver.key(WXK_RETURN);
    ready();
    check([this] { EXPECT_EQ(caretLine(), 3); });
    closeBox();
    edit("1\n2\n3\n4\n");
}

}  // namespace
