// Whether a file of answers says what it means.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace korvant_app {

/// What is wrong with a file of answers: " answer N: ...", counted from 1, or "LINE:COLUMN: ..."
/// where it is no JSON. Empty when every key is known and holds a value of the right kind.
std::string faultOfJson(const std::string& text);

}  // namespace korvant_app
