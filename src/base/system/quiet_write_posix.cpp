#include "base/system/quiet_write_posix.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

namespace korvant {

namespace {

/// Keeps one signal from this thread while it lives, and takes it away if the write has raised it.
class SignalGuard {
  public:
    explicit SignalGuard(int number) {
        sigset_t pending;
        sigpending(&pending);
        alreadyPending_ = sigismember(&pending, number) == 1;
        if (alreadyPending_) return;
        sigemptyset(&only_);
        sigaddset(&only_, number);
        pthread_sigmask(SIG_BLOCK, &only_, &before_);
    }
    ~SignalGuard() {
        if (alreadyPending_) return;
        const timespec none{};
        while (raised_ && sigtimedwait(&only_, nullptr, &none) == -1 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;
    void takeAway() { raised_ = true; }

  private:
    bool alreadyPending_ = false;
    bool raised_ = false;
    sigset_t only_{};
    sigset_t before_{};
};

}  // namespace

ssize_t writeQuietly(int handle, const char* bytes, std::size_t count) {
    SignalGuard brokenPipe(SIGPIPE);
    SignalGuard fileTooLarge(SIGXFSZ);
    const ssize_t result = ::write(handle, bytes, count);
    if (result >= 0) return result;
    const int error = errno;
    if (error == EPIPE) brokenPipe.takeAway();
    if (error == EFBIG) fileTooLarge.takeAway();
    return -error;
}

}  // namespace korvant
