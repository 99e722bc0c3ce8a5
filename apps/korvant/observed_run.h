// korvant run --coverage=FILE --profile=FILE: what a run does, counted and sampled.
#pragma once

#include <string>

#include "host/engine/engine_compat.h"
#include "source_report.h"

namespace korvant_app {

/// Where it is written to; empty: not wanted.
struct Observation {
    std::string coverage;
    std::string profile;
};

/// Builds and runs the script as RunApplication does, and writes what was seen, however the run
/// ended; a summary goes to standard error, and so does why a file cannot be written.
void runObserved(asIScriptEngine* engine, asIScriptContext* context, const Source& source,
                 const Observation& wanted);

}  // namespace korvant_app
