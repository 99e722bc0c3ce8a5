// Whether the program can show windows.
#pragma once

namespace korvant_app {

/// A display is named and answers.
bool hasDisplay();
/// The console of scripts with windows is one too; else it is this process's own.
bool consoleIsWindow();

}  // namespace korvant_app
