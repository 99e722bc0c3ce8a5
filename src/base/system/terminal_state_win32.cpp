#include <windows.h>

#include <io.h>

#include <atomic>
#include <cstdlib>

#include "base/system/terminal_state.h"

namespace korvant {

namespace {

struct Guarded {
    HANDLE input = INVALID_HANDLE_VALUE;
    HANDLE output = INVALID_HANDLE_VALUE;
    DWORD inputMode = 0;
    DWORD outputMode = 0;
    UINT codePage = 0;
    bool known = false;
    std::atomic<bool> inSingleKey{false};
};

Guarded guarded;
std::atomic<int> interrupts{0};
std::atomic<void (*)() noexcept> interruptHandler{nullptr};
std::atomic<void (*)(bool) noexcept> interruptOwner{nullptr};
constexpr int kPatience = 3;
constexpr DWORD kSequencesOut = 0x0004, kSequencesIn = 0x0200;

void giveBack() {
    if (!guarded.known) return;
    SetConsoleMode(guarded.input, guarded.inputMode);
    SetConsoleMode(guarded.output, guarded.outputMode);
    SetConsoleOutputCP(guarded.codePage);
}

BOOL WINAPI onControlEvent(DWORD event) {
    if (interrupts.fetch_add(1) + 1 >= kPatience) return FALSE;
    if (const auto owner = interruptOwner.load())
        owner(event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT);
    else if (const auto handler = interruptHandler.load())
        handler();
    return TRUE;
}

HANDLE systemHandle(int handle) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(handle));
}

}  // namespace

void guardTerminal(int input, int output) {
    if (guarded.known) return;
    guarded.input = systemHandle(input);
    guarded.output = systemHandle(output);
    guarded.known = GetConsoleMode(guarded.input, &guarded.inputMode) &&
                    GetConsoleMode(guarded.output, &guarded.outputMode);
    if (!guarded.known) return;
    guarded.codePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit(giveBack);
}

TerminalSize terminalSize(int handle) {
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!GetConsoleScreenBufferInfo(systemHandle(handle), &buffer)) return {};
    const SMALL_RECT& seen = buffer.srWindow;
    return {static_cast<std::uint16_t>(seen.Right - seen.Left + 1),
            static_cast<std::uint16_t>(seen.Bottom - seen.Top + 1)};
}

bool understandsSequences(int handle) {
    const HANDLE console = systemHandle(handle);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) &&
           SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | kSequencesOut);
}

void enterSingleKeyMode() {
    if (!guarded.known || guarded.inSingleKey.exchange(true)) return;
    const DWORD single = guarded.inputMode & ~DWORD{ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT};
    // Older systems do not know keys as sequences; they give characters only.
    if (!SetConsoleMode(guarded.input, single | kSequencesIn))
        SetConsoleMode(guarded.input, single);
}

void leaveSingleKeyMode() {
    if (guarded.inSingleKey.exchange(false)) SetConsoleMode(guarded.input, guarded.inputMode);
}

void noteColours(bool) {}

void handleInterrupts(void (*handler)() noexcept) {
    interruptHandler = handler;
    SetConsoleCtrlHandler(onControlEvent, TRUE);
}

void ownInterrupts(void (*handler)(bool ends) noexcept) noexcept {
    interruptOwner = handler;
}

bool interrupted() noexcept {
    return interrupts.load() > 0;
}

void forgetInterrupts() {
    interrupts = 0;
}

}  // namespace korvant
