#include "host/number_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

namespace korvant {

namespace {

/// Longest texts: "-1.79769e+308" with six digits, "-2.2250738585072014e-308" in shortest form.
constexpr std::size_t kNumberBytes = 40;

/// Deliberate: exponents have three digits ("1e+008") whatever the platform's printing does;
/// texts that scripts wrote and compare rely on it.
std::string withWideExponent(const char* first, const char* last) {
    const char* mark = std::find(first, last, 'e');
    if (last - mark != 4) return std::string(first, last);
    std::string text(first, mark + 2);
    text += '0';
    text.append(mark + 2, last);
    return text;
}

/// Writes the digits so that they end before `end`; gives where they begin.
inline char* writeDigits(std::uint32_t number, char* end) {
    static constexpr auto kPairs = [] {
        std::array<char, 200> pairs{};
        for (std::size_t i = 0; i < 200; ++i)
            pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
        return pairs;
    }();
    for (; number >= 100; number /= 100) std::memcpy(end -= 2, kPairs.data() + number % 100 * 2, 2);
    if (number < 10)
        *--end = static_cast<char>('0' + number);
    else
        std::memcpy(end -= 2, kPairs.data() + number * 2, 2);
    return end;
}

std::uint32_t digitCount(std::uint32_t number) {
    constexpr std::uint32_t kPowers[] = {0,      10,      100,      1000,      10000,
                                         100000, 1000000, 10000000, 100000000, 1000000000};
    // The binary digits times log10(2) are the decimal ones, or one less.
    const auto count = static_cast<std::uint32_t>(std::bit_width(number | 1)) * 1233 >> 12;
    return count + (number >= kPowers[count] ? 1 : 0);
}

std::string decimal(std::uint32_t magnitude, bool negative) {
    const std::size_t size = digitCount(magnitude) + (negative ? 1 : 0);
    std::string text = "-0123456789";  // cut rather than grown: no call for so short a text
    writeDigits(magnitude, text.data() + size);
    text.erase(size);
    return text;
}

/// A number's first six digits, rounded, and the power of ten that the first of them stands for.
struct SixDigits {
    std::uint32_t digits = 0;  ///< 100000 to 999999; 0 when they are not known
    int power = 0;
};

/// The digits of a positive number of usual size. It is multiplied or divided by an exact power of
/// ten, so that the quotient is wrong by less than 1e-9; where that could decide how the last digit
/// is rounded, nothing is known.
SixDigits sixDigitsOf(double value) {
    constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                  1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (!(value >= 1e-15 && value < 1e22)) return {};
    const auto scaled = [&](int power) {
        return power > 5 ? value / kPowers[power - 5] : value * kPowers[5 - power];
    };
    // The power of two, from 2^-50 to 2^73, times log10(2): the power of ten or one less.
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(value) >> 52) - 1023;
    int power = (binary * 1233) >> 12;
    double quotient = scaled(power);
    if (quotient >= 1e6) quotient = scaled(++power);
    auto digits = static_cast<std::uint32_t>(quotient);
    const double rest = quotient - digits;
    if (rest > 0.5 - 1e-9 && rest < 0.5 + 1e-9) return {};
    digits += rest > 0.5 ? 1 : 0;
    return digits < 1000000 ? SixDigits{digits, power} : SixDigits{100000, power + 1};
}

/// "%g", with three digits of exponent.
std::string textOf(const SixDigits& number, bool negative) {
    char buffer[kNumberBytes];
    char* at = buffer;
    char digits[6];
    writeDigits(number.digits, digits + 6);
    std::ptrdiff_t count = 6;
    while (digits[count - 1] == '0') --count;
    if (negative) *at++ = '-';
    const bool plain = number.power >= -4 && number.power < 6;
    if (plain && number.power < 0) {
        std::memcpy(at, "0.000", 5);
        at = std::copy_n(digits, count, at + 1 - number.power);
        return std::string(buffer, at);
    }
    const std::ptrdiff_t whole = plain ? number.power + 1 : 1;
    at = std::copy_n(digits, whole, at);
    if (count > whole) {
        *at++ = '.';
        at = std::copy(digits + whole, digits + count, at);
    }
    if (!plain) {
        std::memcpy(at, number.power < 0 ? "e-000" : "e+000", 5);
        at += 5;
        writeDigits(static_cast<std::uint32_t>(std::abs(number.power)), at);
    }
    return std::string(buffer, at);
}

template <class Real>
std::string shortest(Real value) {
    char buffer[kNumberBytes];
    return std::string(buffer, std::to_chars(buffer, buffer + kNumberBytes, value).ptr);
}

std::string_view withoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// "+5" is a number, "+-5" is not.
std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

/// The power of ten of the first digit that is not 0; `digits` holds digits and one point at most.
std::int64_t leadingPower(std::string_view digits) {
    const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<std::int64_t>(digits.find_first_of("123456789"));
    return first < point ? point - first - 1 : point - first;
}

/// A number too large or too small for a double, as the nearest that there is.
double outOfRange(std::string_view number) {
    const bool negative = number.front() == '-';
    if (negative) number.remove_prefix(1);
    const auto mark = std::min(number.find_first_of("eE"), number.size());
    std::string_view power = number.substr(std::min(mark + 1, number.size()));
    const bool down = !power.empty() && power.front() == '-';
    std::int64_t exponent = 0;
    if (!power.empty() && (down || power.front() == '+')) power.remove_prefix(1);
    const auto read = std::from_chars(power.data(), power.data() + power.size(), exponent);
    if (read.ec == std::errc::result_out_of_range) exponent = std::int64_t{1} << 40;
    const std::int64_t total = leadingPower(number.substr(0, mark)) + (down ? -exponent : exponent);
    const double nearest = total > 0 ? HUGE_VAL : 0.0;
    return negative ? -nearest : nearest;
}

}  // namespace

std::string formatGeneral(double value) {
    const SixDigits number = sixDigitsOf(std::abs(value));
    if (number.digits != 0) return textOf(number, value < 0);
    char buffer[kNumberBytes];
    const auto end =
        std::to_chars(buffer, buffer + kNumberBytes, value, std::chars_format::general, 6).ptr;
    return withWideExponent(buffer, end);
}

std::string formatInt(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return value < 0 ? decimal(0 - bits, true) : decimal(bits, false);
}
std::string formatUint(std::uint32_t value) {
    return decimal(value, false);
}
std::string formatShortest(double value) {
    return shortest(value);
}
std::string formatShortest(float value) {
    return shortest(value);
}

std::optional<double> parseNumber(std::string_view text) {
    std::string number(withoutPlus(withoutBlanks(text)));
    std::replace(number.begin(), number.end(), ',', '.');
    const bool digits = number.find_first_of("0123456789") != std::string::npos;
    if (!digits || number.find_first_of("nNiI") != std::string::npos) return std::nullopt;
    double value = 0.0;
    const char* const end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ptr != end) return std::nullopt;
    if (read.ec == std::errc::result_out_of_range) return outOfRange(number);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<std::int32_t> parseInt(std::string_view text) {
    const std::string_view number = withoutPlus(withoutBlanks(text));
    std::int32_t value = 0;
    const char* const end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

}  // namespace korvant
