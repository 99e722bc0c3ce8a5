#include "base/text/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include "base/text/characters.h"

namespace korvant {

namespace {

/// Longest texts: "-1.79769e+308" with six digits, "-2.2250738585072014e-308" in shortest form.
constexpr std::size_t kNumberBytes = 40;

/// Deliberate: exponents have three digits ("1e+008") whatever the platform's printing does;
/// texts that scripts wrote and compare rely on it.
std::string withWideExponent(const char* first, const char* last) {
    if (last - first < 5 || last[-4] != 'e') return std::string(first, last);
    std::string text(first, last - 2);
    text += '0';
    text.append(last - 2, last);
    return text;
}

/// Into the result itself, which is cut rather than grown: no call for so short a text.
template <class Integer>
std::string decimal(Integer value) {
    std::string text = "-0123456789";
    text.erase(static_cast<std::size_t>(
        std::to_chars(text.data(), text.data() + text.size(), value).ptr - text.data()));
    return text;
}

template <class Real>
std::string shortest(Real value) {
    char buffer[kNumberBytes];
    return std::string(buffer, std::to_chars(buffer, buffer + kNumberBytes, value).ptr);
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
    // Whole numbers of six digits at most, which most are. Only the library computes with others:
    // a 32-bit host can set its processor to fewer bits than a double has.
    if (value > -1e6 && value < 1e6) {
        const auto whole = static_cast<std::int32_t>(value);
        if (whole == value && (whole != 0 || !std::signbit(value))) return formatInt(whole);
    }
    char buffer[kNumberBytes];
    const auto end =
        std::to_chars(buffer, buffer + kNumberBytes, value, std::chars_format::general, 6).ptr;
    return withWideExponent(buffer, end);
}

std::string formatInt(std::int32_t value) {
    return decimal(value);
}
std::string formatUint(std::uint32_t value) {
    return decimal(value);
}
std::string formatShortest(double value) {
    return shortest(value);
}
std::string formatShortest(float value) {
    return shortest(value);
}

std::optional<double> parseNumber(std::string_view text) {
    std::string number(withoutPlus(trimmed(text, kAllBlanks)));
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
    const std::string_view number = withoutPlus(trimmed(text, kAllBlanks));
    std::int32_t value = 0;
    const char* const end = number.data() + number.size();
    const auto read = std::from_chars(number.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

}  // namespace korvant
