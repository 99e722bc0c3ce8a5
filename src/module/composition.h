// Who the module's session talks to. One of two implementations is linked: the module's brings the
// windows; that of the program and of the core's tests leaves their own choice alone.
#pragma once

#include <string>

namespace korvant {

/// Called at each configuration of an engine, before anything is registered.
void composeServices();

/// A line that scripts read before what the user types. False: the console takes none.
bool feedScriptInput(const std::string& line);

}  // namespace korvant
