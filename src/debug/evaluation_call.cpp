#include "debug/evaluation_call.h"

#include <cstring>
#include <utility>

#include "debug/coverage.h"

namespace korvant {

namespace {

std::string textOf(asIScriptEngine& engine, const EvaluationText& text, EvaluationCall::Form form,
                   int type) {
    const std::string head = "debugEvaluate_(" + text.parameters(engine) + "){";
    switch (form) {
        case EvaluationCall::Form::show:
            return "void " + head + kShow + "(\n" + text.body + "\n);}";
        case EvaluationCall::Form::statement:
            return "void " + head + "\n" + text.body + "\n;}";
        case EvaluationCall::Form::set:
            return "void " + head + "target_=(\n" + text.body + "\n);}";
        case EvaluationCall::Form::give:
            break;
    }
    std::string result = engine.GetTypeDeclaration(type, true);
    if (!result.ends_with("@")) result += "@";
    return result + " " + head + "return\n" + text.body + "\n;}";
}

/// Functions of the library that an expression without calls may come to: operators and the like.
bool isHarmless(const asIScriptFunction& function) {
    if (std::strcmp(function.GetName(), kShow) == 0) return true;
    switch (function.GetFuncType()) {
        case asFUNC_SYSTEM:
            return function.GetObjectType() != nullptr
                       ? function.IsReadOnly() || *function.GetName() == '$' ||
                             std::strcmp(function.GetName(), "opIndex") == 0
                       : *function.GetName() == '$';
        default:
            return false;
    }
}

}  // namespace

bool isHandle(asIScriptEngine& engine, int typeId) {
    return (typeId & asTYPEID_OBJHANDLE) != 0 || isFunctionHandle(engine, typeId);
}

std::unique_ptr<EvaluationCall> EvaluationCall::make(ScriptSession& session,
                                                     asIScriptModule& module,
                                                     const std::string& nameSpace,
                                                     const EvaluationText& text, Form form,
                                                     int type, BuildMessages& messages) {
    asIScriptFunction* const function = session.compileFunction(
        module, textOf(*module.GetEngine(), text, form, type), nameSpace, kShowBits, messages);
    if (function == nullptr) return nullptr;
    return std::unique_ptr<EvaluationCall>(new EvaluationCall(function, text, form));
}

EvaluationCall::~EvaluationCall() {
    if (context_ != nullptr) context_->Release();
    function_->Release();
}

std::string EvaluationCall::run(ScriptSession& session, const FrameScope& scope,
                                const SideRunLimits& limits) {
    if (context_ == nullptr) context_ = function_->GetEngine()->CreateContext();
    if (context_ == nullptr || context_->Prepare(function_) < 0)
        return "There is no memory for this evaluation.";
    const CountingPause uncounted;
    std::string error = bind(scope);
    // A condition has a scope of its own around many runs.
    if (error.empty() && form_ != Form::show) error = session.runAside(*context_, limits).error;
    if (error.empty() && form_ == Form::show) {
        ShowScope* const outer = ShowScope::innermost();
        if (outer != nullptr) {
            error = session.runAside(*context_, limits).error;
        } else {
            ShowScope scopeOfShown;
            error = session.runAside(*context_, limits).error;
            shown_ = scopeOfShown.take();
        }
    }
    if (error.empty() && form_ == Form::give) putHandle();
    context_->Unprepare();
    return error;
}

std::string EvaluationCall::bind(const FrameScope& scope) {
    for (std::size_t i = 0; i < bindings_.size(); ++i) {
        const EvaluationBinding& binding = bindings_[i];
        void* address = nullptr;
        if (binding.parameter == "target_")
            address = target_.address;
        else if (binding.kind == EvaluationBinding::Kind::given)
            address = binding.value.address;
        else if (binding.kind == EvaluationBinding::Kind::local)
            address = scope.context()->GetAddressOfVar(binding.index, scope.level());
        else
            address = scope.context()->GetThisPointer(scope.level());
        if (address != nullptr && binding.kind == EvaluationBinding::Kind::member)
            address = static_cast<asIScriptObject*>(address)->GetAddressOfProperty(binding.index);
        const bool local =
            binding.kind == EvaluationBinding::Kind::local && binding.parameter != "target_";
        if (address == nullptr ||
            (local && !changes_ && scope.isUnset(binding.value, binding.index, address)))
            return whyNoValue(binding.name, scope);
        if (bindOne(static_cast<asUINT>(i), binding, address) < 0)
            return "\"" + binding.name + "\" cannot be used here.";
    }
    return {};
}

int EvaluationCall::bindOne(asUINT index, const EvaluationBinding& binding, void* address) {
    if (binding.pass != EvaluationBinding::Pass::handle)
        return context_->SetArgAddress(index, address);
    if (binding.kind == EvaluationBinding::Kind::thisObject)
        return context_->SetArgObject(index, address);
    // A handle lies on the script's stack, which is aligned to four bytes only.
    void* object = nullptr;
    std::memcpy(&object, address, sizeof object);
    // Arguments of a prepared call are null; of a null function the engine asks for its class.
    return object != nullptr ? context_->SetArgObject(index, object) : 0;
}

/// The new object gets a reference before the old one goes, which may be the same.
void EvaluationCall::putHandle() {
    asIScriptEngine& engine = *function_->GetEngine();
    void* const fresh = context_->GetReturnObject();
    void* old = nullptr;
    std::memcpy(&old, target_.address, sizeof old);
    asITypeInfo* const type = engine.GetTypeInfoById(target_.typeId);
    const bool isFunction = isFunctionHandle(engine, target_.typeId);
    if (fresh != nullptr && isFunction) static_cast<asIScriptFunction*>(fresh)->AddRef();
    if (fresh != nullptr && !isFunction) engine.AddRefScriptObject(fresh, type);
    std::memcpy(target_.address, &fresh, sizeof fresh);
    if (old != nullptr && isFunction) static_cast<asIScriptFunction*>(old)->Release();
    if (old != nullptr && !isFunction) engine.ReleaseScriptObject(old, type);
}

bool EvaluationCall::mayChange() const {
    asUINT length = 0;
    const asDWORD* const code = function_->GetByteCode(&length);
    asIScriptEngine* const engine = function_->GetEngine();
    for (asUINT at = 0; code != nullptr && at < length;) {
        const auto operation = static_cast<asEBCInstr>(*reinterpret_cast<const asBYTE*>(code + at));
        const asUINT size = static_cast<asUINT>(asBCTypeSize[asBCInfo[operation].type]);
        int called = 0;
        if (operation == asBC_CallPtr || operation == asBC_CALLBND) return true;
        if (operation == asBC_CALL || operation == asBC_CALLINTF || operation == asBC_CALLSYS ||
            operation == asBC_Thiscall1)
            called = static_cast<int>(code[at + 1]);
        if (operation == asBC_ALLOC) called = static_cast<int>(code[at + 1 + AS_PTR_SIZE]);
        const asIScriptFunction* const function =
            called != 0 ? engine->GetFunctionById(called) : nullptr;
        if (function != nullptr && !isHarmless(*function)) return true;
        at += size > 0 ? size : 1;
    }
    return false;
}

}  // namespace korvant
