#include <signal.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "base/system/terminal_state.h"

namespace korvant {

namespace {

/// Read by signal handlers: written before they are installed, and atomic flags afterwards.
struct Guarded {
    int input = -1;
    int output = -1;
    termios atStart{};
    termios singleKey{};
    bool known = false;
    std::atomic<bool> inSingleKey{false};
    std::atomic<bool> coloured{false};
};

Guarded guarded;
std::atomic<int> interrupts{0};
std::atomic<void (*)() noexcept> interruptHandler{nullptr};
std::atomic<void (*)(bool) noexcept> interruptOwner{nullptr};
constexpr int kPatience = 3;

static_assert(std::atomic<bool>::is_always_lock_free);

/// Async-signal-safe.
void giveBack() {
    if (guarded.inSingleKey.load()) tcsetattr(guarded.input, TCSANOW, &guarded.atStart);
    if (guarded.coloured.load()) {
        static constexpr char kPlain[] = "\x1b[0m";
        [[maybe_unused]] const auto written = ::write(guarded.output, kPlain, sizeof kPlain - 1);
    }
}

void setAction(int signal, void (*action)(int)) {
    struct sigaction wanted {};
    wanted.sa_handler = action;  // without SA_RESTART, so that waits end
    sigemptyset(&wanted.sa_mask);
    sigaction(signal, &wanted, nullptr);
}

void raiseDefault(int signal) {
    setAction(signal, SIG_DFL);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    raise(signal);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
}

void onFatal(int signal) {
    giveBack();
    raiseDefault(signal);
}

/// Stopped by Ctrl+Z: the shell gets its terminal back; on return ours is set again.
void onSuspend(int signal) {
    const int error = errno;
    giveBack();
    raiseDefault(signal);
    setAction(signal, onSuspend);
    if (guarded.inSingleKey.load()) tcsetattr(guarded.input, TCSANOW, &guarded.singleKey);
    errno = error;
}

void onInterrupt(int signal) {
    const int error = errno;
    if (interrupts.fetch_add(1) + 1 >= kPatience) onFatal(signal);
    if (const auto owner = interruptOwner.load())
        owner(signal != SIGINT);
    else if (const auto handler = interruptHandler.load())
        handler();
    errno = error;
}

/// Handlers that somebody else installed stay.
void replaceDefault(int signal, void (*action)(int)) {
    struct sigaction before {};
    if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_DFL)
        setAction(signal, action);
}

}  // namespace

void guardTerminal(int input, int output) {
    if (guarded.input >= 0) return;
    guarded.input = input;
    guarded.output = output;
    guarded.known = tcgetattr(input, &guarded.atStart) == 0;
    guarded.singleKey = guarded.atStart;
    guarded.singleKey.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    guarded.singleKey.c_iflag &= ~static_cast<tcflag_t>(ICRNL);
    guarded.singleKey.c_cc[VMIN] = 1;
    guarded.singleKey.c_cc[VTIME] = 0;
    for (const int signal : {SIGQUIT, SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        replaceDefault(signal, onFatal);
    replaceDefault(SIGTSTP, onSuspend);
    std::atexit(giveBack);
}

TerminalSize terminalSize(int handle) {
    winsize size{};
    if (ioctl(handle, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return {};
    return {size.ws_col, size.ws_row};
}

bool understandsSequences(int) {
    const char* const kind = std::getenv("TERM");
    return kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
}

void enterSingleKeyMode() {
    if (!guarded.known || guarded.inSingleKey.exchange(true)) return;
    tcsetattr(guarded.input, TCSANOW, &guarded.singleKey);
}

void leaveSingleKeyMode() {
    if (!guarded.inSingleKey.load()) return;
    tcsetattr(guarded.input, TCSANOW, &guarded.atStart);
    guarded.inSingleKey.store(false);
}

void noteColours(bool inUse) {
    guarded.coloured.store(inUse);
}

void handleInterrupts(void (*handler)() noexcept) {
    interruptHandler.store(handler);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        // A program started with "nohup" goes on ignoring the end of its terminal.
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
        setAction(signal, onInterrupt);
    }
}

void ownInterrupts(void (*handler)(bool ends) noexcept) noexcept {
    interruptOwner.store(handler);
}

bool interrupted() noexcept {
    return interrupts.load() > 0;
}

void forgetInterrupts() {
    interrupts.store(0);
}

}  // namespace korvant
