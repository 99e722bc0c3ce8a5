#include <fcntl.h>
#include <unistd.h>

#include <atomic>

#include "base/system/os_file.h"
#include "protocol/rpc/channel.h"

namespace korvant::rpc {

namespace {

class StandardStreams final : public Channel {
  public:
    StandardStreams() : input_(duplicate(STDIN_FILENO)), output_(duplicate(STDOUT_FILENO)) {
        // Whoever prints without asking must not break into a message.
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
        const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        if (nothing >= 0) ::dup2(nothing, STDIN_FILENO);
        if (nothing >= 0) ::close(nothing);
    }
    ~StandardStreams() override {
        closeHandle(input_);
        closeHandle(output_);
    }

    bool read(std::string& bytes) override {
        while (!closed_) {
            if (!awaitBytes(input_, kWaitMs)) continue;
            char buffer[16384];
            std::size_t got = 0;
            if (readSome(input_, buffer, sizeof buffer, got, nullptr) != ReadState::bytes)
                return false;
            bytes.append(buffer, got);
            return true;
        }
        return false;
    }

    bool write(std::string_view bytes) override {
        std::size_t written = 0;
        return !closed_ && writeAll(output_, bytes, written, nullptr) == 0;
    }

    void close() override { closed_ = true; }

  private:
    static constexpr int kWaitMs = 50;
    static int duplicate(int handle) { return ::fcntl(handle, F_DUPFD_CLOEXEC, 3); }

    const int input_;
    const int output_;
    std::atomic<bool> closed_{false};
};

}  // namespace

std::unique_ptr<Channel> standardStreams() {
    return std::make_unique<StandardStreams>();
}

}  // namespace korvant::rpc
