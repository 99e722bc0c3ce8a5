#include "support/process_runner.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>

namespace korvant::test {

namespace {

using Steady = std::chrono::steady_clock;

int millisecondsSince(Steady::time_point start) {
    return static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Steady::now() - start).count());
}

/// A child begins with the signals as a shell would leave them.
void resetSignals() {
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE, SIGTSTP})
        ::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void execute(const std::vector<std::string>& arguments) {
    std::vector<char*> raw;
    for (const std::string& argument : arguments)
        raw.push_back(const_cast<char*>(argument.c_str()));
    raw.push_back(nullptr);
    ::execv(raw[0], raw.data());
    ::_exit(127);
}

struct Pipe {
    int ends[2] = {-1, -1};
    Pipe() { EXPECT_EQ(0, ::pipe2(ends, O_CLOEXEC)); }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    void closeEnd(int which) {
        if (ends[which] >= 0) ::close(ends[which]);
        ends[which] = -1;
    }
};

void enterChild(const ProcessOptions& options, const Pipe& input, const Pipe& output,
                const Pipe& errors) {
    resetSignals();
    ::setsid();
    if (!options.folder.empty() && ::chdir(options.folder.c_str()) != 0) ::_exit(126);
    for (const std::string& variable : options.environment) {
        const auto mark = variable.find('=');
        ::setenv(variable.substr(0, mark).c_str(), variable.substr(mark + 1).c_str(), 1);
    }
    ::dup2(input.ends[0], 0);
    const int file =
        options.outputFile.empty() ? -1 : ::open(options.outputFile.c_str(), O_WRONLY | O_CLOEXEC);
    ::dup2(file >= 0 ? file : output.ends[1], 1);
    ::dup2(errors.ends[1], 2);
}

/// Feeds and reads the three streams until both outputs are closed or the time is up.
class Exchange {
  public:
    Exchange(Pipe& input, Pipe& output, Pipe& errors, const ProcessOptions& options,
             ProcessResult& result)
        : input_(input), output_(output), errors_(errors), options_(options), result_(result) {
        ::fcntl(input_.ends[1], F_SETFL, O_NONBLOCK);
    }

    void run() {
        const auto start = Steady::now();
        while (output_.ends[0] >= 0 || errors_.ends[0] >= 0) {
            pollfd entries[] = {{output_.ends[0], POLLIN, 0},
                                {errors_.ends[0], POLLIN, 0},
                                {input_.ends[1], POLLOUT, 0}};
            ::poll(entries, 3, 20);
            if (entries[2].revents != 0) feed();
            if (entries[0].revents != 0) read(output_, result_.output);
            if (entries[1].revents != 0) read(errors_, result_.errors);
            result_.timedOut = millisecondsSince(start) > options_.seconds * 1000;
            if (result_.timedOut) break;
        }
    }

  private:
    void feed() {
        const ssize_t taken =
            ::write(input_.ends[1], options_.input.data() + fed_, options_.input.size() - fed_);
        if (taken > 0) fed_ += static_cast<std::size_t>(taken);
        if (fed_ == options_.input.size() || (taken < 0 && errno != EAGAIN)) input_.closeEnd(1);
    }

    static void read(Pipe& pipe, std::string& text) {
        char piece[65536];
        const ssize_t got = ::read(pipe.ends[0], piece, sizeof piece);
        if (got > 0)
            text.append(piece, static_cast<std::size_t>(got));
        else
            pipe.closeEnd(0);
    }

    Pipe& input_;
    Pipe& output_;
    Pipe& errors_;
    const ProcessOptions& options_;
    ProcessResult& result_;
    std::size_t fed_ = 0;
};

void take(int status, ProcessResult& result) {
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& arguments, const ProcessOptions& options) {
    ::signal(SIGPIPE, SIG_IGN);
    Pipe input, output, errors, unread;
    const auto start = Steady::now();
    const pid_t process = ::fork();
    if (process == 0) {
        enterChild(options, input, options.outputIgnored ? unread : output, errors);
        execute(arguments);
    }
    input.closeEnd(0);
    output.closeEnd(1);
    errors.closeEnd(1);
    if (options.outputClosed || !options.outputFile.empty()) output.closeEnd(0);
    ProcessResult result;
    Exchange(input, output, errors, options, result).run();
    if (result.timedOut) ::kill(process, SIGKILL);
    int status = 0;
    ::waitpid(process, &status, 0);
    take(status, result);
    result.milliseconds = millisecondsSince(start);
    return result;
}

