// A host without any toolkit: it loops over a descriptor.
//
// plain_host MODULE              runs the script twice
// plain_host MODULE closed       there is no display: dialogs answer as if closed
// plain_host MODULE lost         the display goes away while a box is open
#include <poll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

#include "hosts/host_common.h"
#include "support/ui_x_keys.h"

namespace {

/// The host's own loop: it takes a few ticks of a timer.
void goOn() {
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
    const itimerspec often{{0, 1'000'000}, {0, 1'000'000}};
    timerfd_settime(timer, 0, &often, nullptr);
    for (int ticks = 0; ticks < 5; ++ticks) {
        pollfd wait{timer, POLLIN, 0};
        host::check(poll(&wait, 1, 5000) == 1, "the host's loop stands still");
        std::uint64_t count = 0;
        host::check(read(timer, &count, sizeof count) == sizeof count, "no tick");
    }
    close(timer);
}

constexpr char kClosed[] = R"(
int main() {
    int[] wrong;
    if (Question("Carry on?")) wrong[0] = 1;
    if (Prompt("Depth", 12) != 12) wrong[0] = 1;
    Information("Nobody sees this.");
    Progress("Survey", "nor this");
    Print("done\n");
    return 0;
})";

/// Once nothing moves: the toolkit does not survive losing the display inside some of its own
/// questions to it, which it asks while a window opens.
void loseTheDisplay() {
    const char* server = std::getenv("KORVANT_DISPLAY_PROCESS");
    host::check(server != nullptr, "no display process to end");
    host::check(korvant::test::awaitWindow("KorvantIDE"), "the box did not come");
    host::check(korvant::test::awaitRest("KorvantIDE"), "the box does not come to rest");
    kill(static_cast<pid_t>(std::atoi(server)), SIGKILL);
}

}  // namespace

int main(int argc, char** argv) {
    host::check(argc >= 2, "usage: plain_host MODULE [closed|lost]");
    const std::string mode = argc > 2 ? argv[2] : "";
    host::speakFrench();
    host::Module module(argv[1]);
    if (mode == "closed") {
        module.run(kClosed);
        module.run(kClosed);
    } else if (mode == "lost") {
        std::thread end(loseTheDisplay);
        module.run(kClosed);
        end.join();
        module.run(kClosed);
    } else {
        host::runTwice(module);
    }
    goOn();
    return 0;
}
