// Input from a descriptor: lines, bytes and single keys.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>

#include "base/system/os_file.h"
#include "base/text/byte_source.h"

namespace korvant {

/// Standard input as scripts read it. On a terminal what was typed becomes bytes as encodeTyped
/// says; from a pipe or file every byte comes as it stands.
class StreamInput final : public ByteSource {
  public:
    /// `handle` stays the caller's.
    explicit StreamInput(int handle);
    StreamInput(const StreamInput&) = delete;
    StreamInput& operator=(const StreamInput&) = delete;

    bool terminal() const noexcept { return terminal_; }
    /// A line that is read before anything of the stream.
    void feed(std::string line);
    /// Such lines are not for who reads now: they stay as far as they have not been read.
    void keepFed(bool kept);
    void forgetFed();
    /// Whether a line of the stream has been read in part.
    bool insideLine() const noexcept;
    /// True when the stream had nothing to read since this was asked last and was waited for. A
    /// terminal that was hung up, or an end of the input that is met again, lets nobody wait.
    bool takeWaited() noexcept { return std::exchange(waited_, false); }
    /// A byte of the line or piece that was read last, taken; -1 for none.
    int bufferedChar();
    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;
    /// On a terminal one key, at once and without echo, whatever is left of a typed line; from
    /// anything else the next byte.
    int readKey(StopQuery shouldStop);

  private:
    int fill(StopQuery shouldStop);
    ReadState read(char* buffer, std::size_t room, std::size_t& got, StopQuery shouldStop);
    int keyFromTerminal(StopQuery shouldStop);
    std::string readKeyBytes(StopQuery shouldStop, int& state);

    int handle_;
    bool terminal_;
    bool waited_ = false;
    struct Piece {
        std::string bytes;
        std::size_t next = 0;
        bool left() const { return next < bytes.size(); }
    };
    std::deque<std::string> fed_;
    bool fedKept_ = false;
    Piece line_;    ///< that was fed
    Piece stream_;  ///< of the stream
    Piece* last_ = &stream_;
    std::deque<int> keys_;  ///< codes of a key that are still to be given
};

}  // namespace korvant
