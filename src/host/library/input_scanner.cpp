#include "host/library/input_scanner.h"

#include <charconv>
#include <limits>
#include <string_view>

#include "base/text/characters.h"

namespace korvant {

namespace {

bool isBlank(int byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}
int lower(int byte) {
    return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
}

/// The value of a digit in base 16, 99 for none.
int digitValue(int byte) {
    if (isDigit(byte)) return byte - '0';
    const int letter = lower(byte);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 99;
}

/// One byte ahead of what was taken; the byte that was not taken goes back.
class Reader {
  public:
    Reader(ByteSource& source, StopQuery shouldStop) : source_(source), shouldStop_(shouldStop) {}
    ~Reader() {
        if (loaded_) source_.unreadChar(byte_);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// The byte ahead, negative for none.
    int ahead() {
        if (!loaded_) {
            byte_ = source_.readChar(shouldStop_);
            loaded_ = true;
        }
        return byte_;
    }
    bool next(int wanted) { return lower(ahead()) == wanted; }
    void skip() { loaded_ = false; }
    void skipBlanks() {
        while (isBlank(ahead())) skip();
    }
    void take(std::string& text) {
        text.push_back(static_cast<char>(ahead()));
        skip();
    }
    bool stopped() { return ahead() == ByteSource::kStopped; }

    /// What to say when nothing could be converted.
    ScanState trouble() {
        if (stopped()) return ScanState::stopped;
        return ahead() == ByteSource::kEndOfInput ? ScanState::endOfInput : ScanState::failed;
    }

  private:
    ByteSource& source_;
    StopQuery shouldStop_;
    int byte_ = 0;
    bool loaded_ = false;
};

/// "+" or "-" if there is one.
bool takeSign(Reader& reader) {
    const bool negative = reader.next('-');
    if (negative || reader.next('+')) reader.skip();
    return negative;
}

/// "0x" if it is there; a lone zero counts as a digit that was seen.
bool takeHexPrefix(Reader& reader, bool& zeroSeen) {
    zeroSeen = reader.next('0');
    if (!zeroSeen) return false;
    reader.skip();
    if (!reader.next('x')) return false;
    reader.skip();
    return true;
}

/// The text of a real number, as it is being read.
struct RealText {
    std::string digits;  ///< without sign and prefix
    bool negative = false;
    bool hexadecimal = false;
    bool complete = false;  ///< reads as a value
    std::size_t limit = kWordBytes;
    bool tooLong() const { return digits.size() > limit; }
};

/// Digits; how many there were.
std::size_t takeDigits(Reader& reader, RealText& text) {
    const int base = text.hexadecimal ? 16 : 10;
    std::size_t count = 0;
    for (; digitValue(reader.ahead()) < base && !text.tooLong(); ++count) reader.take(text.digits);
    return count;
}

void takeExponent(Reader& reader, RealText& text) {
    const char letter = text.hexadecimal ? 'p' : 'e';
    if (!reader.next(letter)) return;
    text.digits.push_back(letter);
    reader.skip();
    if (reader.next('-'))
        reader.take(text.digits);
    else if (reader.next('+'))
        reader.skip();
    text.complete = isDigit(reader.ahead());
    while (isDigit(reader.ahead()) && !text.tooLong()) reader.take(text.digits);
}

void takeNumber(Reader& reader, RealText& text) {
    bool zero = false;
    text.hexadecimal = takeHexPrefix(reader, zero);
    if (zero && !text.hexadecimal) text.digits.push_back('0');
    std::size_t count = takeDigits(reader, text) + (zero && !text.hexadecimal ? 1 : 0);
    if (reader.next('.')) {
        reader.take(text.digits);
        count += takeDigits(reader, text);
    }
    text.complete = count > 0;
    if (text.complete) takeExponent(reader, text);
}

/// "inf", "infinity" or "nan", of which the first letter is ahead.
void takeNamed(Reader& reader, RealText& text, std::string_view name) {
    for (const char letter : name) {
        if (!reader.next(letter)) break;
        text.digits.push_back(letter);
        reader.skip();
    }
    text.complete = text.digits == name || text.digits == "inf";
}

RealText takeReal(Reader& reader, std::size_t limit) {
    RealText text;
    text.limit = limit;
    text.negative = takeSign(reader);
    if (reader.next('i'))
        takeNamed(reader, text, "infinity");
    else if (reader.next('n'))
        takeNamed(reader, text, "nan");
    else
        takeNumber(reader, text);
    return text;
}

/// The number after 'e' or 'p', kept small enough to count with.
long exponentOf(std::string_view digits) {
    long exponent = 0;
    const bool negative = !digits.empty() && digits.front() == '-';
    for (const char c : digits.substr(negative ? 1 : 0))
        if (exponent < 1'000'000'000) exponent = exponent * 10 + (c - '0');
    return negative ? -exponent : exponent;
}

/// Whether a number that is out of range is so because it is large: the place of its first digit
/// that is not zero, moved by the exponent.
bool isLarge(const RealText& text) {
    const std::string_view all = text.digits;
    const auto mark = all.find(text.hexadecimal ? 'p' : 'e');
    const std::string_view mantissa = all.substr(0, mark);
    const auto first = mantissa.find_first_not_of("0.");
    if (first == std::string_view::npos) return false;
    const auto point = mantissa.find('.');
    const long whole = static_cast<long>(point == std::string_view::npos ? mantissa.size() : point);
    const long place = (whole - static_cast<long>(first)) * (text.hexadecimal ? 4 : 1);
    return place + (mark == std::string_view::npos ? 0 : exponentOf(all.substr(mark + 1))) > 0;
}

template <class Real>
Real realOf(const RealText& text) {
    Real value = 0;
    const char* const begin = text.digits.data();
    const auto format = text.hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto result = std::from_chars(begin, begin + text.digits.size(), value, format);
    if (result.ec == std::errc::result_out_of_range)
        value = isLarge(text) ? std::numeric_limits<Real>::infinity() : Real{0};
    return text.negative ? -value : value;
}

template <class Real>
ScanState scanReal(ByteSource& source, StopQuery shouldStop, Real& value, std::size_t limit) {
    value = 0;
    Reader reader(source, shouldStop);
    reader.skipBlanks();
    if (reader.ahead() < 0) return reader.trouble();
    const RealText text = takeReal(reader, limit);
    if (reader.stopped()) return ScanState::stopped;
    if (text.tooLong()) return ScanState::tooLong;
    if (!text.complete) return ScanState::failed;
    value = realOf<Real>(text);
    return ScanState::converted;
}

/// Digits of `base`, saturating. False when there is none.
bool takeInteger(Reader& reader, int base, std::int64_t& value) {
    bool any = false;
    for (int digit; (digit = digitValue(reader.ahead())) < base; any = true) {
        value = value * base + digit;
        if (value > std::int64_t{1} << 40) value = std::int64_t{1} << 40;
        reader.skip();
    }
    return any;
}

std::int32_t saturated(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (value > Limits::max()) return Limits::max();
    return value < Limits::min() ? Limits::min() : static_cast<std::int32_t>(value);
}

}  // namespace

ScanState scanWord(ByteSource& source, StopQuery shouldStop, std::string& word, std::size_t limit) {
    word.clear();
    Reader reader(source, shouldStop);
    reader.skipBlanks();
    if (reader.ahead() < 0) return reader.trouble();
    while (reader.ahead() >= 0 && !isBlank(reader.ahead())) {
        if (word.size() == limit) {
            word.clear();
            return ScanState::tooLong;
        }
        reader.take(word);
    }
    return reader.stopped() ? ScanState::stopped : ScanState::converted;
}

ScanState scanInt(ByteSource& source, StopQuery shouldStop, std::int32_t& value) {
    value = 0;
    Reader reader(source, shouldStop);
    reader.skipBlanks();
    if (reader.ahead() < 0) return reader.trouble();
    const bool negative = takeSign(reader);
    bool zero = false;
    const bool hexadecimal = takeHexPrefix(reader, zero);
    std::int64_t number = 0;
    const bool any = takeInteger(reader, hexadecimal ? 16 : zero ? 8 : 10, number);
    if (reader.stopped()) return ScanState::stopped;
    if (!any && (hexadecimal || !zero)) return ScanState::failed;
    value = saturated(negative ? -number : number);
    return ScanState::converted;
}

ScanState scanDouble(ByteSource& source, StopQuery shouldStop, double& value, std::size_t limit) {
    return scanReal(source, shouldStop, value, limit);
}

ScanState scanFloat(ByteSource& source, StopQuery shouldStop, float& value) {
    return scanReal(source, shouldStop, value, kWordBytes);
}

}  // namespace korvant
