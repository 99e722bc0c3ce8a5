// Programs that are started and left alone.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace korvant {

/// The file of the program that this process runs; empty when it cannot be told.
std::string programPath();

/// Starts `command` (the program's path and its arguments) with `variables` beside this process's
/// environment, in `folder` (empty: the current one), without a shell. It inherits standard output
/// and error, reads nothing, and is not waited for. Empty, or why it could not be started.
std::string startProgram(const std::vector<std::string>& command,
                         const std::vector<std::pair<std::string, std::string>>& variables,
                         const std::string& folder);

}  // namespace korvant
