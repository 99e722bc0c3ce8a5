// What a run is to whoever started the program.
#pragma once

#include "host/run/run_outcome.h"

namespace korvant_app {

/// The exit code for a run that ended like this.
int exitCodeOf(const korvant::RunFailure& failure);

}  // namespace korvant_app
