// The text console that scripts print to and read from.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/text/byte_source.h"

namespace korvant {

/// What a console had when it was allocated.
struct ConsoleInfo {
    std::uint16_t columns = 0;
    std::uint16_t rows = 0;
    std::uint16_t attributes = 0;  ///< bits 0-2 foreground, 3 intense, 4-6 background, 7 intense
    std::uint16_t windowRows = 0;  ///< largest window height
};

/// One console of the process. Results of drawing operations are ignored by scripts, so those
/// return nothing. All functions are called on the script's thread; only the interrupt handler
/// is called from another thread or a signal handler. Reading hands over first what was written.
class Console : public ByteSource {
  public:
    /// Makes the console; fills `info`. 0 on success, else the system's error code.
    virtual std::uint32_t allocate(ConsoleInfo& info) = 0;
    /// Gives it back. 0 on success, else the system's error code and it stays allocated.
    virtual std::uint32_t release() = 0;
    /// Applies the recorded sizes and attributes before the first use in a configuration.
    virtual void setUp(const ConsoleInfo& info) = 0;
    /// Every byte as it stands; to the plain standard streams while nothing is allocated. May be
    /// held back until flush(). False when something could not be written since show(); errno
    /// says why.
    virtual bool write(std::string_view bytes) = 0;
    virtual bool flush() = 0;
    /// Forgets what was typed ahead on a line that was read in part; before a question is asked.
    virtual void dropTyped() {}
    /// True when reading had to wait for somebody since this was asked last: they were there, even
    /// if nothing came of it.
    virtual bool takeWaited() { return false; }
    /// One key without echo: its character code, kEndOfInput or kStopped. A key without a
    /// character gives 0 or 224 and then, at the next call, its scan code.
    virtual int readKey(StopQuery shouldStop) = 0;
    /// Blanks with the current attributes everywhere, cursor to 0,0.
    virtual void clear() = 0;
    virtual std::uint16_t attributes() = 0;
    virtual void setAttributes(std::uint16_t attributes) = 0;
    virtual void moveCursor(std::int16_t column, std::int16_t row) = 0;
    virtual void show() = 0;
    /// Ends a use: nothing is shown until the next show().
    virtual void hide() = 0;
    virtual void setTitle(std::string_view title) = 0;
    /// `handler` is called for Ctrl+C and Ctrl+Break; it must be async-signal-safe.
    virtual void onInterrupt(void (*handler)() noexcept) = 0;
};

}  // namespace korvant
