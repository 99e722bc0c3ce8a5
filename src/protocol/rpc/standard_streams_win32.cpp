#include <windows.h>

#include <algorithm>
#include <atomic>

#include "protocol/rpc/channel.h"

namespace korvant::rpc {

namespace {

/// A pipe of the system has no wait with a limit: it is looked at every few milliseconds.
class StandardStreams final : public Channel {
  public:
    StandardStreams()
        : input_(GetStdHandle(STD_INPUT_HANDLE)), output_(GetStdHandle(STD_OUTPUT_HANDLE)) {
        // Whoever prints without asking must not break into a message.
        SetStdHandle(STD_OUTPUT_HANDLE, GetStdHandle(STD_ERROR_HANDLE));
    }

    bool read(std::string& bytes) override {
        while (!closed_) {
            DWORD waiting = 0;
            const bool pipe = GetFileType(input_) == FILE_TYPE_PIPE;
            // A pipe that cannot be looked at, as those of another system's programs, is read from
            // at once; a closed one fails there too.
            if (pipe && PeekNamedPipe(input_, nullptr, 0, nullptr, &waiting, nullptr) &&
                waiting == 0) {
                Sleep(kWaitMs);
                continue;
            }
            char buffer[16384];
            DWORD got = 0;
            if (!ReadFile(input_, buffer, sizeof buffer, &got, nullptr) || got == 0) return false;
            bytes.append(buffer, got);
            return true;
        }
        return false;
    }

    bool write(std::string_view bytes) override {
        while (!bytes.empty() && !closed_) {
            const DWORD part = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1 << 20));
            DWORD written = 0;
            if (!WriteFile(output_, bytes.data(), part, &written, nullptr)) return false;
            bytes.remove_prefix(written);
        }
        return bytes.empty();
    }

    void close() override { closed_ = true; }

  private:
    static constexpr DWORD kWaitMs = 5;

    const HANDLE input_;
    const HANDLE output_;
    std::atomic<bool> closed_{false};
};

}  // namespace

std::unique_ptr<Channel> standardStreams() {
    return std::make_unique<StandardStreams>();
}

}  // namespace korvant::rpc
