#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/desktop.h"
#include "support/temporary_folder.h"

extern char** environ;

namespace korvant::test {

Variable::Variable(const std::string& name, const std::string& value) : name_(name) {
    const char* const before = std::getenv(name.c_str());
    existed_ = before != nullptr;
    if (before) before_ = before;
    ::setenv(name.c_str(), value.c_str(), 1);
}

Variable::~Variable() {
    if (existed_)
        ::setenv(name_.c_str(), before_.c_str(), 1);
    else
        ::unsetenv(name_.c_str());
}

const char* userDataVariable() {
    return "XDG_DATA_HOME";
}

const char* temporaryVariable() {
    return "TMPDIR";
}

struct PageProgram::State {
    Variable path;
};

PageProgram::PageProgram(const std::filesystem::path& folder) : folder_(folder) {
    const auto program = folder / "xdg-open";
    writeFile(program, "#!/bin/sh\nprintf '%s' \"$1\" > '" + (folder / "opened").string() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const char* const path = std::getenv("PATH");
    state_ = new State{{"PATH", folder.string() + ":" + (path ? path : "/bin:/usr/bin")}};
}

PageProgram::~PageProgram() {
    delete state_;
}

std::string PageProgram::opened() const {
    return readFile(folder_ / "opened");
}

OtherProcess::OtherProcess(const std::string& name) {
    // This process may be one part of a suite; the other runs the test that it was started for.
    const Variable parts("GTEST_TOTAL_SHARDS", "1"), part("GTEST_SHARD_INDEX", "0");
    std::string program = "/proc/self/exe", also = "--gtest_also_run_disabled_tests",
                filter = "--gtest_filter=" + name;
    char* arguments[] = {program.data(), also.data(), filter.data(), nullptr};
    pid_t process = 0;
    ::posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ);
    process_ = process;
}

void OtherProcess::kill() {
    if (process_ <= 0) return;
    const auto process = static_cast<pid_t>(process_);
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    process_ = 0;
}

void OtherProcess::tellToGo(bool terminalCloses) {
    if (process_ <= 0) return;
    const auto process = static_cast<pid_t>(process_);
    ::kill(process, terminalCloses ? SIGHUP : SIGTERM);
    ::waitpid(process, nullptr, 0);
    process_ = 0;
}

}  // namespace korvant::test
