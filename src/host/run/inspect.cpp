#include "host/run/inspect.h"

#include <cstring>

#include "base/text/characters.h"
#include "host/engine/array_view.h"
#include "host/engine/script_string.h"

namespace korvant {

namespace {

struct Primitive {
    ValueKind kind;
    std::uint32_t bytes;
};

/// By type number; `other` for everything that is no primitive.
Primitive primitiveOf(int typeId) {
    switch (typeId) {
        case asTYPEID_BOOL:
            return {ValueKind::boolean, 1};
        case asTYPEID_INT8:
            return {ValueKind::signedInteger, 1};
        case asTYPEID_INT16:
            return {ValueKind::signedInteger, 2};
        case asTYPEID_INT32:
            return {ValueKind::signedInteger, 4};
        case asTYPEID_INT64:
            return {ValueKind::signedInteger, 8};
        case asTYPEID_UINT8:
            return {ValueKind::unsignedInteger, 1};
        case asTYPEID_UINT16:
            return {ValueKind::unsignedInteger, 2};
        case asTYPEID_UINT32:
            return {ValueKind::unsignedInteger, 4};
        case asTYPEID_UINT64:
            return {ValueKind::unsignedInteger, 8};
        case asTYPEID_FLOAT:
            return {ValueKind::singleReal, 4};
        case asTYPEID_DOUBLE:
            return {ValueKind::doubleReal, 8};
        default:
            return {ValueKind::other, 0};
    }
}

template <class Number>
Number read(const ValueView& value) {
    Number number{};
    std::memcpy(&number, value.address, sizeof number);
    return number;
}

asIScriptObject* scriptObject(const ValueView& value) {
    return static_cast<asIScriptObject*>(const_cast<void*>(value.address));
}

/// A handle to a base class or an interface shows what it holds.
ValueView viewObject(ValueView value) {
    asIScriptObject* const object = scriptObject(value);
    value.kind = ValueKind::object;
    value.typeId = object->GetTypeId();
    value.elements = object->GetPropertyCount();
    return value;
}

}  // namespace

StoppedScript::StoppedScript(asIScriptContext* context)
    : context_(context), engine_(context != nullptr ? context->GetEngine() : nullptr) {}

StoppedScript::StoppedScript(asIScriptEngine& engine) : context_(nullptr), engine_(&engine) {}

bool StoppedScript::readable() const {
    if (context_ == nullptr) return false;
    const asEContextState state = context_->GetState();
    return state == asEXECUTION_SUSPENDED || state == asEXECUTION_EXCEPTION;
}

unsigned StoppedScript::frameCount() const {
    return readable() ? context_->GetCallstackSize() : 0;
}

FrameInfo StoppedScript::frame(unsigned level) const {
    asIScriptFunction* const function =
        level < frameCount() ? context_->GetFunction(level) : nullptr;
    if (function == nullptr) return {};
    const int line = context_->GetLineNumber(level);
    return {orEmpty(function->GetDeclaration()), line > 0 ? line : 0};
}

std::vector<VariableInfo> StoppedScript::variables(unsigned level) const {
    std::vector<VariableInfo> found =
        readable() ? declarations(level) : std::vector<VariableInfo>{};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto index = static_cast<asUINT>(i);
        found[i].inScope = context_->IsVarInScope(index, level);
        if (found[i].inScope) found[i].address = context_->GetAddressOfVar(index, level);
    }
    return found;
}

std::vector<VariableInfo> StoppedScript::declarations(unsigned level) const {
    std::vector<VariableInfo> found;
    if (context_ == nullptr || level >= context_->GetCallstackSize()) return found;
    asIScriptFunction* const function = context_->GetFunction(level);
    const asUINT count = function != nullptr ? function->GetVarCount() : 0;
    for (asUINT i = 0; i < count; ++i) {
        const char* name = nullptr;
        VariableInfo variable;
        function->GetVar(i, &name, &variable.typeId);
        variable.name = orEmpty(name);
        variable.declaration = orEmpty(function->GetVarDecl(i));
        found.push_back(std::move(variable));
    }
    return found;
}

