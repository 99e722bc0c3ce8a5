// The memory of script engines, for programs that own all engines of their process.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/system/clock.h"

namespace korvant {

/// Makes engines take their memory through a counter, so that what scripts hold is bounded and a
/// compile that takes too long or too much can be ended. To be called before the first engine is
/// made, by a program that has no engine but its own.
void ownEngineMemory();

/// From now on engines may hold `bytes` more; asked for by engineMemoryExceeded(), which any thread
/// may call. Nothing is refused, because the engine does not survive that: the run must be ended.
void boundEngineMemory(std::size_t bytes) noexcept;
bool engineMemoryExceeded() noexcept;

/// Thrown through the compiler by the counter. The engine cannot compile again, and cannot be
/// destroyed, after that.
struct CompileEnded {
    const char* reason;
};

/// While it lives, the counter ends what the thread compiles: when `clock` has passed `end`
/// (monotonic milliseconds), or the engines hold `bytes` more than at the beginning. Does nothing
/// where the memory is not owned.
class CompileGuard {
  public:
    CompileGuard(Clock& clock, std::uint64_t end, std::size_t bytes);
    ~CompileGuard();
    CompileGuard(const CompileGuard&) = delete;
    CompileGuard& operator=(const CompileGuard&) = delete;
};

}  // namespace korvant
