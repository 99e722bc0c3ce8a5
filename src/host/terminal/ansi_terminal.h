// The user's terminal as the script console.
#pragma once

#include "base/text/display_text.h"
#include "host/terminal/pipe_console.h"

namespace korvant {

/// A terminal that understands the control sequences of ECMA-48. Text is shown decoded, control
/// bytes that would steer the terminal as "^[" and the like unless they are allowed.
class AnsiTerminal final : public PipeConsole {
  public:
    /// `outputHandle`: the terminal itself, asked for its size. `plain`: no control sequences at
    /// all. `allowEscapes`: what scripts print reaches the terminal as it stands.
    struct Options {
        int outputHandle = 1;
        bool plain = false;
        bool allowEscapes = false;
    };
    AnsiTerminal(StreamInput& input, GatheredOutput& output, StopQuery shouldStop,
                 const Options& options);
    /// Gives the terminal its own colours back.
    ~AnsiTerminal() override;

    std::uint32_t allocate(ConsoleInfo& info) override;
    std::uint32_t release() override;
    bool write(std::string_view bytes) override;
    bool flush() override;
    void clear() override;
    void moveCursor(std::int16_t column, std::int16_t row) override;
    void hide() override;

  private:
    void control(std::string_view sequence);
    void finishText();
    void applyColours();

    Options options_;
    DisplayText display_;
    std::string shown_;                     ///< kept so that its memory is
    std::uint16_t applied_ = kGreyOnBlack;  ///< the colours that the terminal was told last
};

/// The control sequence that selects the colours of `attributes`; grey and black are the
/// terminal's own. Source: ECMA-48, select graphic rendition, and the bright colours of xterm.
std::string colourSequence(std::uint16_t attributes);

}  // namespace korvant
