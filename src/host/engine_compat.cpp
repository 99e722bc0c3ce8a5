#include "host/engine_compat.h"

#include <angelscript/scriptarray.h>

#include <cstring>

#include "host/string_literals.h"

namespace korvant {

int registerStringLiterals(asIScriptEngine* engine) {
    return engine->RegisterStringFactory("string", &stringLiterals());
}

int ensureDefaultArray(asIScriptEngine* engine) {
    if (engine->GetDefaultArrayTypeId() >= 0) return 0;
    if (engine->GetTypeInfoByName("array") == nullptr) RegisterScriptArray(engine, true);
    return engine->GetDefaultArrayTypeId() >= 0 ? 0 : asINVALID_TYPE;
}

/// The add-on registers its template under this name; its factory takes the type first, which
/// nobody else's does. Only types that RegisterScriptArray made have been marked.
bool isAddonArray(const asITypeInfo* type) {
    return type != nullptr && (type->GetFlags() & asOBJ_TEMPLATE) != 0 &&
           std::strcmp(type->GetName(), "array") == 0;
}

BuildSettings::BuildSettings(asIScriptEngine* engine)
    : engine_(engine),
      globalsAfterBuild_(engine->GetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD)),
      withoutLines_(engine->GetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES)) {
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, 0);
    engine_->SetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES, 0);
}

BuildSettings::~BuildSettings() {
    engine_->SetEngineProperty(asEP_INIT_GLOBAL_VARS_AFTER_BUILD, globalsAfterBuild_);
    engine_->SetEngineProperty(asEP_BUILD_WITHOUT_LINE_CUES, withoutLines_);
}

void boundCallDepth(asIScriptEngine* engine, std::uint32_t depth) {
    constexpr asPWORD kStackBytes = asPWORD{128} << 20;
    if (engine->GetEngineProperty(asEP_MAX_CALL_STACK_SIZE) == 0)
        engine->SetEngineProperty(asEP_MAX_CALL_STACK_SIZE, depth);
    if (engine->GetEngineProperty(asEP_MAX_STACK_SIZE) == 0)
        engine->SetEngineProperty(asEP_MAX_STACK_SIZE, kStackBytes);
}

}  // namespace korvant
