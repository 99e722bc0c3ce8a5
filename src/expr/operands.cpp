#include "expr/operands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>

namespace korvant::expr {
namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Whether the integer part holds a digit other than 0.
bool reachesOne(std::string_view text) {
    const auto isNonZero = [](char byte) { return byte >= '1' && byte <= '9'; };
    const auto point = std::find(text.begin(), text.end(), '.');
    return std::any_of(text.begin(), point, isNonZero);
}

/// A number of at most 15 digits, with a point or without: digits and power of ten are exact
/// as doubles, so one division rounds correctly (Clinger, "How to read floating point numbers
/// accurately", 1990). False for anything else.
bool readSimpleNumber(std::string_view text, double& value) {
    if (text.size() > 16) return false;
    std::int64_t digits = 0;
    std::size_t count = 0, point = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= '0') {
            digits = digits * 10 + (text[i] - '0');
            ++count;
        } else if (text[i] == '.' && point == text.size()) {
            point = i;
        } else {
            return false;
        }
    }
    if (count == 0 || count > 15) return false;
    value = static_cast<double>(digits);
    if (point + 1 < text.size()) value /= kPowersOfTen[text.size() - point - 1];
    return true;
}

}  // namespace

bool holdsOnlyNameBytes(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char byte) {
        return (kByteClasses[static_cast<unsigned char>(byte)] & kNotInName) == 0;
    });
}

double numberValue(std::string_view text) {
    double value = 0;
    if (readSimpleNumber(text, value)) return value;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error == std::errc::result_out_of_range) {
        const double magnitude = reachesOne(text) ? std::numeric_limits<double>::infinity() : 0.0;
        return text.front() == '-' ? -magnitude : magnitude;
    }
    return error == std::errc{} ? value : 0.0;
}

std::uint32_t parameterEnd(const PairedText& text, std::uint32_t from, std::uint32_t close) {
    const std::string_view bytes = text.bytes();
    std::uint32_t at = from;
    while (at < close && bytes[at] != ';') at = bytes[at] == '(' ? text.closing(at) + 1 : at + 1;
    return std::min(at, close);
}

std::vector<std::string> splitParameters(std::string_view text) {
    std::vector<std::string> parameters;
    if (text.empty() || text.front() != '(') return parameters;
    PairedText paired;
    paired.assign(text);
    const std::uint32_t close = paired.closing(0);
    if (close <= 1) return parameters;
    for (std::uint32_t from = 1; from <= close;) {
        const std::uint32_t end = parameterEnd(paired, from, close);
        parameters.emplace_back(text.substr(from, end - from));
        from = end + 1;
    }
    return parameters;
}

}  // namespace korvant::expr
