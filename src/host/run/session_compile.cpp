// Building a script as the module "main".
#include <exception>

#include "base/text/text_encoding.h"
#include "host/engine/engine_memory.h"
#include "host/run/session_impl.h"
#include "host/scan/result_texts.h"
#include "host/scan/source_scan.h"

namespace korvant {

namespace {

constexpr char kModule[] = "main";
constexpr std::uint64_t kCompileMs = 10000;
constexpr std::size_t kCompileBytes = scaledMebibytes(1024);

/// How the engine begins what it says of a call that it could not do.
constexpr char kFailedRegistration[] = "Failed in call to function 'Register";

BuildMessage::Kind kindOf(asEMsgType type) {
    if (type == asMSGTYPE_WARNING) return BuildMessage::Kind::warning;
    if (type == asMSGTYPE_INFORMATION) return BuildMessage::Kind::information;
    return BuildMessage::Kind::error;
}

}  // namespace

std::int32_t ScriptSession::compile(asIScriptEngine* engine, const std::string& text) {
    if (engine == nullptr || impl_->busy) return 0;
    const BusyScope scope(impl_->busy);
    impl_->failure = {};
    const bool built = impl_->build(engine, text);
    if (!built) impl_->failure.kind = RunFailure::Kind::build;
    return built ? 1 : 0;
}

std::int32_t ScriptSession::check(asIScriptEngine* engine, const std::string& text) {
    if (engine == nullptr || impl_->busy) return 0;
    const BusyScope scope(impl_->busy);
    const bool built = impl_->build(engine, text, Globals::leave);
    const EngineRecord* const record = impl_->find(engine);
    if (record == nullptr || !record->broken) impl_->discardMain(*engine);
    return built ? 1 : 0;
}

bool ScriptSession::broken(const asIScriptEngine* engine) const noexcept {
    const EngineRecord* const record = impl_->find(engine);
    return record != nullptr && record->broken;
}

void ScriptSession::setBuildGuard(BuildGuard* guard) noexcept {
    impl_->buildGuard = guard;
}

bool ScriptSession::Impl::build(asIScriptEngine* engine, const std::string& text, Globals globals) {
    const bool built = buildText(engine, text, globals);
    for (RunParticipant* const participant : participants) participant->built(messages);
    return built;
}

bool ScriptSession::Impl::buildText(asIScriptEngine* engine, const std::string& text,
                                    Globals globals) {
    limit.begin(limits.hardCeilingMs);
    messages.clear();
    state.lastStoppedLine = 0;
    if (const EngineRecord* record = find(engine); record != nullptr && record->broken) {
        messages.add("The compiler was ended and cannot be used again", 0, 0,
                     BuildMessage::Kind::error);
        return false;
    }
    endSuspended(*engine);
    beginCleanup();
    letGoOfFinished(*engine);
    discardMain(*engine);
    collectSome(*engine);
    if (const auto refusal = scanSource(text, limits, engineIsHardened(*engine))) {
        messages.add(refusal->text, refusal->row, refusal->column, BuildMessage::Kind::error);
        return false;
    }
    if (buildGuard != nullptr && limits.guardBuilds && !buildGuard->admits(*engine, text, messages))
        return false;
    builtText = buildGuard != nullptr && !engineIsHardened(*engine) ? text : std::string();
    asIScriptModule* module = engine->GetModule(kModule, asGM_ALWAYS_CREATE);
    if (module == nullptr || module->AddScriptSection(kMainSource, text.data(), text.size(), 0) < 0)
        return false;
    const int result = buildModule(*module, text, globals);
    if (result == asINVALID_CONFIGURATION) addComplaints(engine);
    if (result >= 0) addWarnings(text);
    return result >= 0;
}

int ScriptSession::Impl::buildModule(asIScriptModule& module, const std::string& text,
                                     Globals globals) {
    asIScriptEngine& engine = *module.GetEngine();
    int result = 0;
    {
        const BuildSettings settings(&engine, isValidUtf8(text));
        result = callCompiler(module);
    }
    if (result < 0 || globals == Globals::leave) return result;
    if (policy != nullptr) policy->onBuilt(module, text);
    if (engine.GetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD) == 0) return result;
    return initialiseGlobals(module);
}

