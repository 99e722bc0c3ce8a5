// Plain standard input and output as the script console.
#pragma once

#include "base/system/gathered_output.h"
#include "host/services/console.h"
#include "host/terminal/stream_input.h"

namespace korvant {

/// Bytes in and out as they stand; no colours, no cursor. Attributes are remembered so that
/// scripts read back what they set. The streams are the caller's and outlive the console.
class PipeConsole : public Console {
  public:
    /// `shouldStop` ends the wait for a slow reader of the output.
    PipeConsole(StreamInput& input, GatheredOutput& output, StopQuery shouldStop);

    std::uint32_t allocate(ConsoleInfo& info) override;
    std::uint32_t release() override;
    void setUp(const ConsoleInfo& info) override;
    bool write(std::string_view bytes) override;
    bool flush() override;
    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;
    void dropTyped() override;
    bool takeWaited() override { return input_.takeWaited(); }
    int readKey(StopQuery shouldStop) override;
    void clear() override {}
    std::uint16_t attributes() override { return attributes_; }
    void setAttributes(std::uint16_t attributes) override { attributes_ = attributes; }
    void moveCursor(std::int16_t, std::int16_t) override {}
    void show() override;
    /// Hands over what was printed. A reader that has not taken anything for kPatience
    /// milliseconds after a run that was cut short does not hold the program up.
    void hide() override;
    void setTitle(std::string_view) override {}
    void onInterrupt(void (*handler)() noexcept) override;

    static constexpr std::uint16_t kGreyOnBlack = 7;
    static constexpr unsigned kPatience = 3000;

  protected:
    /// To the output, past everything that a derived console does to text.
    bool writePlain(std::string_view bytes);
    static bool report(int error);

    StreamInput& input_;
    GatheredOutput& output_;
    StopQuery shouldStop_;
    std::uint16_t attributes_ = kGreyOnBlack;
};

}  // namespace korvant
