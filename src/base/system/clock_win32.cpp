#include <windows.h>

#include <mmsystem.h>

#include "base/system/clock.h"

namespace korvant {

namespace {

class SystemClock final : public Clock {
  public:
    std::uint32_t tick() override { return timeGetTime(); }
    std::uint64_t monotonic() override { return GetTickCount64(); }
    void sleep(std::uint32_t milliseconds) override { Sleep(milliseconds); }
};

}  // namespace

Clock& systemClock() {
    static SystemClock clock;
    return clock;
}

}  // namespace korvant
