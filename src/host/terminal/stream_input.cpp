#include "host/terminal/stream_input.h"

#include "base/system/key_codes.h"
#include "base/system/terminal_state.h"
#include "base/text/text_encoding.h"

namespace korvant {

namespace {

/// How long the rest of a key may be on its way; a lone escape byte is the Escape key after that.
constexpr int kKeyGapMilliseconds = 30;

}  // namespace

StreamInput::StreamInput(int handle) : handle_(handle), terminal_(isTerminal(handle)) {}

void StreamInput::feed(std::string line) {
    fed_.push_back(std::move(line) + "\n");
}

void StreamInput::keepFed(bool kept) {
    fedKept_ = kept;
    last_ = kept ? &stream_ : &line_;
}

void StreamInput::forgetFed() {
    fed_.clear();
    line_ = {};
}

bool StreamInput::insideLine() const noexcept {
    return stream_.next > 0 && stream_.bytes[stream_.next - 1] != '\n';
}

int StreamInput::bufferedChar() {
    return last_->left() ? static_cast<unsigned char>(last_->bytes[last_->next++]) : -1;
}

int StreamInput::readChar(StopQuery shouldStop) {
    const int state = last_->left() ? 0 : fill(shouldStop);
    return state == 0 ? bufferedChar() : state;
}

int StreamInput::fill(StopQuery shouldStop) {
    if (!fedKept_ && !fed_.empty()) {
        line_ = {std::move(fed_.front()), 0};
        fed_.pop_front();
        last_ = &line_;
        return 0;
    }
    last_ = &stream_;
    if (stream_.left()) return 0;
    stream_ = {};
    leaveSingleKeyMode();
    char piece[8192];
    std::size_t got = 0;
    const ReadState state = read(piece, sizeof piece, got, shouldStop);
    if (state == ReadState::stopped) return kStopped;
    if (state == ReadState::end) return kEndOfInput;
    const std::string_view read(piece, got);
    stream_.bytes = terminal_ ? encodeTyped(read) : std::string(read);
    return 0;
}

ReadState StreamInput::read(char* buffer, std::size_t room, std::size_t& got,
                            StopQuery shouldStop) {
    if (!awaitBytes(handle_, 0)) waited_ = true;
    return readSome(handle_, buffer, room, got, shouldStop);
}

void StreamInput::unreadChar(int byte) {
    if (byte < 0) return;
    if (last_->next == 0)
        last_->bytes.insert(last_->bytes.begin(), static_cast<char>(byte));
    else
        last_->bytes[--last_->next] = static_cast<char>(byte);
}

int StreamInput::readKey(StopQuery shouldStop) {
    return terminal_ ? keyFromTerminal(shouldStop) : readChar(shouldStop);
}

int StreamInput::keyFromTerminal(StopQuery shouldStop) {
    if (keys_.empty()) {
        int state = 0;
        const std::string bytes = readKeyBytes(shouldStop, state);
        if (bytes.empty()) return state;
        for (const int code : keyCodes(bytes)) keys_.push_back(code);
    }
    const int code = keys_.front();
    keys_.pop_front();
    return code;
}

std::string StreamInput::readKeyBytes(StopQuery shouldStop, int& state) {
    enterSingleKeyMode();
    std::string bytes;
    while (keyGoesOn(bytes)) {
        if (!bytes.empty() && !awaitBytes(handle_, kKeyGapMilliseconds)) break;
        char byte = 0;
        std::size_t got = 0;
        const ReadState came = read(&byte, 1, got, shouldStop);
        if (came != ReadState::bytes) {
            state = came == ReadState::stopped ? kStopped : kEndOfInput;
            break;
        }
        bytes.push_back(byte);
    }
    return bytes;
}

}  // namespace korvant
