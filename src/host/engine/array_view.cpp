#include "host/engine/array_view.h"

#include <cstring>

#include "host/engine/array_type.h"
#include "korvantide/script_array.h"

namespace korvant {

namespace {

bool isNative(const asIScriptFunction& method, const char* name, asUINT parameters) {
    return method.GetFuncType() == asFUNC_SYSTEM && method.GetParamCount() == parameters &&
           method.IsReadOnly() && std::strcmp(method.GetName(), name) == 0;
}

bool isLength(const asIScriptFunction& method) {
    asDWORD flags = 0;
    return isNative(method, "length", 0) && method.GetReturnTypeId(&flags) == asTYPEID_UINT32 &&
           flags == asTM_NONE;
}

bool isIndex(const asIScriptFunction& method, int elementId) {
    if (!isNative(method, "opIndex", 1)) return false;
    asDWORD flags = 0;
    int parameter = 0;
    const int result = method.GetReturnTypeId(&flags);
    method.GetParam(0, &parameter);
    return parameter == asTYPEID_UINT32 && (flags & asTM_INOUTREF) != 0 &&
           (result & ~kHandleBits) == (elementId & ~kHandleBits);
}

/// Calls `method` of `object` and gives what `read` makes of the context; a default for failures.
template <class Prepare, class Read>
auto callMethod(asIScriptEngine& engine, asIScriptFunction* method, const void* object,
                Prepare prepare, Read read) -> decltype(read(*engine.CreateContext())) {
    decltype(read(*engine.CreateContext())) result{};
    asIScriptContext* const context = engine.CreateContext();
    if (context == nullptr) return result;
    if (context->Prepare(method) == asSUCCESS) {
        context->SetObject(const_cast<void*>(object));
        prepare(*context);
        if (context->Execute() == asEXECUTION_FINISHED) result = read(*context);
    }
    context->Release();
    return result;
}

}  // namespace

ArrayView::ArrayView(asIScriptEngine* engine, int typeId, const void* object)
    : engine_(engine), object_(object) {
    const asITypeInfo* const type = engine->GetTypeInfoById(typeId);
    if (type == nullptr || object == nullptr || (type->GetFlags() & asOBJ_TEMPLATE) == 0 ||
        type->GetSubTypeCount() != 1)
        return;
    elementId_ = type->GetSubTypeId();
    if (ArrayType::known(type) != nullptr)
        own_ = static_cast<const ScriptArray*>(object);
    else
        findMethods(*type);
}

void ArrayView::findMethods(const asITypeInfo& type) {
    asIScriptFunction* length = nullptr;
    for (asUINT i = 0; i < type.GetMethodCount(); ++i) {
        asIScriptFunction* const method = type.GetMethodByIndex(i);
        if (isLength(*method)) length = method;
        if (isIndex(*method, elementId_)) index_ = method;
    }
    if (index_ != nullptr) length_ = length;
}

std::uint32_t ArrayView::size() const {
    if (own_ != nullptr) return own_->GetSize();
    if (length_ == nullptr) return 0;
    return callMethod(
        *engine_, length_, object_, [](asIScriptContext&) {},
        [](asIScriptContext& context) { return std::uint32_t{context.GetReturnDWord()}; });
}

const void* ArrayView::element(std::uint32_t index) const {
    if (index >= size()) return nullptr;
    if (own_ != nullptr) return own_->At(index);
    return callMethod(
        *engine_, index_, object_,
        [index](asIScriptContext& context) { context.SetArgDWord(0, index); },
        [](asIScriptContext& context) {
            return static_cast<const void*>(context.GetReturnAddress());
        });
}

}  // namespace korvant
