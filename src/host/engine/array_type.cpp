#include "host/engine/array_type.h"

#include <cstring>
#include <new>

#include "host/engine/array_registration.h"
#include "host/engine/native_call.h"
#include "host/engine/script_string.h"

namespace korvant {

namespace {

/// Tells our user data from that of others. Any number that nobody else chooses.
constexpr asPWORD kRecord = 0x4B4F5241;

bool isOurs(asITypeInfo& type) {
    return (type.GetFlags() & asOBJ_TEMPLATE) != 0 && type.GetSubTypeCount() == 1 &&
           std::strcmp(type.GetName(), kArrayName) == 0 &&
           isOwnType(type.GetEngine()->GetTypeInfoByName(kArrayName));
}

ArrayType::Kind kindOf(int elementId, const asITypeInfo* element) {
    if ((elementId & asTYPEID_OBJHANDLE) != 0) return ArrayType::Kind::handle;
    if ((elementId & asTYPEID_MASK_OBJECT) == 0) return ArrayType::Kind::number;
    const bool text = isOwnType(element) && std::strcmp(element->GetName(), "string") == 0;
    return text ? ArrayType::Kind::text : ArrayType::Kind::object;
}

/// Whether `method` takes an element. Elements that are handles to constant objects want methods
/// that change neither.
bool takesElement(const asIScriptFunction& method, int elementId) {
    const bool constant = (elementId & asTYPEID_HANDLETOCONST) != 0;
    if (method.GetParamCount() != 1 || (constant && !method.IsReadOnly())) return false;
    int id = 0;
    asDWORD flags = 0;
    if (method.GetParam(0, &id, &flags) < 0 || (id & ~kHandleBits) != (elementId & ~kHandleBits))
        return false;
    const bool handle = (id & asTYPEID_OBJHANDLE) != 0;
    if ((flags & asTM_INREF) != 0) return !handle && (!constant || (flags & asTM_CONST) != 0);
    return handle && (!constant || (id & asTYPEID_HANDLETOCONST) != 0);
}

void note(asIScriptFunction& method, asIScriptFunction*& found, bool& several) {
    several = several || found != nullptr;
    found = several ? nullptr : &method;
}

void findMethods(ArrayType& record) {
    for (asUINT i = 0; i < record.element->GetMethodCount(); ++i) {
        asIScriptFunction& method = *record.element->GetMethodByIndex(i);
        if (!takesElement(method, record.elementId)) continue;
        asDWORD flags = 0;
        const int result = method.GetReturnTypeId(&flags);
        if (flags != asTM_NONE) continue;
        if (result == asTYPEID_INT32 && std::strcmp(method.GetName(), "opCmp") == 0)
            note(method, record.compare, record.severalCompare);
        if (result == asTYPEID_BOOL && std::strcmp(method.GetName(), "opEquals") == 0)
            note(method, record.equal, record.severalEqual);
    }
}

ArrayType* makeRecord(asITypeInfo& type) {
    asIScriptEngine* const engine = type.GetEngine();
    const int id = type.GetSubTypeId();
    const ArrayType::Kind kind = kindOf(id, type.GetSubType());
    const bool number = kind == ArrayType::Kind::number;
    const int width = number ? engine->GetSizeOfPrimitiveType(id) : int{sizeof(void*)};
    auto* const record =
        new (std::nothrow) ArrayType{engine, &type, number ? nullptr : type.GetSubType(),
                                     id,     kind,  static_cast<std::uint8_t>(width)};
    if (record == nullptr) return nullptr;
    if (record->element != nullptr) findMethods(*record);
    type.SetUserData(record, kRecord);
    return record;
}

void dropRecord(asITypeInfo* type) {
    delete ArrayType::known(type);
}

}  // namespace

void keepArrayRecords(asIScriptEngine& engine) {
    engine.SetTypeInfoUserDataCleanupCallback(dropRecord, kRecord);
}

/// A type without an engine has been taken apart by one that is not ours, under code that lives.
ArrayType* ArrayType::known(const asITypeInfo* type) {
    if (type == nullptr || type->GetEngine() == nullptr) return nullptr;
    return static_cast<ArrayType*>(type->GetUserData(kRecord));
}

ArrayType* ArrayType::of(asITypeInfo* type) {
    ArrayType* const record = known(type);
    if (record != nullptr) return record;
    const bool whole = type != nullptr && type->GetEngine() != nullptr;
    return whole && isOurs(*type) ? makeRecord(*type) : nullptr;
}

void* ArrayType::makeObject() const noexcept {
    void* const made =
        kind == Kind::text ? ScriptString::create() : engine->CreateScriptObject(element);
    if (made == nullptr && runningScriptIsWell()) raiseInScript("Out of memory");
    return made;
}

void ArrayType::releaseObject(void* object) const noexcept {
    if (object == nullptr) return;
    if (kind == Kind::text)
        static_cast<ScriptString*>(object)->release();
    else
        engine->ReleaseScriptObject(object, element);
}

void ArrayType::addReference(void* object) const noexcept {
    if (object != nullptr) engine->AddRefScriptObject(object, element);
}

asIScriptContext* ElementOrder::call(asIScriptFunction& method, void* object,
                                     void* argument) noexcept {
    asIScriptContext* const context = calls_.prepare(method);
    if (context == nullptr) return nullptr;
    context->SetObject(object);
    context->SetArgObject(0, argument);
    return calls_.execute() ? context : nullptr;
}

bool ElementOrder::equal(void* left, void* right) noexcept {
    if (type_.kind == ArrayType::Kind::handle && left == right) return true;
    if (left == nullptr || right == nullptr) return left == right;
    if (type_.kind == ArrayType::Kind::text)
        return static_cast<ScriptString*>(left)->text == static_cast<ScriptString*>(right)->text;
    if (type_.equal != nullptr) {
        asIScriptContext* const context = call(*type_.equal, left, right);
        return context != nullptr && context->GetReturnByte() != 0;
    }
    if (type_.compare == nullptr) return false;
    asIScriptContext* const context = call(*type_.compare, left, right);
    return context != nullptr && context->GetReturnDWord() == 0;
}

bool ElementOrder::before(void* left, void* right) noexcept {
    if (left == nullptr || right == nullptr) return left == nullptr && right != nullptr;
    if (type_.kind == ArrayType::Kind::text)
        return static_cast<ScriptString*>(left)->text < static_cast<ScriptString*>(right)->text;
    asIScriptContext* const context = call(*type_.compare, left, right);
    return context != nullptr && static_cast<int>(context->GetReturnDWord()) < 0;
}

bool ElementOrder::before(asIScriptFunction& less, void* left, void* right) noexcept {
    asIScriptContext* const context = calls_.prepare(less);
    if (context == nullptr) return false;
    // Addresses and handles stand side by side; that of the second is found by a search.
    void* const arguments[] = {left, right};
    std::memcpy(context->GetAddressOfArg(0), arguments, sizeof arguments);
    return calls_.execute() && context->GetReturnByte() != 0;
}

}  // namespace korvant
