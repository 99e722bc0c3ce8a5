#include "protocol/dap/dap_console.h"

#include "base/text/text_encoding.h"

namespace korvant::dap {

void DapConsole::feed(const std::string& line) {
    lines_.push_back(encodeTyped(line) + "\n");
}

std::uint32_t DapConsole::allocate(ConsoleInfo& info) {
    info = {80, 25, 7, 25};
    return 0;
}

bool DapConsole::write(std::string_view bytes) {
    output_.write("stdout", bytes);
    return true;
}

bool DapConsole::flush() {
    output_.flush();
    return true;
}

int DapConsole::nextByte() {
    while (next_ >= line_.size() && !lines_.empty()) {
        line_ = std::move(lines_.front());
        lines_.pop_front();
        next_ = 0;
    }
    return next_ < line_.size() ? static_cast<unsigned char>(line_[next_++]) : -1;
}

int DapConsole::readChar(StopQuery shouldStop) {
    int byte = nextByte();
    if (byte >= 0) return byte;
    output_.flush();
    waiting_ = waited_ = true;
    for (;;) {
        const bool there = serve_();
        byte = nextByte();
        if (byte >= 0) break;
        byte = shouldStop != nullptr && shouldStop() ? kStopped : kEndOfInput;
        if (byte == kStopped || !there) break;
    }
    waiting_ = false;
    return byte;
}

void DapConsole::unreadChar(int byte) {
    if (byte >= 0 && next_ > 0) --next_;
}

void DapConsole::dropTyped() {
    next_ = line_.size();
}

}  // namespace korvant::dap
