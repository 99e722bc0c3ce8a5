#include "host/run/run_watch.h"

#include <chrono>
#include <system_error>

namespace korvant {

bool RunWatch::start() {
    if (thread_.joinable()) return true;
    quit_ = false;
    try {
        thread_ = std::thread([this] { work(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void RunWatch::stop() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void RunWatch::arm(WatchTarget& target) {
    {
        const std::lock_guard lock(mutex_);
        target_ = &target;
        alerted_ = false;
    }
    wake_.notify_one();
}

void RunWatch::disarm() {
    const std::lock_guard lock(mutex_);
    target_ = nullptr;
}

void RunWatch::rearm() {
    {
        const std::lock_guard lock(mutex_);
        alerted_ = false;
    }
    wake_.notify_one();
}

void RunWatch::lookAgain() {
    wake_.notify_one();
}

void RunWatch::alertNow() {
    const std::lock_guard lock(mutex_);
    if (target_ == nullptr || alerted_) return;
    alerted_ = true;
    target_->alert();
}

void RunWatch::work() {
    std::unique_lock lock(mutex_);
    while (!quit_) step(lock);
}

void RunWatch::step(std::unique_lock<std::mutex>& lock) {
    if (target_ == nullptr) {
        wake_.wait(lock);
        return;
    }
    if (alerted_) {
        wake_.wait_for(lock, std::chrono::milliseconds(kInsist));
        if (target_ != nullptr && alerted_) target_->insist();
        return;
    }
    const std::uint32_t left = target_->millisecondsLeft(kSlice);
    alerted_ = left == 0;
    if (alerted_)
        target_->alert();
    else
        wake_.wait_for(lock, std::chrono::milliseconds(left));
}

}  // namespace korvant
