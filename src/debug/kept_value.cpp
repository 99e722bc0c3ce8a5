#include "debug/kept_value.h"

#include <cstring>
#include <utility>

#include "host/run/inspect.h"

namespace korvant {

namespace {

ShowScope* current = nullptr;

void showTruth(ShowScope& scope, asIScriptEngine& engine, int typeId, const void* address) {
    const ValueView value = StoppedScript(engine).view(typeId, address);
    scope.isNumber = true;
    switch (value.kind) {
        case ValueKind::boolean:
            scope.number = boolOf(value) ? 1.0 : 0.0;
            break;
        case ValueKind::singleReal:
        case ValueKind::doubleReal:
            scope.number = realOf(value);
            break;
        case ValueKind::signedInteger:
        case ValueKind::unsignedInteger:
        case ValueKind::enumeration:
            scope.number = integerOf(value) != 0 ? 1.0 : 0.0;
            break;
        default:
            scope.isNumber = false;
    }
}

/// void debugShow_(const ?&in)
void show(asIScriptGeneric* call) noexcept {
    if (current == nullptr) return;
    const int typeId = call->GetArgTypeId(0);
    const void* const address = call->GetArgAddress(0);
    asIScriptEngine& engine = *call->GetEngine();
    try {
        if (current->truth)
            showTruth(*current, engine, typeId, address);
        else
            current->shown = KeptValue::of(engine, typeId, address);
    } catch (...) {
        current->shown.reset();
    }
}

constexpr asPWORD kRegistered = 0x4B4F5348;

}  // namespace

bool registerShow(asIScriptEngine& engine) {
    static char mark;
    if (engine.GetUserData(kRegistered) != nullptr) return true;
    const asDWORD mask = engine.SetDefaultAccessMask(kShowBits);
    const std::string declaration = std::string("void ") + kShow + "(const ?&in)";
    const int result = engine.RegisterGlobalFunction(
        declaration.c_str(), asFunctionPtr(static_cast<asGENFUNC_t>(show)), asCALL_GENERIC);
    engine.SetDefaultAccessMask(mask);
    if (result >= 0) engine.SetUserData(&mark, kRegistered);
    return result >= 0;
}

ShowScope::ShowScope() : before_(std::exchange(current, this)) {}

ShowScope* ShowScope::innermost() noexcept {
    return current;
}

ShowScope::~ShowScope() {
    current = before_;
}

std::shared_ptr<KeptValue> KeptValue::of(asIScriptEngine& engine, int typeId, const void* address) {
    std::shared_ptr<KeptValue> kept(new KeptValue(engine, typeId));
    if (typeId == asTYPEID_VOID) return kept;  // "null", which is of no type
    if ((typeId & asTYPEID_MASK_OBJECT) == 0) {
        const int size = engine.GetSizeOfPrimitiveType(typeId);
        if (size <= 0 || static_cast<std::size_t>(size) > sizeof kept->plain_) return nullptr;
        std::memcpy(&kept->plain_, address, static_cast<std::size_t>(size));
        return kept;
    }
    void* object = const_cast<void*>(address);
    // The engine has no address for the result of a cast from null.
    if ((typeId & asTYPEID_OBJHANDLE) != 0 && address != nullptr)
        std::memcpy(&object, address, sizeof object);
    return object == nullptr || kept->keepObject(object) ? kept : nullptr;
}

bool KeptValue::keepObject(void* object) {
    asITypeInfo* const type = engine_.GetTypeInfoById(typeId_);
    if (type == nullptr) return false;
    isFunction_ = (type->GetFlags() & asOBJ_FUNCDEF) != 0;
    if (isFunction_) {
        static_cast<asIScriptFunction*>(object)->AddRef();
        object_ = object;
        return true;
    }
    // A literal of the expression goes with the function that was compiled for it.
    const bool isText = isOwnType(type) && std::strcmp(type->GetName(), "string") == 0;
    if ((type->GetFlags() & asOBJ_REF) != 0 && !isText) {
        engine_.AddRefScriptObject(object, type);
        object_ = object;
    } else {
        object_ = engine_.CreateScriptObjectCopy(object, type);
    }
    return object_ != nullptr;
}

KeptValue::~KeptValue() {
    if (object_ == nullptr) return;
    if (isFunction_)
        static_cast<asIScriptFunction*>(object_)->Release();
    else
        engine_.ReleaseScriptObject(object_, engine_.GetTypeInfoById(typeId_));
}

TypedValue KeptValue::value() noexcept {
    if ((typeId_ & asTYPEID_MASK_OBJECT) == 0) return {typeId_, &plain_, false};
    if ((typeId_ & asTYPEID_OBJHANDLE) != 0) return {typeId_, &object_, false};
    return {typeId_, object_, false};
}

}  // namespace korvant
