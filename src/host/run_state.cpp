#include "host/run_state.h"

#include "host/progress.h"
#include "host/script_files.h"

namespace korvant {

RunState::RunState() = default;
RunState::~RunState() = default;

}  // namespace korvant
