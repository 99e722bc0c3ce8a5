// The program on a terminal: keys, Ctrl+C, colours, questions, progress, and everything given back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr char kCtrlC[] = "\x03";

class Terminal : public testing::Test {
  protected:
    std::vector<std::string> run(const std::string& body, std::vector<std::string> switches = {}) {
        writeFile(folder_.file("main.as"), "int main() {\n" + body + "\nreturn 0;\n}\n");
        std::vector<std::string> arguments = {korvantProgram(), "run"};
        arguments.insert(arguments.end(), switches.begin(), switches.end());
        arguments.push_back(folder_.file("main.as"));
        return arguments;
    }
    TemporaryFolder folder_;
};

TEST_F(Terminal, CtrlCStopsALoop) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer holds signals back while a loop calls nothing of its own";
#endif
    TerminalProcess process(run("SetMaxRunTime(100000); Print(\"running\\n\"); while (true) {}"));
    ASSERT_TRUE(process.await("running"));
    process.type(kCtrlC);
    EXPECT_EQ(1, process.finish());
    EXPECT_THAT(process.screen(), HasSubstr("The Script is stopped."));
    EXPECT_TRUE(process.restored());
}

TEST_F(Terminal, CtrlCEndsAWaitForInputAndForAKey) {
    for (const char* wait : {"string s; Input(s);", "Inkey();", "Prompt(\"Number\", 1);"}) {
        TerminalProcess process(
            run("Print(\"waiting\\n\");" + std::string(wait) + "while (true) {}"));
        ASSERT_TRUE(process.await("waiting"));
        process.type(kCtrlC);
        EXPECT_EQ(1, process.finish()) << wait;
        EXPECT_THAT(process.screen(), HasSubstr("The Script is stopped.")) << wait;
        EXPECT_TRUE(process.restored()) << wait;
    }
}

TEST_F(Terminal, CtrlCStopsAScriptThatPrintsWithoutEnd) {
    TerminalProcess process(run("SetMaxRunTime(100000); while (true) Print(\"line\\n\");"));
    ASSERT_TRUE(process.await("line"));
    process.type(kCtrlC);
    EXPECT_EQ(1, process.finish());
    EXPECT_TRUE(process.restored());
}

TEST_F(Terminal, KeysComeOneByOneWithoutEcho) {
    TerminalProcess process(
        run("Print(\"keys\\n\"); for (int i = 0; i < 6; i++) Print(\"<\" + Inkey() + \">\\n\");"));
    ASSERT_TRUE(process.await("keys"));
    while (process.settings().c_lflag & ICANON) {
    }
    process.type("a");
    ASSERT_TRUE(process.await("<97>"));
    process.type("\xC3\xA9");
    ASSERT_TRUE(process.await("<233>"));
    process.type("\x1b[A");
    ASSERT_TRUE(process.await("<224>"));
    ASSERT_TRUE(process.await("<72>"));
    process.type("\r");
    ASSERT_TRUE(process.await("<13>"));
    process.type("\x1b");
    ASSERT_TRUE(process.await("<27>"));
    EXPECT_EQ(0, process.finish());
    EXPECT_THAT(process.screen(), Not(HasSubstr("a<97>")));
    EXPECT_TRUE(process.restored());
}

TEST_F(Terminal, ItsSettingsComeBackHoweverTheProgramEnds) {
    const struct {
        int signal;
        int times;
        int ending;
    } cases[] = {{SIGTERM, 1, 1},        {SIGHUP, 1, 1},         {SIGQUIT, 1, -SIGQUIT},
                 {SIGSEGV, 1, -SIGSEGV}, {SIGABRT, 1, -SIGABRT}, {SIGINT, 1, 1}};
    for (const auto& each : cases) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        if (each.signal == SIGSEGV) continue;  // the sanitizer's own
#endif
        TerminalProcess process(
            run("Print(\"\"); SetTextColor(4, 1); Print(\"key\\n\"); Inkey(); while (true) {}"));
        ASSERT_TRUE(process.await("key"));
        while (process.settings().c_lflag & ICANON) {
        }
        process.send(each.signal);
        EXPECT_EQ(each.ending, process.finish()) << each.signal;
        EXPECT_TRUE(process.restored()) << each.signal;
        EXPECT_THAT(process.screen(), HasSubstr("\x1b[0m")) << each.signal;
    }
}

TEST_F(Terminal, StoppedWithCtrlZItGivesTheTerminalBackAndGoesOn) {
    TerminalProcess process(run("Print(\"key\\n\"); Print(\"<\" + Inkey() + \">\\n\");"));
    ASSERT_TRUE(process.await("key"));
    while (process.settings().c_lflag & ICANON) {
    }
    process.send(SIGTSTP);
    for (int i = 0; i < 1000 && !process.restored(); ++i) ::usleep(1000);
    EXPECT_TRUE(process.restored());
    process.send(SIGCONT);
    while (process.settings().c_lflag & ICANON) {
    }
    process.type("x");
    ASSERT_TRUE(process.await("<120>"));
    EXPECT_EQ(0, process.finish());
}

