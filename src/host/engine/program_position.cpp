#include "host/engine/program_position.h"

#include <cstring>

namespace korvant {

std::ptrdiff_t detail::registersInContext = -1;

namespace {

/// Notes where the registers are, and lets the engine do the work.
void look(asSVMRegisters* registers, asPWORD) {
    const auto* const context = reinterpret_cast<const char*>(registers->ctx);
    const std::ptrdiff_t offset = reinterpret_cast<const char*>(registers) - context;
    // Further away they would be no part of the context.
    constexpr std::ptrdiff_t kFarthest = 4096;
    if (offset > 0 && offset < kFarthest) detail::registersInContext = offset;
    registers->programPointer += 1 + AS_PTR_SIZE;
}

class Looker final : public asIJITCompiler {
  public:
    int CompileFunction(asIScriptFunction* function, asJITFunction* output) override {
        asUINT length = 0;
        asDWORD* const code = function->GetByteCode(&length);
        for (asUINT at = 0; code != nullptr && at < length;) {
            const auto operation = static_cast<asEBCInstr>(*reinterpret_cast<asBYTE*>(code + at));
            const auto size = static_cast<asUINT>(asBCTypeSize[asBCInfo[operation].type]);
            const asPWORD marked = 1;
            if (operation == asBC_JitEntry) std::memcpy(code + at + 1, &marked, sizeof marked);
            at += size > 0 ? size : 1;
        }
        *output = look;
        return asSUCCESS;
    }
    void ReleaseJITFunction(asJITFunction) override {}
};

void runProbe(asIScriptEngine& engine) {
    static constexpr char kText[] = "void probe() {}";
    Looker looker;
    engine.SetEngineProperty(asEP_INCLUDE_JIT_INSTRUCTIONS, 1);
    engine.SetJITCompiler(&looker);
    asIScriptModule* const module = engine.GetModule("probe", asGM_ALWAYS_CREATE);
    const bool built = module != nullptr &&
                       module->AddScriptSection("probe", kText, sizeof kText - 1) >= 0 &&
                       module->Build() >= 0;
    asIScriptContext* const context = built ? engine.CreateContext() : nullptr;
    if (context != nullptr && context->Prepare(module->GetFunctionByName("probe")) >= 0)
        context->Execute();
    if (context != nullptr) context->Release();
    engine.ShutDownAndRelease();
}

}  // namespace

bool findRegisters() {
    if (detail::registersInContext < 0)
        if (asIScriptEngine* const engine = asCreateScriptEngine()) runProbe(*engine);
    return detail::registersInContext >= 0;
}

namespace {

bool jumpsOnCondition(const asDWORD* code) {
    switch (static_cast<asEBCInstr>(*reinterpret_cast<const asBYTE*>(code))) {
        case asBC_JZ:
        case asBC_JNZ:
        case asBC_JS:
        case asBC_JNS:
        case asBC_JP:
        case asBC_JNP:
        case asBC_JLowZ:
        case asBC_JLowNZ:
            return true;
        default:
            return false;
    }
}

/// Whether both stand in one statement.
bool samePlace(asIScriptContext& context, asSVMRegisters& registers, asDWORD* before) {
    int column = 0;
    int columnBefore = 0;
    const int line = context.GetLineNumber(0, &column);
    asDWORD* const position = registers.programPointer;
    registers.programPointer = before;
    const int lineBefore = context.GetLineNumber(0, &columnBefore);
    registers.programPointer = position;
    return line == lineBefore && column == columnBefore;
}

}  // namespace

bool atEntry(asIScriptContext& context) noexcept {
    const asDWORD* const position = programPosition(context);
    asIScriptFunction* const function = currentFunction(context);
    if (position == nullptr || function == nullptr) return false;
    asUINT length = 0;
    const asDWORD* const code = function->GetByteCode(&length);
    if (code == nullptr || position < code || position >= code + length) return false;
    for (const asDWORD* at = code; at < position; at += codeSizeAt(at))
        if (asksAt(at)) return false;
    return asksAt(position);
}

bool isLoop(asIScriptContext& context) noexcept {
    const asDWORD* const position = programPosition(context);
    asIScriptFunction* const function = currentFunction(context);
    asUINT length = 0;
    const asDWORD* const code = function != nullptr ? function->GetByteCode(&length) : nullptr;
    if (position == nullptr || code == nullptr) return true;
    for (const asDWORD* at = code; at < code + length; at += codeSizeAt(at)) {
        const bool jumps = jumpsOnCondition(at) ||
                           *reinterpret_cast<const asBYTE*>(at) == static_cast<asBYTE>(asBC_JMP);
        if (jumps && at + 2 + static_cast<int>(at[1]) == position) return true;
    }
    return false;
}

/// What follows directly is the statement that begins there, and what stands before tells the kind
/// of loop: a condition that has held, a jump over the body, or the body.
bool asksInVain(asIScriptContext& context) noexcept {
    asSVMRegisters* const registers = detail::registersOf(context);
    asIScriptFunction* const function = currentFunction(context);
    if (registers == nullptr || function == nullptr) return false;
    asDWORD* const position = registers->programPointer;
    asUINT length = 0;
    asDWORD* const code = function->GetByteCode(&length);
    if (code == nullptr || position <= code || position + 1 >= code + length) return false;
    if (!asksAt(position) || !asksAt(position + 1)) return false;
    asDWORD* before = code;
    for (asDWORD* at = code; at < position; at += codeSizeAt(at)) before = at;
    return !jumpsOnCondition(before) && !asksAt(before) && samePlace(context, *registers, before);
}

}  // namespace korvant
