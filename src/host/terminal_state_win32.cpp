#include <windows.h>

#include <io.h>

#include <atomic>
#include <cstdlib>

#include "host/terminal_state.h"

namespace korvant {

namespace {

struct Guarded {
    HANDLE input = INVALID_HANDLE_VALUE;
    HANDLE output = INVALID_HANDLE_VALUE;
    DWORD inputMode = 0;
    DWORD outputMode = 0;
    UINT codePage = 0;
    bool known = false;
};

Guarded guarded;
std::atomic<int> interrupts{0};
std::atomic<void (*)() noexcept> interruptHandler{nullptr};
constexpr int kPatience = 3;

void giveBack() {
    if (!guarded.known) return;
    SetConsoleMode(guarded.input, guarded.inputMode);
    SetConsoleMode(guarded.output, guarded.outputMode);
    SetConsoleOutputCP(guarded.codePage);
}

BOOL WINAPI onControlEvent(DWORD) {
    if (interrupts.fetch_add(1) + 1 >= kPatience) return FALSE;
    if (const auto handler = interruptHandler.load()) handler();
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
    SetConsoleMode(guarded.output, guarded.outputMode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    std::atexit(giveBack);
}

int terminalColumns(int handle) {
    CONSOLE_SCREEN_BUFFER_INFO buffer{};
    if (!GetConsoleScreenBufferInfo(systemHandle(handle), &buffer)) return 80;
    return buffer.srWindow.Right - buffer.srWindow.Left + 1;
}

SingleKeyMode::SingleKeyMode() {
    if (guarded.known)
        SetConsoleMode(guarded.input,
                       guarded.inputMode & ~DWORD{ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT});
}

SingleKeyMode::~SingleKeyMode() {
    if (guarded.known) SetConsoleMode(guarded.input, guarded.inputMode);
}

void noteColours(bool) {}

void handleInterrupts(void (*handler)() noexcept) {
    interruptHandler = handler;
    SetConsoleCtrlHandler(onControlEvent, TRUE);
}

bool interrupted() noexcept {
    return interrupts.load() > 0;
}

void forgetInterrupts() {
    interrupts = 0;
}

}  // namespace korvant
