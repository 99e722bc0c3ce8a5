// korvant run --coverage=FILE --profile=FILE: what a run does, counted and sampled.
#pragma once

#include "debug/run_observer.h"
#include "source_report.h"

namespace korvant_app {

/// Builds and runs the script as RunApplication does, beside a debugging client where there is one,
/// and writes what was seen, however the run ended; a summary goes to standard error, and so does
/// why a file cannot be written. False for that.
bool runObserved(asIScriptEngine* engine, asIScriptContext* context, const Source& source,
                 const korvant::RunObserver::Files& wanted);

}  // namespace korvant_app
