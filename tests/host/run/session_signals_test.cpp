// What a host has set up in its process: signals, and traps of the arithmetic.
#include <unistd.h>

#include <cfenv>
#include <csignal>

#include "support/script_fixture.h"

namespace korvant::test {
namespace {

using HostProcess = ScriptFixture;

TEST_F(HostProcess, AStopMayComeFromASignalHandler) {
    const auto before = std::signal(SIGALRM, [](int) { moduleSession().requestStop(); });
    alarm(1);
    EXPECT_FALSE(run("int main() { while (true) {} return 0; }"));
    std::signal(SIGALRM, before);
    EXPECT_EQ(session().lastFailure().kind, RunFailure::Kind::stopped);
}

TEST_F(HostProcess, TrapsOfTheHostAreItsOwn) {
    std::fenv_t before;
    std::fegetenv(&before);
    feenableexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW);
    EXPECT_EQ(value("log(0.0)"), "-inf");
    EXPECT_EQ(fegetexcept(), FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW);
    std::fesetenv(&before);
}

}  // namespace
}  // namespace korvant::test
