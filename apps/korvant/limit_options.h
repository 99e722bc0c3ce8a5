// The switches that bound what a script may take.
#pragma once

#include <CLI/CLI.hpp>

#include "host/engine/limits.h"

namespace korvant_app {

/// Switches for building a script's text.
void addBuildLimitOptions(CLI::App& command, korvant::Limits& limits);
/// Switches for running it.
void addRunLimitOptions(CLI::App& command, korvant::Limits& limits);

}  // namespace korvant_app
