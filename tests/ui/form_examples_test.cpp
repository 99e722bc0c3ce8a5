// The examples that ask the user, as the program runs them, answered from the keyboard alone.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"
#include "support/ui_x_keys.h"

namespace korvant::test {
namespace {

using Keys = std::vector<std::string>;

std::string exampleText(const std::string& name) {
    return readFile(korvant::test::sourceFolder() + "/examples/" + name);
}

/// The example with its output in a file instead of a window.
std::string withOutputFile(std::string text) {
    const std::string begin = "int main()\n{\n";
    const std::size_t at = text.find(begin);
    EXPECT_NE(at, std::string::npos);
    return text.insert(at + begin.size(), "    OpenOutputFile(\"printed.txt\");\n");
}

/// Runs the script in windows while somebody types in those that come up, one after another.
/// Answers what the file holds then.
std::string printedBy(const std::string& script,
                      const std::vector<std::pair<std::string, Keys>>& windows,
                      const std::string& file) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "script.as", script);
    std::thread user([&windows] {
        for (const auto& [title, keys] : windows)
            EXPECT_TRUE(typeInWindow(title, keys)) << "no window " << title;
    });
    ProcessOptions options;
    options.folder = folder.path().string();
    options.seconds = 60;
    const ProcessResult result = runKorvant({"run", "--gui", "script.as"}, options);
    user.join();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return readText(folder.path() / file);
}

TEST(FormExamples, PumpIsFilledWithoutAMouse) {
    const Keys keys = {"7",   "2",   "Tab", "3",   "0", "Return", "Tab",
                       "Tab", "Tab", "2",   "Tab", "6", "0",      "Control_L+Return"};
    EXPECT_EQ(
        printedBy(withOutputFile(exampleText("pump_form.as")), {{"Pump", keys}}, "printed.txt"),
        "The form has 12 properties.\nThe pump needs 9.81 kW.\n");
}

TEST(FormExamples, DrillHoleGetsAnotherInterval) {
    const Keys keys = {"a", "Return", "Control_L+Next",  "Alt_L+a", "n", "Tab", "9", "Tab",
                       "1", "1",      "Control_L+Return"};
    EXPECT_EQ(printedBy(withOutputFile(exampleText("drillhole_form.as")), {{"Drill hole", keys}},
                        "printed.txt"),
              "Current interval: 0\nCurrent interval: 1\n");
}

TEST(FormExamples, WhatAScriptWithWindowsPrintsIsOnStandardOutput) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "script.as",
              "int main() { Print(\"before\\n\"); Information(\"Seen?\"); Print(\"after\\n\"); "
              "return 0; }");
    std::thread user([] { EXPECT_TRUE(typeInWindow("KorvantIDE", {"Return"})); });
    ProcessOptions options;
    options.folder = folder.path().string();
    options.seconds = 60;
    const ProcessResult result = runKorvant({"run", "--gui", "script.as"}, options);
    user.join();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "before\nafter\n");
    if (std::getenv("KORVANT_PROGRAM")) return;  // another system's, which always has one
    // Without a display the console itself writes there, and once is enough.
    options.environment = {"DISPLAY=", "WAYLAND_DISPLAY="};
    EXPECT_EQ(runKorvant({"run", "--gui", "script.as"}, options).output, "before\nafter\n");
}

TEST(FormExamples, AHostWithoutAnEngineShowsItsForms) {
    std::thread user([] {
        for (const char* title : {"Pump", "Drill hole"})
            EXPECT_TRUE(typeInWindow(title, {"Control_L+Return"})) << "no window " << title;
    });
    ProcessOptions options;
    options.seconds = 60;
    const ProcessResult result = runProcess({korvant::test::binFolder() + "/host_form"}, options);
    user.join();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

TEST(FormExamples, DialogsAreAnsweredOneAfterAnother) {
    EXPECT_EQ(printedBy(exampleText("dialogs.as"),
                        {{"KorvantIDE", {"Return"}},
                         {"KorvantIDE", {"2", "0", "Return"}},
                         {"KorvantIDE", {"9", "0", "Return"}},
                         {"KorvantIDE", {"p", "i", "t", "Return"}},
                         {"KorvantIDE", {"Return"}},
                         {"KorvantIDE", {"y"}}},
                        "plan.txt"),
              "pit 20 90\n");
}

}  // namespace
}  // namespace korvant::test
