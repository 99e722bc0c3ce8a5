#include "host/console_win32.h"

#include <windows.h>

#include <atomic>
#include <cerrno>
#include <string>

#include "host/text_encoding.h"
#include "host/wide_text_win32.h"

namespace korvant {
namespace {

constexpr DWORD kPollMs = 50;
constexpr std::size_t kBufferBytes = 64 * 1024;

std::atomic<void (*)() noexcept> interruptHandler{nullptr};

/// Called on a thread of the system. Every event counts as handled, so that closing the console
/// or logging off does not end the host under the user's hands.
BOOL WINAPI onControlEvent(DWORD event) {
    auto* handler = interruptHandler.load();
    if (handler && (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)) handler();
    return TRUE;
}

class SystemConsole final : public Console {
  public:
    ~SystemConsole() override { release(); }

    std::uint32_t allocate(ConsoleInfo& info) override {
        ours_ = GetConsoleWindow() == nullptr;
        if (ours_ && !AllocConsole()) return GetLastError();
        output_ = open(L"CONOUT$");
        input_ = open(L"CONIN$");
        if (output_ == INVALID_HANDLE_VALUE || input_ == INVALID_HANDLE_VALUE) return fail();
        CONSOLE_SCREEN_BUFFER_INFO buffer{};
        if (GetConsoleScreenBufferInfo(output_, &buffer)) {
            info.columns = static_cast<std::uint16_t>(buffer.dwSize.X);
            info.rows = static_cast<std::uint16_t>(buffer.dwSize.Y);
            info.attributes = buffer.wAttributes;
            info.windowRows = static_cast<std::uint16_t>(GetLargestConsoleWindowSize(output_).Y);
        }
        SetConsoleCtrlHandler(onControlEvent, TRUE);
        return 0;
    }

    std::uint32_t release() override {
        if (output_ == INVALID_HANDLE_VALUE) return 0;
        flush();
        SetConsoleCtrlHandler(onControlEvent, FALSE);
        CloseHandle(output_);
        CloseHandle(input_);
        output_ = input_ = INVALID_HANDLE_VALUE;
        return ours_ && !FreeConsole() ? GetLastError() : 0;
    }

    void setUp(const ConsoleInfo& info) override {
        if (info.columns && info.rows)
            SetConsoleScreenBufferSize(
                output_, {static_cast<SHORT>(info.columns), static_cast<SHORT>(info.rows)});
        if (info.attributes) SetConsoleTextAttribute(output_, info.attributes);
        const COORD largest = GetLargestConsoleWindowSize(output_);
        const SMALL_RECT window{0, 0, info.columns ? static_cast<SHORT>(info.columns) : largest.X,
                                info.windowRows ? static_cast<SHORT>(info.windowRows) : largest.Y};
        if (ours_) SetConsoleWindowInfo(output_, TRUE, &window);
        removeCloseItem();
    }

    bool write(std::string_view bytes) override {
        pending_.append(bytes);
        return pending_.size() < kBufferBytes || flush();
    }

    bool flush() override {
        if (pending_.empty()) return true;
        const std::wstring text = wideOfBytes(pending_);
        pending_.clear();
        for (std::size_t done = 0; done < text.size();) {
            DWORD written = 0;
            const DWORD part = static_cast<DWORD>(std::min<std::size_t>(text.size() - done, 8000));
            if (!WriteConsoleW(output_, text.data() + done, part, &written, nullptr) || !written) {
                errno = EIO;
                return false;
            }
            done += written;
        }
        return true;
    }

    int readChar(bool (*shouldStop)()) override {
        flush();
        if (pushedBack_ >= 0) return takePushedBack();
        while (lineUsed_ >= line_.size()) {
            const int result = readLine(shouldStop);
            if (result < 0) return result;
        }
        return static_cast<unsigned char>(line_[lineUsed_++]);
    }

    void unreadChar(int byte) override { pushedBack_ = byte; }

    int readKey(bool (*shouldStop)()) override {
        flush();
        for (;;) {
            INPUT_RECORD record{};
            const int waited = waitForEvent(shouldStop, record);
            if (waited < 0) return waited;
            if (isCharacter(record)) return keyByte(record.Event.KeyEvent.uChar.UnicodeChar);
        }
    }

    void clear() override {
        flush();
        CONSOLE_SCREEN_BUFFER_INFO buffer{};
        if (!GetConsoleScreenBufferInfo(output_, &buffer)) return;
        const DWORD cells =
            static_cast<DWORD>(buffer.dwSize.X) * static_cast<DWORD>(buffer.dwSize.Y);
        DWORD done = 0;
        FillConsoleOutputCharacterW(output_, L' ', cells, {0, 0}, &done);
        FillConsoleOutputAttribute(output_, buffer.wAttributes, cells, {0, 0}, &done);
        SetConsoleCursorPosition(output_, {0, 0});
    }

