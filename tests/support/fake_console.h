// A console without a screen, which writes down what is asked of it.
#pragma once

#include <algorithm>
#include <cerrno>
#include <deque>
#include <string>
#include <vector>

#include "host/services/console.h"

namespace korvant::test {

class FakeConsole : public Console {
  public:
    std::string input;               ///< what the user types, line feeds included
    std::deque<int> keys;            ///< what single keys give
    bool typed = false;              ///< somebody types, line by line
    std::string output;              ///< all that was written
    std::vector<std::string> calls;  ///< everything but writing and reading
    int allocationError = 0;
    int releaseError = 0;
    int writeError = 0;
    ConsoleInfo offered{80, 300, 7, 25};
    void (*interrupt)() noexcept = nullptr;

    std::uint32_t allocate(ConsoleInfo& info) override {
        calls.push_back("allocate");
        if (allocationError == 0) info = offered;
        return static_cast<std::uint32_t>(allocationError);
    }
    std::uint32_t release() override {
        calls.push_back("release");
        return static_cast<std::uint32_t>(releaseError);
    }
    void setUp(const ConsoleInfo& info) override {
        calls.push_back("setUp");
        attributes_ = info.attributes;
    }
    bool write(std::string_view bytes) override {
        if (writeError != 0) return fail();
        output.append(bytes);
        return true;
    }
    bool flush() override { return writeError == 0 || fail(); }
    int readChar(StopQuery shouldStop) override {
        if (next_ < input.size()) return static_cast<unsigned char>(input[next_++]);
        return shouldStop && shouldStop() ? kStopped : kEndOfInput;
    }
    void unreadChar(int byte) override {
        if (byte >= 0 && next_ > 0) input[--next_] = static_cast<char>(byte);
    }
    void dropTyped() override {
        calls.push_back("dropTyped");
        if (typed) next_ = std::min(input.find('\n', next_), input.size());
    }
    int readKey(StopQuery) override {
        if (keys.empty()) return kEndOfInput;
        const int key = keys.front();
        keys.pop_front();
        return key;
    }
    void clear() override { calls.push_back("clear"); }
    std::uint16_t attributes() override { return attributes_; }
    void setAttributes(std::uint16_t attributes) override { attributes_ = attributes; }
    void moveCursor(std::int16_t column, std::int16_t row) override {
        calls.push_back("move " + std::to_string(column) + " " + std::to_string(row));
    }
    void show() override { calls.push_back("show"); }
    void hide() override { calls.push_back("hide"); }
    void setTitle(std::string_view title) override {
        calls.push_back("title " + std::string(title));
    }
    void onInterrupt(void (*handler)() noexcept) override { interrupt = handler; }

    std::string unread() const { return input.substr(next_); }

  private:
    bool fail() {
        errno = writeError;
        return false;
    }

    std::size_t next_ = 0;
    std::uint16_t attributes_ = 0;
};

}  // namespace korvant::test
