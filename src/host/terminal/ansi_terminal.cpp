#include "host/terminal/ansi_terminal.h"

#include <algorithm>
#include <string>

#include "base/system/terminal_state.h"

namespace korvant {

namespace {

constexpr std::uint16_t kForeground = 0x07, kForegroundBright = 0x08;
constexpr std::uint16_t kBackground = 0x70, kBackgroundBright = 0x80;
constexpr char kOwnColours[] = "\x1b[0m";

/// Blue, green, red as the console counts them; red, green, blue as the terminal does.
int terminalColour(int console) {
    return (console & 1) << 2 | (console & 2) | (console & 4) >> 2;
}

std::string colourNumber(int colour, bool bright, int base, int own, int ownColour) {
    if (colour == ownColour && !bright) return std::to_string(own);
    return std::to_string(base + (bright ? 60 : 0) + terminalColour(colour));
}

}  // namespace

std::string colourSequence(std::uint16_t attributes) {
    const std::string foreground =
        colourNumber(attributes & kForeground, (attributes & kForegroundBright) != 0, 30, 39, 7);
    const std::string background = colourNumber((attributes & kBackground) >> 4,
                                                (attributes & kBackgroundBright) != 0, 40, 49, 0);
    return "\x1b[" + foreground + ";" + background + "m";
}

AnsiTerminal::AnsiTerminal(StreamInput& input, GatheredOutput& output, StopQuery shouldStop,
                           const Options& options)
    : PipeConsole(input, output, shouldStop), options_(options) {}

AnsiTerminal::~AnsiTerminal() {
    attributes_ = kGreyOnBlack;
    finishText();
    applyColours();
    output_.flushWithin(kPatience);
}

std::uint32_t AnsiTerminal::allocate(ConsoleInfo& info) {
    const TerminalSize size = terminalSize(options_.outputHandle);
    info.columns = size.columns;
    info.rows = size.rows;
    info.attributes = kGreyOnBlack;
    info.windowRows = info.rows;
    return 0;
}

std::uint32_t AnsiTerminal::release() {
    attributes_ = kGreyOnBlack;
    applyColours();
    return PipeConsole::release();
}

bool AnsiTerminal::write(std::string_view bytes) {
    if (applied_ != attributes_) applyColours();
    const bool asItStands = options_.allowEscapes || (isPlainText(bytes) && !display_.waiting());
    if (asItStands) return writePlain(bytes);
    shown_.clear();
    display_.append(bytes, shown_);
    return writePlain(shown_);
}

void AnsiTerminal::finishText() {
    shown_.clear();
    display_.finish(shown_);
    if (!shown_.empty()) writePlain(shown_);
}

bool AnsiTerminal::flush() {
    finishText();
    return PipeConsole::flush();
}

void AnsiTerminal::control(std::string_view sequence) {
    finishText();
    if (!options_.plain) writePlain(sequence);
}

void AnsiTerminal::clear() {
    applyColours();
    control("\x1b[2J\x1b[H");
}

/// Told with the next text, so that steps in between are not seen.
void AnsiTerminal::applyColours() {
    if (applied_ == attributes_) return;
    applied_ = attributes_;
    noteColours(!options_.plain && applied_ != kGreyOnBlack);
    control(applied_ == kGreyOnBlack ? kOwnColours : colourSequence(applied_));
}

void AnsiTerminal::moveCursor(std::int16_t column, std::int16_t row) {
    if (column < 0 || row < 0) return;
    control("\x1b[" + std::to_string(row + 1) + ";" + std::to_string(column + 1) + "H");
}

void AnsiTerminal::hide() {
    finishText();
    PipeConsole::hide();
}

}  // namespace korvant
