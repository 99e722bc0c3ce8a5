// What a worker thread says where the system has none to give.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <vector>

#include "korvantide/cthread.h"

namespace {

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(CThread, StartSaysWhenTheSystemHasNoThreadToGive) {
    const pid_t child = ::fork();
    if (child == 0) {
        // Room for a few stacks, so that one of many threads finds none.
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const rlim_t room = pages * 4096 + (64u << 20);
        const rlimit limit{room, room};
        ::setrlimit(RLIMIT_AS, &limit);
        std::vector<std::unique_ptr<CThread>> threads;
        for (int i = 0; i < 100; ++i) {
            threads.push_back(std::make_unique<CThread>());
            if (threads.back()->Start() == 0) ::_exit(threads.back()->IsAlive());
        }
        ::_exit(2);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(0, status);
}
#endif

}  // namespace
