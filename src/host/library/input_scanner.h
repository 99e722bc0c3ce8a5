// Values as scripts read them from a file or the console.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/text/byte_source.h"

namespace korvant {

enum class ScanState {
    converted,
    failed,      ///< there is text, but not such a value; it stays unread from where it fails
    endOfInput,  ///< nothing but blanks was left
    stopped,     ///< the stop query ended the wait
    tooLong      ///< a word or a number's digits beyond the limit
};

/// What one value may take up in bytes.
constexpr std::size_t kWordBytes = std::size_t{64} << 20;

/// All skip blanks first (space, tab, line feed, vertical tab, form feed, carriage return), then
/// take the longest text that can begin a value, and leave the byte after it unread. The value is
/// defined whatever happens: 0 or empty unless converted.

/// A word: everything up to a blank.
ScanState scanWord(ByteSource& source, StopQuery shouldStop, std::string& word,
                   std::size_t limit = kWordBytes);
/// A decimal integer, "0x" hexadecimal, or octal after a leading zero, with an optional sign;
/// saturates at the ends of its range.
ScanState scanInt(ByteSource& source, StopQuery shouldStop, std::int32_t& value);
/// A decimal number with '.' as the mark and an optional exponent, "0x" hexadecimal with an
/// optional binary exponent, "inf", "infinity" or "nan", in either case of letters. Too large gives
/// infinity, too small 0.
ScanState scanDouble(ByteSource& source, StopQuery shouldStop, double& value,
                     std::size_t limit = kWordBytes);
ScanState scanFloat(ByteSource& source, StopQuery shouldStop, float& value);

}  // namespace korvant
