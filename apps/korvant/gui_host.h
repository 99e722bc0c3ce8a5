// The program as a host with windows: it loads the module and drives it through what it exports.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/engine/limits.h"
#include "host/run/build_messages.h"
#include "host/run/script_session.h"

namespace korvant_app {

/// What became of a script.
struct GuiOutcome {
    korvant::BuildMessages messages;
    korvant::RunFailure failure;
};

struct GuiRun {
    std::string text;
    std::string file;
    korvant::Limits limits;
    std::vector<std::string> arguments;  ///< lines that the script reads first
    std::optional<int> debugPort;        ///< waits there for a debugging client
    /// Told of each message of the build, before the script runs.
    std::function<void(const korvant::BuildMessages&)> onMessage;
};

/// Builds and runs a text with windows for dialogs and console; what it prints goes to standard
/// output as well. Nothing when the module could not
/// be loaded or set up; the reason was given on standard error then.
std::optional<GuiOutcome> runInWindows(const GuiRun& run);

}  // namespace korvant_app
