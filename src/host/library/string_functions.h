// Searching, cutting and changing texts.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/engine/registration.h"

namespace korvant {

int registerStringFunctions(asIScriptEngine* engine);
std::span<const FunctionRow> stringFunctionRows();

/// First position at or after `start` where `wanted` begins in `text`, -1 for none. An empty
/// `wanted` is found at `start` itself up to the text's length. Time is linear in both lengths.
std::int32_t findForward(std::string_view text, std::string_view wanted, std::size_t start);

/// Last position at or before `start` where `wanted` begins, -1 for none. Linear as well.
std::int32_t findBackward(std::string_view text, std::string_view wanted, std::size_t start);

}  // namespace korvant
