// What the program needs of its process before anything else.
#pragma once

namespace korvant_app {

/// Standard streams that are closed are opened on nothing, so that no file of a script takes their
/// place, and a reader that goes away or a limit on the size of files ends a write and not the
/// program.
void setUpProcess();

/// What is written to standard output from now on arrives byte for byte.
void writeBytesAsTheyAre();

}  // namespace korvant_app
