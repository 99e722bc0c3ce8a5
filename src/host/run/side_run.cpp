#include "host/run/side_run.h"

#include "host/engine/engine_memory.h"

namespace korvant {

namespace {

/// So many statements are passed over between two looks at the clock.
constexpr unsigned kStatements = 16;

}  // namespace

SideRun::SideRun(Clock& clock, const SideRunLimits& limits) : clock_(clock), limits_(limits) {
    if (limits.milliseconds != 0) end_ = clock.monotonic() + limits.milliseconds;
}

bool SideRun::over() noexcept {
    if (ending_ != Ending::none) return true;
    if (cancelled_)
        ending_ = Ending::cancelled;
    else if (end_ != 0 && clock_.monotonic() > end_)
        ending_ = Ending::timedOut;
    else if (engineMemoryExceeded())
        ending_ = Ending::outOfMemory;
    return ending_ != Ending::none;
}

std::string SideRun::reason() const {
    switch (ending_) {
        case Ending::cancelled:
            return "The evaluation was ended.";
        case Ending::timedOut:
            return "This takes longer than " + std::to_string(limits_.milliseconds) + " ms.";
        case Ending::outOfMemory:
            return "Out of memory";
        case Ending::none:
            break;
    }
    return {};
}

int SideRun::install(asIScriptContext& context) {
    return context.SetLineCallback(asFUNCTION(entry), this, asCALL_CDECL);
}

void SideRun::entry(asIScriptContext* context, void* self) noexcept {
    auto& side = *static_cast<SideRun*>(self);
    if (++side.statements_ % kStatements != 0 && !side.cancelled_) return;
    if (context->GetState() == asEXECUTION_ACTIVE && side.over()) context->Abort();
}

}  // namespace korvant
