// Who the module's session talks to. One of two implementations is linked: the module's brings the
// windows; that of the program and of the core's tests leaves their own choice alone.
#pragma once

namespace korvant {

/// Called at each configuration of an engine, before anything is registered.
void composeServices();

}  // namespace korvant
