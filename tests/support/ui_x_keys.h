// Keys from outside the process's own event loop, over a display connection of the caller's thread.
#pragma once

#include <string>
#include <vector>

namespace korvant::test {

/// Waits until the window with this title has the keyboard, then presses the key with this X name,
/// with Control if asked. False when the window did not come. Safe on any thread.
bool pressInWindow(const std::string& title, const std::string& key, bool control);

/// Presses one key after another, each once the window has the keyboard, and waits until that
/// window is gone: X names, with the modifiers before them as in "Control_L+Return". After such a
/// chord it waits until nothing moves any more, as a user would.
bool typeInWindow(const std::string& title, const std::vector<std::string>& keys);

/// Waits until the picture of the window stays the same for a fifth of a second.
bool awaitRest(const std::string& title);

/// Turns the wheel one notch where the pointer stands.
void turnWheel(bool up);

/// As pressInWindow() without Control, and waits until that window is gone.
bool answerWindow(const std::string& title, const std::string& key);

/// Waits until a window with this title is on the screen (or is gone). False when that took longer
/// than 20 seconds.
bool awaitWindow(const std::string& title, bool present = true);

/// Sum of all colour values inside the window: changes when it is painted anew. 0: no window.
unsigned long windowFingerprint(const std::string& title);

/// How far the middle of the window is from that of the screen from left to right, in pixels; -1:
/// no window.
int distanceFromCentre(const std::string& title);

/// Another program that has the clipboard and answers nobody.
class SilentClipboard {
  public:
    SilentClipboard();
    ~SilentClipboard();
    SilentClipboard(const SilentClipboard&) = delete;
    SilentClipboard& operator=(const SilentClipboard&) = delete;

  private:
    void* connection_;
};

}  // namespace korvant::test