TEST_F(Terminal, ColoursAreThoseOfTheConsoleAndEndWithTheRun) {
    TerminalProcess process(
        run("Print(\"a\"); SetTextColor(4, 1); Print(\"b\"); SetTextBold(true, false);"
            "Print(\"c\"); ResetText(); Print(\"d\"); Clear(); GoToXY(3, 1); SetTextColor(2, 0);"
            "Print(\"e\\n\");"));
    EXPECT_EQ(0, process.finish());
    EXPECT_EQ("a\x1b[31;44mb\x1b[91;44mc\x1b[0md\x1b[2J\x1b[H\x1b[2;4H\x1b[32;49me\r\n\x1b[0m",
              process.screen());
}

TEST_F(Terminal, ScriptTextCannotSteerItUnlessAllowed) {
    const std::string body = "Print(\"\\x1b]0;title\\x07 caf\\xE9 \\x9B\");";
    TerminalProcess tame(run(body));
    EXPECT_EQ(0, tame.finish());
    EXPECT_EQ("^[]0;title\a café ›", tame.screen());
    TerminalProcess wild(run(body, {"--allow-escapes"}));
    EXPECT_EQ(0, wild.finish());
    EXPECT_EQ("\x1b]0;title\a caf\xE9 \x9B", wild.screen());
}

TEST_F(Terminal, InputIsEchoedByTheTerminalAndReadAsBytes) {
    TerminalProcess process(
        run("Print(\"Name: \"); string s; Input(s); int n; Input(n);"
            "Print(s + \" has \" + s.length() + \", \" + n);"));
    ASSERT_TRUE(process.await("Name: "));
    process.type("caf\xC3\xA9 12\r");
    ASSERT_TRUE(process.await("café has 4, 12"));
    EXPECT_EQ(0, process.finish());
}

TEST_F(Terminal, QuestionsAreAskedAfterWhatWasPrinted) {
    TerminalProcess process(
        run("int n; Print(\"Number: \"); Input(n); Print(\"got \" + n + \"\\n\");"
            "if (Question(\"Go on?\")) Print(\"on with \" + Prompt(\"Holes\", 12) + \"\\n\");"));
    ASSERT_TRUE(process.await("Number: "));
    process.type("5 rest of the line\r");
    ASSERT_TRUE(process.await("got 5"));
    ASSERT_TRUE(process.await("Question: Go on?"));
    ASSERT_TRUE(process.await("[Yes/No; Return: Yes] "));
    process.type("what\r");
    ASSERT_TRUE(process.await("[Yes/No; Return: Yes] "));
    process.type("y\r");
    ASSERT_TRUE(process.await("Holes [12]: "));
    process.type("many\r");
    ASSERT_TRUE(process.await("Please enter an integer."));
    process.type("7\r");
    ASSERT_TRUE(process.await("on with 7"));
    EXPECT_EQ(0, process.finish());
}

TEST_F(Terminal, TheEndOfInputClosesAQuestion) {
    TerminalProcess process(run("Print(Question(\"Go on?\") ? \"yes\" : \"closed\");"));
    ASSERT_TRUE(process.await("Return: Yes] "));
    process.type("\x04");
    ASSERT_TRUE(process.await("closed"));
    EXPECT_EQ(0, process.finish());
}

TEST_F(Terminal, WithOutputPipedQuestionsAreStillAsked) {
    TerminalProcess process(
        run("Print(\"piped\"); if (Question(\"Go on?\")) Prompt(\"Holes\", 1);"), true);
    ASSERT_TRUE(process.await("Question: Go on?"));
    process.type("y\r");
    ASSERT_TRUE(process.await("Holes [1]: "));
    process.type("\r");
    EXPECT_EQ(0, process.finish());
    EXPECT_THAT(process.screen(), Not(HasSubstr("piped")));
}

TEST_F(Terminal, ProgressIsALineThatLeavesNothingBehind) {
    TerminalProcess process(
        run("Print(\"first\\n\"); Progress(\"Holes\", \"1 of 2\"); uint t = GetSystemTime();"
            "while (GetSystemTime() - t < 200) {} Print(\"second\\n\");"
            "t = GetSystemTime(); while (GetSystemTime() - t < 100) {}"));
    ASSERT_TRUE(process.await("first\r\n"));
    ASSERT_TRUE(process.await("Holes: 1 of 2"));
    ASSERT_TRUE(process.await("\r\x1b[Ksecond\r\n"));
    ASSERT_TRUE(process.await("Holes: 1 of 2"));
    ASSERT_TRUE(process.await("\r\x1b[K"));
    EXPECT_EQ(0, process.finish());
}

}  // namespace
}  // namespace korvant::test
