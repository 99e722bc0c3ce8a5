// What scripts print, read and colour, over a fake console and real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "host/library/console_functions.h"
#include "host/library/run_files.h"
#include "host/library/script_console.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

class ConsoleFunctions : public test::ScriptInBothConventions {
  protected:
    /// A text as a literal of the script language.
    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }
    std::string file(const std::string& name) { return quoted(folder_.file(name)); }
    std::string content(const std::string& name) { return test::readText(folder_.file(name)); }
    void put(const std::string& name, const std::string& text) {
        test::writeFile(folder_.file(name), text);
    }
    bool runMain(const std::string& body) { return run("int main() { " + body + " return 0; }"); }
    Limits limitsOf(FileAccess access) {
        Limits limits;
        limits.fileAccess = access;
        limits.fileFolder = folder_.path().string();
        return limits;
    }
    test::TemporaryFolder folder_;
};

INSTANTIATE_TEST_SUITE_P(Conventions, ConsoleFunctions, testing::Bool(), test::conventionName);

TEST_P(ConsoleFunctions, PrintWritesEveryByteAndOnePercentSignForTwo) {
    const struct {
        const char* literal;
        std::string printed;
    } cases[] = {
        {"50%% done", "50% done"},
        {"%", "%"},
        {"%%%", "%%"},
        {"%%%%", "%%"},
        {"%s%n%999999999d", "%s%n%999999999d"},
        {"", ""},
        {"%%a%%", "%a%"},
        {"a\\0b\\n", "a\0b\n"s},
        {"\\xE9\\x1b", "\xE9\x1b"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(each.printed, output("Print(" + quoted(each.literal) + ");")) << each.literal;
        EXPECT_TRUE(
            runMain("OpenOutputFile(" + file("out") + "); Print(" + quoted(each.literal) + ");"));
        EXPECT_EQ(each.printed, content("out")) << each.literal;
    }
}

TEST_P(ConsoleFunctions, TheConsoleIsSetUpOnceAndShownForEachRun) {
    output("Print(\"a\"); Print(\"b\");");
    EXPECT_THAT(console.calls, ElementsAre("allocate", "setUp", "title Output", "show", "hide"));
    console.calls.clear();
    output("Print(\"c\");");
    EXPECT_THAT(console.calls, ElementsAre("clear", "show", "hide"));
    EXPECT_EQ(80, scriptConsole().record().info.columns);
    EXPECT_TRUE(scriptConsole().record().attached);
}

TEST_P(ConsoleFunctions, NothingIsShownForAScriptThatOnlyWritesFiles) {
    EXPECT_TRUE(
        runMain("OpenOutputFile(" + file("out") +
                "); Print(\"x\"); Clear(); SetTextColor(1, 2); ResetText(); GoToXY(1, 1);"));
    EXPECT_THAT(console.calls, ElementsAre());
    EXPECT_EQ("x", content("out"));
    EXPECT_EQ("", console.output);
}

TEST_P(ConsoleFunctions, AConsoleThatCannotBeMadeLeavesPlainOutput) {
    console.allocationError = 31;
    EXPECT_EQ("text", output("Print(\"text\");"));
    EXPECT_EQ(31u, scriptConsole().record().lastError);
    EXPECT_FALSE(scriptConsole().allocated());
    console.allocationError = 0;
}

TEST_P(ConsoleFunctions, ReleasingGivesTheConsoleBackOrKeepsIt) {
    output("Print(\"x\");");
    console.releaseError = 5;
    EXPECT_FALSE(scriptConsole().release());
    EXPECT_TRUE(scriptConsole().allocated());
    EXPECT_EQ(5u, scriptConsole().record().lastError);
    console.releaseError = 0;
    EXPECT_TRUE(scriptConsole().release());
    EXPECT_FALSE(scriptConsole().allocated());
    EXPECT_EQ("again", output("Print(\"again\");"));
}

TEST_P(ConsoleFunctions, ColoursFollowTheConsolesBits) {
    const struct {
        const char* calls;
        int attributes;
    } cases[] = {
        {"SetTextColor(4, 1);", 0x14},
        {"SetTextColor(4, 1); SetTextBold(true, false);", 0x1C},
        {"SetTextColor(4, 1); SetTextBold(true, true); SetTextBold(false, true);", 0x94},
        {"SetTextColor(12, 9);", 0x9C},  // above 7 spills into the intensity
        {"SetTextColor(-1, 0);", 0x8F},  // every bit, but for the background
        {"SetTextColor(0, -2147483648);", 0x00},
        {"SetTextColor(2, 3); SetTextBold(true, true); ResetText();", 0x07},
    };
    for (const auto& each : cases) {
        output("Print(\"\"); ResetText(); "s + each.calls);
        EXPECT_EQ(each.attributes, console.attributes() & 0xFF) << each.calls;
    }
}

TEST_P(ConsoleFunctions, TheCursorMovesWithinSixteenBits) {
    console.calls.clear();
    output("Print(\"\"); GoToXY(3, 7); GoToXY(-1, 65536 + 5);");
    EXPECT_THAT(console.calls, testing::Contains("move 3 7"));
    EXPECT_THAT(console.calls, testing::Contains("move -1 5"));
}

TEST_P(ConsoleFunctions, InputReadsWordsAndNumbers) {
    console.input = "word 0x1F 010 2.5 -1e3 next";
    EXPECT_EQ("word|31|8|2.5|-1000|next",
              output("string s, t; int i, j; double d; float f; Input(s); Input(i); Input(j);"
                     "Input(d); Input(f); Input(t);"
                     "Print(s + \"|\" + i + \"|\" + j + \"|\" + d + \"|\" + f + \"|\" + t);"));
}

TEST_P(ConsoleFunctions, AFailedReadGivesADefinedValue) {
    console.input = "abc";
    EXPECT_EQ("0|0|0||",
              output("int i = 7; double d = 7; float f = 7; string s, t = \"old\";"
                     "Input(i); Input(d); Input(f); Input(s); Input(t);"
                     "Print(\"\" + i + \"|\" + d + \"|\" + f + \"|\" + (s == \"abc\" ? \"\" : s)"
                     " + \"|\" + t);"));
}

TEST_P(ConsoleFunctions, InkeyReadsKeysOfTheConsoleOnly) {
    put("in", "file");
    console.keys = {65, 224, 72};
    EXPECT_EQ("65 224 72 -1", output("OpenInputFile(" + file("in") +
                                     "); Print(\"\" + Inkey());"
                                     "for (int i = 0; i < 3; i++) Print(\" \" + Inkey());"));
}

TEST_P(ConsoleFunctions, FilesTakeTheConsolesPlaceUntilTheyAreClosed) {
    put("in", "1 2");
    console.input = "3";
    EXPECT_EQ("console 1 3 0",
              output("int a, b, c; OpenInputFile(" + file("in") +
                     "); Input(a); CloseInputFile();"
                     "Input(b); CloseInputFile(); Input(c);"
                     "OpenOutputFile(" +
                     file("out") +
                     "); Print(\"file\"); CloseOutputFile();"
                     "CloseOutputFile(); Print(\"console \" + a + \" \" + b + \" \" + c);"));
    EXPECT_EQ("file", content("out"));
}

TEST_P(ConsoleFunctions, OpeningClosesThePreviousFileEvenWhenItFails) {
    put("in", "1 2");
    console.input = "9";
    EXPECT_EQ("false9", output("int a; OpenInputFile(" + file("in") +
                               ");"
                               "Print(OpenInputFile(\"/no/such/file\") ? \"true\" : \"false\");"
                               "Input(a); Print(\"\" + a);"));
    EXPECT_EQ("lost?no", output("OpenOutputFile(" + file("out") +
                                "); Print(\"kept\");"
                                "OpenOutputFile(\"/no/such/file\"); Print(\"lost?no\");"));
    EXPECT_EQ("kept", content("out"));
}

TEST_P(ConsoleFunctions, AppendingKeepsWhatIsThere) {
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(runMain("ApendOutputFile(" + file("log") + "); Print(\"line\\n\");"));
    EXPECT_EQ("line\nline\n", content("log"));
}

TEST_P(ConsoleFunctions, NothingPrintedIsLostWhenTheRunIsAborted) {
    const std::string body = "for (int i = 0; i < 1000; i++) Print(\"line\\n\");"s;
    for (const char* ending : {"SetMaxRunTime(50); while (true) {}", "string s; s[0] = 1;"}) {
        EXPECT_FALSE(runMain("OpenOutputFile(" + file("out") + "); " + body + ending));
        EXPECT_EQ(5000u, content("out").size()) << ending;
    }
    EXPECT_EQ(runFiles().output(), nullptr);
}

TEST_P(ConsoleFunctions, AFailedWriteIsReportedOnceAndTheScriptGoesOn) {
    EXPECT_TRUE(
        runMain("OpenOutputFile(\"/dev/full\"); for (int i = 0; i < 100000; i++) "
                "Print(\"line\\n\"); CloseOutputFile(); OpenOutputFile(\"/dev/full\"); "
                "Print(\"x\");"));
    EXPECT_THAT(session().lastFailure().unwritten,
                ElementsAre("could not write /dev/full: No space left on device"));
    ASSERT_EQ(1u, frontend.boxes.size());
    EXPECT_TRUE(frontend.boxes[0].runReport);
    console.writeError = EPIPE;
    EXPECT_TRUE(runMain("for (int i = 0; i < 100; i++) Print(\"line\\n\");"));
    EXPECT_THAT(session().lastFailure().unwritten,
                ElementsAre("could not write standard output: Broken pipe"));
    console.writeError = 0;
    EXPECT_TRUE(runMain("Print(\"fine\");"));
    EXPECT_TRUE(session().lastFailure().unwritten.empty());
}

TEST_P(ConsoleFunctions, TheHostSaysWhichFilesAreOpened) {
    const std::string both = "Print(OpenInputFile(" + file("in") +
                             ") ? \"r\" : \"-\");"
                             "CloseInputFile(); bool w = OpenOutputFile(" +
                             file("out") + "); CloseOutputFile(); Print(w ? \"w\" : \"-\");";
    put("in", "x");
    const struct {
        FileAccess access;
        const char* opened;
    } cases[] = {{FileAccess::all, "rw"},
                 {FileAccess::readOnly, "r-"},
                 {FileAccess::oneFolder, "rw"},
                 {FileAccess::none, "--"}};
    for (const auto& each : cases) {
        useLimits(limitsOf(each.access));
        EXPECT_EQ(each.opened, output(both));
    }
    useLimits({});
}

TEST_P(ConsoleFunctions, TheEndOfInputEndsTheRunWhereTheHostWantsIt) {
    const std::string loop = "string s; while (true) { Input(s); if (s != \"\") Print(s); }";
    Limits limits;
    limits.endOfInputEndsRun = true;
    useLimits(limits);
    console.input = "a b";
    EXPECT_EQ("End of input", exceptionOf(loop));
    EXPECT_EQ("ab", console.output);
    // Caught again and again, it stops the script.
    EXPECT_FALSE(runMain("string s; while (true) { try { Input(s); } catch {} }"));
    EXPECT_EQ(RunFailure::Kind::stopped, session().lastFailure().kind);
    // The end of a file is one as well, of each file for itself.
    put("in", "1");
    const std::string past = "OpenInputFile(" + file("in") + "); Input(i); Input(i);";
    EXPECT_EQ("End of input", exceptionOf("int i; " + past));
    console.output.clear();
    EXPECT_EQ("End of input", exceptionOf("int i; try { " + past + " } catch {} " + past));
    EXPECT_FALSE(runMain("int i; try { " + past + " } catch {}" +
                         " while (true) { try { Input(i); } catch {} }"));
    EXPECT_EQ(RunFailure::Kind::stopped, session().lastFailure().kind);
    useLimits({});
}

TEST_P(ConsoleFunctions, WaitingForInputDoesNotCountAgainstTheRunTime) {
    /// A console whose input comes late.
    class Slow : public test::FakeConsole {
      public:
        int readChar(StopQuery shouldStop) override {
            for (int i = 0; i < 20; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
                if (shouldStop()) return kStopped;
            }
            return 'x';
        }
        int readKey(StopQuery shouldStop) override { return readChar(shouldStop); }
        bool takeWaited() override { return true; }
    } slow;
    scriptConsole().release();
    session().setServices({&slow, &frontend, nullptr, nullptr});
    EXPECT_TRUE(
        runMain("SetMaxRunTime(350); int i; Input(i); Inkey(); uint t = GetSystemTime();"
                "while (GetSystemTime() - t < 20) {}"));
    EXPECT_FALSE(session().interacting());
    scriptConsole().release();
    session().setServices({&console, &frontend, nullptr, nullptr});
}

TEST_P(ConsoleFunctions, AStopEndsAWaitForInput) {
    class Endless : public test::FakeConsole {
      public:
        int readChar(StopQuery shouldStop) override {
            interrupt();
            while (!shouldStop()) {
            }
            return kStopped;
        }
    } endless;
    scriptConsole().release();
    session().setServices({&endless, &frontend, nullptr, nullptr});
    EXPECT_FALSE(runMain("string s; Input(s); while (true) {}"));
    EXPECT_EQ(RunFailure::Kind::stopped, session().lastFailure().kind);
    scriptConsole().release();
    session().setServices({&console, &frontend, nullptr, nullptr});
}

}  // namespace
}  // namespace korvant
