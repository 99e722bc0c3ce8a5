#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <thread>

#include "base/system/os_file.h"
#include "base/system/spawn_posix.h"
#include "base/system/start_program.h"

extern char** environ;

namespace korvant {

namespace {

/// Later entries win, so that they must come first.
std::vector<std::string> environmentWith(
    const std::vector<std::pair<std::string, std::string>>& variables) {
    std::vector<std::string> all;
    for (const auto& [name, value] : variables) all.push_back(name + "=" + value);
    for (char** entry = environ; *entry != nullptr; ++entry) all.emplace_back(*entry);
    return all;
}

/// Nothing is left of a child that has ended.
void reapLater(pid_t child) {
    std::thread([child] {
        keepSignalsAway();
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }).detach();
}

}  // namespace

std::string programPath() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    return length <= 0 ? std::string() : std::string(path, static_cast<std::size_t>(length));
}

std::string startProgram(const std::vector<std::string>& command,
                         const std::vector<std::pair<std::string, std::string>>& variables,
                         const std::string& folder) {
    std::vector<std::string> arguments = command;
    std::vector<std::string> environment = environmentWith(variables);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (!folder.empty()) ::posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    pid_t child = 0;
    const int error = ::posix_spawn(&child, command.front().c_str(), &actions, nullptr,
                                    pointersTo(arguments).data(), pointersTo(environment).data());
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) return command.front() + " cannot be started: " + systemErrorText(error);
    reapLater(child);
    return {};
}

}  // namespace korvant
