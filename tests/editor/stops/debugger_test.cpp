// What the debugging transcripts do not show: limits, re-entry, menus, focus.
#include "editor/stops/debugger.h"

#include <gmock/gmock.h>

#include "editor/stops/value_format.h"
#include "host/run/inspect.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using ::testing::HasSubstr;

constexpr char kEndless[] =
    "int main()\n"
    "{\n"
    "    int turns = 0;\n"
    "    while (true)\n"
    "    {\n"
    "        turns = (turns + 1) % 1000;\n"
    "    }\n"
    "    return 0;\n"
    "}\n";

class Debugging : public EditorFixture {
  protected:
    void addBreakpoint(int line, const std::string& condition = {}) {
        caretToLine(line);
        frontend.text = condition;
        editor().command(condition.empty() ? command_id::kToggleBreakpoint
                                           : command_id::kAddCondition);
    }
    void stopAt(const std::string& script, int line) {
        open(script);
        addBreakpoint(line);
        editor().functionKey(5);
        ASSERT_TRUE(editor().debugging());
    }
};

TEST_F(Debugging, MenusFocusAndScrollingFollowTheRun) {
    std::string script = "int main()\n{\n";
    for (int i = 0; i < 40; ++i) script += "    int v" + std::to_string(i) + " = 1;\n";
    open(script + "    return 0;\n}\n");
    addBreakpoint(20);
    const int focuses = window->focuses;
    editor().functionKey(5);
    for (const int command : {32793, 32794, 32796}) EXPECT_TRUE(window->menuEnabled[command]);
    EXPECT_GT(window->activations, 0);
    EXPECT_GT(window->focuses, focuses);
    EXPECT_EQ(window->editor.firstVisibleLine, 19);
    EXPECT_EQ(window->editor.anchor, window->editor.caret);
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkArrow);
    EXPECT_EQ(window->editor.markerColours[0], std::pair(static_cast<int>(sci::rgb(0, 80, 0)),
                                                         static_cast<int>(sci::rgb(0, 255, 0))));
    editor().command(command_id::kStop);
    for (const int command : {32793, 32794, 32796}) EXPECT_FALSE(window->menuEnabled[command]);
    EXPECT_EQ(window->editor.markerSymbols[0], sci::kMarkCircle);
    EXPECT_EQ(session().buildMessages().count(), 0u);
}

TEST_F(Debugging, WindowGetsTimeAndOnlyStopWorksWhileAScriptIsDriven) {
    open(kEndless);
    addBreakpoint(6, "turns = 5000");
    const std::string before = text();
    window->pump = [&] {
        // Whatever the user does now, no second run begins and no text is lost.
        for (const EditorCommand& command : editorCommands())
            if (command.id != command_id::kStop) editor().command(command.id);
        editor().functionKey(5);
        EXPECT_TRUE(session().currentContext() != nullptr);
        if (window->pumps == 3) editor().command(command_id::kStop);
        return false;
    };
    editor().functionKey(5);
    EXPECT_EQ(window->pumps, 3);
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(editor().debugging());
    EXPECT_THAT(boxes(), HasSubstr("The Script is stopped."));
}

TEST_F(Debugging, CloseBoxDuringARunStopsItAndThenCloses) {
    open(kEndless);
    addBreakpoint(6, "turns = 5000");
    window->pump = [&] {
        EXPECT_FALSE(editor().closeBox());
        return false;
    };
    editor().functionKey(5);
    EXPECT_TRUE(window->ended);
    EXPECT_EQ(editor().hostText(), kEndless);
    EXPECT_EQ(window->pumps, 1);
}

TEST_F(Debugging, WaitingForTheUserDoesNotUseUpTheTime) {
    // Each turn waits longer than the whole limit.
    useClock(&fakeClock);
    frontend.meanwhile = [&] { fakeClock.advance(400); };
    open(
        "int main()\n{\n    SetMaxRunTime(300);\n    for (int i = 0; i < 5; i++)\n    {\n"
        "        Prompt(\"?\", 1);\n        i = i + 0;\n    }\n    return 0;\n}\n");
    addBreakpoint(7, "i = 4");
    frontend.boxes.clear();
    editor().functionKey(5);
    EXPECT_TRUE(editor().debugging()) << boxes() << pane();
}

TEST_F(Debugging, PassesOfAConditionThatIsNeverTrueShareOneLimit) {
    static FakeClock* clock;
    static int turns;
    clock = &fakeClock;
    turns = 0;
    useClock(&fakeClock);
    engine()->RegisterGlobalFunction("void turn()", asFUNCTION(+[] {
                                         clock->advance(40);
                                         if (++turns > 1000) moduleSession().requestStop();
                                     }),
                                     asCALL_CDECL);
    open(
        "int main()\n{\n    int i = 0;\n    while (true)\n    {\n        turn();\n"
        "        i = 0;\n    }\n    return 0;\n}\n");
    addBreakpoint(7, "i = 1");
    editor().functionKey(5);
    EXPECT_NEAR(turns, 10000 / 40, 2);
    EXPECT_THAT(boxes(), HasSubstr("Probably it timed out."));
    EXPECT_FALSE(editor().debugging());
}

TEST_F(Debugging, NothingIsShownForNothing) {
    stopAt("int main()\n{\n    int value = 1;\n    return value;\n}\n", 4);
    const std::string before = pane();
    window->editor.callTip.clear();
    for (const char* name : {"", "return", "int value", "alu"}) {
        selectText(name);
        editor().functionKey(4);
        EXPECT_EQ(pane(), before) << name;
        EXPECT_EQ(window->editor.callTip, "");
    }
    selectText("int value = 1;\n    return ");
    editor().functionKey(4);
    EXPECT_EQ(pane(), before);
}

