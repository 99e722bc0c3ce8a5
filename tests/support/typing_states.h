// Texts as they are while somebody types: whole scripts with tokens gone, swapped and put in, cut
// off, and written letter by letter.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace korvant::test {

class TypingStates {
  public:
    TypingStates(std::vector<std::string> scripts, unsigned seed);
    /// The next state. All states are short enough to be built in milliseconds.
    std::string next();

  private:
    std::string broken();
    std::string typed();
    const std::string& anyScript();
    std::string anyToken();
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }

    std::vector<std::string> scripts_;
    std::mt19937 random_;
    std::string text_, line_;  ///< what is typed into, and what is still to be typed
    std::size_t caret_ = 0;
};

}  // namespace korvant::test
