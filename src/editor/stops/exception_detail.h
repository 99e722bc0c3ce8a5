// What a stopped line itself tells of the exception that was raised in it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "debug/value_tree.h"

namespace korvant {

/// The value of an expression that changes nothing; nothing where there is none.
using ReadExpression = std::function<std::optional<DebugValue>(const std::string& expression)>;

/// One sentence: which array has how many elements and which number was asked for, which handle is
/// null, which divisor is zero. Empty where `line`, the text of the line at which the script
/// stands, does not tell. `message` is the engine's.
std::string exceptionDetail(std::string_view message, std::string_view line,
                            const ReadExpression& read);

}  // namespace korvant
