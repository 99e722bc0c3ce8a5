// What a session consists of. Only the files session_*.cpp see it.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "base/text/fp_environment.h"
#include "host/engine/engine_records.h"
#include "host/engine/memory_budget.h"
#include "host/run/line_callback.h"
#include "host/run/run_limit.h"
#include "host/run/run_participant.h"
#include "host/run/run_state.h"
#include "host/run/script_session.h"
#include "host/run/side_run.h"
#include "host/run/stop_policy.h"

namespace korvant {

/// What a build does with the script's global variables.
enum class Globals { initialise, leave };

struct ScriptSession::Impl final : RunEndReport, EngineObserver {
    explicit Impl(ScriptSession& owner) : session(owner) {}

    // What a run is told, see script_session.h.
    ScriptSession& session;
    SessionServices services;
    Frontend* frontend = nullptr;  ///< the one that was given
    Frontend* cover = nullptr;     ///< what stands before it; null: nothing
    Limits limits;
    RunState state;
    BuildMessages messages;
    RunFailure failure;
    BuildGuard* buildGuard = nullptr;
    std::string builtText;  ///< of the module "main", where a guard is asked
    std::vector<RunParticipant*> participants;
    BuildMessages* sink = nullptr;  ///< where messages go instead of `messages`; null: nowhere else
    StopPolicy* policy = nullptr;
    std::atomic<SideRun*> side{nullptr};  ///< what runs while the script stands still
    int holdDepth = 0;

    // What a run consists of.
    RunLimit limit{state};
    LineCallback lineCallback{state, limit, *this};
    int interactionDepth = 0;
    bool attended = true;  ///< somebody takes part in the interactions under way
    bool busy = false;     ///< a compile, a run or a release is under way
    bool running = false;  ///< the limit of the run counts
    std::size_t unwrittenShown = 0;
    std::vector<std::string> filesNoted;  ///< files whose failure has been noted in this run

    // What is known of engines.
    std::deque<EngineRecord> engines;
    bool cut = false;  ///< the last run was ended, and did not end
    std::uint64_t cleanupBegan = 0;
    std::uint64_t cleanupSeen = 0;
    std::thread::id thread;     ///< that configured last
    std::thread::id runThread;  ///< of the run under way

    EngineRecord* find(const asIScriptEngine* engine);
    bool isOurs(const asIScriptContext* context) const;
    asIScriptContext* configureNew(asIScriptEngine* engine,
                                   std::span<const RegisterFamily> families);
    asIScriptContext* makeContext(EngineRecord& record);
    void registerFamilies(EngineRecord& record, std::span<const RegisterFamily> families);
    void forgetEngine(EngineRecord& record);

    // Compiling.
    bool build(asIScriptEngine* engine, const std::string& text,
               Globals globals = Globals::initialise);
    bool buildText(asIScriptEngine* engine, const std::string& text, Globals globals);
    int buildModule(asIScriptModule& module, const std::string& text, Globals globals);
    int callCompiler(asIScriptModule& module);
    int leavingCompiler(asIScriptEngine& engine, BuildMessages& said,
                        const std::function<int()>& call);
    int initialiseGlobals(asIScriptModule& module);
    bool guardAdmits(asIScriptModule& module, const std::string& text, const std::string& nameSpace,
                     BuildMessages& said);
    void addComplaints(asIScriptEngine* engine);
    void addWarnings(const std::string& text);
    void noteComplaint(const asIScriptEngine* engine, const std::string& text);
    void addAbortMessage();

    // Running.
    void tell(void (RunParticipant::*event)());
    void beginRun(asIScriptContext* context);
    void endRun();
    void setCurrent(asIScriptContext* context);
    void setBreakpoints(const std::vector<std::int32_t>* lines);
    void forgetStops();
    int execute(asIScriptContext& context, bool goesOn = false);
    RunOutcome executeAndReport(asIScriptContext& context, bool goesOn);
    RunOutcome left(asIScriptContext* context, const RunOutcome& outcome);
    RunOutcome outcomeOf(int result) const;
    RunOutcome buildAndRun(asIScriptEngine& engine, asIScriptContext& context,
                           const std::string& text);
    void endSuspended(asIScriptEngine& engine);
    void letGoOfFinished(asIScriptEngine& engine);
    RunOutcome fail(RunFailure::Kind kind, std::string text);
    int noteEnd(asIScriptContext& context, int result);
    void noteException(std::int32_t line, const char* description);
    void noteFailure(RunFailure::Kind kind, std::string text, std::int32_t line = 0);
    void noteStack(asIScriptContext& context);
    void showFailure();
    void reportUnwritten();
    void letGo(asIScriptContext& context);
    void showReport(const std::string& text, std::uint32_t style);

    // Contexts that the engine asks for, above all for destructors.
    void discardMain(asIScriptEngine& engine);
    void collectSome(asIScriptEngine& engine);
    void beginCleanup();
    bool cleanupOver();
    static asIScriptContext* requestContext(asIScriptEngine* engine, void* self) noexcept;
    static void returnContext(asIScriptEngine* engine, asIScriptContext* context,
                              void* self) noexcept;
    static void cleanupEntry(asIScriptContext* context, void* self) noexcept;
    static bool nativeShouldEnd();
    static void contextCreated(asIScriptContext* context) noexcept;
    static void foreignEntry(asIScriptContext* context, void* self) noexcept;
    static void compilerMessage(const asSMessageInfo* message, void* engine) noexcept;

    void onStopped() override;
    void onTimedOut() override;
    void onEngineGone(asIScriptEngine* engine) override;
    void onContextGone(asIScriptContext* context) override;
};

/// For as long as it lives, the session is busy and refuses to compile or run anything else: a
/// dialog of a script pumps messages, and the user may press F5 in it.
class BusyScope {
  public:
    explicit BusyScope(bool& busy) : busy_(busy) { busy_ = memoryBudget.scriptRuns = true; }
    ~BusyScope() { busy_ = memoryBudget.scriptRuns = false; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

  private:
    bool& busy_;
};

/// The text for a run that was aborted; also what a build says whose global variables took too
/// long.
inline constexpr char kAbortedText[] =
    "The script was aborted before it could finish. Probably it timed out.\n";

}  // namespace korvant
