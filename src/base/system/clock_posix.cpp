#include <time.h>

#include <cerrno>

#include "base/system/clock.h"

namespace korvant {

namespace {

class SystemClock final : public Clock {
  public:
    std::uint32_t tick() override { return static_cast<std::uint32_t>(monotonic()); }
    std::uint64_t monotonic() override {
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        return static_cast<std::uint64_t>(now.tv_sec) * 1000u +
               static_cast<std::uint64_t>(now.tv_nsec) / 1000000u;
    }
    void sleep(std::uint32_t milliseconds) override {
        timespec left{static_cast<time_t>(milliseconds / 1000u),
                      static_cast<long>(milliseconds % 1000u) * 1000000L};
        while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) == EINTR) {
        }
    }
};

}  // namespace

Clock& systemClock() {
    static SystemClock clock;
    return clock;
}

}  // namespace korvant
