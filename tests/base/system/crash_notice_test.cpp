// What a process that crashes while the editor is open says, and that it ends as it would have.
#include "base/system/crash_notice.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

#include "editor/document/recovery_store.h"
#include "support/editor_fixture.h"

namespace korvant::test {
namespace {

using ::testing::HasSubstr;

struct Crash {
    int signal = 0;
    std::string said;
};

/// Runs `act` in a process of its own, in which no fault is handled by anybody.
Crash crashOf(const std::function<void()>& act) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) return {};
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        ::dup2(ends[1], STDERR_FILENO);
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) ::signal(fault, SIG_DFL);
        const stack_t none{nullptr, SS_DISABLE, 0};
        ::sigaltstack(&none, nullptr);
        act();
        ::_exit(0);
    }
    ::close(ends[1]);
    Crash crash;
    char bytes[512];
    for (ssize_t count; (count = ::read(ends[0], bytes, sizeof bytes)) > 0;)
        crash.said.append(bytes, static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    crash.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return crash;
}

class CrashedEditor : public EditorFixture {
  protected:
    void typeAndRun() {
        open("int main() { Information(\"\"); return 0; }");
        window->editor.type("/* */");
        editor().command(command_id::kExecute);
    }
};

TEST_F(CrashedEditor, KeepsWhatWasTypedBeforeAScriptTookTheProcessWithIt) {
    const Crash crash = crashOf([&] {
        const CrashNotice notice;
        frontend.meanwhile = [] { ::raise(SIGSEGV); };
        typeAndRun();
    });
    EXPECT_EQ(crash.signal, SIGSEGV);
    ASSERT_EQ(kept("recovery").size(), 2u);  // the copy and its lock
    EXPECT_THAT(crash.said, HasSubstr(dataFolder() + "/recovery/" + kept("recovery")[0]));
    RecoveryStore store(systemFiles(), dataFolder() + "/recovery");
    const std::vector<FoundRecord> found = store.find();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_THAT(found[0].record.text, HasSubstr("/* */"));
}

/// Deeper than any stack; the pointer keeps the compiler from seeing it and from making a loop.
int exhaustStack(int depth);
int (*volatile deeper)(int) = exhaustStack;
int exhaustStack(int depth) {
    volatile char filler[4096];
    filler[0] = static_cast<char>(depth);
    return deeper(depth + 1) + filler[0];
}

TEST(CrashNotice, SpeaksOnAnExhaustedStackAndForEveryFault) {
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) {
        const Crash crash = crashOf([fault] {
            const CrashNotice notice;
            setCrashNoticePath("/the/copy");
            ::raise(fault);
        });
        EXPECT_EQ(crash.signal, fault);
        EXPECT_THAT(crash.said, HasSubstr("is in /the/copy\n"));
    }
    const Crash crash = crashOf([] {
        const CrashNotice notice;
        setCrashNoticePath("/the/copy");
        exhaustStack(0);
    });
    EXPECT_EQ(crash.signal, SIGSEGV);
    EXPECT_THAT(crash.said, HasSubstr("/the/copy"));
}

TEST(CrashNotice, LeavesTheHostsHandlerAloneAndGoesWithoutATrace) {
    EXPECT_EQ(crashOf([] {
                  ::signal(SIGSEGV, [](int) { ::_exit(0); });
                  const CrashNotice notice;
                  setCrashNoticePath("/the/copy");
                  ::raise(SIGSEGV);
              }).said,
              "");
    const Crash closed = crashOf([] {
        { const CrashNotice notice; }
        setCrashNoticePath("/the/copy");
        ::raise(SIGSEGV);
    });
    EXPECT_EQ(closed.signal, SIGSEGV);
    EXPECT_EQ(closed.said, "");
    const Crash nothingToSay = crashOf([] {
        const CrashNotice notice;
        ::raise(SIGABRT);
    });
    EXPECT_EQ(nothingToSay.signal, SIGABRT);
    EXPECT_EQ(nothingToSay.said, "");
}

}  // namespace
}  // namespace korvant::test
