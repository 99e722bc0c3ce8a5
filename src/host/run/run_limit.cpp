#include "host/run/run_limit.h"

#include <algorithm>

namespace korvant {

namespace {

/// What is left of a ceiling that was passed; 0 stands for no ceiling.
constexpr std::uint64_t kUsedUp = 1;

}  // namespace

void RunLimit::begin(std::uint64_t ceilingMs) {
    state_.maxRunTime = kDefaultMax;
    ceilingLeft_ = ceilingMs;
    ceilingEnd_ = 0;
    restart();
}

void RunLimit::setMax(std::int32_t milliseconds) {
    state_.maxRunTime = static_cast<std::uint32_t>(milliseconds);
    restart();
}

void RunLimit::restart() {
    state_.deadline = clock_->tick() + state_.maxRunTime;
    watchdogEnd_ = clock_->monotonic() + state_.maxRunTime;
}

void RunLimit::beginExecution() {
    executionBegan_ = clock_->monotonic();
    // A ceiling beyond the end of the clock is none; one that is used up has passed already.
    const std::uint64_t end = executionBegan_ + (ceilingLeft_ == kUsedUp ? 0 : ceilingLeft_);
    ceilingEnd_ = ceilingLeft_ != 0 && end >= executionBegan_ ? end : 0;
}

void RunLimit::endExecution() {
    if (ceilingLeft_ == 0) return;
    const std::uint64_t spent = clock_->monotonic() - executionBegan_;
    ceilingLeft_ = spent < ceilingLeft_ ? ceilingLeft_ - spent : kUsedUp;
    ceilingEnd_ = 0;
}

void RunLimit::stand() {
    stoodAt_ = clock_->monotonic();
    stoodTick_ = clock_->tick();
    standing_ = true;
}

void RunLimit::goOn() {
    const std::uint64_t stood = clock_->monotonic() - stoodAt_;
    state_.deadline += clock_->tick() - stoodTick_;
    watchdogEnd_ += stood;
    executionBegan_ += stood;
    if (ceilingEnd_ != 0) ceilingEnd_ += stood;
    standing_ = false;
}

bool RunLimit::ceilingReached(std::uint64_t now) const {
    const std::uint64_t end = ceilingEnd_;
    return end != 0 && now >= end;
}

// Deliberate: both are compared as signed 32-bit numbers, which may end a run early when the tick
// wraps; hosts were measured against that rule. The 64-bit watchdog makes sure that the wrap never
// lets a run go on for ever.
bool RunLimit::deadlinePassed() const {
    return static_cast<std::int32_t>(state_.deadline.load()) <
           static_cast<std::int32_t>(clock_->tick());
}

bool RunLimit::expired() const {
    if (standing_) return false;
    const std::uint64_t now = clock_->monotonic();
    if (ceilingReached(now)) return true;
    return !state_.interacting && (deadlinePassed() || now > watchdogEnd_);
}

std::uint32_t RunLimit::millisecondsLeft(std::uint32_t longest) const {
    if (expired()) return 0;
    const std::uint64_t now = clock_->monotonic();
    std::uint64_t left = longest;
    if (!state_.interacting) {
        left = std::min<std::uint64_t>(left, state_.deadline - clock_->tick() + 1u);
        left = std::min(left, watchdogEnd_ + 1 > now ? watchdogEnd_ + 1 - now : 1);
    }
    if (const std::uint64_t end = ceilingEnd_; end > now) left = std::min(left, end - now);
    return static_cast<std::uint32_t>(std::max<std::uint64_t>(left, 1));
}

}  // namespace korvant