/// Where the program owns the memory of engines, the compiler is left when it takes too long.
int ScriptSession::Impl::callCompiler(asIScriptModule& module) {
    return leavingCompiler(*module.GetEngine(), messages, [&] {
        const CompileGuard guard(*services.clock, services.clock->monotonic() + kCompileMs,
                                 kCompileBytes);
        return module.Build();
    });
}

/// What leaves the compiler by an exception (its own check of an index, a string factory of the
/// host's) leaves the engine in the middle of a build, which nothing ends.
int ScriptSession::Impl::leavingCompiler(asIScriptEngine& engine, BuildMessages& said,
                                         const std::function<int()>& call) {
    std::string reason;
    try {
        return call();
    } catch (const CompileEnded& ended) {
        reason = ended.reason;
    } catch (const std::exception& fault) {
        reason = std::string("The compiler failed: ") + fault.what();
    } catch (...) {
        reason = "The compiler failed";
    }
    said.add(reason, 0, 0, BuildMessage::Kind::error);
    if (EngineRecord* record = find(&engine)) record->broken = true;
    return asERROR;
}

/// On a context of ours, which the limit and the stop request end like any other run.
int ScriptSession::Impl::initialiseGlobals(asIScriptModule& module) {
    asIScriptContext* context = module.GetEngine()->CreateContext();
    if (context == nullptr) return asOUT_OF_MEMORY;
    lineCallback.installForGlobals(*context);
    lineCallback.forgetEnding();
    running = true;
    runThread = std::this_thread::get_id();
    const QuietArithmetic quiet;
    limit.beginExecution();
    const int result = module.ResetGlobalVars(context);
    limit.endExecution();
    running = false;
    if (lineCallback.ending() != LineCallback::Ending::none) addAbortMessage();
    beginCleanup();
    context->Release();
    return result;
}

void ScriptSession::Impl::addAbortMessage() {
    std::string text = kAbortedText;
    text.pop_back();
    const BuildMessage last = messages.count() != 0 ? messages.all().back() : BuildMessage{};
    messages.add(text, last.row, last.column, BuildMessage::Kind::error);
}

/// What the compiler cannot know of our functions.
void ScriptSession::Impl::addWarnings(const std::string& text) {
    for (const ScanRefusal& place : findOverwrittenResults(text))
        messages.add(place.text, place.row, place.column, BuildMessage::Kind::warning);
}

void ScriptSession::Impl::addComplaints(asIScriptEngine* engine) {
    const EngineRecord* record = find(engine);
    if (record == nullptr) return;
    for (const std::string& complaint : record->complaints)
        messages.add(complaint, 0, 0, BuildMessage::Kind::error);
}

/// Registrations of the host's own, which come between builds, are to be named by builds too.
void ScriptSession::Impl::noteComplaint(const asIScriptEngine* engine, const std::string& text) {
    constexpr std::size_t kMostComplaints = 20;
    if (busy || text.rfind(kFailedRegistration, 0) != 0) return;
    EngineRecord* const record = find(engine);
    if (record != nullptr && record->complaints.size() < kMostComplaints)
        record->complaints.push_back(text);
}

void ScriptSession::Impl::compilerMessage(const asSMessageInfo* message, void* engine) noexcept {
    Impl& impl = *moduleSession().impl_;
    BuildMessages& messages = impl.sink != nullptr ? *impl.sink : impl.messages;
    try {
        impl.noteComplaint(static_cast<const asIScriptEngine*>(engine), message->message);
        messages.add(message->message, message->row, message->col, kindOf(message->type));
    } catch (...) {
        // Without memory for a message there is none; the build fails all the same.
    }
}

}  // namespace korvant
