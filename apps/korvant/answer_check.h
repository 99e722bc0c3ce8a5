// Whether a file of answers says what it means.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace korvant_app {

/// What is wrong with the list of answers, by the number of the answer from 1; empty when every
/// key that the program reads holds a value of the right kind.
std::string faultOfAnswers(const nlohmann::ordered_json& answers);

}  // namespace korvant_app
