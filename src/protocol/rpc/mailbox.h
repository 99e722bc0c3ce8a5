// Messages from the thread that reads a client to the thread that serves it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

#include "protocol/rpc/json.h"

namespace korvant::rpc {

/// All functions may be called on any thread.
class Mailbox {
  public:
    void post(Json message);
    /// No more comes; what is there can still be taken.
    void end();
    bool ended() const;  ///< ended, and nothing is left

    /// The oldest message; nothing where there is none within `wait`.
    std::optional<Json> take(std::chrono::milliseconds wait);
    /// Returns when there is a message or the end, or when `wait` is over.
    void await(std::chrono::milliseconds wait);
    /// Ends a wait in take() without a message.
    void wake();

  private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Json> messages_;
    bool ended_ = false;
    bool woken_ = false;
};

}  // namespace korvant::rpc
