#include "host/engine/engine_records.h"

namespace korvant {

namespace {

/// Tells our user data from that of others. Any number that nobody else chooses.
constexpr asPWORD kOwner = 0x4B4F5256;

void engineGone(asIScriptEngine* engine) {
    auto* observer = static_cast<EngineObserver*>(engine->GetUserData(kOwner));
    if (observer != nullptr) observer->onEngineGone(engine);
}

void contextGone(asIScriptContext* context) {
    auto* observer = static_cast<EngineObserver*>(context->GetUserData(kOwner));
    if (observer != nullptr) observer->onContextGone(context);
}

}  // namespace

void observeEngine(asIScriptEngine* engine, EngineObserver& observer) {
    engine->SetUserData(&observer, kOwner);
    engine->SetEngineUserDataCleanupCallback(engineGone, kOwner);
    engine->SetContextUserDataCleanupCallback(contextGone, kOwner);
}

void observeContext(asIScriptContext* context, EngineObserver& observer) {
    context->GetEngine()->SetContextUserDataCleanupCallback(contextGone, kOwner);
    context->SetUserData(&observer, kOwner);
}

void forgetObserver(asIScriptEngine* engine) {
    engine->SetUserData(nullptr, kOwner);
}

void forgetObserver(asIScriptContext* context) {
    context->SetUserData(nullptr, kOwner);
}

}  // namespace korvant
