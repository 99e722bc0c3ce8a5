// How much of the text is looked at while the user types, without being asked.
#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

namespace korvant {

/// A text that is longer, in bytes, is read and checked when the user asks, and not by itself.
constexpr int kLongestLive = 1 << 20;

/// A pause in typing after which something is done, longer where that took long the last time.
class GrowingPause {
  public:
    /// `usual` in milliseconds.
    explicit constexpr GrowingPause(int usual) : usual_(usual) {}

    /// What has not ended took as long as that at least.
    void begun() {
        ended();
        begun_ = Clock::now();
    }
    void ended() {
        using std::chrono::milliseconds;
        if (!begun_) return;
        const auto took = std::chrono::duration_cast<milliseconds>(Clock::now() - *begun_).count();
        took_ = static_cast<int>(std::min<long long>(took, kLongest));
        begun_.reset();
    }
    int milliseconds() const { return std::clamp(took_ * kTimes, usual_, kLongest); }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr int kTimes = 2, kLongest = 20'000;

    int usual_;
    int took_ = 0;
    std::optional<Clock::time_point> begun_;
};

}  // namespace korvant
