// Whom the module's session talks to: windows, and the plain streams where there is no display.
#pragma once

#include <string>

#include "host/run/script_session.h"

namespace korvant {

/// Made with the first call.
SessionServices windowServices();

/// `line` is what scripts read before what the user types.
void feedWindowInput(const std::string& line);

}  // namespace korvant
