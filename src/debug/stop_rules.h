// What stops a run beside breakpoints, and why a run stands still.
#pragma once

#include <cstdint>
#include <string>

namespace korvant {

/// A place in a script. A script may have several sources; the main text is the one that a run was
/// started with.
struct ScriptPlace {
    std::string source;       ///< name of the source; empty for the main text
    std::int32_t line = 0;    ///< 1-based; 0: none
    std::int32_t column = 0;  ///< 1-based, in bytes; 0: unknown

    bool operator==(const ScriptPlace&) const = default;
};

enum class StopReason {
    entry,  ///< the first statement of main
    breakpoint,
    functionBreakpoint,
    dataBreakpoint,
    step,
    pause,
    exception,
    timeOut,  ///< the run ends when it goes on
    memory    ///< the same
};

enum class ExceptionKind {
    unhandled,  ///< ends the run
    caught,     ///< the script catches it
    lost        ///< raised in a function that the library called, which ignores it
};

/// Which exceptions stop. Each filter may have a condition, a script expression that is evaluated
/// in the frame of the exception; one that cannot be evaluated stops.
struct StopRules {
    struct Filter {
        bool enabled = false;
        std::string condition;
    };
    Filter unhandled;  ///< unhandled and lost ones
    Filter all;        ///< every one
    Filter lost;       ///< those that the library ignores
    bool timeOut = false;
    bool memory = false;
    bool entry = false;

    /// What a user expects who has chosen nothing: unhandled exceptions, time-outs, memory.
    static StopRules usual() {
        StopRules rules;
        rules.unhandled.enabled = rules.timeOut = rules.memory = true;
        return rules;
    }
};

/// The first enabled filter that covers `kind`; null when none does.
const StopRules::Filter* filterFor(const StopRules& rules, ExceptionKind kind);

}  // namespace korvant
