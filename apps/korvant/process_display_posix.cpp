#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "process_display.h"

namespace korvant_app {
namespace {

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

/// The library is there wherever windows can be shown; the program needs nothing else of it.
bool xAnswers() {
    using Open = void* (*)(const char*);
    using Close = int (*)(void*);
    void* const library = dlopen("libX11.so.6", RTLD_NOW | RTLD_LOCAL);
    if (!library) return false;
    const auto open = reinterpret_cast<Open>(dlsym(library, "XOpenDisplay"));
    const auto close = reinterpret_cast<Close>(dlsym(library, "XCloseDisplay"));
    void* const display = open && close ? open(nullptr) : nullptr;
    if (display) close(display);
    return display != nullptr;
}

bool waylandAnswers(const std::string& name) {
    const std::string path = name.front() == '/' ? name : variable("XDG_RUNTIME_DIR") + "/" + name;
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path) return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connection < 0) return false;
    const bool answers =
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(connection);
    return answers;
}

}  // namespace

bool hasDisplay() {
    const std::string wayland = variable("WAYLAND_DISPLAY");
    if (!wayland.empty() && waylandAnswers(wayland)) return true;
    return !variable("DISPLAY").empty() && xAnswers();
}

bool consoleIsWindow() {
    return hasDisplay();
}

}  // namespace korvant_app
