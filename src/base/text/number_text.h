// Numbers as text and back, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvant {

/// "%g": six significant digits, exponent of three digits ("1e+008").
std::string formatGeneral(double value);
std::string formatInt(std::int32_t value);
std::string formatUint(std::uint32_t value);
/// The shortest text that reads back as exactly this value ("0.1", "1e+300", "nan", "inf").
std::string formatShortest(double value);
std::string formatShortest(float value);

/// The whole text as a decimal number, '.' or ',' as the mark, blanks around it allowed; nothing
/// for any other text, "nan" and "inf" included.
std::optional<double> parseNumber(std::string_view text);
/// The whole text as a 32-bit integer; nothing when it does not fit or is no integer.
std::optional<std::int32_t> parseInt(std::string_view text);

}  // namespace korvant
