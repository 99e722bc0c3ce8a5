// A second evaluator, written straight from the rules of the language with string searches and
// cuts and with no thought for speed. The real one is compared against it.
#pragma once

#include <map>
#include <string>

namespace korvant_test {

using LiteralNames = std::map<std::string, double>;

struct LiteralResult {
    double value = 0;
    std::string error;
};

/// Takes time and stack in the square of the text's length: for texts of some thousand bytes.
LiteralResult evaluateLiterally(const std::string& text, const LiteralNames& names);

}  // namespace korvant_test
