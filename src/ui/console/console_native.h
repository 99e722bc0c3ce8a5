// What the console window needs of the desktop beyond the toolkit.
#pragma once

#include <memory>

class wxWindow;

namespace korvant::ui::native {

/// The window stands on the screen, so that what is painted now is seen.
bool isViewable(wxWindow& window);
/// Returns when something has come from the display, at the latest after so many milliseconds.
void awaitDisplay(int milliseconds);
/// Lays the whole window out and paints it, without a loop that would do so in time.
void paintWindow(wxWindow& window);

/// Hears Ctrl+C and Ctrl+Break in a window while it lives, whatever the window's own thread is
/// busy with.
class InterruptKeys {
  public:
    virtual ~InterruptKeys() = default;
};
/// `handler` is called on another thread. Null where the desktop has no way to do this; the keys
/// are then heard when the window's thread takes its events.
std::unique_ptr<InterruptKeys> listenForInterrupt(wxWindow& window, void (*handler)() noexcept);

}  // namespace korvant::ui::native
