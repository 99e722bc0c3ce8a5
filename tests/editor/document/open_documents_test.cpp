// Several texts in one editor, each with its own file, undo steps, markers, watches and copy.
#include <gmock/gmock.h>

#include "base/system/file_io.h"
#include "editor/document/recovery_store.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kLoop[] =
    "int main() {\n"
    "    int a = 1;\n"
    "    a = 2;\n"
    "    return 0;\n"
    "}\n";

class OpenTexts : public EditorFixture {
  protected:
    OpenTexts() { useClock(&fakeClock); }
    std::string make(const std::string& name, const std::string& bytes) {
        writeFile(folder.path() / name, bytes);
        return folder.file(name);
    }
    /// An editor of a file, in a window with tabs.
    void edit(const std::string& path) {
        open(readFile(path), path);
        useTabs();
    }
    void useTabs() {
        editor().setInspecting(true);
        editor().setTabs(true);
    }
    void openFile(const std::string& path) {
        window->files.push_back(path);
        editor().command(command_id::kOpen);
    }
    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const DocumentTab& tab : editor().tabs())
            names.push_back(tab.name + (tab.modified ? "*" : "") +
                            (tab.id == editor().shownTab() ? "!" : ""));
        return names;
    }
    std::uint64_t tab(const std::string& name) {
        for (const DocumentTab& one : editor().tabs())
            if (one.name == name) return one.id;
        return 0;
    }
    void show(const std::string& name) { editor().showTab(tab(name)); }
    std::vector<std::string> copies() {
        std::vector<std::string> texts;
        for (const std::string& name : kept("recovery"))
            if (const auto record = readRecord(readFile(dataFolder() + "/recovery/" + name)))
                texts.push_back(record->text);
        std::sort(texts.begin(), texts.end());
        return texts;
    }
    int caret() const { return window->editor.caret; }

    std::string first = make("first.as", kLoop), second = make("second.as", "// second\n");
};

TEST_F(OpenTexts, EachHasItsOwnUndoMarkersAndView) {
    edit(first);
    caretToLine(3);
    editor().command(command_id::kToggleBreakpoint);
    window->editor.type("x");
    window->editor.firstVisibleLine = 2;
    window->editor.closedFolds = {0};
    const int place = caret();
    openFile(second);
    EXPECT_THAT(names(), ElementsAre("first.as*", "second.as!"));
    EXPECT_EQ(window->title, "Script Editor - second.as");
    EXPECT_EQ(text(), "// second\n");
    EXPECT_THAT(marks(), IsEmpty());
    editor().command(command_id::kUndo);
    EXPECT_EQ(text(), "// second\n");
    window->editor.type("// ");
    editor().command(command_id::kNextTab);
    EXPECT_THAT(names(), ElementsAre("first.as*!", "second.as*"));
    EXPECT_EQ(caret(), place);
    EXPECT_EQ(window->editor.firstVisibleLine, 2);
    EXPECT_EQ(window->editor.closedFolds, std::set<int>{0});
    EXPECT_THAT(marks(), ElementsAre(3));
    editor().command(command_id::kUndo);
    EXPECT_EQ(text(), kLoop);
    editor().command(command_id::kPreviousTab);
    EXPECT_EQ(text(), "// // second\n");
    EXPECT_THAT(window->editor.unknown, IsEmpty());
}

TEST_F(OpenTexts, AFileThatIsOpenIsShownAndNotReadAgain) {
    edit(first);
    window->editor.type("mine");
    openFile(second);
    openFile(folder.file("../" + nameOf(folder.path().string()) + "/first.as"));
    EXPECT_THAT(names(), ElementsAre("first.as*!", "second.as"));
    EXPECT_EQ(text(), std::string("mine") + kLoop);
    editor().command(command_id::kRecentFileFirst);
    EXPECT_THAT(names(), ElementsAre("first.as*", "second.as!"));
}

