// The console of a script whose output a debugging client shows.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>

#include "host/services/console.h"
#include "protocol/dap/output_relay.h"

namespace korvant::dap {

/// Prints to the client; lines that its user types answer Input. Script's thread.
class DapConsole final : public Console {
  public:
    /// `serve` does what the client asks for meanwhile, 20 ms at most; false: the client has gone.
    DapConsole(OutputRelay& output, std::function<bool()> serve)
        : output_(output), serve_(std::move(serve)) {}

    /// A line, without its line feed, for the script.
    void feed(const std::string& line);
    bool waiting() const noexcept { return waiting_; }  ///< the script waits for input

    std::uint32_t allocate(ConsoleInfo& info) override;
    std::uint32_t release() override { return 0; }
    void setUp(const ConsoleInfo& info) override { attributes_ = info.attributes; }
    bool write(std::string_view bytes) override;
    bool flush() override;
    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;
    int readKey(StopQuery shouldStop) override { return readChar(shouldStop); }
    void clear() override {}
    std::uint16_t attributes() override { return attributes_; }
    void setAttributes(std::uint16_t attributes) override { attributes_ = attributes; }
    void moveCursor(std::int16_t, std::int16_t) override {}
    void show() override {}
    void hide() override { output_.flush(); }
    void setTitle(std::string_view) override {}
    void onInterrupt(void (*)() noexcept) override {}
    void dropTyped() override;
    bool takeWaited() override { return std::exchange(waited_, false); }

  private:
    int nextByte();

    OutputRelay& output_;
    std::function<bool()> serve_;
    std::deque<std::string> lines_;
    std::string line_;
    std::size_t next_ = 0;
    std::uint16_t attributes_ = 7;
    bool waiting_ = false;
    bool waited_ = false;
};

}  // namespace korvant::dap
