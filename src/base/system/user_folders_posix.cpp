#include <dlfcn.h>
#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "base/system/file_io.h"
#include "base/system/user_folders.h"

extern char** environ;

namespace korvant {

namespace {

constexpr char kProduct[] = "korvantide";
constexpr char kManual[] = "/scripting_manual/index.html";
constexpr char kSharedManual[] = "/share/korvantide/scripting_manual/index.html";
constexpr int kWaitStep = 10'000, kLongestWait = 500'000;  // microseconds

/// An environment variable that holds an absolute path; others are to be ignored.
std::string folderVariable(const char* name) {
    const char* value = std::getenv(name);
    return value && value[0] == '/' ? value : "";
}

std::string homeFolder() {
    const std::string home = folderVariable("HOME");
    if (!home.empty()) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user && user->pw_dir ? user->pw_dir : "";
}

/// Some desktops hand the file over and end at once, others stay for as long as it is shown.
bool failsSoon(pid_t child) {
    for (int waited = 0; waited < kLongestWait; waited += kWaitStep) {
        int status = 0;
        if (::waitpid(child, &status, WNOHANG) == child)
            return !WIFEXITED(status) || WEXITSTATUS(status) != 0;
        ::usleep(kWaitStep);
    }
    std::thread([child] {
        while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }).detach();
    return false;
}

}  // namespace

/// The loader names a program as it was called, which means nothing in another current folder.
std::string moduleFolder() {
    static const char here = 0;
    Dl_info found{};
    const bool told = ::dladdr(&here, &found) != 0 && found.dli_fname;
    return told && found.dli_fname[0] == '/' ? folderOf(found.dli_fname) : programFolder();
}

std::string userDataFolder() {
    // Source: the XDG base directories (freedesktop.org).
    std::string data = folderVariable("XDG_DATA_HOME");
    if (data.empty() && !homeFolder().empty()) data = homeFolder() + "/.local/share";
    return data.empty() ? data : joinPath(data, kProduct);
}

std::string programFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    return length <= 0 ? std::string() : folderOf({path, static_cast<std::size_t>(length)});
}

std::string absolutePath(const std::string& path) {
    char folder[PATH_MAX];
    if (path.empty() || path[0] == '/' || !::getcwd(folder, sizeof folder)) return path;
    return joinPath(folder, path);
}

std::string manualPage(const std::string& programFolder) {
    // An installed program and an installed module have the manual in the shared data of their
    // tree: below PREFIX/bin, PREFIX/lib and PREFIX/lib/ARCHITECTURE.
    const std::string beside = programFolder + kManual, module = moduleFolder();
    for (const std::string& place :
         {beside, programFolder + "/.." + kSharedManual, module + kManual,
          module + "/.." + kSharedManual, module + "/../.." + kSharedManual})
        if (::access(place.c_str(), R_OK) == 0) return place;
    return beside;
}

namespace {

std::string addressOf(const std::string& path) {
    std::string address = "file://";
    for (const char letter : absolutePath(path)) {
        char escaped[4];
        std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned char>(letter));
        address += std::strchr(" %?#", letter) ? escaped : std::string(1, letter);
    }
    return address;
}

}  // namespace

bool openWithDesktop(const std::string& path) {
    // A place in a page is only understood in the form of an address.
    const std::size_t place = path.rfind(".html#");
    const std::string file = place == std::string::npos ? path : path.substr(0, place + 5);
    if (::access(file.c_str(), R_OK) != 0) return false;
    std::string program = "xdg-open";
    std::string argument =
        file.size() == path.size() ? path : addressOf(file) + path.substr(file.size());
    char* arguments[] = {program.data(), argument.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0)
        return false;
    return !failsSoon(child);
}

}  // namespace korvant
