// The border that no C++ exception crosses, and that one thread at a time is behind.
#pragma once

#include <atomic>
#include <thread>

namespace korvant {

/// The thread that is inside an entry point; no thread's id when none is.
inline std::atomic<std::thread::id> threadInside{};

/// From construction to destruction its thread is inside an entry point, unless another one is.
/// Threads that take turns are welcome, and see what the other has left.
class Entry {
  public:
    Entry() noexcept {
        const std::thread::id self = std::this_thread::get_id();
        std::thread::id other;
        outermost_ = threadInside.compare_exchange_strong(other, self);
        granted_ = outermost_ || other == self;
    }
    ~Entry() {
        if (outermost_) threadInside.store({});
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    bool granted() const { return granted_; }

  private:
    bool outermost_;
    bool granted_;
};

/// What `call` returns; `failed` when it throws, or while another thread is inside.
template <class Result, class Call>
Result guarded(Result failed, Call call) noexcept {
    const Entry entry;
    if (!entry.granted()) return failed;
    try {
        return call();
    } catch (...) {
        return failed;
    }
}

}  // namespace korvant