TerminalProcess::TerminalProcess(const std::vector<std::string>& arguments, bool pipeOutput) {
    terminal_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_EQ(0, ::grantpt(terminal_));
    EXPECT_EQ(0, ::unlockpt(terminal_));
    const std::string name = ::ptsname(terminal_);
    other_ = ::open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size{25, 80, 0, 0};
    ::ioctl(other_, TIOCSWINSZ, &size);
    ::tcgetattr(other_, &before_);
    Pipe report;
    shell_ = ::fork();
    if (shell_ == 0) beShell(name, report.ends[1], arguments, pipeOutput);
    report.closeEnd(1);
    EXPECT_EQ(static_cast<ssize_t>(sizeof process_),
              ::read(report.ends[0], &process_, sizeof process_));
}

/// Owns the terminal, runs the program as its foreground job, and ends as it ended.
void TerminalProcess::beShell(const std::string& terminal, int report,
                              const std::vector<std::string>& arguments, bool pipeOutput) {
    resetSignals();
    ::setsid();
    ::setenv("TERM", "xterm", 1);
    const int side = ::open(terminal.c_str(), O_RDWR);
    ::ioctl(side, TIOCSCTTY, 0);
    for (const int handle : {0, 1, 2}) ::dup2(side, handle);
    if (side > 2) ::close(side);
    const pid_t job = ::fork();
    if (job == 0) {
        ::setpgid(0, 0);
        ::signal(SIGTTOU, SIG_IGN);
        ::tcsetpgrp(0, ::getpid());
        ::signal(SIGTTOU, SIG_DFL);
        int ends[2];
        if (pipeOutput && ::pipe(ends) == 0) ::dup2(ends[1], 1);
        execute(arguments);
    }
    [[maybe_unused]] const auto told = ::write(report, &job, sizeof job);
    ::signal(SIGHUP, SIG_IGN);
    int status = 0;
    while (::waitpid(job, &status, 0) < 0 && errno == EINTR) {
    }
    ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}

TerminalProcess::~TerminalProcess() {
    if (shell_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(shell_, nullptr, 0);
    }
    ::close(terminal_);
    ::close(other_);
}

bool TerminalProcess::readSome(int milliseconds) {
    pollfd entry{terminal_, POLLIN, 0};
    if (::poll(&entry, 1, milliseconds) <= 0) return false;
    char piece[65536];
    const ssize_t got = ::read(terminal_, piece, sizeof piece);
    if (got <= 0) return false;
    screen_.append(piece, static_cast<std::size_t>(got));
    return true;
}

bool TerminalProcess::await(const std::string& text) {
    const auto start = Steady::now();
    while (millisecondsSince(start) < 10'000) {
        const auto found = screen_.find(text, awaited_);
        if (found != std::string::npos) {
            awaited_ = found + text.size();
            return true;
        }
        readSome(20);
    }
    ADD_FAILURE() << "\"" << text << "\" did not appear; there is: " << screen_;
    return false;
}

void TerminalProcess::type(const std::string& keys) {
    EXPECT_EQ(static_cast<ssize_t>(keys.size()), ::write(terminal_, keys.data(), keys.size()));
}

void TerminalProcess::send(int signal) {
    ::kill(process_, signal);
}

int TerminalProcess::finish() {
    const auto start = Steady::now();
    int status = 0;
    while (::waitpid(shell_, &status, WNOHANG) == 0) {
        readSome(10);
        if (millisecondsSince(start) < 20'000) continue;
        ADD_FAILURE() << "the program does not end; there is: " << screen_;
        return -SIGKILL;
    }
    shell_ = -1;
    while (readSome(0)) {
    }
    const int code = WEXITSTATUS(status);
    return code < 128 ? code : 128 - code;
}

termios TerminalProcess::settings() const {
    termios now{};
    ::tcgetattr(other_, &now);
    return now;
}

bool TerminalProcess::restored() const {
    const termios now = settings();
    return now.c_lflag == before_.c_lflag && now.c_iflag == before_.c_iflag &&
           std::memcmp(now.c_cc, before_.c_cc, sizeof now.c_cc) == 0;
}

}  // namespace korvant::test
