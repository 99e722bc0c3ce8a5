// The script console of a program with windows, as its system has it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/services/console.h"

namespace korvant {

struct WindowConsole {
    std::unique_ptr<Console> console;
    /// A line that scripts read before what is typed into the console.
    std::function<void(const std::string& line)> feed;
};

/// `streams` serve where there can be no such console; they outlive it. `shouldStop` ends a wait
/// for the output.
WindowConsole makeWindowConsole(Console& streams, StopQuery shouldStop);

}  // namespace korvant
