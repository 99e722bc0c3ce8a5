// The debugger of the program on a terminal: Ctrl+C wherever it may come, and whose screen it is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kCtrlC[] = "\x03";
constexpr char kPrompt[] = "(korvant) ";
constexpr char kCounting[] =
    "Print(\"begun\\n\");\nfor (uint64 n = 1;; n++)\n    if (n % 500000 == 0) Print(\"on\\n\");";
constexpr char kAsking[] =
    "string s;\nPrint(\"Name: \");\nInput(s);\nPrint(\"It is \" + s + \".\\n\");";

class Debugged : public testing::Test {
  protected:
    std::vector<std::string> debug(const std::string& body) {
        writeFile(folder_.file("main.as"),
                  "int main() {\nSetMaxRunTime(100000);\n" + body + "\nreturn 0;\n}\n");
        return {korvantProgram(), "debug", folder_.file("main.as")};
    }
    /// Types a command and awaits `answer`, and the prompt unless the script goes on.
    static void type(TerminalProcess& process, const std::string& command,
                     const std::string& answer, bool prompts = true) {
        process.type(command + "\r");
        EXPECT_TRUE(process.await(answer) && (!prompts || process.await(kPrompt)));
    }
    TemporaryFolder folder_;
};

TEST_F(Debugged, CtrlCStopsAScriptWhereItIs) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer holds signals back while a loop calls nothing of its own";
#endif
    TerminalProcess process(debug(kCounting));
    ASSERT_TRUE(process.await(kPrompt));
    type(process, "run", "begun", false);
    for (int stop = 0; stop < 2; ++stop) {
        process.type(kCtrlC);
        ASSERT_TRUE(process.await("Paused"));
        ASSERT_TRUE(process.await(kPrompt));
        type(process, "where", "int main()");
        type(process, "print n > 0", "bool = true");
        if (stop == 0) type(process, "continue", "\r\non\r\n", false);
    }
    type(process, "quit", "The run is ended.", false);
    EXPECT_EQ(1, process.finish());
    EXPECT_TRUE(process.restored());
}

TEST_F(Debugged, CtrlCAtThePromptDropsWhatIsTypedAndStopsNothingLater) {
    TerminalProcess process(debug(kAsking));
    ASSERT_TRUE(process.await(kPrompt));
    for (const char* typed : {"", "kill me", "", "", "print 1 +"}) {
        process.type(std::string(typed) + kCtrlC);
        ASSERT_TRUE(process.await("^C"));
        ASSERT_TRUE(process.await(kPrompt));
    }
    type(process, "break 4", "Breakpoint 1");
    type(process, "run", "Breakpoint 1");
    process.type(kCtrlC);
    ASSERT_TRUE(process.await(kPrompt));
    type(process, "continue", "Name: ", false);
    type(process, "Ann", "It is Ann.\r\nThe script has ended.");
    EXPECT_THAT(process.screen(), Not(HasSubstr("Paused")));
    process.type("\x04");
    EXPECT_EQ(0, process.finish());
}

TEST_F(Debugged, CtrlCWhereAScriptWaitsStopsItBehind) {
    TerminalProcess process(debug(kAsking));
    ASSERT_TRUE(process.await(kPrompt));
    type(process, "run", "Name: ", false);
    process.type(kCtrlC);
    ASSERT_TRUE(process.await("The script waits in Input; it is paused behind it."));
    type(process, "Ann", "Paused\r\n#0 int main() at " + folder_.file("main.as") + ":6");
    type(process, "print s", "string = \"Ann\"");
    type(process, "continue", "It is Ann.");
    type(process, "quit", "", false);
    EXPECT_EQ(0, process.finish());
}

TEST_F(Debugged, TheScreenIsTheDebuggersToo) {
    TerminalProcess process(
        debug("Print(\"\"); SetTextColor(4, 1); Print(\"red\\n\");\nPrint(\"more\\n\");"));
    ASSERT_TRUE(process.await(kPrompt));
    type(process, "break 4", "Breakpoint 1");
    for (int run = 0; run < 3; ++run) {
        type(process, "run", "red\r\n\x1b[0mBreakpoint 1");
        type(process, "continue", "\x1b[31;44mmore\r\n\x1b[0mThe script has ended.");
    }
    EXPECT_THAT(process.screen(), Not(HasSubstr("\x1b[2J"))) << "cleared";
    process.send(SIGTERM);
    EXPECT_EQ(0, process.finish());
    EXPECT_TRUE(process.restored());
}

TEST_F(Debugged, TheSystemEndsItAtOnce) {
    for (const char* command : {"break main\rrun", "run"}) {
        TerminalProcess process(debug(kAsking));
        ASSERT_TRUE(process.await(kPrompt));
        type(process, command, *command == 'b' ? "int main()" : "Name: ", false);
        process.send(SIGTERM);
        EXPECT_EQ(1, process.finish()) << command;
        EXPECT_TRUE(process.restored());
    }
}

}  // namespace
}  // namespace korvant::test
