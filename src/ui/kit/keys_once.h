// Keys whose commands open windows.
#pragma once

namespace korvant::ui {

/// A key whose command opens a window, inside the call that tells of the key, is not told to that
/// window again. To be called when the toolkit is there, on its thread; later calls do nothing.
void hearKeysOnce();

}  // namespace korvant::ui
