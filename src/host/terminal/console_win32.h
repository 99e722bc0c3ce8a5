// The system console of Windows as the script console.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "base/system/gathered_output.h"
#include "base/text/display_text.h"
#include "host/services/console.h"

namespace korvant {

/// The process's console through handles of its own: the process's standard streams are not
/// touched. If the process has a console already (a console program), that one is used and is
/// neither closed, hidden nor resized.
class SystemConsole final : public Console {
  public:
    /// `fallback` takes everything while there is no console; it outlives this. `shouldStop` ends
    /// a wait for the output.
    SystemConsole(Console& fallback, StopQuery shouldStop);
    ~SystemConsole() override;

    std::uint32_t allocate(ConsoleInfo& info) override;
    std::uint32_t release() override;
    void setUp(const ConsoleInfo& info) override;
    bool write(std::string_view bytes) override;
    bool flush() override;
    int readChar(StopQuery shouldStop) override;
    void unreadChar(int byte) override;
    void dropTyped() override;
    bool takeWaited() override;
    int readKey(StopQuery shouldStop) override;
    void clear() override;
    std::uint16_t attributes() override;
    void setAttributes(std::uint16_t attributes) override;
    void moveCursor(std::int16_t column, std::int16_t row) override;
    void show() override;
    void hide() override;
    void setTitle(std::string_view title) override;
    void onInterrupt(void (*handler)() noexcept) override;

    /// A line that is read before what is typed.
    void feed(const std::string& line) { fed_.push_back(line); }

  private:
    bool open();
    void close();
    bool report(int error);
    int readLine(StopQuery shouldStop);
    void enterLine(const std::string& bytes);
    void echo(std::wstring_view text);
    void edit(std::wstring& typed, wchar_t character);

    Console& fallback_;
    StopQuery shouldStop_;
    bool ours_ = false;
    bool waited_ = false;
    int output_ = -1;  ///< handles of files; -1 while there is no console
    int input_ = -1;
    std::unique_ptr<GatheredOutput> text_;
    DisplayText display_;
    std::string shown_;  ///< kept so that its memory is
    std::deque<std::string> fed_;
    std::deque<int> typed_;  ///< bytes of entered lines
    std::deque<int> codes_;  ///< of a key that has more than one
};

}  // namespace korvant
