// The program as users meet it: exit codes, messages, arguments.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Program : public testing::Test {
  protected:
    /// Writes a script and gives its name within the folder.
    std::string script(const std::string& name, const std::string& text) {
        writeFile(folder_.file(name), text);
        return name;
    }
    std::string mainOf(const std::string& body) {
        return script("main.as", "int main() {\n" + body + "\nreturn 0;\n}\n");
    }
    ProcessResult start(std::vector<std::string> arguments, ProcessOptions options = {}) {
        options.folder = folder_.path().string();
        return runKorvant(std::move(arguments), options);
    }
    TemporaryFolder folder_;
};

TEST_F(Program, ExitCodesSayHowItEnded) {
    const struct {
        const char* text;
        int code;
    } cases[] = {
        {"int main() { return 0; }", 0},
        {"int main() { return 7; }", 0},
        {"int main() { string s; s[0] = 1; return 0; }", 1},
        {"int main() { SetMaxRunTime(100); while (true) {} return 0; }", 1},
        {"int main() { return x; }", 2},
        {"", 2},
        {"void main() {}", 3},
    };
    for (const auto& each : cases) {
        const ProcessResult result = start({"run", script("a.as", each.text)});
        EXPECT_EQ(each.code, result.exitCode) << each.text << "\n" << result.errors;
        EXPECT_EQ(each.code != 0, !result.errors.empty()) << each.text;
    }
}

TEST_F(Program, WrongUsageAndUnreadableFilesHaveTheirOwnCodes) {
    const std::vector<std::vector<std::string>> wrong = {
        {"run"},
        {"check"},
        {"dance"},
        {"run", "--call-depth", "many", "a.as"},
        {"run", "--no-such-switch", "a.as"},
        {"run", "--file-access", "/no/such/folder", "a.as"}};
    for (const auto& arguments : wrong) EXPECT_EQ(64, start(arguments).exitCode) << arguments[0];
    EXPECT_EQ(start({"dance"}).errors,
              "korvant: there is no command \"dance\"\nRun with --help for more information.\n");
    EXPECT_EQ(start({"run", "--ceiling", "-5", "a.as"}).errors,
              "--ceiling: must be a whole number from 0\nRun with --help for more information.\n");
    const std::string script = mainOf("");
    EXPECT_THAT(start({script}).errors, HasSubstr("; to run a script: korvant run " + script));
    for (const char* name : {"missing.as", "."}) {
        const ProcessResult result = start({"run", name});
        EXPECT_EQ(66, result.exitCode);
        EXPECT_THAT(result.errors, HasSubstr("korvant: cannot read " + std::string(name) + ": "));
        EXPECT_EQ(66, start({"check", name}).exitCode);
        EXPECT_EQ(66, start({"debug", script, "-x", name}).exitCode);
    }
}

TEST_F(Program, ArgumentsOfADebuggedScriptAreForItsInputAlone) {
    const std::string name = mainOf("string a, b; Input(a);\nInput(b);\nPrint(b + a + \"!\\n\");");
    ProcessOptions options;
    options.input = "break 3\nrun\nprint a\ncontinue\nrun\ncontinue\nquit\n";
    const ProcessResult result = start({"debug", name, "Bob", "Ann"}, options);
    EXPECT_EQ(0, result.exitCode) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("string = \"Bob\""));
    const auto first = result.output.find("AnnBob!");
    ASSERT_NE(first, std::string::npos) << result.output;
    EXPECT_NE(result.output.find("AnnBob!", first + 1), std::string::npos) << "once more";
    EXPECT_THAT(result.output, Not(HasSubstr("There is no command")));
}

/// What was left of it repeated the last command: the script started over.
TEST_F(Program, TheRestOfALineThatADebuggedScriptReadIsNoCommand) {
    const std::string name = mainOf("string a; Input(a);\nPrint(a + \"!\\n\");");
    ProcessOptions options;
    options.input = "break 3\nrun\nword \nprint a\ncontinue\nquit\n";
    const ProcessResult result = start({"debug", name}, options);
    EXPECT_THAT(result.output, HasSubstr("string = \"word\""));
    const auto first = result.output.find("word!");
    ASSERT_NE(first, std::string::npos) << result.output;
    EXPECT_EQ(result.output.find("word!", first + 1), std::string::npos) << result.output;
}

