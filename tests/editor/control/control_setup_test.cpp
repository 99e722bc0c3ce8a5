// What the controls are told when the editor opens and when its looks change.
#include "editor/control/control_setup.h"

#include <sstream>

#include "editor/control/keyword_list.h"
#include "support/editor_fixture.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

using sci::rgb;

struct Expected {
    unsigned message;
    std::intptr_t w;
    std::intptr_t l;
    std::string text;
};

void expectMessages(const std::vector<SentMessage>& sent, std::size_t from,
                    const std::vector<Expected>& expected) {
    ASSERT_GE(sent.size(), from + expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const SentMessage& message = sent[from + i];
        EXPECT_EQ(message.message, expected[i].message) << i;
        EXPECT_EQ(message.w, expected[i].w) << i;
        EXPECT_EQ(message.l, expected[i].l) << i;
        EXPECT_EQ(message.text, expected[i].text) << i;
    }
}

std::vector<Expected> editorScheme(std::intptr_t fore, std::intptr_t back, std::intptr_t brace,
                                   std::intptr_t comment, std::intptr_t keyword,
                                   std::intptr_t literal, std::intptr_t plain) {
    std::vector<Expected> list = {
        {2056, 32, 0, "Courier New"}, {2055, 32, 10, ""},           {2051, 32, fore, ""},
        {2052, 32, back, ""},         {2056, 34, 0, "Courier New"}, {2055, 34, 10, ""},
        {2051, 34, brace, ""},        {2052, 34, back, ""},         {2051, 33, rgb(0, 0, 0), ""}};
    const std::vector<std::pair<int, std::intptr_t>> styles = {
        {0, comment},  {1, comment}, {2, comment}, {3, comment}, {5, keyword},
        {4, literal},  {6, literal}, {7, literal}, {8, literal}, {9, plain},
        {10, keyword}, {11, plain},  {16, plain}};
    for (const auto& [style, colour] : styles) {
        list.push_back({2051, style, colour, ""});
        list.push_back({2052, style, back, ""});
    }
    return list;
}

TEST(ControlSetup, KeywordListHasItsLengthAndSingleBlanks) {
    const std::string words = kKeywordList;
    EXPECT_EQ(words.size(), 1456u);
    EXPECT_EQ(words.find("  "), std::string::npos);
    EXPECT_TRUE(words.starts_with("and bits bits8 "));
    EXPECT_TRUE(words.ends_with(" GetCompositeValue"));
}

TEST(ControlSetup, EditorIsSetUpMessageByMessage) {
    MemoryControl control;
    setUpEditorControl(TextControl(control.send()));
    expectMessages(control.sent, 0,
                   {{4001, 3, 0, ""},
                    {2090, 5, 0, ""},
                    {2036, 4, 0, ""},
                    {4005, 0, 0, kKeywordList},
                    {2132, 1, 0, ""},
                    {4004, 0, 0, "fold=1"},
                    {4004, 0, 0, "fold.comment=1"},
                    {2233, 16, 0, ""},
                    {2244, 2, static_cast<std::intptr_t>(0xFE000000), ""},
                    {2246, 2, 1, ""},
                    {2359, 3, 0, ""},
                    {2040, 31, 7, ""},
                    {2040, 30, 8, ""},
                    {2040, 29, 5, ""},
                    {2040, 28, 5, ""},
                    {2040, 25, 5, ""},
                    {2040, 26, 5, ""},
                    {2040, 27, 5, ""},
                    {2029, 2, 0, ""},
                    {2031, 2, 0, ""}});
}

