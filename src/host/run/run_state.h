// The state that line callback, limit and session share. Nobody outside this folder sees it.
#pragma once

#include <atomic>
#include <cstdint>

#include "host/engine/engine_compat.h"
#include "host/run/run_outcome.h"

namespace korvant {

/// One record for all runs; not per context. Times are milliseconds of Clock::tick(). What the
/// watch thread reads too is atomic; everything else belongs to the script's thread.
struct RunState {
    asIScriptContext* currentContext = nullptr;  ///< not counted; null when it was destroyed
    std::uint32_t maxRunTime = 10000;            ///< allowed time without user interaction
    std::atomic<std::uint32_t> deadline{0};      ///< tick after which the run is aborted
    std::atomic<bool> interacting{false};        ///< a built-in waits for the user
    StepMode stepMode = StepMode::run;
    std::int32_t lastStoppedLine = 0;      ///< 1-based; 0 none, negative: a policy passed it over
    std::atomic<bool> stopRequest{false};  ///< set by interrupt handlers, lock-free
};

}  // namespace korvant