TEST_F(Program, HelpAndVersionAreThere) {
    EXPECT_THAT(start({"--version"}).output, HasSubstr("korvant "));
    EXPECT_EQ(0, start({"--help"}).exitCode);
    const ProcessResult help = start({"run", "--help"});
    EXPECT_EQ(0, help.exitCode);
    for (const char* part : {"FILE", "ARGS", "--call-depth", "--file-access", "--ceiling"})
        EXPECT_THAT(help.output, HasSubstr(part));
}

TEST_F(Program, ABuildErrorShowsThePlaceAndTheLine) {
    script("e.as", "int main() {\n\tint a = 1;\n\treturn a + é + \"" + std::string(400, 'x') +
                       "\";\n}\nint f() {\n\tPrint(\"ä\"); undefined();\n\treturn 0;\n}\n");
    const ProcessResult result = start({"run", "e.as"});
    EXPECT_EQ(2, result.exitCode);
    EXPECT_EQ("", result.output);
    EXPECT_THAT(result.errors, HasSubstr("e.as:3:13: error: "));
    EXPECT_THAT(result.errors, HasSubstr("...\n    \t           ^\n"));
    const ProcessResult second = start(
        {"check", script("f.as", "int main() {\n\tPrint(\"ä\"); undefined();\n\treturn 0;\n}\n")});
    EXPECT_EQ(2, second.exitCode);
    EXPECT_EQ(
        "f.as:1:1: note: Compiling int main()\n"
        "f.as:2:15: error: No matching symbol 'undefined'\n"
        "    \tPrint(\"ä\"); undefined();\n"
        "    \t            ^\n",
        second.errors);
}

TEST_F(Program, CheckBuildsEveryFileAndShowsWarnings) {
    script("good.as", "int main() { Print(\"never\"); return 0; }");
    script("warn.as", "int main() { uint u = 1; int i = -1; if (u < i) {} return 0; }");
    script("bad.as", "int main() { return");
    EXPECT_EQ("", start({"check", "good.as"}).output);
    const ProcessResult warned = start({"check", "good.as", "warn.as"});
    EXPECT_EQ(0, warned.exitCode);
    EXPECT_THAT(warned.errors, HasSubstr("warn.as:1:44: warning: "));
    EXPECT_EQ(2, start({"check", "bad.as", "good.as", "missing.as"}).exitCode);
    EXPECT_EQ(66, start({"check", "missing.as", "bad.as"}).exitCode);
}

TEST_F(Program, ARunTimeFailureShowsMessageFileAndLine) {
    const ProcessResult result =
        start({"run", mainOf("Print(\"before\\n\");\nstring s;\ns[9] = 1;")});
    EXPECT_EQ(1, result.exitCode);
    EXPECT_EQ("before\n", result.output);
    EXPECT_EQ(
        "The script ended with an exception.\n\nline: 4\ndesc: Out of range\nmain.as:4\n"
        "    s[9] = 1;\n",
        result.errors);
    const ProcessResult late = start({"run", mainOf("SetMaxRunTime(50);\nwhile (true) {}")});
    EXPECT_THAT(late.errors, HasSubstr("Probably it timed out.\nmain.as:3\n    while (true) {}\n"));
    EXPECT_THAT(start({"run", script("n.as", "void f() {}")}).errors,
                HasSubstr("The function 'int main()' was not found."));
    const std::string calls = script("c.as",
                                     "void f(int n) {\n int[] a;\n if (n == 0) a[1] = 0;\n"
                                     " else f(n - 1);\n}\nint main() {\n f(1);\n return 0;\n}\n");
    EXPECT_THAT(start({"run", calls}).errors,
                HasSubstr("called from c.as:4 in void f(int)\ncalled from c.as:7 in int main()\n"));
}

TEST_F(Program, ArgumentsAreReadBeforeStandardInput) {
    ProcessOptions options;
    options.input = "piped\n";
    const std::string name = mainOf(
        "int n; string a, b, c; Input(n); Input(a); Input(b); Input(c);"
        "Print(n + \" \" + a + \" \" + b + \" \" + c);");
    EXPECT_EQ("-5 two words piped", start({"run", name, "--", "-5", "two words"}, options).output);
}

