#include "host/terminal/console_win32.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cerrno>

#include "base/system/os_file.h"
#include "base/system/wide_text_win32.h"
#include "base/text/text_encoding.h"
#include "host/terminal/console_keys_win32.h"

namespace korvant {
namespace {

constexpr unsigned kPatience = 3000;  // milliseconds
constexpr wchar_t kControlZ = 26;
constexpr std::size_t kLongestLine = 16'000;

std::atomic<void (*)() noexcept> interruptHandler{nullptr};

/// Called on a thread of the system. Every event counts as handled, so that closing the console
/// or logging off does not end the host under the user's hands.
BOOL WINAPI onControlEvent(DWORD event) {
    auto* handler = interruptHandler.load();
    if (handler && (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)) handler();
    return TRUE;
}

int openDevice(const wchar_t* name) {
    const HANDLE device =
        CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    if (device == INVALID_HANDLE_VALUE) return kNoFile;
    return _open_osfhandle(reinterpret_cast<intptr_t>(device), _O_RDWR | _O_BINARY);
}

HANDLE systemHandle(int handle) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

void describe(HANDLE output, ConsoleInfo& info) {
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!GetConsoleScreenBufferInfo(output, &buffer)) return;
    info.columns = static_cast<std::uint16_t>(buffer.dwSize.X);
    info.rows = static_cast<std::uint16_t>(buffer.dwSize.Y);
    info.attributes = buffer.wAttributes;
    info.windowRows = static_cast<std::uint16_t>(GetLargestConsoleWindowSize(output).Y);
}

void resize(HANDLE output, const ConsoleInfo& info) {
    if (info.columns && info.rows)
        SetConsoleScreenBufferSize(
            output, {static_cast<SHORT>(info.columns), static_cast<SHORT>(info.rows)});
    const COORD largest = GetLargestConsoleWindowSize(output);
    const int columns = info.columns ? info.columns : largest.X;
    const int rows = info.windowRows ? info.windowRows : largest.Y;
    const SMALL_RECT window{0, 0, static_cast<SHORT>(columns), static_cast<SHORT>(rows)};
    SetConsoleWindowInfo(output, TRUE, &window);
}

void removeCloseItem() {
    const HWND window = GetConsoleWindow();
    if (!window) return;
    RemoveMenu(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
    DrawMenuBar(window);
}

}  // namespace

SystemConsole::SystemConsole(Console& fallback, StopQuery shouldStop)
    : fallback_(fallback), shouldStop_(shouldStop) {}

SystemConsole::~SystemConsole() {
    SystemConsole::release();
}

bool SystemConsole::open() {
    output_ = openDevice(L"CONOUT$");
    input_ = openDevice(L"CONIN$");
    return output_ != kNoFile && input_ != kNoFile;
}

void SystemConsole::close() {
    text_.reset();
    if (output_ != kNoFile) closeHandle(output_);
    if (input_ != kNoFile) closeHandle(input_);
    output_ = input_ = kNoFile;
}

/// Without a console the streams of the process serve, and that counts as success.
std::uint32_t SystemConsole::allocate(ConsoleInfo& info) {
    ours_ = AllocConsole() != 0;
    if (!open()) {
        close();
        if (ours_) FreeConsole();
        ours_ = false;
        return fallback_.allocate(info);
    }
    describe(systemHandle(output_), info);
    text_ = std::make_unique<GatheredOutput>(output_);
    SetConsoleCtrlHandler(onControlEvent, TRUE);
    return 0;
}

std::uint32_t SystemConsole::release() {
    if (!text_) return fallback_.release();
    hide();
    SetConsoleCtrlHandler(onControlEvent, FALSE);
    close();
    return ours_ && !FreeConsole() ? GetLastError() : 0;
}

void SystemConsole::setUp(const ConsoleInfo& info) {
    if (!text_) return fallback_.setUp(info);
    if (info.attributes) SetConsoleTextAttribute(systemHandle(output_), info.attributes);
    if (!ours_) return;
    resize(systemHandle(output_), info);
    removeCloseItem();
}

bool SystemConsole::report(int error) {
    if (error != 0) errno = error;
    return error == 0;
}

bool SystemConsole::write(std::string_view bytes) {
    if (!text_) return fallback_.write(bytes);
    shown_.clear();
    display_.append(bytes, shown_);
    return report(text_->write(shown_, shouldStop_));
}

bool SystemConsole::flush() {
    if (!text_) return fallback_.flush();
    shown_.clear();
    display_.finish(shown_);
    const int error = text_->write(shown_, shouldStop_);
    return report(error != 0 ? error : text_->flush(shouldStop_));
}

int SystemConsole::readChar(StopQuery shouldStop) {
    if (!text_) return fallback_.readChar(shouldStop);
    if (typed_.empty()) {
        const int result = readLine(shouldStop);
        if (result < 0) return result;
    }
    const int byte = typed_.front();
    typed_.pop_front();
    return byte;
}

void SystemConsole::unreadChar(int byte) {
    if (!text_)
        fallback_.unreadChar(byte);
    else if (byte >= 0)
        typed_.push_front(byte);
}

void SystemConsole::dropTyped() {
    typed_.clear();
    fallback_.dropTyped();
}

bool SystemConsole::takeWaited() {
    const bool waited = std::exchange(waited_, false);
    return fallback_.takeWaited() || waited;
}

int SystemConsole::readKey(StopQuery shouldStop) {
    if (!text_) return fallback_.readKey(shouldStop);
    flush();
    while (codes_.empty()) {
        waited_ = true;
        INPUT_RECORD record{};
        const int waited = awaitConsoleEvent(systemHandle(input_), shouldStop, record);
        if (waited < 0) return waited;
        if (const auto key = consoleKeyOf(record))
            for (const int code : consoleKeyCodes(*key)) codes_.push_back(code);
    }
    const int code = codes_.front();
    codes_.pop_front();
    return code;
}

void SystemConsole::enterLine(const std::string& bytes) {
    for (const char c : bytes) typed_.push_back(static_cast<unsigned char>(c));
    typed_.push_back('\n');
}

/// Reads and echoes one line; Backspace edits, Ctrl+Z on an empty line ends the input.
int SystemConsole::readLine(StopQuery shouldStop) {
    if (!fed_.empty()) {
        enterLine(fed_.front());
        fed_.pop_front();
        return 0;
    }
    flush();
    waited_ = true;
    std::wstring typed;
    for (;;) {
        INPUT_RECORD record{};
        const int waited = awaitConsoleEvent(systemHandle(input_), shouldStop, record);
        if (waited < 0) return waited;
        const wchar_t character = characterOf(record);
        if (character == kControlZ && typed.empty()) return kEndOfInput;
        if (character == L'\r') break;
        edit(typed, character);
    }
    echo(L"\n");
    enterLine(encodeTyped(utf8OfWide(typed)));
    return 0;
}

void SystemConsole::edit(std::wstring& typed, wchar_t character) {
    if (character == L'\b' && !typed.empty()) {
        typed.pop_back();
        echo(L"\b \b");
    } else if (character >= L' ' && typed.size() < kLongestLine) {
        typed += character;
        echo({&character, 1});
    }
}

void SystemConsole::echo(std::wstring_view text) {
    DWORD written = 0;
    WriteConsoleW(systemHandle(output_), text.data(), static_cast<DWORD>(text.size()), &written,
                  nullptr);
}

void SystemConsole::clear() {
    if (!text_) return fallback_.clear();
    flush();
    const HANDLE output = systemHandle(output_);
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!GetConsoleScreenBufferInfo(output, &buffer)) return;
    const DWORD cells = static_cast<DWORD>(buffer.dwSize.X) * static_cast<DWORD>(buffer.dwSize.Y);
    DWORD done = 0;
    FillConsoleOutputCharacterW(output, L' ', cells, {0, 0}, &done);
    FillConsoleOutputAttribute(output, buffer.wAttributes, cells, {0, 0}, &done);
    SetConsoleCursorPosition(output, {0, 0});
}

