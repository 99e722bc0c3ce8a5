#include "host/engine/object_count.h"

#include <algorithm>

namespace korvant {

namespace {

bool isCounted(asITypeInfo& type) {
    return (type.GetFlags() & (asOBJ_SCRIPT_OBJECT | asOBJ_TEMPLATE)) != 0;
}

}  // namespace

void ObjectCount::watch(asIScriptEngine& engine) noexcept {
    forget();
    try {
        collect(engine);
    } catch (...) {
        // What was found so far is watched.
    }
}

void ObjectCount::forget() noexcept {
    for (asITypeInfo* type : types_) type->Release();
    types_.clear();
}

int ObjectCount::largest() const noexcept {
    int most = 0;
    for (asITypeInfo* type : types_) {
        type->AddRef();
        most = std::max(most, type->Release());
    }
    return most;
}

void ObjectCount::collect(asIScriptEngine& engine) {
    asIScriptModule* const module = engine.GetModule("main");
    if (module == nullptr) return;
    for (asUINT i = 0; i < module->GetObjectTypeCount(); ++i) {
        asITypeInfo* const type = module->GetObjectTypeByIndex(i);
        add(engine, type->GetTypeId());
        for (asUINT m = 0; m < type->GetMethodCount(); ++m)
            addVariables(engine, type->GetMethodByIndex(m, false));
    }
    for (asUINT i = 0; i < module->GetFunctionCount(); ++i)
        addVariables(engine, module->GetFunctionByIndex(i));
    for (asUINT i = 0; i < module->GetGlobalVarCount(); ++i) {
        int typeId = 0;
        if (module->GetGlobalVar(i, nullptr, nullptr, &typeId) >= 0) add(engine, typeId);
    }
}

void ObjectCount::addVariables(asIScriptEngine& engine, asIScriptFunction* function) {
    for (asUINT i = 0; i < function->GetVarCount(); ++i) {
        int typeId = 0;
        if (function->GetVar(i, nullptr, &typeId) >= 0) add(engine, typeId);
    }
}

void ObjectCount::add(asIScriptEngine& engine, int typeId) {
    asITypeInfo* const type = engine.GetTypeInfoById(typeId);
    if (type == nullptr || !isCounted(*type)) return;
    if (std::find(types_.begin(), types_.end(), type) != types_.end()) return;
    types_.push_back(type);
    type->AddRef();
    for (asUINT i = 0; i < type->GetSubTypeCount(); ++i) add(engine, type->GetSubTypeId(i));
    if ((type->GetFlags() & asOBJ_SCRIPT_OBJECT) == 0) return;
    for (asUINT i = 0; i < type->GetPropertyCount(); ++i) {
        int property = 0;
        if (type->GetProperty(i, nullptr, &property) >= 0) add(engine, property);
    }
}

}  // namespace korvant
