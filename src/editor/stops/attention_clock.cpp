#include "editor/stops/attention_clock.h"

#include <chrono>

namespace korvant {

namespace {

constexpr std::chrono::milliseconds kEvery{50};

}  // namespace

AttentionClock::AttentionClock(DebugSession& session)
    : session_(session), thread_([this] { run(); }) {}

AttentionClock::~AttentionClock() {
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
    }
    over_.notify_one();
    thread_.join();
}

void AttentionClock::run() {
    std::unique_lock lock(mutex_);
    while (!over_.wait_for(lock, kEvery, [this] { return ended_; })) session_.requestAttention();
}

}  // namespace korvant
