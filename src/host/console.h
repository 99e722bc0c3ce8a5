// The text console that scripts print to and read from.
#pragma once

#include <cstdint>
#include <string_view>

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
/// is called from another thread or a signal handler.
class Console {
  public:
    static constexpr int kEndOfInput = -1;
    static constexpr int kStopped = -2;

    virtual ~Console() = default;
    /// Makes the console; fills `info`. 0 on success, else the system's error code.
    virtual std::uint32_t allocate(ConsoleInfo& info) = 0;
    /// Gives it back. 0 on success, else the system's error code and it stays allocated.
    virtual std::uint32_t release() = 0;
    /// Applies the recorded sizes and attributes before the first use in a configuration.
    virtual void setUp(const ConsoleInfo& info) = 0;
    /// Every byte as it stands. May be held back until flush(). False when it could not be
    /// written; errno says why.
    virtual bool write(std::string_view bytes) = 0;
    virtual bool flush() = 0;
    /// Next byte of input (0 to 255), kEndOfInput, or kStopped as soon as `shouldStop` answers
    /// true; `shouldStop` is asked at least every 50 ms.
    virtual int readChar(bool (*shouldStop)()) = 0;
    /// Puts the byte that was read last back; one byte at most.
    virtual void unreadChar(int byte) = 0;
    /// One key without echo: its character code, kEndOfInput or kStopped.
    virtual int readKey(bool (*shouldStop)()) = 0;
    /// Blanks with the current attributes everywhere, cursor to 0,0.
    virtual void clear() = 0;
    virtual std::uint16_t attributes() = 0;
    virtual void setAttributes(std::uint16_t attributes) = 0;
    virtual void moveCursor(std::int16_t column, std::int16_t row) = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    virtual void setTitle(std::string_view title) = 0;
    /// `handler` is called for Ctrl+C and Ctrl+Break; it must be async-signal-safe.
    virtual void onInterrupt(void (*handler)() noexcept) = 0;
};

}  // namespace korvant
