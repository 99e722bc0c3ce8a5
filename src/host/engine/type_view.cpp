#include "host/engine/type_view.h"

namespace korvant {

namespace {

constexpr asPWORD kView = 0x4B4F5656;

}  // namespace

void setTypeView(asIScriptEngine* engine, const char* type, const TypeView& view) {
    asITypeInfo* const found = engine->GetTypeInfoByName(type);
    if (found != nullptr) found->SetUserData(const_cast<TypeView*>(&view), kView);
}

const TypeView* typeViewOf(const asITypeInfo* type) {
    return type != nullptr ? static_cast<const TypeView*>(type->GetUserData(kView)) : nullptr;
}

}  // namespace korvant
