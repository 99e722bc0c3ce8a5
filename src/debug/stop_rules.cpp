#include "debug/stop_rules.h"

namespace korvant {

const StopRules::Filter* filterFor(const StopRules& rules, ExceptionKind kind) {
    if (kind == ExceptionKind::lost && rules.lost.enabled) return &rules.lost;
    if (kind != ExceptionKind::caught && rules.unhandled.enabled) return &rules.unhandled;
    return rules.all.enabled ? &rules.all : nullptr;
}

}  // namespace korvant
