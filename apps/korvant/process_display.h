// Whether the program can show windows.
#pragma once

namespace korvant_app {

bool hasDisplay();

}  // namespace korvant_app
