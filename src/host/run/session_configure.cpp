// Setting engines up and letting go of them.
#include <algorithm>
#include <cassert>

#include "host/engine/stop_query.h"
#include "host/run/session_impl.h"

namespace korvant {

namespace {

/// Destructors of scripts outside a run may take this long altogether, so that neither a build nor
/// the end of the host waits for one that never ends.
constexpr std::uint64_t kCleanupMs = 2000;
/// Those of a run that was ended, whose time is up already.
constexpr std::uint64_t kCutCleanupMs = 100;
/// Clean-ups that follow each other this closely count as one.
constexpr std::uint64_t kCleanupGapMs = 1000;

}  // namespace

EngineRecord* ScriptSession::Impl::find(const asIScriptEngine* engine) {
    const auto found = std::find_if(engines.begin(), engines.end(),
                                    [&](const EngineRecord& r) { return r.engine == engine; });
    return found != engines.end() ? &*found : nullptr;
}

bool ScriptSession::Impl::isOurs(const asIScriptContext* context) const {
    return std::any_of(engines.begin(), engines.end(),
                       [&](const EngineRecord& r) { return r.context == context; });
}

asIScriptContext* ScriptSession::configure(asIScriptEngine* engine,
                                           std::span<const RegisterFamily> families,
                                           const SessionServices* services) {
    if (engine == nullptr || impl_->busy) return nullptr;
    if (services != nullptr) setServices(*services);
    impl_->thread = std::this_thread::get_id();
    EngineRecord* record = impl_->find(engine);
    if (record == nullptr) return impl_->configureNew(engine, families);
    if (record->context != nullptr) {
        record->context->AddRef();
        return record->context;
    }
    return impl_->makeContext(*record);
}

asIScriptContext* ScriptSession::Impl::configureNew(asIScriptEngine* engine,
                                                    std::span<const RegisterFamily> families) {
    const BusyScope scope(busy);
    tell(&RunParticipant::beginConfiguration);
    engines.push_back({engine, nullptr, false, false, {}});
    EngineRecord& record = engines.back();
    engine->SetMessageCallback(asFUNCTION(compilerMessage), engine, asCALL_CDECL);
    observeEngine(engine, *this);
    if (makeContext(record) == nullptr) {
        forgetEngine(record);
        return nullptr;
    }
    engine->SetContextCallbacks(requestContext, returnContext, this);
    tellOfNewContexts(*engine, contextCreated);
    boundCallDepth(engine, limits.callDepth);
    registerFamilies(record, families);
    return record.context;
}

/// The new context of `record`, with a reference for the caller; null when the engine refuses.
asIScriptContext* ScriptSession::Impl::makeContext(EngineRecord& record) {
    asIScriptContext* context = record.engine->CreateContext();
    if (context == nullptr) return nullptr;
    if (lineCallback.install(*context) < 0) {
        context->Release();
        return nullptr;
    }
    observeContext(context, *this);
    record.context = context;
    return context;
}

/// One failed registration makes every later build fail, so what the engine says of it is kept for
/// the messages of those builds.
void ScriptSession::Impl::registerFamilies(EngineRecord& record,
                                           std::span<const RegisterFamily> families) {
    messages.clear();
    stopQueryOfScripts = nativeShouldEnd;
    int worst = ensureDefaultArray(record.engine);
    for (const RegisterFamily family : families) worst = std::min(worst, family(record.engine));
    for (const BuildMessage& message : messages.all()) record.complaints.push_back(message.plain);
    if (worst < 0 && record.complaints.empty())
        record.complaints.push_back("The run-time library could not be registered (" +
                                    std::to_string(worst) + ")");
    messages.clear();
}

void ScriptSession::Impl::forgetEngine(EngineRecord& record) {
    std::erase_if(engines, [&](const EngineRecord& r) { return &r == &record; });
}

void ScriptSession::release(asIScriptEngine* engine) {
    EngineRecord* record = engine != nullptr ? impl_->find(engine) : nullptr;
    if (record == nullptr || impl_->busy) return;
    const BusyScope scope(impl_->busy);
    impl_->beginCleanup();
    if (record->context != nullptr) impl_->letGo(*record->context);
    if (!record->broken) {
        impl_->discardMain(*engine);
        impl_->collectSome(*engine);
    }
    record->released = true;
    const bool inUse = std::any_of(impl_->engines.begin(), impl_->engines.end(),
                                   [](const EngineRecord& r) { return !r.released; });
    if (!inUse) impl_->lineCallback.watch().stop();
}

void ScriptSession::Impl::discardMain(asIScriptEngine& engine) {
    const CollectionPause pause(&engine);
    engine.DiscardModule("main");
}

/// In steps, because a full collection takes as long as the square of what lives.
void ScriptSession::Impl::collectSome(asIScriptEngine& engine) {
    constexpr std::uint64_t kCollectMs = 200, kCutCollectMs = 50;
    constexpr int kRounds = 1000;
    constexpr asUINT kSteps = 100;
    const std::uint64_t end = services.clock->monotonic() + (cut ? kCutCollectMs : kCollectMs);
    asUINT left = 1;
    for (int round = 0; round < kRounds && left != 0; ++round) {
        if (services.clock->monotonic() > end || cleanupOver()) return;
        engine.GarbageCollect(asGC_ONE_STEP | asGC_DESTROY_GARBAGE | asGC_DETECT_GARBAGE, kSteps);
        engine.GetGCStatistics(&left);
    }
}

void ScriptSession::Impl::onEngineGone(asIScriptEngine* engine) {
    if (EngineRecord* record = find(engine)) forgetEngine(*record);
}

void ScriptSession::Impl::onContextGone(asIScriptContext* context) {
    if (state.currentContext == context) state.currentContext = nullptr;
    for (EngineRecord& record : engines)
        if (record.context == context) record.context = nullptr;
}

void ScriptSession::Impl::beginCleanup() {
    cleanupSeen = cleanupBegan = services.clock->monotonic();
    state.stopRequest = false;
    lineCallback.forgetEnding();
}

/// Destructors outside a run have one limit together: with one each, a list of objects that never
/// let go would hold the host for hours.
bool ScriptSession::Impl::cleanupOver() {
    const std::uint64_t now = services.clock->monotonic();
    if (!busy && now - cleanupSeen > kCleanupGapMs) beginCleanup();
    cleanupSeen = now;
    return now - cleanupBegan > (cut ? kCutCleanupMs : kCleanupMs);
}

asIScriptContext* ScriptSession::Impl::requestContext(asIScriptEngine* engine,
                                                      void* self) noexcept {
    asIScriptContext* context = engine->CreateContext();
    if (context != nullptr) context->SetLineCallback(asFUNCTION(cleanupEntry), self, asCALL_CDECL);
    return context;
}

/// A host's function may run scripts on a context that it makes itself: those end with the run that
/// called it. What the host runs outside of runs, or on another thread, is its own business.
void ScriptSession::Impl::contextCreated(asIScriptContext* context) noexcept {
    context->SetLineCallback(asFUNCTION(foreignEntry), moduleSession().impl_, asCALL_CDECL);
}

void ScriptSession::Impl::foreignEntry(asIScriptContext* context, void* self) noexcept {
    auto& impl = *static_cast<Impl*>(self);
    if (!impl.running || impl.runThread != std::this_thread::get_id()) return;
    if (context->GetState() == asEXECUTION_ACTIVE) impl.lineCallback.checkEndIfDue(*context);
}

void ScriptSession::Impl::returnContext(asIScriptEngine*, asIScriptContext* context,
                                        void*) noexcept {
    if (context != nullptr) context->Release();
}

void ScriptSession::Impl::cleanupEntry(asIScriptContext* context, void* self) noexcept {
    if (context->GetState() != asEXECUTION_ACTIVE) return;
    auto& impl = *static_cast<Impl*>(self);
    if (SideRun* const side = impl.side) {
        if (side->over()) context->Abort();
    } else if (impl.running)
        impl.lineCallback.checkEnd(*context);
    else if (impl.state.stopRequest || impl.cleanupOver())
        context->Abort();
}

/// What a host does with arrays outside of runs has no limit.
bool ScriptSession::Impl::nativeShouldEnd() {
    Impl& impl = *moduleSession().impl_;
    if (impl.running) return impl.session.shouldStop();
    return impl.busy && (impl.state.stopRequest || impl.cleanupOver());
}

}  // namespace korvant