TEST_F(Debugging, NamesAreTrimmedAndHugeSelectionsAreCut) {
    stopAt("int main()\n{\n    int value = 1;\n    return value;\n}\n", 4);
    selectText(" value ");
    editor().editorNotified({.code = sci::kDoubleClick});
    EXPECT_EQ(window->editor.callTip, "int value = 1");
    EXPECT_THAT(pane(), HasSubstr("int value = 1\n"));
    setText(std::string(10 << 20, 'x'));
    window->editor.anchor = 0;
    window->editor.longestRead = 0;
    editor().functionKey(4);
    EXPECT_EQ(window->editor.callTip, "int value = 1");
    EXPECT_LE(window->editor.longestRead, std::size_t{64} << 10);
}

TEST_F(Debugging, MouseAtRestShowsAValueOnlyWhileStopped) {
    const std::string script = "int main()\n{\n    int value = 7;\n    return value;\n}\n";
    open(script);
    const ControlNotification rest{.code = sci::kDwellStart,
                                   .position = static_cast<int>(script.find("value")) + 2};
    editor().editorNotified(rest);
    EXPECT_EQ(window->editor.callTip, "");
    stopAt(script, 4);
    const std::string before = pane();
    editor().editorNotified(rest);
    EXPECT_EQ(window->editor.callTip, "int value = 7");
    EXPECT_EQ(pane(), before);
    editor().editorNotified({.code = sci::kDwellEnd});
    EXPECT_FALSE(TextControl(window->editor.send()).tipActive());
}

TEST_F(Debugging, ClosingLetsGoOfASuspendedScriptsObjects) {
    const std::string script =
        "class Guard { ~Guard() { Print(\"gone\"); } }\n"
        "int main()\n{\n    Guard guard;\n    return 0;\n}\n";
    stopAt(script, 5);
    EXPECT_TRUE(editor().closeBox());
    EXPECT_EQ(context()->GetState(), asEXECUTION_UNINITIALIZED);
    EXPECT_THAT(console.output, HasSubstr("gone"));
}

TEST_F(Debugging, OutputPaneKeepsTheLastMebibyte) {
    stopAt(
        "int main()\n{\n    string text = \"x\";\n    for (int i = 0; i < 15; i++) text += text;\n"
        "    return 0;\n}\n",
        5);
    selectText("text");
    for (int i = 0; i < 40; ++i) editor().functionKey(4);
    EXPECT_LE(pane().size(), OutputPane::kLimit);
    EXPECT_GT(pane().size(), OutputPane::kLimit - 100);
    EXPECT_TRUE(pane().starts_with("string text = \"xxx"));
}

TEST_F(Debugging, TextsOfWesternScriptsAreShownAsCharacters) {
    open("int main()\n{\n    string text = \"caf\xE9\";\n    return 0;\n}\n");
    addBreakpoint(4);
    editor().functionKey(5);
    selectText("text");
    editor().functionKey(4);
    EXPECT_EQ(window->editor.callTip, "string text = \"caf\xC3\xA9\"");
}

class Formatting : public Debugging {
  protected:
    std::string format(const std::string& declarations, const ValueLimits& limits = {}) {
        stopAt("class Node { Node@[] children; }\nint main()\n{\n" + declarations +
                   "\n    return 0;\n}\n",
               5);
        const StoppedScript script(context());
        for (const VariableInfo& variable : script.variables(0))
            if (variable.name == "it") return formatValue(script, variable, limits);
        return "no variable";
    }
};

TEST_F(Formatting, ArraysAreCutAtAThousandElements) {
    const std::string whole = format("int[] it(1000);");
    EXPECT_THAT(whole, HasSubstr("[999] = 0}"));
    const std::string cut = format("int[] it(1001);");
    EXPECT_THAT(cut, HasSubstr("[999] = 0, ...}"));
}

TEST_F(Formatting, NestingIsCutAtItsDepth) {
    EXPECT_EQ(format("int[][][] it = {{{1}}};", {.depth = 3}), "{\n[0] = {\n[0] = {[0] = 1}}}");
    EXPECT_EQ(format("int[][][] it = {{{1}}};", {.depth = 2}), "{\n[0] = {\n[0] = ...}}");
}

TEST_F(Formatting, LongTextsAreCutWithoutBreakingACharacter) {
    const std::string cut =
        format("string it = \"\xC3\xA9\"; for (int i = 0; i < 17; i++) it += it;");
    EXPECT_LE(cut.size(), (64u << 10) + 3);
    EXPECT_TRUE(cut.ends_with("\xC3\xA9..."));
    const std::string nested = format(
        "string[] it(900); for (int i = 0; i < 900; i++) "
        "it[i] = \"a text that is repeated again and again to fill "
        "the sixty-four kibibytes of a value\";");
    EXPECT_LE(nested.size(), (64u << 10) + 3);
    EXPECT_TRUE(nested.ends_with("..."));
}

TEST_F(Formatting, SmallElementsNeverReadPastTheArray) {
    EXPECT_EQ(format("int8[] it = {-1};"), "{[0] = 255}");
    EXPECT_EQ(format("uint16[] it = {1, 65535};"), "{[0] = 4294901761, [1] = 65535}");
}

}  // namespace
}  // namespace korvant::test
