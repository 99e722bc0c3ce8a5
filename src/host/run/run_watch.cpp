#include "host/run/run_watch.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace korvant {

namespace {

/// Stops and new deadlines are seen within this time.
constexpr std::uint32_t kSlice = 20;
constexpr std::uint32_t kInsist = 10;

}  // namespace

/// The thread and what it shares with the script's.
struct RunWatch::Thread {
    Thread() : thread([this] { work(); }) {}
    ~Thread() {
        {
            const std::lock_guard lock(mutex);
            quit = true;
        }
        wake.notify_one();
        thread.join();
    }
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    void work() {
        std::unique_lock lock(mutex);
        while (!quit) step(lock);
    }
    void step(std::unique_lock<std::mutex>& lock);

    std::mutex mutex;
    std::condition_variable wake;
    WatchTarget* target = nullptr;
    bool alerted = false;
    bool quit = false;
    std::thread thread;  ///< begins when everything above is there
};

void RunWatch::Delete::operator()(Thread* thread) const {
    delete thread;
}

bool RunWatch::start() {
    try {
        if (!thread_) thread_.reset(new Thread);
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void RunWatch::stop() {
    thread_.reset();
}

void RunWatch::arm(WatchTarget& target) {
    {
        const std::lock_guard lock(thread_->mutex);
        thread_->target = &target;
        thread_->alerted = false;
    }
    thread_->wake.notify_one();
}

void RunWatch::disarm() {
    const std::lock_guard lock(thread_->mutex);
    thread_->target = nullptr;
}

void RunWatch::rearm() {
    {
        const std::lock_guard lock(thread_->mutex);
        thread_->alerted = false;
    }
    thread_->wake.notify_one();
}

void RunWatch::lookAgain() {
    thread_->wake.notify_one();
}

void RunWatch::alertNow() {
    const std::lock_guard lock(thread_->mutex);
    if (thread_->target == nullptr || thread_->alerted) return;
    thread_->alerted = true;
    thread_->target->alert();
}

void RunWatch::Thread::step(std::unique_lock<std::mutex>& lock) {
    if (target == nullptr) {
        wake.wait(lock);
        return;
    }
    if (alerted) {
        wake.wait_for(lock, std::chrono::milliseconds(kInsist));
        if (target != nullptr && alerted) target->insist();
        return;
    }
    const std::uint32_t left = target->millisecondsLeft(kSlice);
    alerted = left == 0;
    if (alerted)
        target->alert();
    else
        wake.wait_for(lock, std::chrono::milliseconds(left));
}

}  // namespace korvant
