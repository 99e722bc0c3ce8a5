#include "debug/stop_rules.h"

namespace korvant {

const StopRules::Filter* filterFor(const StopRules& rules, ExceptionKind kind) {
    if (kind == ExceptionKind::lost && rules.lost.enabled) return &rules.lost;
    if (kind != ExceptionKind::caught && rules.unhandled.enabled) return &rules.unhandled;
    return rules.all.enabled ? &rules.all : nullptr;
}

const char* wordsFor(StopReason reason) {
    switch (reason) {
        case StopReason::entry:
            return "entry";
        case StopReason::breakpoint:
            return "breakpoint";
        case StopReason::functionBreakpoint:
            return "function breakpoint";
        case StopReason::dataBreakpoint:
            return "data breakpoint";
        case StopReason::pause:
            return "pause";
        case StopReason::exception:
            return "exception";
        case StopReason::timeOut:
            return "time-out";
        case StopReason::memory:
            return "out of memory";
        case StopReason::step:
            break;
    }
    return "step";
}

}  // namespace korvant
