// The program as a host with windows: it loads the module and drives it through what it exports.
#pragma once

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

/// Builds and runs the text with windows for dialogs and console. `arguments`: lines that the
/// script reads first. Nothing when the module could not be loaded or set up; the reason was given
/// on standard error then.
std::optional<GuiOutcome> runInWindows(const std::string& text, const korvant::Limits& limits,
                                       const std::vector<std::string>& arguments);

}  // namespace korvant_app
