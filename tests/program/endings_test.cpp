// Scripts and surroundings that misbehave: each ends with a word about it, and nothing is lost.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Endings : public testing::Test {
  protected:
    ProcessResult start(const std::string& text, ProcessOptions options = {},
                        std::vector<std::string> switches = {}) {
        writeFile(folder_.file("main.as"), text);
        options.folder = folder_.path().string();
        switches.insert(switches.begin(), "run");
        switches.push_back("main.as");
        return runKorvant(switches, options);
    }
    static std::string endless(const std::string& body) {
        return "int main() { SetMaxRunTime(400); while (true) { " + body + " } return 0; }";
    }
    TemporaryFolder folder_;
};

TEST_F(Endings, EndlessPrintingEndsWithTheLimitWhereverItGoes) {
    ProcessOptions closed, full, ignored, null;
    closed.outputClosed = true;
    full.outputFile = "/dev/full";
    ignored.outputIgnored = true;
    null.outputFile = "/dev/null";
    const struct {
        const ProcessOptions& options;
        const char* reason;
    } cases[] = {{closed, "Probably it timed out.\n"},
                 {full, "korvant: could not write standard output: No space left on device\n"},
                 {ignored, "korvant: could not write standard output: Operation canceled\n"},
                 {null, "Probably it timed out.\n"}};
    for (const auto& each : cases) {
        const ProcessResult result = start(endless("Print(\"endless\\n\");"), each.options);
        EXPECT_EQ(1, result.exitCode) << each.reason;
        EXPECT_THAT(result.errors, HasSubstr("Probably it timed out."));
        EXPECT_THAT(result.errors, HasSubstr(each.reason));
        EXPECT_THAT(result.errors, Not(HasSubstr("Broken pipe")));
        EXPECT_LT(result.milliseconds, 10'000);
    }
}

TEST_F(Endings, AFailedWriteIsToldEvenWhenTheScriptFinishes) {
    for (const char* body : {"Print(\"x\");", "OpenOutputFile(\"/dev/full\"); Print(\"x\");"}) {
        ProcessOptions options;
        options.outputFile = "/dev/full";
        const ProcessResult result =
            start("int main() { " + std::string(body) + " return 0; }", options);
        EXPECT_EQ(1, result.exitCode) << body;
        EXPECT_THAT(result.errors, HasSubstr("No space left on device\n"));
    }
}

/// Under the limits of a shell.
TEST_F(Endings, SmallSurroundingsAreToldOf) {
    ProcessOptions options;
    options.folder = folder_.path().string();
    std::string longOne = "int main() { int s = 0;\n";
    for (int i = 0; i < 3000; ++i) longOne += "s += 7 * (s % 7 + 1); if (s > 1000) s = s % 10;\n";
    writeFile(folder_.file("long.as"), longOne + "array<int> a(1000000); return 0; }");
    writeFile(folder_.file("file.as"),
              "int main() { OpenOutputFile(\"out\"); string s = \"0123\";"
              " for (int i = 0; i < 9; i++) s += s; while (GetSystemTime()"
              " != 0) { Print(s); if (i++ > 1000) return 0; } return 0; }"
              " int i = 0;");
    const auto under = [&](const std::string& limit, const std::string& file) {
        return runProcess(
            {"/bin/sh", "-c", "ulimit " + limit + "; exec " + korvantProgram() + " run " + file},
            options);
    };
#ifdef __SANITIZE_THREAD__
    constexpr int kMost = 0;  // its own tables are larger
#else
    constexpr int kMost = 80'000;
#endif
    for (int kilobytes = 20'000; kilobytes <= kMost; kilobytes += 3000) {
        const ProcessResult result = under("-v " + std::to_string(kilobytes), "long.as");
        EXPECT_EQ(0, result.signal) << kilobytes;
        EXPECT_TRUE(result.exitCode == 0 || !result.errors.empty()) << kilobytes;
    }
    const ProcessResult shallow = under("-s 64", "long.as");
    EXPECT_EQ(0, shallow.signal);
    EXPECT_TRUE(shallow.exitCode == 0 || !shallow.errors.empty());
    const ProcessResult large = under("-f 100", "file.as");
    EXPECT_EQ(1, large.exitCode) << large.signal;
    EXPECT_THAT(large.errors, HasSubstr("could not write out: File too large"));
}

TEST_F(Endings, ClosedStandardStreamsAreNotTakenForFiles) {
    writeFile(folder_.file("main.as"),
              "int main() { OpenOutputFile(\"file.txt\"); Print(\"file\"); CloseOutputFile();"
              " string s; Input(s); Print(\"console\"); return 0; }");
    ProcessOptions options;
    options.folder = folder_.path().string();
    const ProcessResult result =
        runProcess({"/bin/sh", "-c", "exec " + korvantProgram() + " run main.as <&- >&-"}, options);
    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.errors, HasSubstr("could not write standard output: Bad file descriptor"));
    EXPECT_EQ("file", readFile(folder_.file("file.txt")));
}

TEST_F(Endings, HelpThatCannotBeWrittenIsAFailure) {
    ProcessOptions options;
    options.outputFile = "/dev/full";
    const ProcessResult result = runKorvant({"--help"}, options);
    EXPECT_EQ(1, result.exitCode);
    EXPECT_THAT(result.errors, HasSubstr("No space left on device"));
}

TEST_F(Endings, NothingPrintedIsLostForAReaderThatReads) {
    const ProcessResult result = start(
        "int main() { for (int i = 0; i < 200000; i++) Print(\"line \" + i + \"\\n\"); return 0; "
        "}");
    EXPECT_EQ(0, result.exitCode) << result.errors;
    EXPECT_EQ(2288890u, result.output.size());
    EXPECT_THAT(result.output, HasSubstr("\nline 199999\n"));
    const ProcessResult aborted = start(
        "int main() { SetMaxRunTime(300); for (int i = 0; i < 1000; i++) Print(\"x\"); while "
        "(true) {}"
        " return 0; }");
    EXPECT_EQ(std::string(1000, 'x'), aborted.output);
}

TEST_F(Endings, ScriptsThatNeverEndAreEnded) {
    const struct {
        const char* name;
        const char* text;
        int code;
        const char* says;
    } cases[] = {
        {"main", "int main() { SetMaxRunTime(200); while (true) {} return 0; }", 1, "timed out"},
        {"try and catch",
         "int main() { SetMaxRunTime(200); while (true) { try { string s; s[1] = 1; } catch {} } "
         "return 0; }",
         1, "timed out"},
        {"destructor",
         "class C { ~C() { while (true) {} } } int main() { SetMaxRunTime(200); C c; return 0; }",
         1, "timed out"},
        {"global initialiser",
         "int f() { SetMaxRunTime(200); while (true) {} return 1; } int x = f();"
         " int main() { return x; }",
         2, "timed out"},
        {"recursion", "int f(int n) { return f(n + 1) + 1; } int main() { return f(0); }", 1,
         "Stack overflow"},
        {"allocation", "int main() { string s = \"x\"; while (true) s += s; return 0; }", 1,
         "Out of memory"},
        {"input at its end",
         "int main() { SetMaxRunTime(200); string s; Input(s); while (s == \"\") {} return 0; }", 1,
         "timed out"},
    };
    for (const auto& each : cases) {
        const ProcessResult result = start(each.text);
        EXPECT_EQ(each.code, result.exitCode) << each.name << result.errors;
        EXPECT_THAT(result.errors, HasSubstr(each.says)) << each.name;
        EXPECT_LT(result.milliseconds, 10'000) << each.name;
    }
}

TEST_F(Endings, UnreasonableTextsAreRefused) {
    const struct {
        const char* name;
        std::string text;
    } cases[] = {
        {"10 MB", "int main() { return 0; }\n" + std::string(10 << 20, ' ')},
        {"nesting", "int main() { return " + std::string(100'000, '(') + "1;}"},
        {"zero bytes", std::string(1000, '\0')},
        {"noise",
         [] {
             std::string noise;
             for (unsigned i = 0, state = 1; i < 100'000; ++i) {
                 state = state * 1664525u + 1013904223u;
                 noise.push_back(static_cast<char>(state >> 24));
             }
             return noise;
         }()},
    };
    for (const auto& each : cases) {
        const ProcessResult result = start(each.text);
        EXPECT_EQ(2, result.exitCode) << each.name << result.errors.substr(0, 500);
        EXPECT_THAT(result.errors, HasSubstr("main.as")) << each.name;
        EXPECT_LT(result.milliseconds, 10'000) << each.name;
    }
}

TEST_F(Endings, AScriptFromAPipeOrWithZeroBytesInItsTextsRuns) {
    using namespace std::string_literals;
    const ProcessResult result = start("int main() { Print(\"a\0b\"); return 0; }"s);
    EXPECT_EQ(0, result.exitCode) << result.errors;
    EXPECT_EQ("a\0b"s, result.output);
    ProcessOptions options;
    options.input = "int main() { Print(\"piped\"); return 0; }";
    EXPECT_EQ("piped", runKorvant({"run", "/dev/stdin"}, options).output);
}

TEST_F(Endings, APipeThatNobodyOpensEndsWithTheLimit) {
    ASSERT_EQ(0, ::mkfifo(folder_.file("pipe").c_str(), 0600));
    for (const char* body : {"OpenInputFile(\"pipe\"); string s; SetMaxRunTime(300); Input(s);",
                             "SetMaxRunTime(300); OpenOutputFile(\"pipe\"); Print(\"x\");"}) {
        const ProcessResult result =
            start("int main() { " + std::string(body) + " while (true) {} return 0; }", {},
                  {"--ceiling", "2000"});
        EXPECT_EQ(1, result.exitCode) << body;
        EXPECT_LT(result.milliseconds, 10'000) << body;
    }
}

}  // namespace
}  // namespace korvant::test
