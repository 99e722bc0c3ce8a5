// Keys from outside the process's own event loop, over a display connection of the caller's thread.
#pragma once

#include <string>

namespace korvant::test {

/// Waits until the window with this title has the keyboard, then presses the key with this X name,
/// with Control if asked. False when the window did not come. Safe on any thread.
bool pressInWindow(const std::string& title, const std::string& key, bool control);

/// The same without Control, and waits until that window is gone.
bool answerWindow(const std::string& title, const std::string& key);

/// Waits until a window with this title is on the screen (or is gone). False when that took longer
/// than 20 seconds.
bool awaitWindow(const std::string& title, bool present = true);

/// Sum of all colour values inside the window: changes when it is painted anew. 0: no window.
unsigned long windowFingerprint(const std::string& title);

}  // namespace korvant::test
