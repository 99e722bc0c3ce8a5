// A worker thread that is coordinated through three events.
#ifndef KORVANTIDE_CTHREAD_H
#define KORVANTIDE_CTHREAD_H

#include <cstdint>
#include <memory>

#include "korvantide/export.h"

/// Something that CThread::WaitOnHandle waits for: on Windows a waitable system handle, elsewhere
/// what CThreadEvent::handle gives.
using CThreadWaitHandle = void*;

/// An auto-reset event: one wait that it ends clears it again. May be used from any thread; it
/// must outlive every wait on its handle.
class KORVANTIDE_API CThreadEvent {
  public:
    CThreadEvent();
    ~CThreadEvent();
    CThreadEvent(const CThreadEvent&) = delete;
    CThreadEvent& operator=(const CThreadEvent&) = delete;
    void set();
    CThreadWaitHandle handle() const;

  private:
    CThreadWaitHandle event_;
};

// Deliberate: the destructor is not virtual; hosts were built against that order of the virtual
// operations.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// Derive, override Main, Start. The destructor is not virtual: never delete an object through a
/// pointer to CThread, and let the destructor of the class that overrides Main call Stop(1), so
/// that Main has ended before its members go.
class KORVANTIDE_API CThread {
  public:
    static constexpr std::uint32_t kNoTimeout = 0xFFFFFFFFu;

    CThread();
    CThread(const CThread&) = delete;
    CThread& operator=(const CThread&) = delete;

    /// Runs Main on a new thread unless one runs already. Non-zero if a thread exists afterwards;
    /// zero when the system could not start one. The thread's identifier is known then.
    virtual int Start();
    /// Tells a running thread to end; with a non-zero `wait` returns after its Main has returned.
    /// Called on the thread itself it never waits.
    virtual void Stop(int wait);

  protected:
    /// The thread's work; its result is the thread's exit code. By itself it waits for the exit
    /// event and returns 0.
    virtual std::uint32_t Main();

  public:
    /// Ends a wait of the thread.
    void Signal();
    /// Non-zero while a thread is held.
    int IsAlive() const;

    /// Stop with waiting. On the thread itself it does not wait.
    ~CThread();

  protected:
    /// Non-zero if the exit event is set; asking clears it. A later Wait still ends with zero.
    int IsExit();
    /// Waits for the signal event or the exit event, `timeout` milliseconds at most. Non-zero if
    /// the signal came or the time ran out, zero if the exit was asked for or the wait failed.
    int Wait(std::uint32_t timeout);
    /// The same with `handle` in place of the signal event; zero for a null handle.
    int WaitOnHandle(CThreadWaitHandle handle, std::uint32_t timeout);

    /// What the last wait said: 0 first event, 1 exit event, 258 time ran out, 0xFFFFFFFF failed.
    std::uint32_t lastWaitResult() const;
    /// Identifier of the thread; 0 before the first start.
    std::uint32_t threadId() const;

    /// The thread's start routine; `object` is a CThread.
    static std::uint32_t StartAddress(void* object);

  private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif
