// Where a console that is painted stands: a window of its own, or a pane of another one.
#pragma once

#include <functional>

class wxString;

namespace korvant::ui {

class ConsoleCanvas;

class ConsoleView {
  public:
    virtual ~ConsoleView() = default;
    virtual ConsoleCanvas& canvas() = 0;
    /// A script uses the console from now on. `interrupt` is for the interrupt keys in it; it may
    /// be called on any thread until disappear().
    virtual void appear(void (*interrupt)() noexcept) = 0;
    virtual void disappear() = 0;
    virtual bool isSeen() const = 0;
    /// Shows what the grid holds, without a loop.
    virtual void paintNow() = 0;
    /// The grid holds nothing any more; shown by the next painting.
    virtual void emptied() = 0;
    virtual void setTitle(const wxString& title) = 0;
    /// Runs an event loop in which the user types into the canvas.
    virtual void whileTyping(const std::function<void()>& loop) = 0;
};

}  // namespace korvant::ui
