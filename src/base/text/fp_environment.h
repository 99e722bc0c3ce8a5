// The floating-point environment of the host, out of the way of scripts.
#pragma once

#include <cfenv>

namespace korvant {

/// While it lives, no floating-point operation traps: a script's division by zero gives infinity
/// also in a host that runs with traps. Then the host's environment is back.
class QuietArithmetic {
  public:
    QuietArithmetic() { std::feholdexcept(&host_); }
    ~QuietArithmetic() { std::fesetenv(&host_); }
    QuietArithmetic(const QuietArithmetic&) = delete;
    QuietArithmetic& operator=(const QuietArithmetic&) = delete;

  private:
    std::fenv_t host_{};
};

}  // namespace korvant
