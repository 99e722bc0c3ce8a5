#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <climits>
#include <cstring>

#include "base/system/crash_notice.h"

namespace korvant {

namespace {

constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr char kBegin[] = "\nThe program crashed. Unsaved text of the script editor is in ";
constexpr std::size_t kStackBytes = std::size_t{64} << 10;

char noticePath[PATH_MAX];
std::atomic<std::size_t> noticeLength{0};  ///< 0 while the path is not to be used
alignas(16) char handlerStack[kStackBytes];

void write(const char* text, std::size_t length) {
    // Nothing can be done about a failure here.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text, length);
}

/// Only what is safe in a process that may be broken in any way. The signal is blocked until the
/// handler returns, and then ends the process in its own way.
void onCrash(int signal) {
    if (const std::size_t length = noticeLength) {
        write(kBegin, sizeof kBegin - 1);
        write(noticePath, length);
        write("\n", 1);
    }
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

bool isOurs(int signal) {
    struct sigaction now {};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == onCrash;
}

void install(int signal) {
    struct sigaction now {};
    if (::sigaction(signal, nullptr, &now) != 0 || now.sa_handler != SIG_DFL) return;
    struct sigaction ours {};
    ours.sa_handler = onCrash;
    ours.sa_flags = SA_ONSTACK;
    ::sigaction(signal, &ours, nullptr);
}

/// A stack that overflowed cannot run the handler.
void useHandlerStack(bool use) {
    stack_t now{};
    if (::sigaltstack(nullptr, &now) != 0) return;
    const bool ours = now.ss_sp == handlerStack;
    if (use ? (now.ss_flags & SS_DISABLE) == 0 : !ours) return;
    stack_t wanted{};
    wanted.ss_sp = handlerStack;
    wanted.ss_size = kStackBytes;
    wanted.ss_flags = use ? 0 : SS_DISABLE;
    ::sigaltstack(&wanted, nullptr);
}

}  // namespace

void setCrashNoticePath(const std::string& path) noexcept {
    noticeLength = 0;
    if (path.size() > sizeof noticePath) return;
    std::memcpy(noticePath, path.data(), path.size());
    noticeLength = path.size();
}

CrashNotice::CrashNotice() {
    useHandlerStack(true);
    for (const int signal : kSignals) install(signal);
}

CrashNotice::~CrashNotice() {
    for (const int signal : kSignals)
        if (isOurs(signal)) ::signal(signal, SIG_DFL);
    useHandlerStack(false);
    setCrashNoticePath({});
}

}  // namespace korvant
