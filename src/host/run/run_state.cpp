#include "host/run/run_state.h"

#include "host/library/progress.h"
#include "host/library/script_files.h"

namespace korvant {

RunState::RunState() = default;
RunState::~RunState() = default;

}  // namespace korvant