TEST_F(Program, LimitsAreSwitches) {
    writeFile(folder_.file("data"), "7");
    const struct {
        std::vector<std::string> arguments;
        const char* body;
        int code;
        const char* says;
    } cases[] = {
        {{}, "OpenInputFile(\"data\"); int i; Input(i); Print(\"\" + i);", 0, "7"},
        {{"--file-access", "none"}, "Print(OpenInputFile(\"data\") ? \"yes\" : \"no\");", 0, "no"},
        {{"--file-access", "."},
         "Print(OpenInputFile(\"/etc/passwd\") ? \"yes\" : \"no\");",
         0,
         "no"},
        {{"--file-access", "read-only"},
         "Print(OpenOutputFile(\"n\") ? \"yes\" : \"no\");",
         0,
         "no"},
        {{"--string-limit", "1"}, "string s; s.resize(2000000);", 1, "Out of memory"},
        {{"--memory-limit", "4"},
         "string[] a(9); for (uint i = 0; i < 9; i++) a[i].resize(1000000);",
         1,
         "Out of memory"},
        {{"--ceiling", "200"}, "SetMaxRunTime(100000); while (true) {}", 1, "aborted"},
        {{"--end-of-input-ends-run"}, "string s; while (true) Input(s);", 1, "End of input"},
        {{"--nesting-limit", "10"}, "int a = ((((((((((((1))))))))))));", 2, "error"},
        {{"--name-limit", "4"}, "int tooLong = 1;", 2, "error"},
    };
    for (const auto& each : cases) {
        std::vector<std::string> arguments = {"run"};
        arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
        arguments.push_back(mainOf(each.body));
        const ProcessResult result = start(arguments);
        EXPECT_EQ(each.code, result.exitCode) << each.body << result.errors;
        EXPECT_THAT(result.output + result.errors, HasSubstr(each.says)) << each.body;
    }
    const std::string deep = script("deep.as",
                                    "int f(int n) { return n == 0 ? 0 : f(n - 1); }"
                                    "int main() { f(500); return 0; }");
    EXPECT_EQ(0, start({"run", deep}).exitCode);
    const ProcessResult shallow = start({"run", "--call-depth", "100", deep});
    EXPECT_EQ(1, shallow.exitCode);
    EXPECT_THAT(shallow.errors, HasSubstr("Stack overflow"));
}

TEST_F(Program, WarningsComeBeforeTheRunUnlessItIsQuiet) {
    const std::string name =
        script("w.as", "int main() { uint u = 1; int i = -1; if (u < i) {} return 0; }");
    const ProcessResult loud = start({"run", name});
    EXPECT_EQ(0, loud.exitCode);
    EXPECT_THAT(loud.errors, HasSubstr("w.as:1:44: warning: "));
    for (const char* quiet : {"-q", "--quiet"})
        EXPECT_EQ("", start({"run", quiet, name}).errors) << quiet;
}

TEST_F(Program, AScriptMayComeFromStandardInput) {
    ProcessOptions options;
    options.input = "int main() { string s; Input(s); Print(\"got \" + s); return 0; }";
    EXPECT_EQ("got word", start({"run", "-", "word"}, options).output);
    options.input = "int main() { return x; }";
    EXPECT_THAT(start({"run", "-"}, options).errors, HasSubstr("-:1:21: error: "));
}

TEST_F(Program, AMainWithoutANumberIsTold) {
    const char kHint[] = "write 'int main()' instead of 'void main()'";
    EXPECT_THAT(start({"run", script("v.as", "void main() {}")}).errors, HasSubstr(kHint));
    EXPECT_THAT(start({"run", script("n.as", "void f() {}")}).errors, Not(HasSubstr(kHint)));
}

TEST_F(Program, TheCaretStandsRightUnderWideCharacters) {
    const ProcessResult result = start(
        {"check", script("c.as", "int main() { Print(\"漢字e\u0301\"); nope(); return 0; }")});
    EXPECT_THAT(result.errors, HasSubstr("\n" + std::string(4 + 29, ' ') + "^\n"));
}

TEST_F(Program, CoverageAndProfileReplaceTheFilesOfBefore) {
    const std::string name = mainOf("Print(\"x\");");
    for (const char* file : {"c", "p"}) writeFile(folder_.file(file), std::string(9000, '?'));
    const ProcessResult result = start({"run", "--coverage=c", "--profile=p", name});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_THAT(result.errors, Not(HasSubstr("could not write")));
    for (const char* file : {"c", "p"})
        EXPECT_THAT(readFile(folder_.file(file)), Not(HasSubstr("?"))) << file;
    const ProcessResult lost = start({"run", "--coverage=no/such/folder/c", name});
    EXPECT_EQ(lost.exitCode, 1) << "whoever waits for the file is not told that all is well";
    EXPECT_THAT(lost.errors, HasSubstr("could not write no/such/folder/c"));
}

