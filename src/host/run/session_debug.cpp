// What a debugger needs of a session: standing still, running aside, being told.
#include <utility>

#include "base/text/text_encoding.h"
#include "host/engine/active_context.h"
#include "host/engine/memory_budget.h"
#include "host/run/quiet_frontend.h"
#include "host/run/session_impl.h"
#include "host/scan/source_scan.h"

namespace korvant {

void ScriptSession::setStopPolicy(StopPolicy* policy) {
    impl_->policy = policy;
    impl_->lineCallback.setPolicy(policy);
}

StopPolicy* ScriptSession::stopPolicy() const noexcept {
    return impl_->policy;
}

void ScriptSession::setStopLines(const std::vector<std::int32_t>* lines) {
    impl_->setBreakpoints(lines);
    impl_->lineCallback.policyChanged();
}

const std::vector<std::int32_t>& ScriptSession::stopLines() const noexcept {
    return impl_->lineCallback.breakpoints().lines();
}

void ScriptSession::requestAttention() noexcept {
    impl_->lineCallback.requestAttention();
}

BuildMessages* ScriptSession::setMessageSink(BuildMessages* sink) noexcept {
    return std::exchange(impl_->sink, sink);
}

void ScriptSession::beginHold() {
    if (impl_->holdDepth++ > 0) return;
    impl_->lineCallback.beginHold();
    impl_->limit.stand();
    impl_->tell(&RunParticipant::beginHold);
}

void ScriptSession::endHold() {
    if (--impl_->holdDepth > 0) return;
    impl_->tell(&RunParticipant::endHold);
    impl_->limit.goOn();
    impl_->lineCallback.endHold();
}

bool ScriptSession::held() const noexcept {
    return impl_->holdDepth > 0;
}

bool ScriptSession::quiet() const noexcept {
    const SideRun* const side = impl_->side;
    return side != nullptr && side->quiet();
}

void ScriptSession::cancelAside() noexcept {
    if (SideRun* const side = impl_->side) side->cancel();
}

namespace {

/// A side run's share of what the session has.
class SideScope {
  public:
    SideScope(std::atomic<SideRun*>& current, SideRun& side, Frontend*& frontend,
              const SideRunLimits& limits)
        : current_(current),
          before_(current.exchange(&side)),
          frontend_(frontend),
          frontendBefore_(frontend),
          limitBefore_(memoryBudget.limit),
          ranBefore_(std::exchange(memoryBudget.scriptRuns, true)) {
        if (limits.quiet) frontend_ = &quietFrontend();
        if (limits.bytes != 0 && memoryBudget.used < limitBefore_ &&
            limits.bytes < limitBefore_ - memoryBudget.used)
            memoryBudget.limit = memoryBudget.used + limits.bytes;
    }
    ~SideScope() {
        memoryBudget.scriptRuns = ranBefore_;
        memoryBudget.limit = limitBefore_;
        frontend_ = frontendBefore_;
        current_ = before_;
    }
    SideScope(const SideScope&) = delete;
    SideScope& operator=(const SideScope&) = delete;

  private:
    std::atomic<SideRun*>& current_;
    SideRun* before_;
    Frontend*& frontend_;
    Frontend* frontendBefore_;
    std::size_t limitBefore_;
    bool ranBefore_;
};

}  // namespace

SideRunResult ScriptSession::runAside(asIScriptContext& context, const SideRunLimits& limits) {
    SideRunResult answer;
    SideRun side(*impl_->services.clock, limits);
    const bool interacting = impl_->state.interacting;
    const int depth = impl_->interactionDepth;
    if (side.install(context) < 0) return {asERROR, "The engine refuses to run this."};
    {
        const SideScope scope(impl_->side, side, impl_->services.frontend, limits);
        const QuietArithmetic quiet;
        const ExecutionMark mark(context);
        answer.result = context.Execute();
    }
    context.ClearLineCallback();
    impl_->state.interacting = interacting;
    impl_->interactionDepth = depth;
    answer.error = side.reason();
    if (answer.result == asEXECUTION_FINISHED || !answer.error.empty()) return answer;
    const char* const text = context.GetExceptionString();
    answer.error = answer.result == asEXECUTION_EXCEPTION && text != nullptr
                       ? text
                       : "The evaluation was ended.";
    return answer;
}

namespace {

/// Without the names of global functions that a module of `mask` does not see, before their
/// arguments: where there is no such function, those are not compiled.
std::string withoutUnseenCalls(asIScriptEngine& engine, std::string text, asDWORD mask) {
    for (asUINT i = 0; i < engine.GetGlobalFunctionCount(); ++i) {
        const asIScriptFunction& function = *engine.GetGlobalFunctionByIndex(i);
        if ((function.GetAccessMask() & mask) != 0) continue;
        const std::string call = std::string(function.GetName()) + "(";
        for (auto at = text.find(call); at != std::string::npos; at = text.find(call, at))
            text.erase(at, call.size() - 1);
    }
    return text;
}

}  // namespace

/// Whoever is asked ahead of builds sees the function behind the text that it belongs to.
bool ScriptSession::Impl::guardAdmits(asIScriptModule& module, const std::string& text,
                                      const std::string& nameSpace, BuildMessages& said) {
    asIScriptEngine& engine = *module.GetEngine();
    if (buildGuard == nullptr || !limits.guardBuilds || engineIsHardened(engine)) return true;
    const asDWORD mask = module.SetAccessMask(0);
    module.SetAccessMask(mask);
    const std::string seen = withoutUnseenCalls(engine, text, mask);
    const std::string whole =
        builtText + "\n" +
        (nameSpace.empty() ? seen : "namespace " + nameSpace + " {\n" + seen + "\n}\n");
    BuildMessages ofWhole;
    if (buildGuard->admits(engine, whole, ofWhole)) return true;
    for (const BuildMessage& message : ofWhole.all()) said.add(message.plain, 0, 0, message.kind);
    return false;
}

asIScriptFunction* ScriptSession::compileFunction(asIScriptModule& module, const std::string& text,
                                                  const std::string& nameSpace,
                                                  std::uint32_t accessBits,
                                                  BuildMessages& messages) {
    const EngineRecord* const record = impl_->find(module.GetEngine());
    if (record != nullptr && record->broken) {
        messages.add("The compiler was ended and cannot be used again", 0, 0,
                     BuildMessage::Kind::error);
        return nullptr;
    }
    if (const auto refusal =
            scanSource(text, impl_->limits, engineIsHardened(*module.GetEngine()))) {
        messages.add(refusal->text, refusal->row, refusal->column, BuildMessage::Kind::error);
        return nullptr;
    }
    if (!impl_->guardAdmits(module, text, nameSpace, messages)) return nullptr;
    BuildMessages* const before = setMessageSink(&messages);
    const std::string space = module.GetDefaultNamespace();
    const asDWORD mask = module.SetAccessMask(accessBits);
    module.SetAccessMask(mask | accessBits);
    module.SetDefaultNamespace(nameSpace.c_str());
    asIScriptFunction* function = nullptr;
    {
        const BuildSettings settings(module.GetEngine(), isValidUtf8(text));
        const int result = impl_->leavingCompiler(*module.GetEngine(), messages, [&] {
            return module.CompileFunction("evaluation", text.c_str(), -1, 0, &function);
        });
        if (result < 0) function = nullptr;
    }
    module.SetDefaultNamespace(space.c_str());
    module.SetAccessMask(mask);
    setMessageSink(before);
    return function;
}

}  // namespace korvant