TEST_F(OpenTexts, AFileThatCannotBeReadChangesNothing) {
    edit(first);
    window->editor.type("mine");
    openFile(folder.file("none.as"));
    EXPECT_EQ(pane(), "File does not exist");
    EXPECT_THAT(names(), ElementsAre("first.as*!"));
    EXPECT_EQ(text(), std::string("mine") + kLoop);
    EXPECT_EQ(window->editor.heldTexts(), 1u);
}

TEST_F(OpenTexts, AnUntouchedTextGivesWayAndItsFileIsWhatTheHostHears) {
    open();
    useTabs();
    editor().showTour();
    openFile(first);
    EXPECT_THAT(names(), ElementsAre("first.as!"));
    EXPECT_EQ(editor().documentPath(), first);
    editor().command(command_id::kNew);
    editor().command(command_id::kNew);
    EXPECT_THAT(names(), ElementsAre("first.as", "Untitled!"));
    window->editor.type("a");
    editor().command(command_id::kNew);
    EXPECT_THAT(names(), ElementsAre("first.as", "Untitled*", "Untitled 2!"));
    EXPECT_EQ(window->title, "Script Editor - Untitled 2");
    EXPECT_TRUE(window->questions.empty());
}

TEST_F(OpenTexts, ANewTextIsSavedUnderANameThatNeedNotExist) {
    edit(first);
    editor().command(command_id::kNew);
    window->editor.type("new");
    window->files.push_back(folder.file("made.as"));
    editor().command(command_id::kSave);
    EXPECT_EQ(readFile(folder.file("made.as")), "new");
    EXPECT_EQ(window->requests.back().suggestedName, "Untitled.as");
    EXPECT_FALSE(window->requests.back().fileMustExist);
    EXPECT_THAT(names(), ElementsAre("first.as", "made.as!"));
}

TEST_F(OpenTexts, ClosingAsksAboutChangesAndCancelKeepsThem) {
    edit(first);
    openFile(second);
    window->editor.type("typed ");
    show("first.as");
    for (const auto& [answer, left] : {std::pair{Answer::cancel, 2u}, std::pair{Answer::yes, 1u}}) {
        window->answers.push_back(answer);
        editor().closeTab(tab("second.as"));
        EXPECT_EQ(window->questions.back(), "Do You Want to Save Your Changes?\n\nsecond.as");
        EXPECT_EQ(editor().tabs().size(), left);
        EXPECT_EQ(text(), kLoop);
    }
    EXPECT_EQ(readFile(second), "typed // second\n");
    openFile(second);
    window->editor.type("more ");
    window->answers.push_back(Answer::no);
    editor().command(command_id::kCloseTab);
    EXPECT_THAT(names(), ElementsAre("first.as!"));
    EXPECT_EQ(readFile(second), "typed // second\n");
    std::set<std::string> backups;
    for (const std::string& name : kept("backups"))
        backups.insert(readFile(dataFolder() + "/backups/" + name));
    EXPECT_TRUE(backups.count("typed more // second\n"));
    EXPECT_EQ(window->editor.heldTexts(), 1u);
    // Of the last one an empty text is left.
    editor().command(command_id::kCloseTab);
    EXPECT_THAT(names(), ElementsAre("Untitled!"));
    editor().command(command_id::kCloseTab);
    EXPECT_THAT(names(), ElementsAre("Untitled!"));
    EXPECT_TRUE(editor().closeBox());
    EXPECT_EQ(editor().hostText(), kLoop);
}

