// Running what was built, and saying how it ended.
#include <algorithm>
#include <system_error>

#include "host/engine/engine_memory.h"
#include "host/run/build_listener.h"
#include "host/run/inspect.h"
#include "host/run/session_impl.h"

namespace korvant {

namespace {

constexpr char kStoppedText[] = "The Script is stopped.";
constexpr char kNoMainText[] = "The function 'int main()' was not found.";
constexpr char kPrepareText[] = "Failed to prepare the context.";
constexpr char kUnforeseenText[] = "The script ended for some unforeseen reason.\n";

void (*buildListener)(const BuildMessages& messages) = nullptr;

RunOutcome refused(int result) {
    return {RunOutcome::Kind::failed, 0, result};
}

}  // namespace

void setBuildListener(void (*listener)(const BuildMessages& messages)) noexcept {
    buildListener = listener;
}

RunOutcome ScriptSession::run(asIScriptContext* context) {
    if (context == nullptr) return refused(asINVALID_ARG);
    if (impl_->busy) return refused(asCONTEXT_ACTIVE);
    const BusyScope scope(impl_->busy);
    impl_->beginRun(context);
    const int result = impl_->execute(*context);
    impl_->noteEnd(*context, result);
    impl_->endRun();
    if (result != asEXECUTION_SUSPENDED) impl_->forgetStops();
    return impl_->left(context, impl_->outcomeOf(result));
}

RunOutcome ScriptSession::runApplication(asIScriptEngine* engine, asIScriptContext* context,
                                         const std::string& text,
                                         const std::vector<std::int32_t>* breakpoints) {
    if (engine == nullptr || context == nullptr) return refused(asINVALID_ARG);
    if (impl_->busy) {
        messageBox(kPrepareText, box_style::kIconError);
        return refused(asCONTEXT_ACTIVE);
    }
    const BusyScope scope(impl_->busy);
    impl_->setBreakpoints(breakpoints);
    impl_->beginRun(context);
    const RunOutcome outcome = impl_->buildAndRun(*engine, *context, text);
    impl_->endRun();
    if (!outcome.stoppedAtLine()) impl_->forgetStops();
    return impl_->left(context, outcome);
}

RunOutcome ScriptSession::continueApplication(asIScriptEngine* engine, asIScriptContext* context,
                                              const std::vector<std::int32_t>* breakpoints,
                                              StepMode mode) {
    if (engine == nullptr || context == nullptr) return refused(asINVALID_ARG);
    if (impl_->busy) return refused(asCONTEXT_ACTIVE);
    const BusyScope scope(impl_->busy);
    impl_->state.stepMode = mode;
    impl_->setBreakpoints(breakpoints);
    impl_->limit.restart();
    const RunOutcome outcome = impl_->executeAndReport(*context, true);
    if (outcome.failed()) impl_->state.lastStoppedLine = 0;
    if (!outcome.stoppedAtLine()) impl_->forgetStops();
    impl_->tell(&RunParticipant::endContinuation);
    impl_->reportUnwritten();
    return impl_->left(context, outcome);
}

/// Tells the policy that nothing runs any more, once all that is said of the run has been said.
RunOutcome ScriptSession::Impl::left(asIScriptContext* context, const RunOutcome& outcome) {
    if (policy != nullptr) policy->onLeft(context, outcome, failure);
    return outcome;
}

void ScriptSession::abandon(asIScriptContext* context) {
    if (context == nullptr || impl_->busy) return;
    const BusyScope scope(impl_->busy);
    impl_->beginCleanup();
    impl_->letGo(*context);
}

RunOutcome ScriptSession::Impl::buildAndRun(asIScriptEngine& engine, asIScriptContext& context,
                                            const std::string& text) {
    if (!build(&engine, text)) return fail(RunFailure::Kind::build, {});
    if (buildListener != nullptr) buildListener(messages);
    messages.clear();
    asIScriptModule* module = engine.GetModule("main", asGM_ONLY_IF_EXISTS);
    asIScriptFunction* main = module != nullptr ? findFunction(*module, "int main()") : nullptr;
    if (main == nullptr) return fail(RunFailure::Kind::noMain, kNoMainText);
    beginCleanup();
    if (context.Abort() < 0 || context.Unprepare() < 0 || context.Prepare(main) < 0)
        return fail(RunFailure::Kind::prepare, kPrepareText);
    return executeAndReport(context, false);
}

void ScriptSession::Impl::tell(void (RunParticipant::*event)()) {
    for (RunParticipant* const participant : participants) (participant->*event)();
}

void ScriptSession::Impl::beginRun(asIScriptContext* context) {
    setCurrent(context);
    failure = {};
    unwrittenShown = 0;
    filesNoted.clear();
    messages.clear();
    state.lastStoppedLine = 0;
    state.interacting = false;
    interactionDepth = 0;
    state.stepMode = StepMode::run;
    tell(&RunParticipant::beginRun);
    state.stopRequest = false;
    limit.begin(limits.hardCeilingMs);
}

void ScriptSession::Impl::endRun() {
    tell(&RunParticipant::endRun);
    reportUnwritten();
}

/// Uncounted, so that the engine can go when the host lets go of it; it says when the context goes.
void ScriptSession::Impl::setCurrent(asIScriptContext* context) {
    state.currentContext = context;
    observeContext(context, *this);
}

void ScriptSession::Impl::setBreakpoints(const std::vector<std::int32_t>* lines) {
    lineCallback.breakpoints().set(lines);
}

/// So that nothing else that runs on this context stops where nobody waits for it.
void ScriptSession::Impl::forgetStops() {
    setBreakpoints(nullptr);
    state.stepMode = StepMode::run;
}

int ScriptSession::Impl::execute(asIScriptContext& context, bool goesOn) {
    setCurrent(&context);
    lineCallback.forgetEnding();
    context.AddRef();
    boundEngineMemory(limits.runBytes);
    running = true;
    runThread = std::this_thread::get_id();
    limit.beginExecution();
    int result = 0;
    {
        const QuietArithmetic quiet;
        if (policy != nullptr) policy->onBegin(context, goesOn);
        result = lineCallback.execute(context, isOurs(&context));
    }
    limit.endExecution();
    cut = lineCallback.ending() != LineCallback::Ending::none;
    running = false;
    state.interacting = false;
    interactionDepth = 0;
    if (context.Release() == 0) state.currentContext = nullptr;
    return result;
}

RunOutcome ScriptSession::Impl::executeAndReport(asIScriptContext& context, bool goesOn) {
    const int result = noteEnd(context, execute(context, goesOn));
    if (result == asEXECUTION_FINISHED) state.lastStoppedLine = 0;
    if (result == asEXECUTION_FINISHED || result == asEXECUTION_SUSPENDED) return outcomeOf(result);
    showFailure();
    return refused(result);
}

/// Of an execution that nothing had to be said about.
RunOutcome ScriptSession::Impl::outcomeOf(int result) const {
    using Kind = RunOutcome::Kind;
    if (result == asEXECUTION_FINISHED) return {Kind::finished, 0, result};
    if (result == asEXECUTION_SUSPENDED)
        return {Kind::stopped, std::max(state.lastStoppedLine, 0), result};
    return {Kind::failed, 0, result};
}

/// The stack of a run that ended early stays until its context is used again.
void ScriptSession::Impl::noteStack(asIScriptContext& context) {
    failure.calls = 0;
    for (asUINT level = 0; level < context.GetCallstackSize(); ++level) {
        asIScriptFunction* const function = context.GetFunction(level);
        if (!isWritten(function)) continue;
        if (++failure.calls > RunFailure::kMostFrames) continue;
        RunFrame frame;
        const char* source = nullptr;
        int line = context.GetLineNumber(level, nullptr, &source);
        if (level == 0) line = lineCallback.lineAtEnd(context);
        frame.function = function->GetDeclaration(true, true, false);
        frame.line = std::max(line, 0);
        if (source != nullptr && std::string(source) != kMainSource) frame.source = source;
        failure.stack.push_back(std::move(frame));
    }
}

/// Why a run ended early, for whoever asks. What the execution is worth: its result, but for a run
/// that looks finished because a destructor was ended after the last statement.
int ScriptSession::Impl::noteEnd(asIScriptContext& context, int result) {
    using Kind = RunFailure::Kind;
    if (result == asEXECUTION_FINISHED && cut) result = asEXECUTION_ABORTED;
    if (result == asEXECUTION_FINISHED || result == asEXECUTION_SUSPENDED) return result;
    noteStack(context);
    if (lineCallback.ending() == LineCallback::Ending::outOfMemory) {
        noteException(lineCallback.lineAtEnd(context), "Out of memory");
    } else if (result == asEXECUTION_ABORTED) {
        const bool stopped = lineCallback.ending() == LineCallback::Ending::stopped;
        noteFailure(stopped ? Kind::stopped : Kind::timeOut, kAbortedText,
                    lineCallback.lineAtEnd(context));
    } else if (result == asEXECUTION_EXCEPTION) {
        noteException(context.GetExceptionLineNumber(), context.GetExceptionString());
    } else {
        noteFailure(Kind::other, kUnforeseenText);
    }
    return result;
}

void ScriptSession::Impl::noteException(std::int32_t line, const char* description) {
    noteFailure(RunFailure::Kind::exception,
                "The script ended with an exception.\n\nline: " + std::to_string(line) +
                    "\ndesc: " + (description != nullptr ? description : ""),
                line);
}

void ScriptSession::Impl::noteFailure(RunFailure::Kind kind, std::string text, std::int32_t line) {
    failure.kind = kind;
    failure.text = std::move(text);
    failure.line = std::max(line, 0);
}

RunOutcome ScriptSession::Impl::fail(RunFailure::Kind kind, std::string text) {
    noteFailure(kind, std::move(text));
    showFailure();
    return refused(asERROR);
}

void ScriptSession::Impl::showFailure() {
    if (!failure.text.empty()) showReport(failure.text, box_style::kIconError);
}

/// One box for all that is new, so that a full disk costs one click.
void ScriptSession::Impl::reportUnwritten() {
    std::string text;
    for (; unwrittenShown < failure.unwritten.size(); ++unwrittenShown)
        text += (text.empty() ? "" : "\n") + failure.unwritten[unwrittenShown];
    if (!text.empty()) showReport(text, box_style::kIconError);
}

void ScriptSession::Impl::endSuspended(asIScriptEngine& engine) {
    asIScriptContext* const context = state.currentContext;
    if (context == nullptr || context->GetEngine() != &engine) return;
    if (context->GetState() == asEXECUTION_SUSPENDED) letGo(*context);
}

/// What ran last holds its module: the next one would be built out of types of that one, and lose
/// them with it.
void ScriptSession::Impl::letGoOfFinished(asIScriptEngine& engine) {
    const EngineRecord* const record = find(&engine);
    for (asIScriptContext* const context :
         {state.currentContext, record != nullptr ? record->context : nullptr}) {
        if (context == nullptr || context->GetEngine() != &engine) continue;
        const asEContextState now = context->GetState();
        if (now == asEXECUTION_FINISHED || now == asEXECUTION_ABORTED ||
            now == asEXECUTION_EXCEPTION)
            context->Unprepare();
    }
}

void ScriptSession::Impl::letGo(asIScriptContext& context) {
    if (context.GetState() == asEXECUTION_ACTIVE) return;
    context.Abort();
    context.Unprepare();
}

void ScriptSession::Impl::showReport(const std::string& text, std::uint32_t style) {
    MessageBoxRequest request;
    request.caption = kModuleCaption;
    request.text = text;
    request.style = style;
    request.plain = true;
    request.runReport = true;
    session.show(request);
}

void ScriptSession::Impl::onStopped() {
    tell(&RunParticipant::beforeReport);
    showReport(kStoppedText, box_style::kIconWarning);
}

void ScriptSession::Impl::onTimedOut() {
    tell(&RunParticipant::beforeReport);
}

}  // namespace korvant
