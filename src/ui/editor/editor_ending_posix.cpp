#include <fcntl.h>
#include <glib-unix.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>

#include "ui/editor/editor_ending.h"

namespace korvant::ui::native {

namespace {

/// A terminal that closes, and everybody who asks a process to go.
constexpr std::array kSignals = {SIGTERM, SIGHUP};

std::array<struct sigaction, kSignals.size()> before;
std::atomic<int> loopEnd{-1};  ///< where a signal is handed over to the window's loop
std::atomic<bool> threadBusy{false};

const struct sigaction& actionBefore(int signal) {
    return before[signal == kSignals[0] ? 0 : 1];
}

void goOn(int signal) {
    ::sigaction(signal, &actionBefore(signal), nullptr);
    ::raise(signal);
}

/// Only what is safe in a signal handler: the loop does the rest.
void onSignal(int signal) {
    const auto number = static_cast<unsigned char>(signal);
    if (threadBusy || ::write(loopEnd, &number, 1) != 1) goOn(signal);
}

bool isOurs(int signal) {
    struct sigaction now {};
    return ::sigaction(signal, nullptr, &now) == 0 && now.sa_handler == onSignal;
}

/// A process that was started to outlive its terminal ignores the signal, and goes on to.
void install(int signal) {
    struct sigaction now {};
    if (::sigaction(signal, nullptr, &now) != 0 || now.sa_handler == SIG_IGN) return;
    struct sigaction ours {};
    ours.sa_handler = onSignal;
    ours.sa_flags = SA_RESTART;
    ::sigaction(signal, &ours, nullptr);
}

}  // namespace

struct EndingWatch::State {
    std::function<void()> keep;
    int ends[2] = {-1, -1};
    guint source = 0;

    /// A host that handles the signal itself and stays is asked again the next time.
    static gboolean onHeard(gint end, GIOCondition, gpointer data) {
        const auto& state = *static_cast<State*>(data);
        unsigned char signal = 0;
        if (::read(end, &signal, 1) != 1) return G_SOURCE_CONTINUE;
        state.keep();
        goOn(signal);
        install(signal);
        return G_SOURCE_CONTINUE;
    }
};

EndingWatch::EndingWatch(wxFrame&, std::function<void()> keep) : state_(new State) {
    state_->keep = std::move(keep);
    if (::pipe2(state_->ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    state_->source = g_unix_fd_add(state_->ends[0], G_IO_IN, State::onHeard, state_);
    loopEnd = state_->ends[1];
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &before[i]);
        install(kSignals[i]);
    }
}

EndingWatch::~EndingWatch() {
    for (const int signal : kSignals)
        if (isOurs(signal)) ::sigaction(signal, &actionBefore(signal), nullptr);
    loopEnd = -1;
    threadBusy = false;
    if (state_->source != 0) g_source_remove(state_->source);
    for (const int end : state_->ends)
        if (end >= 0) ::close(end);
    delete state_;
}

void EndingWatch::setBusy(bool busy) {
    threadBusy = busy;
}

}  // namespace korvant::ui::native
