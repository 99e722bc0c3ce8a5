// Operands: numbers, names and calls, and the parameters of a call.
#pragma once

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
    std::string_view text;                      ///< what is left after that
    std::uint32_t open = 0;                     ///< of a call: position of its first "(" in `text`
    NameTable::Slot slot = NameTable::kNoSlot;  ///< of a name
};

/// Which form an operand has. `text` is in lower case, without blanks and balanced.
Operand classifyOperand(std::string_view text, const NameTable& names);

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