    std::uint16_t attributes() override {
        flush();
        CONSOLE_SCREEN_BUFFER_INFO buffer{};
        return GetConsoleScreenBufferInfo(output_, &buffer) ? buffer.wAttributes : 0;
    }

    void setAttributes(std::uint16_t attributes) override {
        flush();
        SetConsoleTextAttribute(output_, attributes);
    }

    void moveCursor(std::int16_t column, std::int16_t row) override {
        flush();
        SetConsoleCursorPosition(output_, {column, row});
    }

    void show() override {
        if (ours_) ShowWindow(GetConsoleWindow(), SW_SHOWNORMAL);
    }

    void hide() override {
        flush();
        if (ours_) ShowWindow(GetConsoleWindow(), SW_HIDE);
    }

    void setTitle(std::string_view title) override { SetConsoleTitleW(wideOfUtf8(title).c_str()); }

    void onInterrupt(void (*handler)() noexcept) override { interruptHandler = handler; }

  private:
    static HANDLE open(const wchar_t* name) {
        return CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                           nullptr, OPEN_EXISTING, 0, nullptr);
    }

    std::uint32_t fail() {
        const DWORD error = GetLastError();
        if (output_ != INVALID_HANDLE_VALUE) CloseHandle(output_);
        if (input_ != INVALID_HANDLE_VALUE) CloseHandle(input_);
        output_ = input_ = INVALID_HANDLE_VALUE;
        if (ours_) FreeConsole();
        return error ? error : ERROR_INVALID_HANDLE;
    }

    void removeCloseItem() const {
        const HWND window = ours_ ? GetConsoleWindow() : nullptr;
        if (!window) return;
        RemoveMenu(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
        DrawMenuBar(window);
    }

    int takePushedBack() {
        const int byte = pushedBack_;
        pushedBack_ = -1;
        return byte;
    }

    static bool isCharacter(const INPUT_RECORD& record) {
        return record.EventType == KEY_EVENT && record.Event.KeyEvent.bKeyDown &&
               record.Event.KeyEvent.uChar.UnicodeChar != 0;
    }

    static int keyByte(wchar_t character) {
        const std::string bytes = encodeTyped(utf8OfWide({&character, 1}));
        return bytes.empty() ? 0 : static_cast<unsigned char>(bytes[0]);
    }

    /// The next event of the input, polling so that a stop also ends a wait.
    int waitForEvent(bool (*shouldStop)(), INPUT_RECORD& record) {
        for (;;) {
            if (shouldStop && shouldStop()) return kStopped;
            if (WaitForSingleObject(input_, kPollMs) != WAIT_OBJECT_0) continue;
            DWORD count = 0;
            if (!ReadConsoleInputW(input_, &record, 1, &count)) return kEndOfInput;
            if (count == 1) return 0;
        }
    }

    /// Reads and echoes one line; Backspace edits, Ctrl+Z on an empty line ends the input.
    int readLine(bool (*shouldStop)()) {
        std::wstring typed;
        for (;;) {
            INPUT_RECORD record{};
            const int waited = waitForEvent(shouldStop, record);
            if (waited < 0) return waited;
            if (!isCharacter(record)) continue;
            const wchar_t character = record.Event.KeyEvent.uChar.UnicodeChar;
            if (character == 26 && typed.empty()) return kEndOfInput;
            if (character == L'\r') break;
            edit(typed, character);
        }
        echo(L"\n");
        line_ = encodeTyped(utf8OfWide(typed)) + '\n';
        lineUsed_ = 0;
        return 0;
    }

    void edit(std::wstring& typed, wchar_t character) {
        if (character == L'\b') {
            if (typed.empty()) return;
            typed.pop_back();
            echo(L"\b \b");
        } else if (character >= L' ' || character == L'\t') {
            typed += character;
            echo({&character, 1});
        }
    }

    void echo(std::wstring_view text) {
        DWORD written = 0;
        WriteConsoleW(output_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }

    HANDLE output_ = INVALID_HANDLE_VALUE;
    HANDLE input_ = INVALID_HANDLE_VALUE;
    bool ours_ = false;
    std::string pending_;
    std::string line_;
    std::size_t lineUsed_ = 0;
    int pushedBack_ = -1;
};

}  // namespace

std::unique_ptr<Console> makeSystemConsole() {
    return std::make_unique<SystemConsole>();
}

}  // namespace korvant
