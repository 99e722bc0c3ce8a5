#include "host/library/script_files.h"

#include <cstring>
#include <utility>

namespace korvant {

std::unique_ptr<InputFile> InputFile::open(std::string_view name, const FileRules& rules) {
    const int handle = openForReading(std::string(name), rules);
    if (handle == kNoFile) return nullptr;
    return std::unique_ptr<InputFile>(new InputFile(handle));
}

InputFile::InputFile(int handle) : handle_(handle), buffer_(std::size_t{64} << 10) {}

InputFile::~InputFile() {
    closeHandle(handle_);
}

int InputFile::readChar(StopQuery shouldStop) {
    if (next_ == end_) {
        const int state = fill(shouldStop);
        if (state != 0) return state;
    }
    return static_cast<unsigned char>(buffer_[next_++]);
}

int InputFile::fill(StopQuery shouldStop) {
    if (shouldStop && shouldStop()) return kStopped;
    std::size_t got = 0;
    // The first byte stays free for one that is put back.
    switch (readSome(handle_, buffer_.data() + 1, buffer_.size() - 1, got, shouldStop)) {
        case ReadState::end:
            return kEndOfInput;
        case ReadState::stopped:
            return kStopped;
        case ReadState::bytes:
            break;
    }
    next_ = 1;
    end_ = 1 + got;
    return 0;
}

void InputFile::unreadChar(int byte) {
    if (byte < 0 || next_ == 0) return;
    buffer_[--next_] = static_cast<char>(byte);
}

std::unique_ptr<OutputFile> OutputFile::open(std::string_view name, Mode mode,
                                             const FileRules& rules, StopQuery shouldStop) {
    std::string path(name);
    const int handle = openForWriting(path, mode == Mode::append, rules, shouldStop);
    if (handle == kNoFile) return nullptr;
    return std::unique_ptr<OutputFile>(new OutputFile(handle, std::move(path)));
}

OutputFile::OutputFile(int handle, std::string name)
    : handle_(handle), name_(std::move(name)), buffer_(new char[kBufferBytes]) {}

OutputFile::~OutputFile() {
    close([] { return true; });
}

void OutputFile::writeBeyond(std::string_view bytes, StopQuery shouldStop) {
    hand(std::string_view(buffer_.get(), filled_), shouldStop);
    filled_ = 0;
    if (bytes.size() > kBufferBytes) return hand(bytes, shouldStop);
    write(bytes, shouldStop);
}

void OutputFile::hand(std::string_view bytes, StopQuery shouldStop) {
    if (failure_ != 0 || handle_ == kNoFile) return;
    std::size_t written = 0;
    failure_ = writeAll(handle_, bytes, written, shouldStop);
}

void OutputFile::close(StopQuery shouldStop) {
    if (handle_ == kNoFile) return;
    hand(std::string_view(buffer_.get(), filled_), shouldStop);
    filled_ = 0;
    const int closing = closeHandle(handle_);
    handle_ = kNoFile;
    if (failure_ == 0) failure_ = closing;
}

}  // namespace korvant
