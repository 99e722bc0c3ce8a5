// The worker thread and its three events.
#include "korvantide/cthread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Runs what the test gives it, with the protected operations within reach.
class Worker : public CThread {
  public:
    explicit Worker(std::function<std::uint32_t(Worker&)> work) : work_(std::move(work)) {}
    ~Worker() { Stop(1); }
    using CThread::IsExit;
    using CThread::lastWaitResult;
    using CThread::threadId;
    using CThread::Wait;
    using CThread::WaitOnHandle;

  protected:
    std::uint32_t Main() override { return work_(*this); }

  private:
    std::function<std::uint32_t(Worker&)> work_;
};

template <class Condition>
bool eventually(Condition condition) {
    for (int i = 0; i < 2000 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return condition();
}

TEST(CThread, MainByItselfWaitsForTheExit) {
    CThread thread;
    EXPECT_EQ(0, thread.IsAlive());
    thread.Stop(1);  // nothing runs: nothing happens
    EXPECT_NE(0, thread.Start());
    EXPECT_NE(0, thread.IsAlive());
    thread.Signal();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_NE(0, thread.IsAlive());
    thread.Stop(1);
    EXPECT_EQ(0, thread.IsAlive());
}

/// A thread that is started again at once must not be taken for the one that just ended.
TEST(CThread, StopReturnsWhenMainHasReturnedHoweverOftenItIsStarted) {
    std::atomic<bool> working{false};
    Worker worker([&](Worker& self) {
        working = true;
        while (self.Wait(CThread::kNoTimeout)) {
        }
        for (int i = 0; i < 50; ++i) std::this_thread::yield();
        working = false;
        return 0;
    });
    int early = 0, unknown = 0;
    for (int i = 0; i < 1500; ++i) {
        ASSERT_NE(0, worker.Start());
        if (worker.threadId() == 0) ++unknown;
        worker.Stop(1);
        if (working) ++early;
    }
    EXPECT_EQ(0, early);
    EXPECT_EQ(0, unknown);
}

TEST(CThread, StartRunsOneThreadAtATimeAndAgainLater) {
    std::atomic<int> runs{0};
    Worker worker([&](Worker& self) {
        ++runs;
        while (self.Wait(CThread::kNoTimeout)) {
        }
        return 0u;
    });
    EXPECT_NE(0, worker.Start());
    EXPECT_NE(0, worker.Start());
    worker.Stop(1);
    EXPECT_EQ(1, runs);
    EXPECT_NE(0, worker.Start());
    worker.Stop(1);
    EXPECT_EQ(2, runs);
}

TEST(CThread, AnExitThatNobodyReadDoesNotEndTheNextThread) {
    std::atomic<bool> waited{false};
    std::atomic<bool> first{true};
    Worker worker([&](Worker& self) {
        if (first) return 0u;
        waited = self.Wait(50) != 0;
        return 0u;
    });
    worker.Start();
    worker.Stop(1);
    ASSERT_TRUE(eventually([&] { return !worker.IsAlive(); }));
    first = false;
    worker.Start();
    ASSERT_TRUE(eventually([&] { return !worker.IsAlive(); }));
    EXPECT_TRUE(waited);
}

TEST(CThread, WaitTellsSignalTimeAndExitApart) {
    Worker worker([](Worker&) { return 0u; });
    worker.Signal();
    EXPECT_NE(0, worker.Wait(CThread::kNoTimeout));
    EXPECT_EQ(0u, worker.lastWaitResult());
    EXPECT_NE(0, worker.Wait(0));  // the signal was taken by the first wait
    EXPECT_EQ(258u, worker.lastWaitResult());
    EXPECT_EQ(0, worker.WaitOnHandle(nullptr, 0));
    EXPECT_EQ(0xFFFFFFFFu, worker.lastWaitResult());
    CThreadEvent event;
    event.set();
    EXPECT_NE(0, worker.WaitOnHandle(event.handle(), CThread::kNoTimeout));
    EXPECT_EQ(0u, worker.lastWaitResult());
    EXPECT_NE(0, worker.WaitOnHandle(event.handle(), 1));
    EXPECT_EQ(258u, worker.lastWaitResult());
}

TEST(CThread, AskingForTheExitConsumesTheEventButNotTheRequest) {
    std::atomic<int> first{-1}, second{-1}, wait{-1};
    std::atomic<bool> go{false};
    Worker worker([&](Worker& self) {
        while (!go) std::this_thread::yield();
        first = self.IsExit();
        second = self.IsExit();
        wait = self.Wait(CThread::kNoTimeout);  // would never return if the request were gone
        return 0u;
    });
    worker.Start();
    worker.Stop(0);
    go = true;
    worker.Stop(1);
    EXPECT_NE(0, first);
    EXPECT_EQ(0, second);
    EXPECT_EQ(0, wait);
    EXPECT_EQ(1u, worker.lastWaitResult());
}

TEST(CThread, StoppingItselfFromInsideDoesNotWaitForEver) {
    Worker worker([](Worker& self) {
        self.Stop(1);
        return self.Wait(CThread::kNoTimeout) ? 1u : 0u;
    });
    worker.Start();
    EXPECT_TRUE(eventually([&] { return !worker.IsAlive(); }));
}

TEST(CThread, SeveralMayWaitForTheEnd) {
    Worker worker([](Worker& self) {
        while (self.Wait(CThread::kNoTimeout)) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return 0u;
    });
    worker.Start();
    std::thread other([&] { worker.Stop(1); });
    worker.Stop(1);
    other.join();
    EXPECT_EQ(0, worker.IsAlive());
    EXPECT_NE(0u, worker.threadId());
}

TEST(CThread, StartsAndEndsManyTimesWithoutARace) {
    for (int i = 0; i < 300; ++i) {
        Worker worker([](Worker& self) { return self.IsExit() ? 1u : 0u; });
        worker.Start();
        if (i % 3 == 0) worker.Start();
        if (i % 2 == 0) worker.Stop(0);
    }
}

}  // namespace
