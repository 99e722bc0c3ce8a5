// The script that the editor shows to who opens it for the first time.
#pragma once

namespace korvant {

/// Builds without a message, needs no file and prints a table.
extern const char kTourScript[];

}  // namespace korvant
