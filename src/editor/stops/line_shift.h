// How a change of the text moves the lines below it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "editor/control/text_control.h"

namespace korvant {

/// What a kModified notification did to the lines, as the control's markers follow it; nothing
/// when no line came or went.
std::optional<LineShift> lineShiftOf(const TextControl& editor,
                                     const ControlNotification& notification);

/// Where the 1-based `line` is after the shift.
std::int32_t shifted(std::int32_t line, const LineShift& shift);

void shiftLines(std::vector<std::int32_t>& lines, const LineShift& shift);

/// Of several lines that end on one, the line whose text is left keeps its value.
void shiftKeys(std::map<std::int32_t, std::string>& values, const LineShift& shift);

}  // namespace korvant
