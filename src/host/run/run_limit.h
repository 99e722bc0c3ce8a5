// When a run must end.
#pragma once

#include <atomic>
#include <cstdint>

#include "base/system/clock.h"
#include "host/run/run_state.h"

namespace korvant {

/// The time limit of a run, as the run state has it, with two nets below it. Changed on the
/// script's thread; the questions may be asked by the watch thread too.
class RunLimit {
  public:
    static constexpr std::uint32_t kDefaultMax = 10000;

    explicit RunLimit(RunState& state) : state_(state) {}
    /// Must not change during a run.
    void setClock(Clock& clock) { clock_ = &clock; }

    /// The default maximum, counted from now, and a ceiling of execution time (0: none).
    void begin(std::uint64_t ceilingMs);
    void setMax(std::int32_t milliseconds);
    /// Deadline := now + maximum.
    void restart();

    /// Executions between these count against the ceiling, waits for the user included.
    void beginExecution();
    void endExecution();

    /// Between these the clock stands still for the run: nothing expires.
    void stand();
    void goOn();

    bool expired() const;
    bool hasCeiling() const noexcept { return ceilingEnd_ != 0; }
    /// How long expired() stays false if nothing changes, at most `longest`; 0 when it is true.
    std::uint32_t millisecondsLeft(std::uint32_t longest) const;

  private:
    bool ceilingReached(std::uint64_t now) const;
    bool deadlinePassed() const;

    RunState& state_;
    Clock* clock_ = &systemClock();
    std::uint64_t ceilingLeft_ = 0;
    std::uint64_t executionBegan_ = 0;
    std::uint64_t stoodAt_ = 0;
    std::uint32_t stoodTick_ = 0;
    std::atomic<bool> standing_{false};
    std::atomic<std::uint64_t> ceilingEnd_{0};
    std::atomic<std::uint64_t> watchdogEnd_{0};
};

}  // namespace korvant
