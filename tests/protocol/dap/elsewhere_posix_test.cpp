// Launches whose script another process runs: one in the client's terminal, or one with windows.
#include "base/system/start_program.h"
#include "protocol/dap/launch_fixture.h"
#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

constexpr char kSeven[] = "int main() {\n    int n = 7;\n    n++;\n    return 0;\n}\n";

class Elsewhere : public Launch {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(korvantProgram())) GTEST_SKIP() << "the program is not built";
        text = kSeven;
        runCommand = [](const Json& launch, std::uint16_t port) {
            return std::vector<std::string>{korvantProgram(), "run",
                                            "--debug=" + std::to_string(port), launch["program"]};
        };
        spawn = [](const std::vector<std::string>& command, const std::string& token,
                   const std::string& where) {
            return startProgram(command, {{"KORVANT_DEBUG_TOKEN", token}}, where);
        };
    }

    int begin(Json arguments) {
        writeFile(folder.file("walk.as"), text);
        arguments["program"] = folder.file("walk.as");
        return client.send("launch", std::move(arguments));
    }
    /// The client's terminal does what it is asked to.
    void runInTerminal() {
        const Json asked = client.request("runInTerminal");
        EXPECT_EQ(spawn(asked["args"], asked["env"]["KORVANT_DEBUG_TOKEN"], {}), "");
    }
    void stopAndGoOn(int launched) {
        client.event("initialized");
        client.good("setBreakpoints", {{"source", {{"path", folder.file("walk.as")}}},
                                       {"breakpoints", {{{"line", 3}}}}});
        client.good("configurationDone");
        EXPECT_EQ(client.answerTo(launched)["success"], true);
        EXPECT_EQ(client.stopped()["reason"], "breakpoint");
        EXPECT_EQ(client.value("n"), "7");
        goOn();
        EXPECT_EQ(endOf(), 0);
        EXPECT_EQ(client.count("initialized"), 1);
    }

    const TemporaryFolder folder;
};

TEST_F(Elsewhere, ATerminalOfTheClientRunsTheScript) {
    const int launched = begin({{"console", "integratedTerminal"}});
    runInTerminal();
    stopAndGoOn(launched);
    client.good("disconnect");
}

TEST_F(Elsewhere, AProcessOfItsOwnRunsTheScript) {
    stopAndGoOn(begin({{"gui", true}}));
}

TEST_F(Elsewhere, WhatDoesNotBuildIsToldAtOnce) {
    text.insert(text.find("n++"), "nobody + ");
    const int launched = begin({{"gui", true}});
    EXPECT_EQ(client.answerTo(launched)["success"], true);
    EXPECT_EQ(endOf(), 2);
    EXPECT_NE(client.output("stderr").find("walk.as:3:5: error: No matching symbol 'nobody'"),
              std::string::npos)
        << client.output("stderr");
}

TEST_F(Elsewhere, ATerminalThatIsNotToBeHadRefusesTheLaunch) {
    const int launched = begin({{"console", "integratedTerminal"}});
    client.request("runInTerminal");
    client.refuse("runInTerminal", "no terminal today");
    const Json answer = client.answerTo(launched);
    EXPECT_EQ(answer["success"], false);
    EXPECT_NE(answer.value("message", "").find("no terminal today"), std::string::npos);
}

}  // namespace
}  // namespace korvant::test
