#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "base/system/child_process.h"
#include "base/system/clock.h"
#include "base/system/spawn_posix.h"

extern char** environ;

namespace korvant {

namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10;
constexpr int kFirstInherited = 3;

void closeFile(int& file) {
    if (file >= 0) ::close(file);
    file = -1;
}

/// Waits until the file can be read or written, or the second one be read; poll's answer.
int waitFor(pollfd* files, nfds_t count, std::uint64_t end) {
    for (;;) {
        const std::uint64_t now = systemClock().monotonic();
        const int left = now >= end ? 0 : static_cast<int>(end - now);
        const int ready = ::poll(files, count, left);
        if (ready >= 0 || errno != EINTR) return ready;
    }
}

/// The variables of this process, with the folder ahead of where libraries are looked for.
std::vector<std::string> variables(const std::string& libraryFolder) {
    constexpr std::string_view kPath = "LD_LIBRARY_PATH=";
    std::vector<std::string> result;
    std::string path = std::string(kPath) + libraryFolder;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        if (libraryFolder.empty() || !text.starts_with(kPath))
            result.emplace_back(text);
        else if (text.size() > kPath.size())
            path += ":" + std::string(text.substr(kPath.size()));
    }
    if (!libraryFolder.empty()) result.push_back(std::move(path));
    return result;
}

/// Own group, usual signals, the channel as standard streams, nothing else of the parent's files.
class SpawnSettings {
  public:
    explicit SpawnSettings(int channel) {
        ::posix_spawn_file_actions_init(&files);
        ::posix_spawn_file_actions_adddup2(&files, channel, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&files, channel, STDOUT_FILENO);
        ::posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 34))
        ::posix_spawn_file_actions_addclosefrom_np(&files, kFirstInherited);
#endif
        ::posix_spawnattr_init(&attributes);
        sigset_t none, all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        ::posix_spawnattr_setpgroup(&attributes, 0);
        ::posix_spawnattr_setflags(
            &attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&files);
        ::posix_spawnattr_destroy(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
};

}  // namespace

struct ChildProcess::Impl {
    pid_t process = -1;
    int channel = -1;
    int wake[2] = {-1, -1};  ///< a byte in it ends a read

    ~Impl() {
        end();
        for (int& file : wake) closeFile(file);
    }
    /// What a host has told the system to do with ended children does not matter: gone is gone.
    void end() {
        closeFile(channel);
        if (process <= 0) return;
        ::kill(process, SIGKILL);
        while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        process = -1;
    }
    bool open(int& childEnd) {
        int ends[2];
        if (::pipe2(wake, O_CLOEXEC | O_NONBLOCK) != 0) return false;
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return false;
        channel = ends[0];
        childEnd = ends[1];
        return true;
    }
    bool spawn(const Order& order, int childEnd) {
        std::vector<std::string> texts{order.program};
        texts.insert(texts.end(), order.arguments.begin(), order.arguments.end());
        std::vector<std::string> settings = variables(order.libraryFolder);
        const SpawnSettings how(childEnd);
        return ::posix_spawn(&process, order.program.c_str(), &how.files, &how.attributes,
                             pointersTo(texts).data(), pointersTo(settings).data()) == 0;
    }
};

ChildProcess::ChildProcess(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
ChildProcess::~ChildProcess() = default;

std::unique_ptr<ChildProcess> ChildProcess::start(const Order& order) {
    auto impl = std::make_unique<Impl>();
    int childEnd = -1;
    const bool started = impl->open(childEnd) && impl->spawn(order, childEnd);
    if (!started) impl->process = -1;
    closeFile(childEnd);
    if (!started) return nullptr;
    return std::unique_ptr<ChildProcess>(new ChildProcess(std::move(impl)));
}

bool ChildProcess::write(std::string_view bytes, std::uint32_t timeoutMs) {
    const std::uint64_t end = systemClock().monotonic() + timeoutMs;
    while (!bytes.empty()) {
        if (impl_->channel < 0) return false;
        const ssize_t sent =
            ::send(impl_->channel, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
            continue;
        }
        if (errno == EINTR) continue;
        pollfd file{impl_->channel, POLLOUT, 0};
        if (errno != EAGAIN || waitFor(&file, 1, end) <= 0) return false;
    }
    return true;
}

ChildProcess::Read ChildProcess::read(std::string& bytes, std::uint32_t timeoutMs) {
    if (impl_->channel < 0) return Read::ended;
    pollfd files[2] = {{impl_->channel, POLLIN, 0}, {impl_->wake[0], POLLIN, 0}};
    const int ready = waitFor(files, 2, systemClock().monotonic() + timeoutMs);
    if (ready == 0) return Read::nothing;
    if (files[1].revents != 0) {
        char drained[64];
        while (::read(impl_->wake[0], drained, sizeof drained) > 0) {
        }
        return Read::interrupted;
    }
    const std::size_t before = bytes.size();
    bytes.resize(before + kPiece);
    ssize_t got = 0;
    do got = ::recv(impl_->channel, bytes.data() + before, kPiece, 0);
    while (got < 0 && errno == EINTR);
    bytes.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
    if (got > 0) return Read::some;
    impl_->end();
    return Read::ended;
}

void ChildProcess::interrupt() noexcept {
    const char byte = 0;
    // A full pipe has a byte in it, which is all that is wanted.
    [[maybe_unused]] const ssize_t written = ::write(impl_->wake[1], &byte, 1);
}

std::int64_t ChildProcess::id() const noexcept {
    return impl_->process;
}

std::size_t readFromParent(char* buffer, std::size_t size) {
    ssize_t got = 0;
    do got = ::read(STDIN_FILENO, buffer, size);
    while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

bool writeToParent(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(STDOUT_FILENO, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

/// The channel is closed when the parent dies by any death, unless one of its other children holds
/// it; then the process has another parent.
void liveWithParent(std::size_t bytes) {
    const rlimit noImage{0, 0};
    ::setrlimit(RLIMIT_CORE, &noImage);
    // Sanitizers reserve more addresses than there is memory.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlimit memory{bytes, bytes};
    if (bytes != 0) ::setrlimit(RLIMIT_AS, &memory);
#else
    (void)bytes;
#endif
    std::thread([parent = ::getppid()] {
        constexpr int kLook = 500;  // ms
        for (;;) {
            pollfd file{STDIN_FILENO, 0, 0};
            ::poll(&file, 1, kLook);
            if ((file.revents & (POLLHUP | POLLERR)) != 0 || ::getppid() != parent) ::_exit(0);
        }
    }).detach();
}

}  // namespace korvant
