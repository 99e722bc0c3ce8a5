// The script console as a window.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "host/services/console.h"
#include "host/terminal/console_grid.h"
#include "host/terminal/console_line.h"

namespace korvant::ui {

class ConsoleFrame;
class ConsoleView;

/// A window titled and shown as its user says. Without a display everything goes to `fallback`,
/// which must outlive this. While a script runs, the window paints and takes its keys at most
/// every 30 ms, and nothing else of the host gets a turn; while it waits for input the window
/// behaves like a modal dialog.
class ConsoleWindow : public Console {
  public:
    explicit ConsoleWindow(Console& fallback);
    /// In a place that others made, which must outlive this; its canvas shows grid() of this.
    ConsoleWindow(Console& fallback, ConsoleGrid& grid, ConsoleView& place);
    ~ConsoleWindow() override;

    std::uint32_t allocate(ConsoleInfo& info) override;
    std::uint32_t release() override;
    void setUp(const ConsoleInfo& info) override;
    bool write(std::string_view bytes) override;
    bool flush() override;
    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;
    void dropTyped() override;
    bool takeWaited() override;
    int readKey(StopQuery shouldStop) override;
    void clear() override;
    std::uint16_t attributes() override;
    void setAttributes(std::uint16_t attributes) override;
    void moveCursor(std::int16_t column, std::int16_t row) override;
    void show() override;
    void hide() override;
    void setTitle(std::string_view title) override;
    /// For the window's keys alone: the signals of the process are the host's.
    void onInterrupt(void (*handler)() noexcept) override;

    /// A line that is read in the window before what is typed there.
    void feed(const std::string& line) { fed_.push_back(line); }

    const ConsoleGrid& grid() const { return grid_; }
    /// Null while the console is not a window of its own.
    ConsoleFrame* frame() { return frame_; }
    /// A script waits for what is typed here.
    bool waiting() const { return waiting_; }

  private:
    bool inWindow() const;
    void makeFrame();
    void useView(ConsoleView& view);
    void leaveView();
    void keyPressed(const ConsoleKey& key);
    void refreshIfDue();
    void refresh();
    /// Waits with the window alive; false when it was stopped.
    bool waitUntil(const std::function<bool()>& ready, StopQuery shouldStop);
    bool loopUntil(const std::function<bool()>& ready, StopQuery shouldStop);
    bool takeTypedKeys();
    void enterLine(std::string_view bytes);

    Console& fallback_;
    std::unique_ptr<ConsoleGrid> ownGrid_;  ///< null: the grid is the place's
    ConsoleGrid& grid_;
    ConsoleLine line_;
    ConsoleView* place_ = nullptr;   ///< that others made; null: a window of its own is
    ConsoleView* view_ = nullptr;    ///< while allocated
    ConsoleFrame* frame_ = nullptr;  ///< the toolkit's own; destroyed by release()
    void (*interrupt_)() noexcept = nullptr;
    std::deque<ConsoleKey> typed_;  ///< not yet asked for
    std::deque<std::string> fed_;
    std::deque<int> input_;       ///< bytes of entered lines
    std::deque<int> codes_;       ///< of a key that has more than one
    std::function<void()> wake_;  ///< while input is awaited
    bool inUse_ = false;          ///< between show() and hide()
    bool lineEntered_ = false;
    bool waiting_ = false;
    bool waited_ = false;
    std::chrono::steady_clock::time_point painted_;
};

}  // namespace korvant::ui
