// Values by their paths: names, members and elements, read without running script code.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "debug/frame_scope.h"

namespace korvant {

struct ValueTarget;

/// "[7]" as 7; false for any other text.
bool readIndex(std::string_view text, std::uint64_t& index);

/// Empty, or why a value cannot be assigned to.
std::string whyNotSettable(const TypedValue& value);

/// Follows a path from a name of the frame. False when `path` is something else, or when there is
/// no such value.
bool findPath(asIScriptEngine& engine, const FrameScope& scope, std::string_view path,
              ValueTarget& found);

}  // namespace korvant