TEST_F(OpenTexts, LeavingAsksForEachAndGivesNothingUpBeforeTheLastAnswer) {
    edit(first);
    window->editor.type("one ");
    openFile(second);
    window->editor.type("two ");
    window->answers = {Answer::no, Answer::cancel};
    editor().command(command_id::kExit);
    EXPECT_FALSE(window->ended);
    EXPECT_THAT(names(), ElementsAre("first.as*", "second.as*!"));
    show("first.as");
    EXPECT_EQ(text(), std::string("one ") + kLoop);
    window->questions.clear();
    window->answers = {Answer::no, Answer::yes};
    editor().command(command_id::kExit);
    EXPECT_TRUE(window->ended);
    EXPECT_THAT(window->questions, ElementsAre(HasSubstr("first.as"), HasSubstr("second.as")));
    EXPECT_EQ(readFile(first), kLoop);
    EXPECT_EQ(readFile(second), "two // second\n");
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(OpenTexts, TheCloseBoxWritesTheHostsFileAndAsksAboutOthers) {
    edit(first);
    window->editor.type("one ");
    openFile(second);
    window->editor.type("two ");
    window->answers = {Answer::yes};
    EXPECT_TRUE(editor().closeBox());
    EXPECT_EQ(window->questions.size(), 1u);
    EXPECT_EQ(readFile(first), std::string("one ") + kLoop);
    EXPECT_EQ(readFile(second), "two // second\n");
    EXPECT_EQ(editor().hostText(), std::string("one ") + kLoop);
    EXPECT_EQ(editor().documentPath(), first);
}

TEST_F(OpenTexts, ACrashLosesNoneOfThem) {
    edit(first);
    window->editor.type("one ");
    openFile(second);
    window->editor.type("two ");
    editor().command(command_id::kNew);
    window->editor.type("three");
    fakeClock.advance(10000);
    editor().tick();
    EXPECT_THAT(copies(), ElementsAre(std::string("one ") + kLoop, "three", "two // second\n"));
    edit(first);
    window->answers = {Answer::yes, Answer::yes, Answer::yes};
    editor().shown();
    EXPECT_EQ(editor().tabs().size(), 3u);
    show("first.as");
    EXPECT_EQ(text(), std::string("one ") + kLoop);
    show("second.as");
    EXPECT_EQ(text(), "two // second\n");
    show("Untitled");
    EXPECT_EQ(text(), "three");
    for (const DocumentTab& one : editor().tabs()) EXPECT_TRUE(one.modified) << one.name;
    EXPECT_EQ(copies().size(), 3u);
}

TEST_F(OpenTexts, ARunIsOfTheTextThatWasInViewWhenItBegan) {
    edit(first);
    caretToLine(3);
    editor().command(command_id::kToggleBreakpoint);
    openFile(second);
    window->editor.type("int main() { return 1; }\n");
    show("first.as");
    editor().functionKey(5);
    EXPECT_TRUE(editor().debugging());
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkArrow);
    show("second.as");
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkCircle);
    EXPECT_EQ(editor().status().stoppedLine, 3);
    EXPECT_FALSE(editor().status().stopInView);
    caretToLine(1);
    editor().command(command_id::kToggleBreakpoint);
    window->editor.press("\n");
    EXPECT_THAT(marks(), ElementsAre(2));
    // Going on shows the text that runs, whose own lines have not moved.
    editor().functionKey(11);
    EXPECT_THAT(names(), ElementsAre("first.as!", "second.as*"));
    EXPECT_EQ(editor().status().stoppedLine, 4);
    EXPECT_TRUE(editor().status().stopInView);
    show("second.as");
    editor().command(command_id::kStop);
    EXPECT_THAT(names(), ElementsAre("first.as!", "second.as*"));
    EXPECT_THAT(marks(), ElementsAre(3));
    show("second.as");
    EXPECT_THAT(marks(), ElementsAre(2));
}

TEST_F(OpenTexts, ABuildIsOfTheTextInViewAndEndsTheRunOfAnother) {
    edit(first);
    caretToLine(3);
    editor().command(command_id::kToggleBreakpoint);
    openFile(make("wrong.as", "int main() { return x; }\n"));
    show("first.as");
    editor().functionKey(5);
    show("wrong.as");
    editor().functionKey(7);
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("first.as", "wrong.as!"));
    EXPECT_THAT(pane(), HasSubstr("x"));
    EXPECT_EQ(editor().problems().errors(), 1);
    show("first.as");
    EXPECT_EQ(editor().problems().errors(), 0);
    EXPECT_THAT(marks(), ElementsAre(3));
    show("wrong.as");
    EXPECT_EQ(editor().problems().errors(), 1);
}

