#include "host/services/null_services.h"

namespace korvant {

namespace {

class NullConsole final : public Console {
  public:
    std::uint32_t allocate(ConsoleInfo& info) override {
        info = {};
        return 0;
    }
    std::uint32_t release() override { return 0; }
    void setUp(const ConsoleInfo&) override {}
    bool write(std::string_view) override { return true; }
    bool flush() override { return true; }
    int readChar(StopQuery) override { return kEndOfInput; }
    void unreadChar(int) override {}
    int readKey(StopQuery) override { return kEndOfInput; }
    void clear() override {}
    std::uint16_t attributes() override { return attributes_; }
    void setAttributes(std::uint16_t attributes) override { attributes_ = attributes; }
    void moveCursor(std::int16_t, std::int16_t) override {}
    void show() override {}
    void hide() override {}
    void setTitle(std::string_view) override {}
    void onInterrupt(void (*)() noexcept) override {}

  private:
    std::uint16_t attributes_ = 0;
};

class NullFrontend final : public Frontend {
  public:
    int messageBox(const MessageBoxRequest&) override { return 0; }
    std::int32_t promptInt(const std::string&, std::int32_t initial) override { return initial; }
    float promptFloat(const std::string&, float initial) override { return initial; }
    double promptDouble(const std::string&, double initial) override { return initial; }
    std::string promptString(const std::string&, const std::string& initial) override {
        return initial;
    }
    bool attended() override { return false; }
    std::unique_ptr<ProgressWindow> makeProgressWindow() override { return nullptr; }
};

}  // namespace

Console& nullConsole() {
    static NullConsole* const console = new NullConsole;
    return *console;
}

Frontend& nullFrontend() {
    static NullFrontend* const frontend = new NullFrontend;
    return *frontend;
}

}  // namespace korvant
