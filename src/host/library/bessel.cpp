// Bessel functions of integer order that end in time.
#include <cmath>
#include <cstdint>
#include <limits>

#include "host/library/math_functions.h"

namespace korvant {

namespace {

/// Up to this order the C library answers within some milliseconds.
constexpr std::int64_t kLibraryOrder = 200000;
/// From here on the C library has a closed form for every order up to the argument.
constexpr double kClosedForm = 0x1p302;
/// Steps between two questions whether to stop.
constexpr std::int64_t kPoll = 1 << 16;
/// Below the logarithm of the smallest double every value is 0.
constexpr double kUnderflow = -750.0;

using StopQuestion = bool (*)();

bool stops(StopQuestion shouldStop, std::int64_t step) {
    return shouldStop != nullptr && step % kPoll == 0 && shouldStop();
}

/// f(n+1) = 2n/x f(n) - f(n-1). Source: Abramowitz and Stegun, Handbook of Mathematical Functions,
/// 9.1.27. Stable upward for the second kind, and for the first kind while the order stays below x.
double upward(std::int64_t order, double x, double f0, double f1, StopQuestion shouldStop) {
    double before = f0, value = f1;
    for (std::int64_t i = 1; i < order && value != -HUGE_VAL; ++i) {
        if (stops(shouldStop, i)) return 0.0;
        const double next = value * (static_cast<double>(i + i) / x) - before;
        before = value;
        value = next;
    }
    return value;
}

/// J(n)/J(n-1) as a continued fraction; as many terms as change the result.
double ratioBelow(std::int64_t order, double x) {
    const double h = 2.0 / x, w = static_cast<double>(order + order) / x;
    double q0 = w, z = w + h, q1 = w * z - 1.0;
    std::int64_t terms = 1;
    while (q1 < 1.0e9) {
        ++terms;
        z += h;
        const double next = z * q1 - q0;
        q0 = q1;
        q1 = next;
    }
    double ratio = 0.0;
    for (std::int64_t i = 2 * (order + terms); i >= order + order; i -= 2)
        ratio = 1.0 / (static_cast<double>(i) / x - ratio);
    return ratio;
}

/// The same recurrence downward from the order, scaled before it overflows, and normalised with
/// the value of order 0 or 1, whichever is larger.
double downward(std::int64_t order, double x, StopQuestion shouldStop) {
    const double ratio = ratioBelow(order, x);
    double above = ratio, value = 1.0, scaled = ratio;
    for (std::int64_t i = order - 1; i > 0; --i) {
        if (stops(shouldStop, i)) return 0.0;
        const double next = value * static_cast<double>(i + i) / x - above;
        above = value;
        value = next;
        if (std::fabs(value) > 1e100) {
            above /= value;
            scaled /= value;
            value = 1.0;
        }
    }
    const double j0x = ::j0(x), j1x = ::j1(x);
    return std::fabs(j0x) >= std::fabs(j1x) ? scaled * j0x / value : scaled * j1x / above;
}

/// |J(n, x)| is at most (x/2)^n / n!. Source: the same, 9.1.62.
bool vanishes(std::int64_t order, double x) {
    const auto n = static_cast<double>(order);
    return n * std::log(x / 2.0) - std::lgamma(n + 1.0) < kUnderflow;
}

double largeJn(std::int64_t order, double x, StopQuestion shouldStop) {
    if (x == 0.0 || std::isinf(x)) return 0.0;
    if (x > kClosedForm) return ::jn(static_cast<int>(4 + order % 4), x);
    if (static_cast<double>(order) <= x) return upward(order, x, ::j0(x), ::j1(x), shouldStop);
    return vanishes(order, x) ? 0.0 : downward(order, x, shouldStop);
}

double largeYn(std::int64_t order, double x, StopQuestion shouldStop) {
    if (x < 0.0) return std::numeric_limits<double>::quiet_NaN();
    if (x == 0.0) return -HUGE_VAL;
    if (std::isinf(x)) return 0.0;
    if (x > kClosedForm) return ::yn(static_cast<int>(4 + order % 4), x);
    return upward(order, x, ::y0(x), ::y1(x), shouldStop);
}

}  // namespace

double besselJn(std::int32_t order, double x, bool (*shouldStop)()) {
    const std::int64_t wide = order;
    const std::int64_t magnitude = wide < 0 ? -wide : wide;
    if (magnitude <= kLibraryOrder || std::isnan(x)) return ::jn(order, x);
    // J(-n, x) = J(n, -x) = (-1)^n J(n, x)
    const bool negative = magnitude % 2 != 0 && (wide < 0) != std::signbit(x);
    const double value = largeJn(magnitude, std::fabs(x), shouldStop);
    return negative ? -value : value;
}

double besselYn(std::int32_t order, double x, bool (*shouldStop)()) {
    const std::int64_t wide = order;
    const std::int64_t magnitude = wide < 0 ? -wide : wide;
    if (magnitude <= kLibraryOrder || std::isnan(x)) return ::yn(order, x);
    const double value = largeYn(magnitude, x, shouldStop);
    return wide < 0 && magnitude % 2 != 0 ? -value : value;
}

}  // namespace korvant
