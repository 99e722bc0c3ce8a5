// Building a script as the module "main".
#include "base/text/text_encoding.h"
#include "host/engine/engine_memory.h"
#include "host/run/session_impl.h"
#include "host/scan/source_scan.h"

namespace korvant {

namespace {

constexpr char kModule[] = "main";
constexpr std::uint64_t kCompileMs = 10000;
constexpr std::size_t kCompileBytes = scaledMebibytes(1024);

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
    discardMain(*engine);
    collectSome(*engine);
    if (const auto refusal = scanSource(text, limits, engineIsHardened(*engine))) {
        messages.add(refusal->text, refusal->row, refusal->column, BuildMessage::Kind::error);
        return false;
    }
    if (buildGuard != nullptr && limits.guardBuilds && !buildGuard->admits(*engine, text, messages))
        return false;
    asIScriptModule* module = engine->GetModule(kModule, asGM_ALWAYS_CREATE);
    if (module == nullptr || module->AddScriptSection(kMainSource, text.data(), text.size(), 0) < 0)
        return false;
    const int result = buildModule(*module, text, globals);
    if (result == asINVALID_CONFIGURATION) addComplaints(engine);
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

/// Where the program owns the memory of engines, the compiler is left when it takes too long. It
/// leaves the engine in the middle of a build, which nothing ends.
int ScriptSession::Impl::callCompiler(asIScriptModule& module) {
    try {
        const CompileGuard guard(*services.clock, services.clock->monotonic() + kCompileMs,
                                 kCompileBytes);
        return module.Build();
    } catch (const CompileEnded& ended) {
        messages.add(ended.reason, 0, 0, BuildMessage::Kind::error);
        if (EngineRecord* record = find(module.GetEngine())) record->broken = true;
        return asERROR;
    }
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

void ScriptSession::Impl::addComplaints(asIScriptEngine* engine) {
    const EngineRecord* record = find(engine);
    if (record == nullptr) return;
    for (const std::string& complaint : record->complaints)
        messages.add(complaint, 0, 0, BuildMessage::Kind::error);
}

void ScriptSession::Impl::compilerMessage(const asSMessageInfo* message, void* self) noexcept {
    auto& impl = *static_cast<Impl*>(self);
    BuildMessages& messages = impl.sink != nullptr ? *impl.sink : impl.messages;
    try {
        messages.add(message->message, message->row, message->col, kindOf(message->type));
    } catch (...) {
        // Without memory for a message there is none; the build fails all the same.
    }
}

}  // namespace korvant
