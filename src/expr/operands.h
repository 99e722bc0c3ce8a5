// Operands: numbers, names and calls, and the parameters of a call.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "expr/expression_text.h"
#include "expr/name_table.h"

namespace korvant::expr {

enum class OperandForm : std::uint8_t { Number, Name, Call, Neither };

struct Operand {
    OperandForm form = OperandForm::Neither;
    bool negated = false;                       ///< a "!" or "~" stood before it
    std::uint32_t open = 0;                     ///< of a call: position of its first "(" in `text`
    NameTable::Slot slot = NameTable::kNoSlot;  ///< of a name
    std::string_view text;                      ///< what is left after the prefix
};

/// What a byte cannot be part of.
enum ByteClass : std::uint8_t { kNotInNumber = 1, kNotInName = 2, kOpen = 4 };
constexpr std::array<std::uint8_t, 256> makeByteClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        const bool digit = byte >= '0' && byte <= '9';
        std::uint8_t& found = classes[static_cast<std::size_t>(byte)];
        if (!digit && byte != '.' && byte != '-') found |= kNotInNumber;
        // Deliberate: 65 to 127 are name bytes, "|" and "\\" among them, and no byte from 0x80
        // up is; it decides which of two messages an operand gets.
        if (!digit && (byte <= 64 || byte >= 128)) found |= kNotInName;
        if (byte == '(') found |= kOpen;
    }
    return classes;
}
inline constexpr auto kByteClasses = makeByteClasses();

/// Which form an operand has; `find` gives the slot of a name.
template <class Find>
[[gnu::always_inline]] inline Operand classifyOperandWith(std::string_view text,
                                                          const NameTable& names, Find find) {
    Operand operand;
    operand.negated = !text.empty() && (text.front() == '!' || text.front() == '~');
    if (operand.negated) text.remove_prefix(1);
    operand.text = text;
    std::uint8_t classes = text.empty() ? kNotInNumber : 0;
    std::size_t end = 0;
    for (; end < text.size() && (classes & kOpen) == 0; ++end)
        classes |= kByteClasses[static_cast<unsigned char>(text[end])];
    if ((classes & kNotInNumber) == 0) {
        operand.form = OperandForm::Number;
        return operand;
    }
    const bool hasOpen = (classes & kOpen) != 0;
    // A call's text is hashed only where a name of that size could be it: calls stand inside
    // each other, and hashing all of them would not be linear.
    if (!hasOpen || names.hasCallLikeName(text.size())) operand.slot = find(text);
    if (operand.slot != NameTable::kNoSlot) {
        operand.form = OperandForm::Name;
    } else if (hasOpen && text.rfind(')') != std::string_view::npos) {
        operand.form = OperandForm::Call;
        operand.open = static_cast<std::uint32_t>(end - 1);
    }
    return operand;
}

/// Which form an operand has. `text` is in lower case, without blanks and balanced.
inline Operand classifyOperand(std::string_view text, const NameTable& names) {
    return classifyOperandWith(text, names,
                               [&](std::string_view name) { return names.find(name); });
}

/// The same where eight bytes may be read behind the text, as in a PairedText.
[[gnu::always_inline]] inline Operand classifyReadableOperand(std::string_view text,
                                                              const NameTable& names) {
    return classifyOperandWith(text, names, [&](std::string_view name) {
        return names.findReadable(name.data(), name.size());
    });
}

/// Whether every byte may stand in a name: digits, letters, "_" and the other bytes from 65
/// to 127.
bool holdsOnlyNameBytes(std::string_view text);

/// The longest leading part that forms a decimal number, correctly rounded; 0 if none does.
/// The text holds digits, "." and "-" only; time is linear in its length.
double numberValue(std::string_view text);

/// The parameters of a call; `text` begins with the call's "(". "()" has none.
std::vector<std::string> splitParameters(std::string_view text);

/// Where the parameter that begins at `from` ends: at its ";" or at `close`, the end of the call.
std::uint32_t parameterEnd(const PairedText& text, std::uint32_t from, std::uint32_t close);

}  // namespace korvant::expr
