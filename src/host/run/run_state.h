// The state that every run of a script shares.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "host/engine/engine_compat.h"

namespace korvant {

class InputFile;
class OutputFile;
class CThreadedProgressText;

/// Written by the script's thread, read by the progress thread: bounded atomic characters, each
/// write followed by a terminator, so that a reader sees a terminated text at any moment.
struct ProgressBuffer {
    static constexpr int kSize = 100;  ///< terminator included
    std::atomic<char> characters[kSize] = {};
};

/// One record for all runs; not per context. Times are milliseconds of Clock::tick(). What the
/// watch thread reads too is atomic; everything else belongs to the script's thread.
struct RunState {
    RunState();
    ~RunState();

    asIScriptContext* currentContext = nullptr;  ///< not counted; null when it was destroyed
    std::uint32_t maxRunTime = 10000;            ///< allowed time without user interaction
    std::atomic<std::uint32_t> deadline{0};      ///< tick after which the run is aborted
    std::atomic<bool> interacting{false};        ///< a built-in waits for the user
    std::int32_t stepMode = 0;                   ///< 0 run, 1 step over, 2 step into
    std::int32_t lastStoppedLine = 0;            ///< 1-based; 0 none
    std::atomic<bool> stopRequest{false};        ///< set by interrupt handlers, lock-free
    std::uint32_t boxesShown = 0;                ///< message boxes and prompts of this run
    std::unique_ptr<InputFile> inputFile;
    std::unique_ptr<OutputFile> outputFile;
    std::shared_ptr<CThreadedProgressText> progress;
    ProgressBuffer progressCaption;
    ProgressBuffer progressText;
    bool inputEnded = false;    ///< the end of the console's input was met and reported
    bool consoleReady = false;  ///< lazy set-up done in this configuration
};

}  // namespace korvant
