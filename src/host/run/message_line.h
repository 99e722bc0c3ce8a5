// A message of the compiler as the command line and debugging clients word it.
#pragma once

#include <string>

#include "host/run/build_messages.h"

namespace korvant {

/// "NAME:ROW:COLUMN: error: TEXT", or "warning", or "note"; without a line feed at the end.
std::string messageLine(const std::string& name, const BuildMessage& message);

}  // namespace korvant
