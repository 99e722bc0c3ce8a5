// Expression texts by chance: sensible ones, damaged ones and plain byte soup.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "support/literal_evaluator.h"

namespace korvant_test {

/// The same seed gives the same texts and names on every machine.
class RandomExpressions {
  public:
    explicit RandomExpressions(std::uint32_t seed) : generator_(seed) {}

    /// A text of any of the three sorts.
    std::string text();
    /// A text that the grammar allows, though names in it may be unknown.
    std::string sensible(int depth = 4);
    /// One or more bytes of `text` removed, added, replaced or repeated.
    std::string damaged(std::string text);
    std::string soup();

    /// A name that the texts use often; some look like calls or operands.
    std::string name();
    /// 0, -0, infinities, not-a-number, whole and broken numbers, the ends of the integers.
    double value();
    /// The names a to d, mostly all of them, and some more.
    LiteralNames names(int more);

    int below(int end);

  private:
    std::string operand(int depth);
    std::string call(int depth);
    std::string call(const std::string& function, int count, int depth);
    const std::string& oneOf(const std::vector<std::string>& list);

    std::mt19937 generator_;
};

}  // namespace korvant_test
