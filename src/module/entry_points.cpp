// The exported functions. What they do is the session's.
#include "host/run/script_session.h"
#include "korvantide/korvantide.h"
#include "module/composition.h"
#include "module/families.h"
#include "module/guarded.h"

using korvant::moduleSession;

asIScriptContext* KORVANTIDE_CALL ConfigureScriptEngine(asIScriptEngine* engine) {
    return korvant::guarded<asIScriptContext*>(nullptr, [&] {
        korvant::composeServices();
        return moduleSession().configure(engine, korvant::registrationOrder());
    });
}

std::int32_t KORVANTIDE_CALL CompileScript(asIScriptEngine* engine, const std::string& script) {
    return korvant::guarded(0, [&] { return moduleSession().compile(engine, script); });
}

std::int32_t KORVANTIDE_CALL RunScript(asIScriptContext* context) {
    return korvant::guarded<std::int32_t>(asERROR, [&] { return moduleSession().run(context); });
}

bool KORVANTIDE_CALL RunApplication(asIScriptEngine* engine, asIScriptContext* context,
                                    const std::string& script,
                                    const std::vector<std::int32_t>* breakpoints) {
    return korvant::guarded(false, [&] {
        return moduleSession().runApplication(engine, context, script, breakpoints);
    });
}

bool KORVANTIDE_CALL ContinueApplication(asIScriptEngine* engine, asIScriptContext* context,
                                         const std::vector<std::int32_t>* breakpoints,
                                         std::int32_t stepMode) {
    return korvant::guarded(false, [&] {
        return moduleSession().continueApplication(engine, context, breakpoints, stepMode);
    });
}

void KORVANTIDE_CALL ReleaseScriptEngine(asIScriptEngine* engine) {
    korvant::guarded(0, [&] {
        moduleSession().release(engine);
        return 0;
    });
}
