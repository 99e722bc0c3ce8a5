// What a service beside a window has to do, and how its results come to the window.
#pragma once

#include <array>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "language/diagnostics.h"

namespace korvant {

/// Jobs go from the thread of a window to that of its service, one of each of `kinds` at most: of
/// one kind the newest. What the service posts is run on the window's thread, and not at all once
/// the window has left.
template <class Job, std::size_t kinds>
class WindowWork {
  public:
    explicit WindowWork(CheckService::Poster poster) : poster_(std::move(poster)) {}

    // For the thread of the window; put() for any.
    void put(std::size_t kind, Job job) {
        {
            const std::lock_guard lock(mutex_);
            if (!jobs_[kind]) order_.push_back(kind);
            jobs_[kind] = std::move(job);
        }
        wake_.notify_one();
    }
    /// The service's thread has an end; what it has posted finds nobody.
    void leave() {
        *gone_ = true;
        {
            const std::lock_guard lock(mutex_);
            left_ = true;
        }
        wake_.notify_one();
    }

    // For the thread of the service.
    /// The kinds in the order in which they were asked first; nothing at the end. While there is no
    /// job `idle` is called, which waits for something else and is to be interrupted by whoever
    /// puts a job; false from it waits here.
    template <class Idle>
    std::optional<Job> next(const Idle& idle) {
        while (!waits())
            if (!idle()) {
                std::unique_lock lock(mutex_);
                wake_.wait(lock, [this] { return left_ || !order_.empty(); });
            }
        const std::lock_guard lock(mutex_);
        if (left_) return std::nullopt;
        auto& place = jobs_[order_.front()];
        order_.pop_front();
        return std::exchange(place, std::nullopt);
    }
    /// Whether something is to be done, or the end has come.
    bool waits() const {
        const std::lock_guard lock(mutex_);
        return left_ || !order_.empty();
    }
    template <class Work>
    void post(Work work) {
        poster_([gone = gone_, work = std::move(work)] {
            if (!*gone) work();
        });
    }

  private:
    CheckService::Poster poster_;
    std::shared_ptr<bool> gone_ = std::make_shared<bool>(false);  ///< on the window's thread only
    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::array<std::optional<Job>, kinds> jobs_;
    std::deque<std::size_t> order_;
    bool left_ = false;
};

}  // namespace korvant
