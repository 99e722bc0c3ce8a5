// Asks a run at regular intervals to let its window live.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include "debug/debug_session.h"

namespace korvant {

/// While one lives, onAttention() of the session's listener is called some twenty times a second,
/// between two statements.
class AttentionClock {
  public:
    explicit AttentionClock(DebugSession& session);
    ~AttentionClock();
    AttentionClock(const AttentionClock&) = delete;
    AttentionClock& operator=(const AttentionClock&) = delete;

  private:
    void run();

    DebugSession& session_;
    std::mutex mutex_;
    std::condition_variable over_;
    bool ended_ = false;
    std::thread thread_;
};

}  // namespace korvant
