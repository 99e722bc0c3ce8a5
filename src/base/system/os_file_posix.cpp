#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "base/system/os_file.h"
#include "base/system/quiet_write_posix.h"

namespace korvant {

namespace {

constexpr int kPollMilliseconds = 50;

/// One write that no signal interrupts. The bytes taken, or the negative system error.
ssize_t writeOnce(int handle, std::string_view bytes) {
    ssize_t result;
    do result = writeQuietly(handle, bytes.data(), bytes.size());
    while (result == -EINTR);
    return result;
}

/// Waits for `events` in short pieces. True when there is something to do (an error as well: the
/// call that follows tells it), false when stopped.
bool waitFor(int handle, short events, StopQuery shouldStop) {
    for (;;) {
        if (shouldStop && shouldStop()) return false;
        pollfd entry{handle, events, 0};
        const int ready = ::poll(&entry, 1, kPollMilliseconds);
        if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
    }
}

bool mayBlock(int handle) {
    struct stat status {};
    return ::fstat(handle, &status) == 0 && !S_ISREG(status.st_mode);
}

/// How much one write may take without blocking once the handle is ready.
std::size_t readyPiece(int handle, std::size_t wanted) {
    if (!mayBlock(handle) || (::fcntl(handle, F_GETFL) & O_NONBLOCK) != 0) return wanted;
    return std::min<std::size_t>(wanted, PIPE_BUF);
}

std::string realPath(const std::string& name) {
    char* resolved = ::realpath(name.c_str(), nullptr);
    const std::string result = resolved ? resolved : "";
    std::free(resolved);
    return result;
}

std::string pathOfHandle(int handle) {
    return realPath("/proc/self/fd/" + std::to_string(handle));
}

bool liesInside(const std::string& path, const std::string& folder) {
    const std::string root = realPath(folder);
    if (root.empty() || path.empty()) return false;
    return root == "/" || path.compare(0, root.size() + 1, root + "/") == 0;
}

std::string parentOf(const std::string& name) {
    const auto slash = name.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : name.substr(0, slash);
}

bool nameIsUsable(const std::string& name) {
    return !name.empty() && name.find('\0') == std::string::npos;
}

/// open() that a signal does not end.
int openHandle(const std::string& name, int flags) {
    int handle;
    do handle = ::open(name.c_str(), flags | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666);
    while (handle < 0 && errno == EINTR);
    return handle;
}

int refuse(int handle) {
    if (handle >= 0) ::close(handle);
    return kNoFile;
}

bool isFolder(int handle) {
    struct stat status {};
    return ::fstat(handle, &status) != 0 || S_ISDIR(status.st_mode);
}

bool allowed(int handle, const FileRules& rules) {
    return rules.access != FileAccess::oneFolder || liesInside(pathOfHandle(handle), rules.folder);
}

/// The flags that create a missing file. Inside one folder the file must not come into being
/// anywhere else, not even through a link that leads nowhere.
int creatingFlags(const std::string& name, const FileRules& rules) {
    if (rules.access != FileAccess::oneFolder) return O_CREAT;
    const std::string parent = realPath(parentOf(name));
    return liesInside(parent + "/", rules.folder) ? O_CREAT | O_EXCL : 0;
}

/// A pipe without a reader says ENXIO; it is waited for.
int openWaitingForReader(const std::string& name, int flags, StopQuery shouldStop) {
    for (;;) {
        const int handle = openHandle(name, flags);
        struct stat status {};
        if (handle >= 0 || errno != ENXIO || ::stat(name.c_str(), &status) != 0 ||
            !S_ISFIFO(status.st_mode))
            return handle;
        if (shouldStop && shouldStop()) return kNoFile;
        ::poll(nullptr, 0, kPollMilliseconds);
    }
}

}  // namespace

int openForReading(const std::string& name, const FileRules& rules) {
    if (!nameIsUsable(name) || rules.access == FileAccess::none) return kNoFile;
    const int handle = openHandle(name, O_RDONLY);
    if (handle < 0) return kNoFile;
    return isFolder(handle) || !allowed(handle, rules) ? refuse(handle) : handle;
}

int openForWriting(const std::string& name, bool append, const FileRules& rules,
                   StopQuery shouldStop) {
    if (!nameIsUsable(name) || rules.access == FileAccess::none ||
        rules.access == FileAccess::readOnly)
        return kNoFile;
    // Emptied only once it is known which file this is.
    const int flags = O_WRONLY | (append ? O_APPEND : 0);
    int handle = openWaitingForReader(name, flags, shouldStop);
    if (handle < 0 && errno == ENOENT)
        handle = openHandle(name, flags | creatingFlags(name, rules));
    if (handle < 0) return kNoFile;
    if (!allowed(handle, rules)) return refuse(handle);
    if (!append && !mayBlock(handle) && ::ftruncate(handle, 0) != 0) return refuse(handle);
    return handle;
}

ReadState readSome(int handle, char* buffer, std::size_t room, std::size_t& got,
                   StopQuery shouldStop) {
    const bool mustWait = mayBlock(handle);
    for (;;) {
        if (mustWait && !waitFor(handle, POLLIN, shouldStop)) return ReadState::stopped;
        const ssize_t result = ::read(handle, buffer, room);
        if (result > 0) {
            got = static_cast<std::size_t>(result);
            return ReadState::bytes;
        }
        if (result == 0 || (errno != EINTR && errno != EAGAIN)) return ReadState::end;
    }
}

bool awaitBytes(int handle, int milliseconds) {
    pollfd entry{handle, POLLIN, 0};
    return ::poll(&entry, 1, milliseconds) > 0;
}

int writeReady(int handle, std::string_view bytes, std::size_t& written) {
    written = 0;
    while (written < bytes.size()) {
        pollfd entry{handle, POLLOUT, 0};
        if (mayBlock(handle) && ::poll(&entry, 1, 0) == 0) return 0;
        const std::size_t piece = readyPiece(handle, bytes.size() - written);
        const ssize_t result = writeOnce(handle, bytes.substr(written, piece));
        if (result == -EAGAIN) return 0;
        if (result < 0) return static_cast<int>(-result);
        written += static_cast<std::size_t>(result);
    }
    return 0;
}

int writeAll(int handle, std::string_view bytes, std::size_t& written, StopQuery shouldStop) {
    written = 0;
    while (written < bytes.size()) {
        std::size_t now = 0;
        const int error = writeReady(handle, bytes.substr(written), now);
        written += now;
        if (error != 0) return error;
        if (written < bytes.size() && !waitFor(handle, POLLOUT, shouldStop)) return ECANCELED;
    }
    return 0;
}

void awaitRoom(int handle) {
    pollfd entry{handle, POLLOUT, 0};
    ::poll(&entry, 1, kPollMilliseconds);
}

int closeHandle(int handle) {
    // After EINTR the handle is closed all the same.
    return ::close(handle) == 0 || errno == EINTR ? 0 : errno;
}

int openUnblocked(int handle) {
    const bool writable = (::fcntl(handle, F_GETFL) & O_ACCMODE) != O_RDONLY;
    if (mayBlock(handle) && writable) {
        const std::string itself = "/proc/self/fd/" + std::to_string(handle);
        const int own = openHandle(itself, O_WRONLY);
        if (own >= 0) return own;
    }
    return ::fcntl(handle, F_DUPFD_CLOEXEC, 3);
}

void keepSignalsAway() {
    sigset_t all;
    sigfillset(&all);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT}) sigdelset(&all, fault);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

bool isTerminal(int handle) {
    return ::isatty(handle) == 1;
}

std::string systemErrorText(int error) {
    const char* words = ::strerrordesc_np(error);
    return words ? words : "error " + std::to_string(error);
}

}  // namespace korvant
