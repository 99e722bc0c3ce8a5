#include "observed_run.h"

#include <cstdio>
#include <optional>

#include "base/system/user_folders.h"
#include "korvantide/korvantide.h"

namespace korvant_app {

namespace {

/// Stops nowhere.
class Passer final : public korvant::DebugListener {
    void onStopped(const korvant::StopInfo&) override {}
};

}  // namespace

bool runObserved(asIScriptEngine* engine, asIScriptContext* context, const Source& source,
                 const korvant::RunObserver::Files& wanted) {
    using korvant::DebugSession;
    korvant::ScriptSession& script = korvant::moduleSession();
    Passer passer;
    std::optional<DebugSession> own;
    DebugSession* session = DebugSession::attachedTo(script);
    if (session == nullptr) {
        session = &own.emplace(script, passer);
        session->attach();
    }
    korvant::RunObserver observer(wanted);
    observer.watch(*session);
    RunApplication(engine, context, source.text, nullptr);
    const auto report = observer.finish(*session, korvant::absolutePath(source.name));
    for (const std::string& failure : report.failures) complain(failure);
    std::fputs(report.summary.c_str(), stderr);
    return report.failures.empty();
}

}  // namespace korvant_app
