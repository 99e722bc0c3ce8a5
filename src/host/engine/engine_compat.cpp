#include "host/engine/engine_compat.h"

#include <angelscript/scriptarray.h>

#include <cstring>

#include "host/engine/array_memory.h"
#include "host/engine/string_literals.h"

namespace korvant {

int registerStringLiterals(asIScriptEngine* engine) {
    return engine->RegisterStringFactory("string", &stringLiterals());
}

int ensureDefaultArray(asIScriptEngine* engine) {
    if (engine->GetDefaultArrayTypeId() >= 0) return 0;
    if (engine->GetTypeInfoByName("array") == nullptr) {
        countArrayMemory();
        RegisterScriptArray(engine, true);
    }
    return engine->GetDefaultArrayTypeId() >= 0 ? 0 : asINVALID_TYPE;
}

namespace {

constexpr asPWORD kOwnType = 0x4B4F5259;

const void* tableOf(const void* object) {
    return *static_cast<const void* const*>(object);
}

/// The virtual table of the add-on's arrays, from one that is made and dropped.
const void* arrayTable(asIScriptEngine* engine) {
    static const void* table = nullptr;
    if (table != nullptr) return table;
    asITypeInfo* const type = engine->GetTypeInfoByDecl("array<int>");
    if (type == nullptr) return nullptr;
    CScriptArray* const sample = CScriptArray::Create(type, asUINT{0});
    if (sample == nullptr) return nullptr;
    table = tableOf(sample);
    sample->Release();
    return table;
}

}  // namespace

const asArray* addonArray(asIScriptEngine* engine, int typeId, const void* object) {
    const asITypeInfo* const type = engine->GetTypeInfoById(typeId);
    if (type == nullptr || object == nullptr || (type->GetFlags() & asOBJ_TEMPLATE) == 0 ||
        type->GetSubTypeCount() != 1 || std::strcmp(type->GetName(), "array") != 0)
        return nullptr;
    return tableOf(object) == arrayTable(engine) ? static_cast<const CScriptArray*>(object)
                                                 : nullptr;
}

std::uint32_t arraySize(const asArray& array) {
    return array.GetSize();
}

int arrayElementType(const asArray& array) {
    return array.GetElementTypeId();
}

const void* arrayElement(const asArray& array, std::uint32_t index) {
    return index < array.GetSize() ? array.At(index) : nullptr;
}

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

}  // namespace korvant