std::uint16_t SystemConsole::attributes() {
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!text_) return fallback_.attributes();
    return GetConsoleScreenBufferInfo(systemHandle(output_), &buffer) ? buffer.wAttributes : 0;
}

/// What was printed before keeps its colours.
void SystemConsole::setAttributes(std::uint16_t attributes) {
    if (!text_) return fallback_.setAttributes(attributes);
    flush();
    SetConsoleTextAttribute(systemHandle(output_), attributes);
}

void SystemConsole::moveCursor(std::int16_t column, std::int16_t row) {
    if (!text_) return fallback_.moveCursor(column, row);
    flush();
    SetConsoleCursorPosition(systemHandle(output_), {column, row});
}

void SystemConsole::show() {
    if (!text_) return fallback_.show();
    text_->begin();
    if (ours_) ShowWindow(GetConsoleWindow(), SW_SHOWNORMAL);
}

void SystemConsole::hide() {
    typed_.clear();
    codes_.clear();
    if (!text_) return fallback_.hide();
    flush();
    text_->flushWithin(kPatience);
    text_->end();
    if (ours_) ShowWindow(GetConsoleWindow(), SW_HIDE);
}

void SystemConsole::setTitle(std::string_view title) {
    if (!text_) return fallback_.setTitle(title);
    SetConsoleTitleW(wideOfBytes(title).c_str());
}

/// For the console's keys alone: without a console they are the host's.
void SystemConsole::onInterrupt(void (*handler)() noexcept) {
    interruptHandler = handler;
}

}  // namespace korvant
