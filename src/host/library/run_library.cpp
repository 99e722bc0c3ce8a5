#include "host/library/run_library.h"

#include "host/engine/script_string.h"
#include "host/library/run_dialogs.h"
#include "host/library/run_files.h"
#include "host/library/script_console.h"
#include "host/run/script_session.h"

namespace korvant {

namespace {

class RunStrings final : public RunParticipant {
    void endRun() override { trimResultString(); }
};

}  // namespace

int joinRuns(asIScriptEngine*) {
    static RunStrings strings;
    try {
        ScriptSession& session = moduleSession();
        session.join(scriptConsole());
        session.join(runFiles());
        session.join(runDialogs());
        session.join(strings);
    } catch (...) {
        return asOUT_OF_MEMORY;
    }
    return 0;
}

}  // namespace korvant