TEST(ControlSetup, SchemesColourEveryStyle) {
    MemoryControl editor;
    MemoryControl output;
    const TextControl editorControl(editor.send());
    const TextControl outputControl(output.send());
    applyScheme(editorControl, outputControl, ColourScheme::light);
    std::vector<Expected> light =
        editorScheme(rgb(0, 0, 0), rgb(255, 255, 255), rgb(200, 200, 255), rgb(0, 100, 0),
                     rgb(0, 0, 255), rgb(255, 0, 0), rgb(0, 0, 0));
    for (const Expected& last : std::vector<Expected>{{2069, rgb(0, 0, 0), 0, ""},
                                                      {2067, 1, rgb(255, 255, 255), ""},
                                                      {2068, 1, rgb(0, 0, 255), ""},
                                                      {2098, rgb(232, 232, 255), 0, ""},
                                                      {2096, 1, 0, ""}})
        light.push_back(last);
    expectMessages(editor.sent, 0, light);
    expectMessages(output.sent, 0,
                   {{2051, 32, rgb(0, 0, 0), ""},
                    {2052, 32, rgb(255, 255, 255), ""},
                    {2050, 0, 0, ""},
                    {2067, 1, rgb(255, 255, 255), ""},
                    {2068, 1, rgb(0, 0, 255), ""}});
    const std::size_t blackFrom = editor.sent.size();
    applyScheme(editorControl, outputControl, ColourScheme::black);
    expectMessages(
        editor.sent, blackFrom,
        editorScheme(rgb(150, 150, 150), rgb(0, 0, 0), rgb(255, 255, 255), rgb(0, 255, 0),
                     rgb(200, 200, 255), rgb(255, 150, 150), rgb(255, 255, 255)));
    EXPECT_EQ(editor.sent.back().message, 2096u);
    expectMessages(output.sent, 5,
                   {{2051, 32, rgb(255, 255, 255), ""},
                    {2052, 32, rgb(0, 0, 0), ""},
                    {2050, 0, 0, ""},
                    {2067, 1, rgb(0, 0, 0), ""},
                    {2068, 1, rgb(200, 200, 255), ""}});
}

TEST(ControlSetup, NumberMarginIsTwoDigitsWiderThanTheLastLine) {
    for (const auto& [lines, digits] : {std::pair{9, 1}, std::pair{10, 2}, std::pair{1000, 4}}) {
        MemoryControl control;
        const TextControl editor(control.send());
        editor.replaceText(std::string(static_cast<std::size_t>(lines - 1), '\n'));
        EXPECT_EQ(lineNumberWidth(editor), control.textWidth * (digits + 2)) << lines;
    }
}

TEST(ControlSetup, OutputTakesTheBottomOfTheWindow) {
    const EditorLayout layout = layOut(600, 400);
    EXPECT_EQ(layout.editor.height, 256);
    EXPECT_EQ(layout.output.y, 256);
    EXPECT_EQ(layout.output.height, 144);
    EXPECT_EQ(layout.output.width, 600);
    EXPECT_EQ(layOut(600, 100).editor.height, 0);
}

class EditorLooks : public EditorFixture {};

TEST_F(EditorLooks, OpensWithMarginsAndWithoutStepping) {
    open("a\nb\n");
    EXPECT_EQ(window->title, "Script Editor");
    EXPECT_EQ(window->editor.marginWidths, (std::map<int, int>{{0, 3 * 7 + 4}, {1, 16}, {2, 16}}));
    for (const int command : {32793, 32794, 32796}) EXPECT_FALSE(window->menuEnabled[command]);
    EXPECT_TRUE(window->editor.unknown.empty());
    EXPECT_TRUE(window->output.unknown.empty());
}

TEST_F(EditorLooks, ViewCommandsTurnMarginsOffAndOn) {
    open("a\n");
    struct Case {
        int command, margin, width;
    };
    for (const Case& row : {Case{32776, 0, 25}, Case{32777, 1, 16}, Case{32778, 2, 16}}) {
        editor().command(row.command);
        EXPECT_EQ(window->editor.marginWidths[row.margin], 0);
        EXPECT_FALSE(window->checked.at(row.command));
        editor().command(row.command);
        EXPECT_EQ(window->editor.marginWidths[row.margin], row.width);
        EXPECT_TRUE(window->checked.at(row.command));
    }
    editor().command(32787);
    EXPECT_TRUE(window->checked.at(32787));
}

TEST_F(EditorLooks, ControlsThatCannotBeCreatedAreReportedAndLeftOut) {
    window = std::make_unique<FakeEditorWindow>();
    window->editorCreatable = window->outputCreatable = false;
    ScriptEditor broken({session(), *window, *files, dataFolder(), "/programs"});
    broken.setHost(engine(), context());
    broken.setHostText("int main() { return 0; }");
    broken.initialise();
    EXPECT_EQ(window->errors, (std::vector<std::string>{"Unable to create editor window",
                                                        "Unable to create output window"}));
    // Whatever is asked of it, nothing is sent to controls that are not there.
    for (const EditorCommand& command : editorCommands())
        if (command.id != command_id::kExit) broken.command(command.id);
    const std::string path = folder.file("a.as");
    writeFile(path, "content");
    window->files = {path};
    broken.command(command_id::kSaveAs);
    EXPECT_EQ(readFile(path), "content");
    EXPECT_TRUE(broken.closeBox());
    EXPECT_EQ(broken.hostText(), "int main() { return 0; }");
}

