// Output that is gathered and handed to the system in large pieces.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "base/text/byte_source.h"

namespace korvant {

/// Writes to a pipe, a terminal or a file that somebody else has open. Text waits in a 64 KiB
/// buffer until it is full, until flush(), and at most 20 ms between begin() and end(), when a
/// thread of its own hands it over. The thread that writes is always the same; it appends without
/// a lock. After the first failed write the rest is dropped until the next begin().
class GatheredOutput {
  public:
    static constexpr std::size_t kBufferBytes = std::size_t{64} << 10;
    /// What is kept beyond the buffer when a wait for a slow reader was stopped.
    static constexpr std::size_t kRestBytes = std::size_t{1} << 20;

    /// `handle` stays the caller's and as it is.
    explicit GatheredOutput(int handle);
    ~GatheredOutput();
    GatheredOutput(const GatheredOutput&) = delete;
    GatheredOutput& operator=(const GatheredOutput&) = delete;

    void begin();
    void end();
    /// 0, or the system's error of the first failure. While the reader is slow it waits; when
    /// `shouldStop` ends the wait, what is left is kept for flush().
    int write(std::string_view bytes, StopQuery shouldStop) {
        const std::size_t filled = filled_.load(std::memory_order_relaxed);
        if (bytes.size() > kBufferBytes - filled || writesThrough_)
            return writeSlowly(bytes, shouldStop);
        bytes.copy(buffer_.get() + filled, bytes.size());
        filled_.store(filled + bytes.size(), std::memory_order_release);
        return failure_.load(std::memory_order_relaxed);
    }
    /// Returns when everything is handed over, has failed, or `shouldStop` ended the wait; what is
    /// left is kept then. As write().
    int flush(StopQuery shouldStop);
    /// The same, but gives up with ECANCELED what a reader has not touched for `patience`
    /// milliseconds.
    int flushWithin(unsigned patience);

    /// A line below the text, shown whenever the text stands at the beginning of a line; empty:
    /// none. For a terminal. Any thread.
    void setStatus(const std::string& line);
    /// Takes the status away while somebody types.
    void holdStatus(bool hold);

  private:
    int writeSlowly(std::string_view bytes, StopQuery shouldStop);
    bool makeRoom(StopQuery shouldStop);
    bool handOver();
    void keepRest(std::string_view bytes);
    void pump();
    void pumpPart(std::string_view bytes, std::size_t& sent);
    void hideStatus();
    void showStatus();
    void fail(int error);
    void flushFromTimeToTime();

    int handle_;
    std::unique_ptr<char[]> buffer_;
    std::atomic<std::size_t> filled_{0};
    std::atomic<int> failure_{0};
    bool writesThrough_ = false;  ///< no thread could be started

    std::mutex mutex_;  ///< guards all below
    std::size_t sent_ = 0;
    std::string rest_;
    std::size_t restSent_ = 0;
    char last_ = '\n';
    std::string status_;
    bool statusShown_ = false;
    bool statusHeld_ = false;
    bool ending_ = false;
    std::condition_variable wake_;
    std::thread thread_;
};

}  // namespace korvant
