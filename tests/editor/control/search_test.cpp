// Find, Replace and Go to line.
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

class Searching : public EditorFixture {
  protected:
    FindDialog& find() {
        editor().command(command_id::kFind);
        return *window->find;
    }
    ReplaceDialog& replace() {
        editor().command(command_id::kReplace);
        return *window->replace;
    }
    std::pair<int, int> selection() const { return {window->editor.anchor, window->editor.caret}; }
};

TEST_F(Searching, NextBeginsBehindTheCaretAndDoesNotStartAgain) {
    open("ab ab ab");
    FindDialog& dialog = find();
    // Deliberate: a match at the caret itself is passed over.
    EXPECT_TRUE(dialog.next("ab", {}).found);
    EXPECT_EQ(selection(), std::pair(3, 5));
    EXPECT_TRUE(dialog.next("ab", {}).found);
    EXPECT_EQ(selection(), std::pair(6, 8));
    EXPECT_FALSE(dialog.next("ab", {}).found);
    EXPECT_EQ(selection(), std::pair(6, 8));
    EXPECT_EQ(window->beeps, 1);
    EXPECT_GE(window->activations, 2);
}

TEST_F(Searching, PreviousEndsBeforeTheSelection) {
    open("ab ab ab");
    window->editor.anchor = 6;
    window->editor.caret = 8;
    FindDialog& dialog = find();
    EXPECT_TRUE(dialog.previous("ab", {}).found);
    EXPECT_EQ(selection(), std::pair(3, 5));
    EXPECT_TRUE(dialog.previous("ab", {}).found);
    EXPECT_EQ(selection(), std::pair(0, 2));
    EXPECT_FALSE(dialog.previous("ab", {}).found);
}

TEST_F(Searching, FlagsAreThoseOfTheControl) {
    EXPECT_EQ(searchFlags({true, false, false}), 4u);
    EXPECT_EQ(searchFlags({false, true, false}), 2u);
    EXPECT_EQ(searchFlags({false, false, true}), 0x200000u);
    open(" abc AB ab a.c");
    FindDialog& dialog = find();
    EXPECT_TRUE(dialog.next("AB", {true, false, false}).found);
    EXPECT_EQ(selection(), std::pair(5, 7));
    EXPECT_TRUE(dialog.previous("a.c", {false, false, true}).found);
    EXPECT_EQ(selection(), std::pair(1, 4));
    EXPECT_TRUE(dialog.next("ab", {false, true, false}).found);
    EXPECT_EQ(selection(), std::pair(5, 7));
}

TEST_F(Searching, BrokenExpressionsEmptyTextsAndEdgesFindNothing) {
    open("abc");
    FindDialog& dialog = find();
    EXPECT_FALSE(dialog.next("", {}).found);
    EXPECT_FALSE(dialog.previous("abc", {}).found);
    EXPECT_FALSE(dialog.next("\\(", {false, false, true}).found);
    window->editor.caret = window->editor.anchor = 3;
    EXPECT_FALSE(dialog.next("abc", {}).found);
    EXPECT_EQ(selection(), std::pair(3, 3));
}