TEST_F(EditorLooks, BracesAreHighlightedInPairs) {
    open("f(a[1])");
    window->editor.caret = window->editor.anchor = 2;
    editor().editorNotified({.code = sci::kUpdateUi});
    EXPECT_EQ(window->editor.braces, std::pair(1, 6));
    window->editor.caret = window->editor.anchor = 1;
    editor().editorNotified({.code = sci::kUpdateUi});
    EXPECT_EQ(window->editor.braces, std::pair(-1, -1));
}

TEST_F(EditorLooks, MarginClicksFoldAndToggleBreakpoints) {
    open("a\nb\nc\n");
    editor().editorNotified({.code = sci::kMarginClick, .position = 2, .margin = 2});
    EXPECT_EQ(window->editor.toggledFolds, std::vector<int>{1});
    editor().editorNotified({.code = sci::kMarginClick, .position = 4, .margin = 1});
    EXPECT_EQ(marks(), std::vector<int>{3});
    editor().editorNotified({.code = sci::kMarginClick, .position = 4, .margin = 0});
    EXPECT_EQ(marks(), std::vector<int>{3});
}

/// Commands of the menu bar that the resource does not have.
bool isAdded(int id) {
    const bool everyEditors = id >= command_id::kCopy && id != command_id::kReplace;
    return everyEditors || (id >= command_id::kComplete && id < command_id::kNew);
}

TEST(EditorCommands, EveryKeyIsInTheManual) {
    std::string pages;
    for (const char* page : {"editor.html", "debugging.html", "index.html"})
        pages += readFile(sourceFolder() + "/docs/manual/pages/" + page);
    for (const EditorCommand& command : editorCommands()) {
        std::istringstream keys(command.keys);
        for (std::string key; keys >> key;)
            EXPECT_NE(pages.find(key), std::string::npos) << command.label << ": " << key;
    }
}

TEST(EditorCommands, MenuStandsAsInTheResource) {
    struct Item {
        EditorMenu menu;
        int id;
        std::string label;
        bool separator;
    };
    const std::vector<Item> items = {
        {EditorMenu::file, 57600, "&New", false},
        {EditorMenu::file, 57601, "&Open...", false},
        {EditorMenu::file, 57603, "Save", false},
        {EditorMenu::file, 32773, "Save &As...", true},
        {EditorMenu::file, 32774, "E&xit", false},
        {EditorMenu::edit, 32784, "Find...", false},
        {EditorMenu::edit, 57641, "Replace...", false},
        {EditorMenu::edit, 32785, "Goto Line...", true},
        {EditorMenu::edit, 32801, "Crypt / Uncrypt...", false},
        {EditorMenu::view, 32776, "Display Line Numbers", false},
        {EditorMenu::view, 32777, "Display Bookmark", false},
        {EditorMenu::view, 32778, "Display Folding", false},
        {EditorMenu::view, 32787, "Background is black", false},
        {EditorMenu::debug, 32779, "Toggle &Breakpoint\tF9", false},
        {EditorMenu::debug, 32800, "Add &Condition", true},
        {EditorMenu::debug, 32781, "Goto &Next Breakpoint", false},
        {EditorMenu::debug, 32782, "Goto &Previous Breakpoint", true},
        {EditorMenu::debug, 32783, "&Delete All Breakpoint", false},
        {EditorMenu::program, 32798, "&Display Variable Value\tF4", true},
        {EditorMenu::program, 32775, "E&xecute\tF5", false},
        {EditorMenu::program, 32786, "&Build\tF7", true},
        {EditorMenu::program, 32793, "Step &Over\tF11", false},
        {EditorMenu::program, 32794, "Step &Into\tF12", true},
        {EditorMenu::program, 32796, "&Stop Debugging\tEsc", false},
        {EditorMenu::help, 32789, "Help Topics\tF1", true},
        {EditorMenu::help, 32790, "&About Script Editor", false}};
    std::size_t next = 0;
    for (const EditorCommand& command : editorCommands()) {
        if (command.menu >= EditorMenu::context || isAdded(command.id)) continue;
        ASSERT_LT(next, items.size());
        EXPECT_EQ(command.menu, items[next].menu) << command.label;
        EXPECT_EQ(command.id, items[next].id);
        EXPECT_EQ(command.label, items[next].label);
        EXPECT_EQ(command.has(kSeparatorAfter), items[next].separator) << command.label;
        EXPECT_EQ(command.has(kChecked), command.id >= 32776 && command.id <= 32778);
        ++next;
    }
    EXPECT_EQ(next, items.size());
}

}  // namespace
}  // namespace korvant::test
