// Runs in a copy of the process, which has the script's thread and no other.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "support/script_fixture.h"

namespace korvant::test {
namespace {

constexpr char kEndless[] = "int main() { SetMaxRunTime(200); while (true) {} return 0; }";

/// What the child says with its exit code; -1 when it had to be ended.
int exitCodeOf(pid_t child) {
    for (int waited = 0; waited < 5000; waited += 10) {
        int status = 0;
        if (::waitpid(child, &status, WNOHANG) == child)
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    return -1;
}

class Forked : public ScriptFixture {};

TEST_F(Forked, ItsRunsAreBounded) {
    EXPECT_FALSE(run(kEndless));  // the watch thread is there
    const pid_t child = ::fork();
    if (child == 0) {
        const bool ended = !run(kEndless) &&
                           session().lastFailure().kind == RunFailure::Kind::timeOut &&
                           run("int main() { return 0; }");
        ::_exit(ended ? 7 : 1);
    }
    EXPECT_EQ(exitCodeOf(child), 7);
    EXPECT_FALSE(run(kEndless));
}

pid_t forked = -1;

TEST_F(Forked, ARunThatGoesOnInItIsBounded) {
    engine()->RegisterGlobalFunction("void split()", asFUNCTION(+[] { forked = ::fork(); }),
                                     asCALL_CDECL);
    const bool finished =
        run("int main() { SetMaxRunTime(200); split(); while (true) {} return 0; }");
    if (forked == 0)
        ::_exit(!finished && session().lastFailure().kind == RunFailure::Kind::timeOut ? 7 : 1);
    EXPECT_EQ(exitCodeOf(forked), 7);
}

}  // namespace
}  // namespace korvant::test
