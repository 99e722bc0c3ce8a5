// Values of a script that stands still, as exact text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "debug/value_tree.h"
#include "host/run/inspect.h"

namespace korvant {

inline constexpr char kNotYetSet[] = "not yet set";
inline constexpr char kGone[] = "gone";
inline constexpr char kNull[] = "null";

/// "..." with \" \\ \n \t \r escaped; bytes that are no text, and other control characters, as
/// \xHH. Of a text longer than `longest` bytes only the beginning, and "..." behind the quotes.
std::string quotedText(std::string_view bytes, std::size_t longest);

/// As scripts write the type; of an object the type that it really has. `declared` is the type
/// number of the variable.
std::string typeText(asIScriptEngine& engine, int declared, const ValueView& value);

/// The value in one line: numbers exact, objects and arrays with what they hold, shortened.
std::string valueText(asIScriptEngine& engine, const StoppedScript& script, const ValueView& value,
                      const ValueFormat& format);

/// The function that a function handle names; null for anything else.
asIScriptFunction* functionOf(asIScriptEngine& engine, const ValueView& value);

}  // namespace korvant