TEST_F(OpenTexts, ClosingTheTextOfARunEndsTheRun) {
    edit(first);
    openFile(second);
    show("first.as");
    caretToLine(3);
    editor().command(command_id::kToggleBreakpoint);
    editor().functionKey(5);
    ASSERT_TRUE(editor().debugging());
    show("second.as");
    editor().closeTab(tab("first.as"));
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("second.as!"));
    window->editor.press("\n\n");
    EXPECT_THAT(marks(), IsEmpty());
    EXPECT_EQ(window->editor.heldTexts(), 1u);
}

constexpr char kBranch[] =
    "int main() {\n    int a;\n    int b = 1;\n    if (b == 2)\n        a = 5;\n"
    "    b = 2;\n    if (b == 2)\n        a = 7;\n    return a;\n}\n";

TEST_F(OpenTexts, TheTipOfWhatABranchMaySetIsUninitialised) {
    const auto tip = [this] {
        selectText("a ");
        editor().displayVariable();
        return pane().substr(0, pane().find('\n'));
    };
    edit(make("branch.as", kBranch));
    for (const int line : {6, 9}) {
        caretToLine(line);
        editor().command(command_id::kToggleBreakpoint);
    }
    editor().functionKey(5);
    editor().inspection().addWatch("a");
    EXPECT_EQ(editor().inspection().watches()[0].error, "\"a\" is not yet set.");
    EXPECT_EQ(tip(), "int a = Unitialized");
    editor().functionKey(5);
    EXPECT_EQ(editor().inspection().watches()[0].value.value, "7");
    EXPECT_EQ(tip(), "int a = 7");
    editor().setInspecting(false);
    editor().command(command_id::kStop);
    EXPECT_FALSE(editor().inspection().enabled()) << "at the end of the run";
    editor().functionKey(5);
    EXPECT_FALSE(editor().inspection().canLook());
    EXPECT_EQ(tip(), "int a = Unitialized");
    editor().functionKey(11);
    editor().functionKey(5);
    EXPECT_EQ(tip(), "int a = 7");
    editor().functionKey(5);
    EXPECT_FALSE(editor().debugging());
    EXPECT_EQ(session().stopPolicy(), nullptr) << "runs of the host's are its own";
}

/// A condition over what nothing has set is neither true nor false by what lay in memory.
TEST_F(OpenTexts, AClassicConditionKnowsWhatIsSet) {
    edit(make("branch.as", kBranch));
    editor().setInspecting(false);
    frontend.text = "a * 0 = 0";
    for (const int line : {6, 9}) {
        caretToLine(line);
        editor().addCondition();
    }
    editor().functionKey(5);
    EXPECT_THAT(pane(), HasSubstr("Conditional breakpoint reached at line 9"));
}

constexpr char kLibrary[] =
    "int shareOf(int parts) {\n"
    "    int whole = 10;\n"
    "    return whole / parts;\n"
    "}\n";

/// A function of the host's, written in a file of its own, that scripts call.
class OtherSources : public OpenTexts {
  protected:
    OtherSources() { shareLibrary(library, kLibrary, "shareOf"); }
    void breakAt(int line) {
        caretToLine(line);
        editor().command(command_id::kToggleBreakpoint);
    }
    std::string library = make("library.as", kLibrary);
};

