#include "host/engine/engine_compat.h"

#include "host/engine/array_registration.h"
#include "host/engine/string_literals.h"

namespace korvant {

int registerStringLiterals(asIScriptEngine* engine) {
    return engine->RegisterStringFactory("string", &stringLiterals());
}

int ensureDefaultArray(asIScriptEngine* engine) {
    if (engine->GetDefaultArrayTypeId() >= 0) return 0;
    if (engine->GetTypeInfoByName("array") != nullptr) return asINVALID_TYPE;
    return registerArrayType(engine);
}

namespace {

constexpr asPWORD kOwnType = 0x4B4F5259;

}  // namespace

void markOwnType(asIScriptEngine* engine, const char* name) {
    static char mark;
    asITypeInfo* const type = engine->GetTypeInfoByName(name);
    if (type != nullptr) type->SetUserData(&mark, kOwnType);
}

bool isOwnType(const asITypeInfo* type) {
    return type != nullptr && type->GetUserData(kOwnType) != nullptr;
}

BuildSettings::BuildSettings(asIScriptEngine* engine, bool utf8)
    : engine_(engine),
      globalsAfterBuild_(engine->GetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD)),
      withoutLines_(engine->GetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES)),
      scanner_(engine->GetEngineProperty(asEP_SCRIPT_SCANNER)) {
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
    engine_->SetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES, 0);
    if (!utf8) engine_->SetEngineProperty(asEP_SCRIPT_SCANNER, 0);
}

BuildSettings::~BuildSettings() {
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, globalsAfterBuild_);
    engine_->SetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES, withoutLines_);
    engine_->SetEngineProperty(asEP_SCRIPT_SCANNER, scanner_);
}

CollectionPause::CollectionPause(asIScriptEngine* engine)
    : engine_(engine), automatic_(engine->GetEngineProperty(asEP_AUTO_GARBAGE_COLLECT)) {
    engine_->SetEngineProperty(asEP_AUTO_GARBAGE_COLLECT, 0);
}

CollectionPause::~CollectionPause() {
    engine_->SetEngineProperty(asEP_AUTO_GARBAGE_COLLECT, automatic_);
}

void boundCallDepth(asIScriptEngine* engine, std::uint32_t depth) {
    constexpr asPWORD kStackBytes = asPWORD{128} << 20;
    if (engine->GetEngineProperty(asEP_MAX_CALL_STACK_SIZE) == 0)
        engine->SetEngineProperty(asEP_MAX_CALL_STACK_SIZE, depth);
    if (engine->GetEngineProperty(asEP_MAX_STACK_SIZE) == 0)
        engine->SetEngineProperty(asEP_MAX_STACK_SIZE, kStackBytes);
}

void tellOfNewContexts(asIScriptEngine& engine, void (*created)(asIScriptContext*) noexcept) {
    constexpr asPWORD kNumber = 0x4B6F7276;  // as in the engine
    engine.SetUserData(reinterpret_cast<void*>(created), kNumber);
}

}  // namespace korvant
