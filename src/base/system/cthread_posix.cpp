#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "korvantide/cthread.h"

namespace {

constexpr std::uint32_t kFirstEvent = 0, kExitEvent = 1, kTimedOut = 258, kFailed = 0xFFFFFFFFu;

/// One auto-reset event. All events share one lock, so that a wait may watch two of them.
struct Event {
    bool set = false;
};

struct EventHub {
    std::mutex mutex;
    std::condition_variable changed;
};

/// Never destroyed: threads may still wait when the process ends.
EventHub& hub() {
    static EventHub* const instance = new EventHub;
    return *instance;
}

void setEvent(Event& event) {
    EventHub& events = hub();
    {
        const std::lock_guard lock(events.mutex);
        event.set = true;
    }
    events.changed.notify_all();
}

bool take(Event& event) {
    const bool was = event.set;
    event.set = false;
    return was;
}

}  // namespace

CThreadEvent::CThreadEvent() : event_(new Event) {}
CThreadEvent::~CThreadEvent() {
    delete static_cast<Event*>(event_);
}
void CThreadEvent::set() {
    setEvent(*static_cast<Event*>(event_));
}
CThreadWaitHandle CThreadEvent::handle() const {
    return event_;
}

/// Shared with the thread, which touches nothing else once Main has returned: the object itself
/// may be gone by then.
struct CThread::Impl {
    Event signal;
    Event exit;
    bool alive = false;
    std::uint64_t runs = 0;  ///< started so far, so that a wait for one does not last into the next
    bool exitAsked = false;  ///< beside the event, which polling consumes
    pthread_t thread{};
    std::atomic<std::uint32_t> identifier{0};
    std::atomic<std::uint32_t> lastWait{kTimedOut};

    /// `first` may be null: then only the exit ends the wait.
    std::uint32_t wait(Event* first, std::uint32_t timeout) {
        EventHub& events = hub();
        std::unique_lock lock(events.mutex);
        std::uint32_t result = kTimedOut;
        const auto happened = [&] {
            if (first && take(*first)) return result = kFirstEvent, true;
            const bool exitSet = take(exit);
            if (exitSet || exitAsked) return result = kExitEvent, true;
            return false;
        };
        if (timeout == kNoTimeout)
            events.changed.wait(lock, happened);
        else
            events.changed.wait_for(lock, std::chrono::milliseconds(timeout), happened);
        lastWait.store(result);
        return result;
    }

    void begin() {
        const std::lock_guard lock(hub().mutex);
        identifier.store(static_cast<std::uint32_t>(::syscall(SYS_gettid)));
        hub().changed.notify_all();
    }

    void finish() {
        const std::lock_guard lock(hub().mutex);
        alive = false;
        hub().changed.notify_all();
    }

    bool onOwnThread() const { return alive && pthread_equal(thread, pthread_self()) != 0; }
};

namespace {

/// What the system's thread start needs beside the object.
struct Launch {
    std::uint32_t (*routine)(void*);
    void* object;
};

void* launch(void* argument) {
    const Launch launch = *static_cast<Launch*>(argument);
    delete static_cast<Launch*>(argument);
    launch.routine(launch.object);
    return nullptr;
}

}  // namespace

CThread::CThread() : impl_(std::make_shared<Impl>()) {}

CThread::~CThread() {
    CThread::Stop(1);
}

int CThread::Start() {
    // Kept by itself: somebody may destroy the object once its Main has returned.
    const std::shared_ptr<Impl> impl = impl_;
    std::unique_lock lock(hub().mutex);
    const auto known = [&impl] { return impl->identifier.load() != 0; };
    if (impl_->alive) {
        hub().changed.wait(lock, known);
        return 1;
    }
    impl_->identifier.store(0);
    // What an earlier thread left unread must not end the new one.
    impl_->exit.set = false;
    impl_->exitAsked = false;
    auto* const start = new Launch{&CThread::StartAddress, this};
    if (pthread_create(&impl_->thread, nullptr, launch, start) != 0) {
        delete start;
        return 0;
    }
    pthread_detach(impl_->thread);
    impl_->alive = true;
    ++impl_->runs;
    hub().changed.wait(lock, known);
    return 1;
}

void CThread::Stop(int wait) {
    const std::shared_ptr<Impl> impl = impl_;
    std::uint64_t run = 0;
    {
        const std::lock_guard lock(hub().mutex);
        if (!impl->alive) return;
        run = impl->runs;
        impl->exitAsked = true;
        if (impl->onOwnThread()) wait = 0;
    }
    setEvent(impl->exit);
    if (!wait) return;
    EventHub& events = hub();
    std::unique_lock lock(events.mutex);
    events.changed.wait(lock, [&] { return !impl->alive || impl->runs != run; });
}

std::uint32_t CThread::Main() {
    while (impl_->wait(&impl_->signal, kNoTimeout) == kFirstEvent) {
    }
    return 0;
}

void CThread::Signal() {
    setEvent(impl_->signal);
}

int CThread::IsAlive() const {
    const std::lock_guard lock(hub().mutex);
    return impl_->alive ? 1 : 0;
}

int CThread::IsExit() {
    const std::lock_guard lock(hub().mutex);
    return take(impl_->exit) ? 1 : 0;
}

int CThread::Wait(std::uint32_t timeout) {
    return WaitOnHandle(&impl_->signal, timeout);
}

int CThread::WaitOnHandle(CThreadWaitHandle handle, std::uint32_t timeout) {
    if (!handle) {
        impl_->lastWait.store(kFailed);
        return 0;
    }
    return impl_->wait(static_cast<Event*>(handle), timeout) == kExitEvent ? 0 : 1;
}

std::uint32_t CThread::lastWaitResult() const {
    return impl_->lastWait.load();
}
std::uint32_t CThread::threadId() const {
    return impl_->identifier.load();
}

std::uint32_t CThread::StartAddress(void* object) {
    auto* const thread = static_cast<CThread*>(object);
    const std::shared_ptr<Impl> impl = thread->impl_;
    impl->begin();
    const std::uint32_t result = thread->Main();
    impl->finish();
    return result;
}