TEST_F(OtherSources, BreakpointsInTheirTabsStopThereAndNoneElsewhereDo) {
    edit(make("main.as", "int main() {\n    int a = 5;\n    a = 2;\n    return share(a);\n}\n"));
    breakAt(3);
    openFile(library);
    breakAt(2);
    show("main.as");
    editor().functionKey(5);
    EXPECT_EQ(editor().status().stoppedLine, 3);
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    editor().functionKey(5);
    ASSERT_TRUE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    EXPECT_EQ(editor().status().stoppedLine, 2);
    EXPECT_THAT(pane(), HasSubstr("Breakpoint reached at line 2 of library.as"));
    EXPECT_THAT(marks(), ElementsAre(2));
    EXPECT_TRUE(editor().plannedBreakpoints()[0].verified);
    breakAt(2);
    breakAt(3);
    editor().addCondition();
    frontend.text = "parts = 3";
    editor().addCondition();
    editor().functionKey(5);
    EXPECT_FALSE(editor().debugging()) << "line 3 of the main text is not line 3 of this one";
    frontend.text = "parts = 2";
    show("library.as");
    caretToLine(3);
    editor().addCondition();
    show("main.as");
    editor().functionKey(5);
    editor().functionKey(5);
    EXPECT_TRUE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    editor().functionKey(5);
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(marks(), ElementsAre(3));
}

/// It led to the line of that number in the text that ran.
TEST_F(OtherSources, ALineOfTheOutputLeadsToTheTextThatItNames) {
    edit(make("main.as", "int main() {\n    int a = 0;\n\n    return share(a);\n}\n"));
    editor().setInspecting(false);
    window->explaining = true;
    editor().functionKey(5);
    ASSERT_THAT(pane(), HasSubstr(" at line 3 of library.as in "));
    const auto pressAt = [this](const std::string& text) {
        const auto at = static_cast<int>(pane().find(text));
        editor().outputNotified({.code = sci::kDoubleClick, .position = at});
    };
    pressAt(" at line 3 of library.as");
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    EXPECT_EQ(editor().status().line, 3);
    pressAt(" at line 4 in ");
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    EXPECT_EQ(editor().status().line, 4);
}

/// The layout without tabs: the other texts stay open behind the one in view.
TEST_F(OtherSources, InTheClassicLayoutTheyStopThereAndNothingIsHeld) {
    edit(make("main.as",
              "int main() {\n    int a = 5;\n    a = 2;\n    share(a);\n"
              "    return 1 / (a - 2);\n}\n"));
    breakAt(3);
    openFile(library);
    breakAt(2);
    show("main.as");
    editor().setInspecting(false);
    editor().setTabs(false);
    window->whileHeld = [] { ADD_FAILURE() << "held"; };
    frontend.boxes.clear();
    editor().functionKey(5);
    EXPECT_THAT(marks(), ElementsAre(3));
    editor().functionKey(5);
    ASSERT_TRUE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    EXPECT_THAT(pane(), HasSubstr("Breakpoint reached at line 2 of library.as"));
    EXPECT_THAT(marks(), ElementsAre(2));
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkArrow);
    editor().functionKey(11);
    EXPECT_THAT(marks(), ElementsAre(3)) << pane();
    selectText("whole");
    editor().displayVariable();
    EXPECT_THAT(pane(), HasSubstr("int whole = 10"));
    editor().functionKey(11);
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    EXPECT_THAT(marks(), ElementsAre(5));
    editor().functionKey(5);
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(boxes(), HasSubstr("line: 5\ndesc: Divide by zero"));
    EXPECT_THAT(marks(), ElementsAre(3));
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkCircle);
    editor().setTabs(true);
    show("library.as");
    EXPECT_THAT(marks(), ElementsAre(2));
}

