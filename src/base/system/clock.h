// The time that runs are measured with.
#pragma once

#include <cstdint>

namespace korvant {

/// A millisecond tick that wraps after 49.7 days, and a 64-bit one that does not.
class Clock {
  public:
    virtual ~Clock() = default;
    /// Milliseconds since some start, modulo 2^32.
    virtual std::uint32_t tick() = 0;
    /// Milliseconds since some start; monotonic, never wraps.
    virtual std::uint64_t monotonic() = 0;
    virtual void sleep(std::uint32_t milliseconds) = 0;
};

/// The system's monotonic clock. Lives for the process.
Clock& systemClock();

}  // namespace korvant
