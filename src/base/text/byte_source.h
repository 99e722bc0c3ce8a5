// Bytes that are read one at a time and may have to be waited for.
#pragma once

namespace korvant {

/// Asked while something waits, at least every 50 ms; true ends the wait. Null: nothing ends it.
using StopQuery = bool (*)();

class ByteSource {
  public:
    static constexpr int kEndOfInput = -1;
    static constexpr int kStopped = -2;

    virtual ~ByteSource() = default;
    /// Next byte (0 to 255), kEndOfInput, or kStopped as soon as `shouldStop` answers true.
    virtual int readChar(StopQuery shouldStop) = 0;
    /// Puts the byte that was read last back; one byte at most. Negative values are ignored.
    virtual void unreadChar(int byte) = 0;
};

}  // namespace korvant
