// What the program needs of its process before anything else.
#pragma once

namespace korvant_app {

/// Standard streams that are closed are opened on nothing, so that no file of a script takes their
/// place, and a reader that goes away ends a write and not the program.
void setUpProcess();

}  // namespace korvant_app
