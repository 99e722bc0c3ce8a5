// What a compiler tells the author of a host before the host can do harm.
#include <gtest/gtest.h>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {

namespace {

/// With the warnings that hosts usually have.
ProcessResult compile(const std::string& source, const char* standard = "-std=c++20") {
    const TemporaryFolder folder;
    writeFile(folder.path() / "host.cpp", source);
    ProcessOptions options;
    options.seconds = 60;
    return runProcess(
        {"/usr/bin/env", "c++", standard, "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-I",
         korvant::test::sourceFolder() + "/include", folder.file("host.cpp")},
        options);
}

const std::string kWorker =
    "#include <korvantide/cthread.h>\n"
    "class Worker : public CThread {};\n";

// The destructor of the base class would run alone, and leave the thread to a half-dead object.
TEST(HostsCompiler, WarnsOfDeletingAThreadThroughItsBase) {
    const ProcessResult wrong = compile(kWorker + "void end(CThread* thread) { delete thread; }\n");
    EXPECT_NE(wrong.exitCode, 0);
    EXPECT_NE(wrong.errors.find("non-virtual"), std::string::npos) << wrong.errors;
    const ProcessResult right = compile(kWorker + "Worker worker;\n");
    EXPECT_EQ(right.exitCode, 0) << right.errors;
}

TEST(HostsCompiler, TakesThePublicHeadersAsOlderCppAndAsC) {
    const ProcessResult cpp = compile(
        "#include <korvant/kor_stamp.h>\n"
        "#include <korvantide/cthread.h>\n"
        "#include <korvantide/host_interface.h>\n"
        "#include <korvantide/korvantide.h>\n"
        "#include <korvantide/script_array.h>\n"
        "#include <korvantide/script_object.h>\n"
        "bool fill(KorStamp& stamp, ScriptObject& object) {\n"
        "    return stamp.setProperty(\"s\", \"new\") && object.setProperty(\"s\", 1ull) &&\n"
        "           stamp.addProperty(\"d\", \"D\", 1.5, \"m\", true) &&\n"
        "           object.addProperty(\"u\", \"U\", 1u, \"m\", true);\n"
        "}\n",
        "-std=c++17");
    EXPECT_EQ(cpp.exitCode, 0) << cpp.errors;
    const TemporaryFolder folder;
    writeFile(
        folder.path() / "host.c",
        "#include <korvantide/host_interface.h>\n"
        "int limits(KorvantLimits* l) { return SetScriptLimits(l) + SetScriptCallbacks(0); }\n");
    ProcessOptions options;
    options.seconds = 60;
    const ProcessResult plain = runProcess(
        {"/usr/bin/env", "cc", "-std=c99", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
         "-fsyntax-only", "-I", korvant::test::sourceFolder() + "/include", folder.file("host.c")},
        options);
    EXPECT_EQ(plain.exitCode, 0) << plain.errors;
}

}  // namespace

}  // namespace korvant::test
