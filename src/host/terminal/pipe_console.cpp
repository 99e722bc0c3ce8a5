#include <cerrno>

#include "base/system/terminal_state.h"
#include "host/terminal/pipe_console.h"

namespace korvant {

PipeConsole::PipeConsole(StreamInput& input, GatheredOutput& output, StopQuery shouldStop)
    : input_(input), output_(output), shouldStop_(shouldStop) {}

std::uint32_t PipeConsole::allocate(ConsoleInfo& info) {
    info = {80, 25, kGreyOnBlack, 25};
    return 0;
}

std::uint32_t PipeConsole::release() {
    hide();
    return 0;
}

void PipeConsole::setUp(const ConsoleInfo& info) {
    attributes_ = info.attributes;
}

bool PipeConsole::report(int error) {
    if (error != 0) errno = error;
    return error == 0;
}

bool PipeConsole::writePlain(std::string_view bytes) {
    return report(output_.write(bytes, shouldStop_));
}

bool PipeConsole::write(std::string_view bytes) {
    return writePlain(bytes);
}

bool PipeConsole::flush() {
    return report(output_.flush(shouldStop_));
}

int PipeConsole::readChar(StopQuery shouldStop) {
    const int buffered = input_.bufferedChar();
    if (buffered >= 0) return buffered;
    flush();
    output_.holdStatus(true);
    const int byte = input_.readChar(shouldStop);
    output_.holdStatus(false);
    return byte;
}

void PipeConsole::unreadChar(int byte) {
    input_.unreadChar(byte);
}

void PipeConsole::dropTyped() {
    while (input_.terminal() && input_.bufferedChar() >= 0) {
    }
}

int PipeConsole::readKey(StopQuery shouldStop) {
    flush();
    return input_.readKey(shouldStop);
}

void PipeConsole::show() {
    output_.begin();
}

void PipeConsole::hide() {
    leaveSingleKeyMode();
    const bool cutShort = interrupted() || (shouldStop_ && shouldStop_());
    if (!cutShort) output_.flush(interrupted);
    output_.flushWithin(kPatience);
    output_.end();
    forgetInterrupts();
}

void PipeConsole::onInterrupt(void (*handler)() noexcept) {
    handleInterrupts(handler);
}

}  // namespace korvant
