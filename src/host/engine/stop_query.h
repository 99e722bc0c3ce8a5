// Whether what takes long should end, for functions of the engine's own types.
#pragma once

namespace korvant {

/// Says whether a native function that takes long should end, because the script that called it is
/// to be ended. False where no script runs. Looks at the clock.
using StopQueryFunction = bool (*)();

inline StopQueryFunction stopQueryOfScripts = nullptr;

inline bool nativeShouldStop() {
    return stopQueryOfScripts != nullptr && stopQueryOfScripts();
}

/// Asks only now and then, in loops of short steps.
class StopEvery {
  public:
    explicit StopEvery(unsigned steps) : steps_(steps), left_(steps) {}
    /// Once it is true it stays so.
    bool operator()() {
        if (stopped_ || --left_ != 0) return stopped_;
        left_ = steps_;
        return stopped_ = nativeShouldStop();
    }

  private:
    unsigned steps_;
    unsigned left_;
    bool stopped_ = false;
};

}  // namespace korvant
