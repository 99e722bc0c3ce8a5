// Scripts that print and ask, in the console beside the output.
#ifndef _WIN32
#include <sys/stat.h>
#endif
#include <wx/textctrl.h>

#include "editor_full_window.h"
#include "host/library/script_console.h"
#include "support/own_time.h"
#include "support/ui_x_keys.h"
#include "ui/console/console_canvas.h"
#include "ui/editor/panels/console_pane.h"

using namespace korvant;
using korvant::test::findWindow;
using korvant::test::FullWindow;

namespace {

constexpr char kAsks[] =
    "int main() {\n"
    "    Print(\"Depth\\n\");\n"
    "    SetTextColor(2, 0);\n"
    "    Print(\"12.5\\n\");\n"
    "    ResetText();\n"
    "    Print(\"Name: \");\n"
    "    string name;\n"
    "    Input(name);\n"
    "    Print(\"Hello \" + name + \"\\n\");\n"
    "    return 0;\n"
    "}\n";

class EditorConsole : public FullWindow {
  protected:
    ui::ConsolePane* pane() const { return part<ui::ConsolePane>(); }
    std::string printed() const {
        const std::string all = pane() && pane()->canvas().IsShown() ? pane()->printed() : "";
        return all.substr(0, all.find_last_not_of('\n') + 1);
    }
    void untilPrinted(const std::string& wanted) {
        driver.when("printed " + wanted, [this, wanted] {
            return frame() && printed().find(wanted) != std::string::npos;
        });
    }
    /// Of the heading at the right.
    wxWindow* closeButton() const {
        for (int i = 0; const auto button = part<ui::PaintedButton>(i); ++i)
            if (button->face().icon == ui::Icon::close &&
                button->GetParent() != part<ui::DebugPanel>() &&
                button->GetScreenPosition().y >
                    editor()->GetScreenPosition().y + editor()->GetSize().y - 1)
                return button;
        return nullptr;
    }
    void untilTyping() {
        driver.when("the caret in the console",
                    [this] { return pane() && pane()->waiting() && pane()->canvas().HasFocus(); });
    }
};

TEST_F(EditorConsole, OpensAtTheFirstPrintAsksThereAndStays) {
    use(ThemeChoice::light);
    ready();
    check([this] { EXPECT_EQ(pane(), nullptr) << "opens by itself"; });
    driver.key(WXK_F5);
    untilTyping();
    check([this] {
        EXPECT_EQ(printed(), "Depth\n12.5\nName:");
        EXPECT_EQ(findWindow("Output"), nullptr) << "a window of its own";
        EXPECT_EQ(statusText(), "Running: waits for what you type");
    });
    picture("look-asking");
    driver.type("Nora").key(WXK_RETURN);
    untilStatus("Ready");
    check([this] {
        EXPECT_EQ(printed(), "Depth\n12.5\nName: Nora\nHello Nora");
        EXPECT_TRUE(editor()->HasFocus());
    });
    picture("look-printed");
    // Keys in it are for no script any more, and the next run begins with an empty pane.
    driver.key('3', wxMOD_CONTROL);
    driver.when("the console", [this] { return pane()->canvas().HasFocus(); });
    driver.type("stale").key(WXK_RETURN);
    driver.key(WXK_ESCAPE);
    ready();
    driver.key(WXK_F5);
    untilTyping();
    check([this] { EXPECT_EQ(printed(), "Depth\n12.5\nName:"); });
    driver.key(WXK_F5, wxMOD_SHIFT);
    untilStatus("Ready");
    closeBox();
    edit(kAsks);
    EXPECT_FALSE(scriptConsole().allocated()) << "the window's console is given back";
}

TEST_F(EditorConsole, StopAndCloseAnswerWhileTheScriptWaits) {
    use(ThemeChoice::dark);
    ready();
    driver.key(WXK_F5);
    untilTyping();
    driver.key('C', wxMOD_CONTROL);
    untilStatus("Ready");
    driver.key(WXK_F5);
    untilTyping();
    driver.click([this] { return part<ui::MainToolbar>()->button(command_id::kStop); });
    untilStatus("Ready");
    driver.key(WXK_F5);
    untilTyping();
    closeBox();
    EXPECT_EQ(edit(kAsks), kAsks);
}

TEST_F(EditorConsole, ClosedByHandItStaysAwayForTheRun) {
    use(ThemeChoice::light);
    ready();
    breakAt({3});
    driver.key(WXK_F5);
    untilStatus("Stopped at line 3 in main");
    untilPrinted("one");
    driver.click([this] { return closeButton(); });
    driver.when("no console", [this] { return !pane(); });
    driver.key(WXK_F5);
    untilStatus("Ready");
    check([this] { EXPECT_EQ(pane(), nullptr); });
    driver.key(WXK_F5);
    untilStatus("Stopped at line 3 in main");
    untilPrinted("one");
    closeBox();
    edit("int main() {\n    Print(\"one\\n\");\n    Print(\"two\\n\");\n    return 0;\n}\n");
}

TEST_F(EditorConsole, ScriptsThatPrintNothingOpenNothing) {
    use(ThemeChoice::light);
    ready();
    driver.key(WXK_F5);
    driver.when("the end", [this] { return output() == "Application finished normaly.\n"; });
    check([this] { EXPECT_EQ(pane(), nullptr); });
    driver.key('3', wxMOD_CONTROL);
    driver.when("the empty console", [this] { return pane() != nullptr; });
    picture("look-nothing-printed");
    closeBox();
    edit("int main() {\n    return 0;\n}\n");
}

#ifndef _WIN32
/// Nobody writes into the pipe: without a word from the window the script would wait for ever.
TEST_F(EditorConsole, StopIsHeardInsideAFunctionThatWaits) {
    use(ThemeChoice::light);
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ready();
    driver.key(WXK_F5);
    untilPrinted("waits");
    untilStatus("Ready");
    check([this] { EXPECT_EQ(printed(), "waits"); });
    closeBox();
    frontend.meanwhile = [] { EXPECT_TRUE(test::pressInWindow("Script Editor", "Escape", false)); };
    edit("int main() {\n    Information(\"go\");\n    Print(\"waits\\n\");\n    OpenInputFile(\"" +
         pipe +
         "\");\n    string s;\n    Input(s);\n    Print(\"went on\\n\");\n    return 0;\n}\n");
}
#endif

/// A quarter of a second, and what a busy machine adds to it.
TEST_F(EditorConsole, StopIsHeardSoonWhateverRuns) {
    using test::OwnTime;
    use(ThemeChoice::light);
    for (const char* body : {"while (true) {}", "array<int> a(3000000); while (true) a.sortAsc();",
                             "string s = \"a\"; for (int i = 0; i < 22; i++) s = s + s; while "
                             "(true) StrFind(s, \"ab\");",
                             "while (true) Print(\"more\\n\");"}) {
        OwnTime::time_point pressed;
        frontend.meanwhile = [&] {
            EXPECT_TRUE(test::pressInWindow("Script Editor", "Escape", false));
            pressed = OwnTime::now();
        };
        ready();
        driver.key(WXK_F5);
        driver.when("the run", [&] { return pressed != OwnTime::time_point(); });
        untilStatus("Ready");
        driver.run([&] {
            EXPECT_LT(OwnTime::now() - pressed, std::chrono::milliseconds(250 + 250)) << body;
        });
        closeBox();
        edit("int main() {\n    Information(\"go\");\n    " + std::string(body) +
             "\n    return 0;\n}\n");
    }
}

TEST_F(EditorConsole, LastOutputInTheClassicLayout) {
    use(ThemeChoice::light);
    ui::setEditorLayout(ui::EditorLayoutWish::classic);
    ready();
    driver.key(WXK_F5);
    untilOutput("Application finished normaly.\n");
    choose(command_id::kLastOutput);
    driver.window("Last Output");
    check([] {
        const auto text = korvant::test::findChild<wxTextCtrl>(findWindow("Last Output"));
        EXPECT_EQ(text->GetValue(), "kept\n");
    });
    driver.key(WXK_ESCAPE).gone("Last Output");
    ready();
    closeBox();
    edit("int main() {\n    Print(\"kept\\n\");\n    return 0;\n}\n");
}

}  // namespace