TEST_F(Searching, DialogStartsWithTheSelectionOfOneLine) {
    open("first\nsecond\n");
    find().next("x", {});
    find().next("y", {});
    selectText("second");
    SearchFields fields = replace().open();
    EXPECT_EQ(fields.text, "second");
    EXPECT_EQ(fields.replacement, "second");
    EXPECT_EQ(fields.searched, (std::vector<std::string>{"y", "x"}));
    selectText("first\nsec");
    EXPECT_EQ(find().open().text, "");
    setText(std::string(100'000, 'z'));
    selectText(text());
    EXPECT_EQ(find().open().text.size(), Search::kLongestText);
}

TEST_F(Searching, HistoryHoldsEachTextOnceAndAHundredOfThem) {
    TextHistory history;
    EXPECT_TRUE(history.add("a"));
    EXPECT_FALSE(history.add("a"));
    EXPECT_TRUE(history.add("A"));
    for (int i = 0; i < 100; ++i) history.add(std::to_string(i));
    EXPECT_EQ(history.oldestFirst().size(), 100u);
    EXPECT_EQ(history.oldestFirst().front(), "0");
    EXPECT_EQ(history.newestFirst().front(), "99");
}

TEST_F(Searching, OnlyLaterTextsGoOnTopOfTheReplaceDialogsList) {
    open("a b");
    ReplaceDialog& dialog = replace();
    EXPECT_FALSE(dialog.next("a", {}).insertOnTop);
    EXPECT_TRUE(dialog.next("b", {}).insertOnTop);
    EXPECT_FALSE(dialog.next("b", {}).insertOnTop);
    EXPECT_FALSE(find().next("c", {}).insertOnTop);
}

TEST_F(Searching, ReplaceActsOnTheSelectionAndGoesOnInItsDirection) {
    open("- one one one");
    ReplaceDialog& dialog = replace();
    dialog.replace("one", "two", {});
    EXPECT_EQ(text(), "- one one one");  // nothing was selected
    dialog.next("one", {});
    EXPECT_TRUE(dialog.replace("one", "2", {}).found);
    EXPECT_EQ(text(), "- 2 one one");
    EXPECT_EQ(selection(), std::pair(8, 11));
    dialog.previous("one", {});
    EXPECT_EQ(selection(), std::pair(4, 7));
    EXPECT_FALSE(dialog.replace("one", "2", {}).found);
    EXPECT_EQ(text(), "- 2 2 one");
    EXPECT_EQ(dialog.open().replacements, std::vector<std::string>{"2"});
}

TEST_F(Searching, GroupsComeFromTheExpressionThatFoundTheSelectionOnly) {
    const SearchOptions expression{false, false, true};
    open("- key=value old=new");
    ReplaceDialog& dialog = replace();
    ASSERT_TRUE(dialog.next("\\([a-z]+\\)=\\([a-z]+\\)", expression).found);
    dialog.replace("nowhere", "\\2:\\1", expression);
    EXPECT_EQ(text(), "- value:key old=new");
    // A selection made by hand has no groups, and stale ones are not filled in.
    selectText("old=new");
    dialog.replace("nowhere", "<\\1\\2>", expression);
    EXPECT_EQ(text(), "- value:key <>");
    setText("ab");
    dialog.replaceAll("ab", "[\\0\\1]", expression);
    EXPECT_EQ(text(), "[]");
}

TEST_F(Searching, ReplaceAllIgnoresTheCheckBoxesAndIsOneStep) {
    open("One one ONE lone");
    ReplaceDialog& dialog = replace();
    dialog.replaceAll("one", "1", {true, true, false});
    EXPECT_EQ(text(), "1 1 1 l1");
    editor().command(command_id::kUndo);
    EXPECT_EQ(text(), "One one ONE lone");
    const SearchFields fields = dialog.open();
    EXPECT_EQ(fields.searched, std::vector<std::string>{"one"});
    EXPECT_EQ(fields.replacements, std::vector<std::string>{"1"});
}

TEST_F(Searching, ReplaceAllEndsWhateverIsPutIn) {
    open("aaa");
    ReplaceDialog& dialog = replace();
    dialog.replaceAll("a", "aa", {});
    EXPECT_EQ(text(), "aaaaaa");
    dialog.replaceAll("", "x", {});
    EXPECT_EQ(text(), "aaaaaa");
    dialog.replaceAll("a", "", {});
    EXPECT_EQ(text(), "");
}

TEST_F(Searching, ReplaceAllInTheSelectionStaysInIt) {
    open("a a a a");
    ReplaceDialog& dialog = replace();
    dialog.setInSelection(true);
    window->editor.anchor = 2;
    window->editor.caret = 5;
    dialog.replaceAll("a", "bcd", {});
    EXPECT_EQ(text(), "a bcd bcd a");
    EXPECT_FALSE(dialog.next("a", {}).found);
    EXPECT_EQ(window->beeps, 0);
    window->editor.anchor = window->editor.caret = 1;
    dialog.replaceAll("a", "z", {});
    EXPECT_EQ(text(), "a bcd bcd a");
}

TEST_F(Searching, GotoLineOffersTheCaretsLineAndClampsTheRest) {
    open("1\n2\n3\n4");
    caretToLine(3);
    window->line = 2;
    editor().command(command_id::kGotoLine);
    EXPECT_EQ(window->linesOffered, std::vector<std::int32_t>{3});
    EXPECT_EQ(window->editor.caret, 2);
    for (const auto& [line, caret] :
         {std::pair{std::numeric_limits<std::int32_t>::min(), 0}, std::pair{0, 0},
          std::pair{std::numeric_limits<std::int32_t>::max(), 7}}) {
        window->line = line;
        editor().command(command_id::kGotoLine);
        EXPECT_EQ(window->editor.caret, caret) << line;
    }
    EXPECT_EQ(lineNumberOf("12"), 12);
    for (const char* field : {"", "x", "1.5", "99999999999"})
        EXPECT_FALSE(lineNumberOf(field)) << field;
}

TEST_F(Searching, DialogsThatOutliveTheEditorDoNothing) {
    open("abc abc");
    FindDialog& dialog = find();
    ReplaceDialog& second = replace();
    editor().closed();
    EXPECT_FALSE(dialog.next("abc", {}).found);
    second.replaceAll("abc", "x", {});
    EXPECT_FALSE(second.replace("abc", "x", {}).found);
    EXPECT_EQ(text(), "abc abc");
}

}  // namespace
}  // namespace korvant::test
