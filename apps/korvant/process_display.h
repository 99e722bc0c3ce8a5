// Whether the program can show windows.
#pragma once

namespace korvant_app {

/// A display is named and answers.
bool hasDisplay();

}  // namespace korvant_app