ValueView StoppedScript::view(int typeId, const void* address) const {
    const bool valuesAlone = context_ == nullptr && engine_ != nullptr;
    if ((!valuesAlone && !readable()) || address == nullptr || typeId == asTYPEID_VOID) return {};
    ValueView value{ValueKind::other, typeId, address, 0, 0};
    if ((typeId & asTYPEID_OBJHANDLE) != 0) {
        value.typeId = typeId & ~(asTYPEID_OBJHANDLE | asTYPEID_HANDLETOCONST);
        // Variables lie on the script's stack, which is aligned to four bytes only.
        std::memcpy(&value.address, address, sizeof value.address);
        if (value.address == nullptr) return {};
    }
    const Primitive primitive = primitiveOf(value.typeId);
    value.kind = primitive.kind;
    value.bytes = primitive.bytes;
    return primitive.kind == ValueKind::other ? viewOther(value) : value;
}

ValueView StoppedScript::viewOther(ValueView value) const {
    const asITypeInfo* const type = engine_->GetTypeInfoById(value.typeId);
    if (type == nullptr) return value;
    if ((type->GetFlags() & asOBJ_ENUM) != 0) {
        value.kind = ValueKind::enumeration;
        value.bytes = sizeof(std::int32_t);
    } else if (isOwnType(type) && std::strcmp(type->GetName(), "string") == 0) {
        value.kind = ValueKind::string;
    } else if (const ArrayView array(engine_, value.typeId, value.address); array) {
        value.kind = ValueKind::array;
        value.elements = array.size();
    } else if ((value.typeId & asTYPEID_SCRIPTOBJECT) != 0 &&
               (type->GetFlags() & asOBJ_SCRIPT_OBJECT) != 0) {
        return viewObject(value);
    }
    return value;
}

ValueView StoppedScript::element(const ValueView& array, std::uint32_t index) const {
    if (array.kind != ValueKind::array || index >= array.elements) return {};
    const ArrayView found(engine_, array.typeId, array.address);
    return view(found.elementType(), found.element(index));
}

ValueView StoppedScript::member(const ValueView& object, std::uint32_t index,
                                std::string& name) const {
    name.clear();
    if (object.kind != ValueKind::object || index >= object.elements) return {};
    asIScriptObject* const found = scriptObject(object);
    name = orEmpty(found->GetPropertyName(index));
    return view(found->GetPropertyTypeId(index), found->GetAddressOfProperty(index));
}

bool isWritten(asIScriptFunction* function) {
    if (function == nullptr) return false;
    if (function->GetFuncType() != asFUNC_SCRIPT || function->GetObjectType() != nullptr)
        return true;
    const asITypeInfo* const made =
        function->GetEngine()->GetTypeInfoById(function->GetReturnTypeId());
    const asUINT count = made != nullptr ? made->GetFactoryCount() : 0;
    for (asUINT i = 0; i < count; ++i)
        if (made->GetFactoryByIndex(i) == function) return false;
    return true;
}

std::int64_t integerOf(const ValueView& value) {
    const bool isSigned = value.kind != ValueKind::unsignedInteger;
    switch (value.bytes) {
        case 1:
            return isSigned ? read<std::int8_t>(value) : read<std::uint8_t>(value);
        case 2:
            return isSigned ? read<std::int16_t>(value) : read<std::uint16_t>(value);
        case 4:
            return isSigned ? read<std::int32_t>(value) : std::int64_t{read<std::uint32_t>(value)};
        case 8:
            return read<std::int64_t>(value);
        default:
            return 0;
    }
}

double realOf(const ValueView& value) {
    if (value.kind == ValueKind::singleReal) return read<float>(value);
    return value.kind == ValueKind::doubleReal ? read<double>(value) : 0.0;
}

bool boolOf(const ValueView& value) {
    return value.kind == ValueKind::boolean && read<std::uint8_t>(value) != 0;
}

std::string_view textOf(const ValueView& value) {
    if (value.kind != ValueKind::string) return {};
    return static_cast<const ScriptString*>(value.address)->text;
}

}  // namespace korvant
