// The exported functions. What they do is the session's.
#include "host/run/script_session.h"
#include "korvantide/korvantide.h"
#include "language/worker_guard.h"
#include "module/configuration.h"
#include "module/families.h"
#include "module/guarded.h"

using korvant::moduleSession;

namespace {

/// Any other number than the two of stepping lets the run go on.
korvant::StepMode stepModeOf(std::int32_t number) {
    if (number == 1) return korvant::StepMode::over;
    return number == 2 ? korvant::StepMode::into : korvant::StepMode::run;
}

}  // namespace

namespace korvant {

asIScriptContext* configureEngine(asIScriptEngine* engine, SessionServices (*services)()) noexcept {
    return guarded<asIScriptContext*>(nullptr, [&] {
        moduleSession().setBuildGuard(&workerGuard());
        if (services == nullptr) return moduleSession().configure(engine, registrationOrder());
        const SessionServices chosen = services();
        return moduleSession().configure(engine, registrationOrder(), &chosen);
    });
}

}  // namespace korvant

std::int32_t KORVANTIDE_CALL CompileScript(asIScriptEngine* engine, const std::string& script) {
    return korvant::guarded(0, [&] { return moduleSession().compile(engine, script); });
}

std::int32_t KORVANTIDE_CALL RunScript(asIScriptContext* context) {
    return korvant::guarded<std::int32_t>(asERROR,
                                          [&] { return moduleSession().run(context).result; });
}

bool KORVANTIDE_CALL RunApplication(asIScriptEngine* engine, asIScriptContext* context,
                                    const std::string& script,
                                    const std::vector<std::int32_t>* breakpoints) {
    return korvant::guarded(false, [&] {
        return !moduleSession().runApplication(engine, context, script, breakpoints).failed();
    });
}

bool KORVANTIDE_CALL ContinueApplication(asIScriptEngine* engine, asIScriptContext* context,
                                         const std::vector<std::int32_t>* breakpoints,
                                         std::int32_t stepMode) {
    return korvant::guarded(false, [&] {
        return !moduleSession()
                    .continueApplication(engine, context, breakpoints, stepModeOf(stepMode))
                    .failed();
    });
}

void KORVANTIDE_CALL ReleaseScriptEngine(asIScriptEngine* engine) {
    korvant::guarded(0, [&] {
        moduleSession().release(engine);
        return 0;
    });
}
