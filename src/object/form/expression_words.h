// What is wrong with an expression, in the language of a form.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvant {

/// The evaluator's English message in the language of `locale` (1 French, 2 Spanish, any other
/// English), in Windows Western bytes. What it quotes stays as it is.
std::string expressionMessage(std::string_view english, std::int32_t locale);

}  // namespace korvant
