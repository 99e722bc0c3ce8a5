// Codes of message boxes as scripts know them, and as front ends do.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvant {

/// The value of the BU_, IC_ or ID_ constant of that name; 0 for any other text.
std::int32_t boxConstant(std::string_view name);

/// The front end's style bits for a BU_ code and an IC_ code. An unknown BU_ code is a box with
/// OK, an unknown IC_ code one without an icon.
std::uint32_t boxStyle(std::int32_t buttons, std::int32_t icon);

/// The ID_ code for the front end's answer; 0 for an answer that has none.
std::int32_t boxAnswer(int button);

}  // namespace korvant
