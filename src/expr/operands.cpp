#include "expr/operands.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <limits>

namespace korvant::expr {
namespace {

enum ByteClass : std::uint8_t { kNumberByte = 1, kPlainNameByte = 2, kOtherByte = 4, kOpen = 8 };

constexpr std::array<std::uint8_t, 256> makeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        const bool digit = byte >= '0' && byte <= '9';
        // Deliberate: 65 to 127 are name bytes, "|" and "\" among them, and no byte from 0x80
        // up is; it decides which of two messages an operand gets.
        const bool inName = digit || (byte > 64 && byte < 128);
        std::uint8_t& found = classes[static_cast<std::size_t>(byte)];
        found = digit ? kNumberByte : inName ? kPlainNameByte : kOtherByte;
        if (byte == '.' || byte == '-') found = kNumberByte | kOtherByte;
        if (byte == '(') found = kOpen | kOtherByte;
    }
    return classes;
}
constexpr auto kClasses = makeClasses();

std::uint8_t classOf(char byte) {
    return kClasses[static_cast<unsigned char>(byte)];
}

bool isPrefix(char byte) {
    return byte == '!' || byte == '~';
}

/// Whether the integer part holds a digit other than 0.
bool reachesOne(std::string_view text) {
    const auto isNonZero = [](char byte) { return byte >= '1' && byte <= '9'; };
    const auto point = std::find(text.begin(), text.end(), '.');
    return std::any_of(text.begin(), point, isNonZero);
}

/// Up to 15 digits without a point, which a double holds exactly; false for anything else.
bool readSmallInteger(std::string_view text, double& value) {
    if (text.size() > 15) return false;
    std::int64_t digits = 0;
    for (const char byte : text) {
        if (byte < '0') return false;
        digits = digits * 10 + (byte - '0');
    }
    value = static_cast<double>(digits);
    return true;
}

}  // namespace

bool holdsOnlyNameBytes(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return (classOf(byte) & kOtherByte) == 0; });
}

Operand classifyOperand(std::string_view text, const NameTable& names) {
    Operand operand;
    operand.negated = !text.empty() && isPrefix(text.front());
    operand.text = text.substr(operand.negated ? 1 : 0);
    bool number = !operand.text.empty();
    std::size_t open = 0;
    for (; open < operand.text.size(); ++open) {
        const std::uint8_t found = classOf(operand.text[open]);
        number = number && (found & kNumberByte) != 0;
        if ((found & kOpen) != 0) break;
    }
    const bool hasOpen = open < operand.text.size();
    if (number) {
        operand.form = OperandForm::Number;
        return operand;
    }
    // A call's text is hashed only where a name of that size could be it: calls stand inside
    // each other, and hashing all of them would not be linear.
    if (!hasOpen || names.hasCallLikeName(operand.text.size()))
        operand.slot = names.find(operand.text);
    if (operand.slot != NameTable::kNoSlot) {
        operand.form = OperandForm::Name;
    } else if (hasOpen && operand.text.rfind(')') != std::string_view::npos) {
        operand.form = OperandForm::Call;
        operand.open = static_cast<std::uint32_t>(open);
    }
    return operand;
}

double numberValue(std::string_view text) {
    double value = 0;
    if (readSmallInteger(text, value)) return value;
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
