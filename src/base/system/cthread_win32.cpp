#include <windows.h>

#include <process.h>

#include <atomic>

#include "korvantide/cthread.h"

namespace {

constexpr std::uint32_t kExitEvent = 1;

HANDLE makeEvent() {
    return CreateEventW(nullptr, FALSE, FALSE, nullptr);
}

bool isSet(HANDLE event) {
    return WaitForSingleObject(event, 0) == WAIT_OBJECT_0;
}

}  // namespace

CThreadEvent::CThreadEvent() : event_(makeEvent()) {}
CThreadEvent::~CThreadEvent() {
    CloseHandle(event_);
}
void CThreadEvent::set() {
    SetEvent(event_);
}
CThreadWaitHandle CThreadEvent::handle() const {
    return event_;
}

/// Shared with the thread, which touches nothing else once Main has returned: the object itself
/// may be gone by then.
struct CThread::Impl {
    HANDLE signal = makeEvent();
    HANDLE exit = makeEvent();
    HANDLE ended = CreateEventW(nullptr, TRUE, TRUE, nullptr);   ///< stays set while none runs
    HANDLE known = CreateEventW(nullptr, TRUE, FALSE, nullptr);  ///< stays set with an identifier
    SRWLOCK ends = SRWLOCK_INIT;                                 ///< an end, or a new start
    std::atomic<bool> alive{false};
    std::atomic<bool> exitAsked{false};  ///< beside the event, which polling consumes
    std::atomic<std::uint32_t> identifier{0};
    std::atomic<std::uint32_t> lastWait{WAIT_TIMEOUT};

    ~Impl() {
        for (const HANDLE handle : {signal, exit, ended, known}) CloseHandle(handle);
    }

    std::uint32_t wait(HANDLE first, std::uint32_t timeout) {
        const HANDLE handles[] = {first, exit};
        std::uint32_t result = exitAsked && !isSet(first) ? kExitEvent : WAIT_FAILED;
        if (result == WAIT_FAILED) result = WaitForMultipleObjects(2, handles, FALSE, timeout);
        lastWait = result;
        return result;
    }

    /// In one step: a new start must not have its event set by the thread that ends.
    void finish() {
        AcquireSRWLockExclusive(&ends);
        alive = false;
        SetEvent(ended);
        ReleaseSRWLockExclusive(&ends);
    }

    /// False when a thread is there already.
    bool claim() {
        AcquireSRWLockExclusive(&ends);
        const bool claimed = !alive.exchange(true);
        if (claimed) {
            identifier = 0;
            ResetEvent(known);
            ResetEvent(exit);
            ResetEvent(ended);
        }
        ReleaseSRWLockExclusive(&ends);
        return claimed;
    }
};

namespace {

struct Launch {
    std::uint32_t (*routine)(void*);
    void* object;
};

unsigned __stdcall launch(void* argument) {
    const Launch launch = *static_cast<Launch*>(argument);
    delete static_cast<Launch*>(argument);
    return launch.routine(launch.object);
}

}  // namespace

CThread::CThread() : impl_(std::make_shared<Impl>()) {}

CThread::~CThread() {
    CThread::Stop(1);
}

int CThread::Start() {
    // Kept by itself: somebody may destroy the object once its Main has returned.
    const std::shared_ptr<Impl> impl = impl_;
    if (!impl->claim()) {
        WaitForSingleObject(impl->known, INFINITE);
        return 1;
    }
    impl_->exitAsked = false;
    auto* const start = new Launch{&CThread::StartAddress, this};
    const auto thread = _beginthreadex(nullptr, 0, launch, start, 0, nullptr);
    if (thread == 0) {
        delete start;
        SetEvent(impl->known);
        impl->finish();
        return 0;
    }
    CloseHandle(reinterpret_cast<HANDLE>(thread));
    WaitForSingleObject(impl->known, INFINITE);
    return 1;
}

void CThread::Stop(int wait) {
    const std::shared_ptr<Impl> impl = impl_;
    if (!impl->alive) return;
    impl->exitAsked = true;
    SetEvent(impl->exit);
    if (!wait || impl->identifier == GetCurrentThreadId()) return;
    WaitForSingleObject(impl->ended, INFINITE);
}

std::uint32_t CThread::Main() {
    while (impl_->wait(impl_->signal, kNoTimeout) == WAIT_OBJECT_0) {
    }
    return 0;
}

void CThread::Signal() {
    SetEvent(impl_->signal);
}

int CThread::IsAlive() const {
    return impl_->alive ? 1 : 0;
}

int CThread::IsExit() {
    return isSet(impl_->exit) ? 1 : 0;
}

int CThread::Wait(std::uint32_t timeout) {
    return WaitOnHandle(impl_->signal, timeout);
}

int CThread::WaitOnHandle(CThreadWaitHandle handle, std::uint32_t timeout) {
    if (!handle) {
        impl_->lastWait = WAIT_FAILED;
        return 0;
    }
    const std::uint32_t result = impl_->wait(handle, timeout);
    return result == WAIT_OBJECT_0 || result == WAIT_TIMEOUT ? 1 : 0;
}

std::uint32_t CThread::lastWaitResult() const {
    return impl_->lastWait;
}
std::uint32_t CThread::threadId() const {
    return impl_->identifier;
}

std::uint32_t CThread::StartAddress(void* object) {
    auto* const thread = static_cast<CThread*>(object);
    const std::shared_ptr<Impl> impl = thread->impl_;
    impl->identifier = GetCurrentThreadId();
    SetEvent(impl->known);
    const std::uint32_t result = thread->Main();
    impl->finish();
    return result;
}
