// A thread that looks at the clock so that the script's thread need not.
#pragma once

#include <cstdint>
#include <memory>

namespace korvant {

/// What is watched. Called on the watch thread, and never after disarm() has returned.
class WatchTarget {
  public:
    virtual ~WatchTarget() = default;
    /// How long nothing needs to be done if nothing changes, at most `longest`; 0: alert now.
    virtual std::uint32_t millisecondsLeft(std::uint32_t longest) = 0;
    /// Makes the script's thread look at the limit before its next statement.
    virtual void alert() = 0;
    /// Called again and again until the script's thread has looked.
    virtual void insist() = 0;
};

/// Sleeps while nothing is armed. All functions but the thread's own are for the script's thread.
class RunWatch {
  public:
    ~RunWatch() { stop(); }
    /// False when there can be no thread; the caller then looks at the limit itself.
    bool start();
    /// Ends the thread and waits for it, some milliseconds at most.
    void stop();
    /// In a copy of the process, which has no such thread and perhaps a lock that is held for ever.
    void forget() noexcept { static_cast<void>(thread_.release()); }

    /// Watches `target`, which must live until disarm().
    void arm(WatchTarget& target);
    void disarm();
    /// The script's thread has looked, and the run goes on.
    void rearm();
    /// The limit may have moved closer.
    void lookAgain();
    /// Alerts at once, on the script's own thread.
    void alertNow();

  private:
    struct Thread;
    struct Delete {
        void operator()(Thread* thread) const;
    };
    std::unique_ptr<Thread, Delete> thread_;  ///< null: none runs
};

}  // namespace korvant