TEST_F(Program, APipeWhoseReaderHasGoneEndsQuietlyAndAFullDiskDoesNot) {
    const std::string name =
        mainOf("for (int i = 0; i < 200000; i++) Print(\"line \" + i + \"\\n\");");
    ProcessOptions gone;
    gone.outputClosed = true;
    ProcessOptions full;
    full.outputFile = "/dev/full";
    const std::vector<std::string> kCommands[] = {{"run", name},
                                                  {"api"},
                                                  {"api", "--predefined"},
                                                  {"eval", "1+1"},
                                                  {"check", "none.as", name},
                                                  {"--help"}};
    for (const auto& command : kCommands) {
        EXPECT_THAT(start(command, gone).errors, Not(HasSubstr("standard output")))
            << command.front();
        if (command.front() == "check") continue;
        const ProcessResult told = start(command, full);
        EXPECT_NE(told.exitCode, 0) << command.front();
        EXPECT_THAT(told.errors, HasSubstr("standard output: No space left on device"))
            << command.front();
    }
    gone.input = full.input = "{\"expression\": \"1+1\"}\n";
    EXPECT_EQ(start({"eval", "--jsonl"}, gone).errors, "");
    EXPECT_NE(start({"eval", "--jsonl"}, full).errors, "");
}

TEST_F(Program, WhatCannotBeWrittenIsToldWithItsReason) {
    const std::string name = mainOf("");
    const auto scramble = [&](const std::string& target) {
        const ProcessResult result = start({"crypt", "--key", "5", name, "-o", target});
        EXPECT_EQ(result.exitCode, 1) << target;
        return result.errors;
    };
    EXPECT_EQ(scramble("no/such/folder"),
              "korvant: cannot write no/such/folder: No such file or directory\n");
    EXPECT_EQ(scramble("."), "korvant: cannot write .: Is a directory\n");
    writeFile(folder_.file("file"), "");
    EXPECT_EQ(scramble("file/x"), "korvant: cannot write file/x: Not a directory\n");
}

/// A display that is named and does not answer, as after a lost connection.
TEST_F(Program, WithoutAnAnsweringDisplayEverythingIsSaidOnce) {
    ProcessOptions options;
    options.environment = {"DISPLAY=:9999", "WAYLAND_DISPLAY=none"};
    const std::string name =
        mainOf("Print(\"before\\n\"); Information(\"Seen?\"); Print(\"after\\n\");");
    const ProcessResult result = start({"run", "--gui", name}, options);
    if (result.errors == "korvant: libkorvantide.so is not beside the program\n")
        GTEST_SKIP() << "a build without windows";
    EXPECT_EQ(result.output, "before\nafter\n");
    EXPECT_EQ(result.errors,
              "korvantide: Information: Seen?\n"
              "korvantide: no terminal to ask on: dialogs are answered as if they were closed\n");
    EXPECT_EQ(start({"edit", name}, options).errors,
              "korvant: there is no display to open the editor on\n");
}

TEST_F(Program, DialogsWithoutATerminalAnswerAsIfClosed) {
    const ProcessResult result = start(
        {"run",
         mainOf("Print(Question(\"Go on?\") ? \"yes\" : \"no\"); int i = Prompt(\"Holes\", 12);"
                "Information(\"done\"); Progress(\"half\"); Print(\" \" + i);")});
    EXPECT_EQ(0, result.exitCode);
    EXPECT_EQ("no 12", result.output);
    const ProcessResult details =
        start({"run", mainOf("Object o; o.messageBox(\"Import\", \"3 lines failed\", \"BU_OK\","
                             " \"IC_WARNING\", \"line 5: too deep\");")});
    EXPECT_THAT(details.errors, HasSubstr("3 lines failed\nline 5: too deep\n"));
    EXPECT_EQ(
        "korvant: Question: Go on?\n"
        "korvant: no terminal to ask on: dialogs are answered as if they were closed\n"
        "korvant: Prompt: Holes\nkorvant: Information: done\n",
        result.errors);
}

}  // namespace
}  // namespace korvant::test
