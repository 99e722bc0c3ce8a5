// How a run is asked to go on, and what it answers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace korvant {

/// How a suspended run goes on.
enum class StepMode {
    run,   ///< to the next breakpoint
    over,  ///< to the next line below, whatever it calls
    into   ///< to the next line, wherever it is
};

/// What running or continuing a script answers.
struct RunOutcome {
    enum class Kind {
        finished,
        stopped,  ///< suspended; it can be continued
        failed    ///< ScriptSession::lastFailure() says why, where it has something to say
    };
    Kind kind = Kind::failed;
    std::int32_t line = 0;    ///< stopped: 1-based; 0 when something else than a line suspended it
    std::int32_t result = 0;  ///< the engine's: of the execution, or negative where it refused one

    bool failed() const noexcept { return kind == Kind::failed; }
    bool stoppedAtLine() const noexcept { return kind == Kind::stopped && line != 0; }
};

/// A call that had not returned when a run ended.
struct RunFrame {
    std::string function;   ///< "int Class::method(int)"
    std::string source;     ///< empty for the main text
    std::int32_t line = 0;  ///< 1-based; 0 in a function of the library
};

/// How a run ended, beyond what its callers are told.
struct RunFailure {
    static constexpr std::size_t kMostFrames = 100;
    enum class Kind { none, build, noMain, prepare, timeOut, stopped, exception, other };
    Kind kind = Kind::none;
    std::string text;                    ///< the message as shown to the user
    std::int32_t line = 0;               ///< 1-based; 0 unknown
    std::vector<RunFrame> stack;         ///< the innermost first, at most kMostFrames
    std::size_t calls = 0;               ///< how many there were
    std::vector<std::string> unwritten;  ///< "could not write FILE: reason", one a file
};

}  // namespace korvant
