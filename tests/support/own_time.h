// How long a call takes on a machine that does other things as well.
#pragma once

#include <chrono>
#include <cstdio>

namespace korvant::test {

/// How much longer the same work may take where a sanitizer looks at every byte.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
inline constexpr int kSlowdown = 5;
#else
inline constexpr int kSlowdown = 1;
#endif

/// The steady clock without the time for which this thread was ready to run and others had the
/// processors. Where the system does not tell that, the steady clock as it is.
struct OwnTime {
    using time_point = std::chrono::steady_clock::time_point;

    static time_point now() {
        return std::chrono::steady_clock::now() - std::chrono::nanoseconds(waited());
    }

  private:
    static long long waited() {
        long long waits = 0;
#ifdef __linux__
        long long ran = 0;
        std::FILE* const file = std::fopen("/proc/thread-self/schedstat", "r");
        if (!file) return 0;
        if (std::fscanf(file, "%lld %lld", &ran, &waits) != 2) waits = 0;
        std::fclose(file);
#endif
        return waits;
    }
};

}  // namespace korvant::test