TEST_F(OtherSources, AStopThereShowsTheirFile) {
    edit(make("main.as", "int main() {\n    int a = 5;\n\n\n    return share(a);\n}\n"));
    caretToLine(5);
    editor().command(command_id::kToggleBreakpoint);
    editor().functionKey(5);
    ASSERT_TRUE(editor().debugging());
    editor().functionKey(12);
    ASSERT_TRUE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    EXPECT_EQ(editor().status().stoppedLine, 2);
    EXPECT_TRUE(editor().status().stopInView);
    EXPECT_EQ(text(), kLibrary);
    editor().showFrame(1);
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    EXPECT_FALSE(editor().status().stopInView);
    EXPECT_EQ(editor().fileOf(editor().inspection().stack()[0].place), "library.as");
    EXPECT_EQ(editor().fileOf(editor().inspection().stack()[1].place), "main.as");
    editor().showFrame(0);
    EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
    editor().functionKey(5);
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    EXPECT_THAT(marks(), ElementsAre(5));
}

TEST_F(OtherSources, AnExceptionThereShowsTheirFile) {
    edit(make("main.as", "int main() {\n    return share(0);\n}\n"));
    bool wasHeld = false;
    window->whileHeld = [&] {
        wasHeld = true;
        EXPECT_THAT(names(), ElementsAre("main.as", "library.as!"));
        EXPECT_EQ(editor().status().stoppedLine, 3);
        EXPECT_TRUE(editor().status().stopInView);
        editor().command(command_id::kNextTab);
        EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
        EXPECT_FALSE(editor().status().stopInView);
        editor().closeTab(editor().shownTab());
        EXPECT_EQ(editor().tabs().size(), 2u);
    };
    editor().functionKey(5);
    EXPECT_TRUE(wasHeld);
    EXPECT_THAT(names(), ElementsAre("main.as!", "library.as"));
    EXPECT_THAT(pane(), HasSubstr("Application terminated in run time error."));
}

TEST_F(OpenTexts, WatchesAndBreakpointsAreRememberedForEachFile) {
    edit(first);
    editor().inspection().addWatch("a");
    caretToLine(2);
    editor().command(command_id::kToggleBreakpoint);
    openFile(second);
    EXPECT_TRUE(editor().inspection().watches().empty());
    editor().inspection().addWatch("b");
    show("first.as");
    ASSERT_EQ(editor().inspection().watches().size(), 1u);
    EXPECT_EQ(editor().inspection().watches()[0].expression, "a");
    EXPECT_TRUE(editor().closeBox());
    edit(second);
    editor().recallFile();
    ASSERT_EQ(editor().inspection().watches().size(), 1u);
    EXPECT_EQ(editor().inspection().watches()[0].expression, "b");
    openFile(first);
    EXPECT_THAT(marks(), ElementsAre(2));
    EXPECT_EQ(editor().inspection().watches()[0].expression, "a");
}

TEST_F(OpenTexts, AHostsOwnTextAndTheClassicLayoutHaveTheEditorForThemselves) {
    open("the host's");
    useTabs();
    EXPECT_FALSE(editor().enabled(*findCommand(command_id::kCloseTab)));
    openFile(first);
    EXPECT_THAT(names(), ElementsAre("first.as!"));
    editor().command(command_id::kCloseTab);
    EXPECT_THAT(names(), ElementsAre("first.as!"));
    // Texts that are open already stay behind the one in view.
    edit(first);
    openFile(second);
    window->editor.type("typed ");
    show("first.as");
    editor().setTabs(false);
    editor().command(command_id::kNextTab);
    openFile(make("third.as", "// third\n"));
    EXPECT_THAT(names(), ElementsAre("third.as!", "second.as*"));
    window->answers = {Answer::cancel, Answer::yes};
    editor().command(command_id::kExit);
    EXPECT_FALSE(window->ended);
    editor().command(command_id::kExit);
    EXPECT_TRUE(window->ended);
    EXPECT_EQ(readFile(second), "typed // second\n");
}

TEST_F(OpenTexts, EqualNamesTellTheirFolders) {
    std::filesystem::create_directories(folder.path() / "north");
    edit(first);
    openFile(make("north/first.as", "// other\n"));
    EXPECT_THAT(names(),
                ElementsAre("first.as - " + nameOf(folder.path().string()), "first.as - north!"));
}

}  // namespace
}  // namespace korvant::test
