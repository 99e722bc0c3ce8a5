// Running a function while the script stands still.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/system/clock.h"
#include "host/engine/engine_compat.h"

namespace korvant {

struct SideRunLimits {
    std::uint32_t milliseconds = 0;  ///< 0: none
    std::size_t bytes = 0;           ///< more than what is held now; 0: as the run
    bool quiet = false;              ///< nobody is asked anything
};

/// When a side run must end. One at a time.
class SideRun {
  public:
    SideRun(Clock& clock, const SideRunLimits& limits);

    bool quiet() const noexcept { return limits_.quiet; }
    /// From any thread.
    void cancel() noexcept { cancelled_ = true; }
    /// Looks at the clock.
    bool over() noexcept;
    /// Why it was ended; empty while it was not.
    std::string reason() const;

    int install(asIScriptContext& context);

  private:
    static void entry(asIScriptContext* context, void* self) noexcept;

    enum class Ending { none, cancelled, timedOut, outOfMemory };
    Clock& clock_;
    SideRunLimits limits_;
    std::uint64_t end_ = 0;  ///< monotonic milliseconds
    std::atomic<bool> cancelled_{false};
    Ending ending_ = Ending::none;
    unsigned statements_ = 0;
};

/// What became of one.
struct SideRunResult {
    int result = 0;     ///< the engine's
    std::string error;  ///< the exception's text, or why it was ended; empty after success
};

}  // namespace korvant
