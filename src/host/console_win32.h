// The system console of Windows as the script console.
#pragma once

#include <memory>

#include "host/console.h"

namespace korvant {

/// The process's console through its own handles: the process's standard streams are not
/// touched. If the process has a console already (a console program), that one is used and is
/// neither closed nor hidden.
std::unique_ptr<Console> makeSystemConsole();

}  // namespace korvant
