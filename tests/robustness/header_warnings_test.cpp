// What a compiler tells the author of a host before the host can do harm.
#include <gtest/gtest.h>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {

namespace {

/// With the warnings that hosts usually have.
ProcessResult compile(const std::string& source) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "host.cpp", source);
    ProcessOptions options;
    options.seconds = 60;
    return runProcess({"/usr/bin/env", "c++", "-std=c++20", "-Wall", "-Werror", "-fsyntax-only",
                       "-I", KORVANT_SOURCE_DIR "/include", folder.file("host.cpp")},
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

}  // namespace

}  // namespace korvant::test
