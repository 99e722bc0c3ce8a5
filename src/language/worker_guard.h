// The guard of builds for hosts whose engine some texts kill.
#pragma once

#include "host/run/build_guard.h"

namespace korvant {

/// Builds each text in a child process first. Texts for the hardened engine pass at once. Where no
/// child can be started, that is said once on standard error and all texts pass. Lives as long as
/// the process.
BuildGuard& workerGuard();

}  // namespace korvant
