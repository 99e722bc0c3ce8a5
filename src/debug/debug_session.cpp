#include "debug/debug_session.h"

#include <algorithm>
#include <utility>

#include "debug/debug_session_impl.h"
#include "host/engine/program_position.h"

namespace korvant {

DebugSession::DebugSession(ScriptSession& session, DebugListener& listener)
    : impl_(std::make_unique<Impl>(*this, session, listener)) {}

DebugSession::~DebugSession() {
    detach();
}

bool DebugSession::attach() {
    if (impl_->session.stopPolicy() != nullptr) return attached();
    findRegisters();
    impl_->scriptThread = std::this_thread::get_id();
    impl_->session.setStopPolicy(impl_.get());
    return true;
}

void DebugSession::detach() {
    impl_->endLooking();
    impl_->evaluator.forget();
    impl_->asideEvaluator.forget();
    if (attached()) impl_->session.setStopPolicy(nullptr);
}

bool DebugSession::attached() const noexcept {
    return impl_->session.stopPolicy() == impl_.get();
}

DebugSession* DebugSession::attachedTo(ScriptSession& session) noexcept {
    auto* const impl = dynamic_cast<Impl*>(session.stopPolicy());
    return impl != nullptr ? &impl->self : nullptr;
}

BreakpointBook& DebugSession::breakpoints() noexcept {
    return impl_->book;
}
StopRules& DebugSession::rules() noexcept {
    return impl_->rules;
}
void DebugSession::setStyle(StopStyle style) {
    impl_->style = style;
}
void DebugSession::setCoverage(Coverage* coverage) {
    impl_->coverage = coverage;
}
void DebugSession::setProfiler(Profiler* profiler) {
    impl_->profiler = profiler;
}
void DebugSession::apply() {
    if (impl_->scriptThread.load() == std::this_thread::get_id()) return impl_->apply();
    impl_->applyWanted = true;
    impl_->session.requestAttention();
}
DebugState DebugSession::state() const noexcept {
    return impl_->state;
}
const StopInfo& DebugSession::stop() const noexcept {
    return impl_->info;
}

std::shared_ptr<const CodeLines> DebugSession::code() const {
    const std::lock_guard lock(impl_->codeMutex);
    return impl_->codeLines;
}

std::string DebugSession::mainText() const {
    return impl_->text != nullptr ? impl_->text->text() : std::string();
}

std::vector<std::int32_t> DebugSession::Impl::wantedLines() {
    std::vector<std::int32_t> lines = book.lines();
    if (style != StopStyle::hold) lines.insert(lines.end(), hostLines.begin(), hostLines.end());
    if (target.line > 0) lines.push_back(target.line);
    asked = lines;
    std::sort(asked.begin(), asked.end());
    // Nothing is asked of a run without breakpoints.
    if (lines.empty() || text == nullptr) return lines;
    if (!setVariables.begun()) setVariables.begin(&text->variables(), kMainSource);
    lines.insert(lines.end(), setVariables.lines().begin(), setVariables.lines().end());
    return lines;
}

void DebugSession::Impl::apply() {
    everyStatement =
        step.active() || book.watchesData() || entryWanted || pauseNow || lostDepth != 0;
    if (session.stopPolicy() != this) return;
    const std::vector<std::int32_t> lines = wantedLines();
    session.setStopLines(lines.empty() ? nullptr : &lines);
}

RunOutcome DebugSession::start(asIScriptEngine* engine, asIScriptContext* context,
                               const std::string& text) {
    Impl& impl = *impl_;
    if (impl.starting || !attach()) return {};
    impl.endLooking();
    impl.starting = true;
    impl.engine = engine;
    impl.runContext = context;
    impl.startText = text;
    RunOutcome outcome;
    do {
        impl.restartWanted = false;
        impl.endLooking();
        outcome = impl.session.runApplication(engine, context, text, nullptr);
    } while (impl.restartWanted);
    impl.starting = false;
    return outcome;
}

bool DebugSession::restart() {
    if (!impl_->starting) return false;
    impl_->restartWanted = true;
    stopRun();
    return true;
}

/// Everything that shows values holds parts of the script.
void DebugSession::Impl::beginLooking(asIScriptContext* context) {
    values.begin(context, module, text.get(), kMainSource, &setVariables);
    frames = Frames(context, kMainSource);
}

void DebugSession::Impl::endLooking() {
    // Letting go of values may run destructors of the script.
    const CountingPause uncounted;
    ++inside;
    values.end();
    --inside;
    frames = Frames(nullptr, kMainSource);
}

void DebugSession::Impl::hold(asIScriptContext& context, StopInfo stopped) {
    const HoldScope holding(session);
    const asIScriptContext* const watchedBefore = watched.exchange(nullptr);
    info = std::move(stopped);
    action = Action::goOn;
    state = DebugState::held;
    beginLooking(&context);
    listener.onStopped(info);
    endLooking();
    state = DebugState::running;
    watched = const_cast<asIScriptContext*>(watchedBefore);
    takeAction(context);
    listener.onContinued();
}

void DebugSession::Impl::takeAction(asIScriptContext& context) {
    StatementPlace here = StatementPlace::of(context);
    const bool statement = stepBy == StepBy::statement;
    step.end();
    if (action == Action::over) step.begin(StepRule::Mode::over, here, statement);
    if (action == Action::into) step.begin(StepRule::Mode::into, here, statement);
    if (action == Action::out) {
        here.depth -= std::min(outOf, here.depth);
        step.begin(StepRule::Mode::out, here, statement);
    }
    if (action == Action::stop)
        session.requestStop();
    else
        lookAtData(context);
    if (action != Action::to) target = {};
    pauseWanted = false;
    apply();
}

/// How it goes on, remembered by a held run and done by a suspended one.
bool DebugSession::Impl::decide(Action wanted, StepBy by) {
    stepBy = by;
    action = wanted;
    if (state == DebugState::held) return true;
    if (state != DebugState::suspended || runContext == nullptr) return false;
    asIScriptContext& context = *runContext;
    endLooking();
    takeAction(context);
    listener.onContinued();
    starting = true;
    const std::vector<std::int32_t> lines = hostLines;
    session.continueApplication(engine, &context, lines.empty() ? nullptr : &lines, StepMode::run);
    starting = false;
    return true;
}

void DebugSession::setHostLines(std::vector<std::int32_t> lines) {
    impl_->hostLines = std::move(lines);
}

bool DebugSession::goOn() {
    return impl_->decide(Impl::Action::goOn);
}
bool DebugSession::stepOver(StepBy by) {
    return impl_->decide(Impl::Action::over, by);
}
bool DebugSession::stepInto(StepBy by) {
    return impl_->decide(Impl::Action::into, by);
}
bool DebugSession::stepOut(unsigned frame) {
    const Frames& frames = impl_->frames;
    impl_->outOf = frame < frames.count() ? frames.level(frame) : 0;
    return impl_->decide(Impl::Action::out);
}

bool DebugSession::runTo(const ScriptPlace& place) {
    const std::shared_ptr<const CodeLines> lines = code();
    if (lines == nullptr) return false;
    const CodeLines::Resolved found = lines->resolve(place.source, place.line);
    if (!found.verified) return false;
    impl_->target = {place.source, found.line, 0};
    return impl_->decide(Impl::Action::to);
}

void DebugSession::stopRun() {
    if (impl_->state == DebugState::suspended) {
        impl_->endLooking();
        impl_->state = DebugState::idle;
        impl_->session.abandon(impl_->runContext);
    } else if (impl_->state == DebugState::held) {
        impl_->action = Impl::Action::stop;
    } else {
        impl_->session.requestStop();
    }
}

void DebugSession::requestPause() noexcept {
    impl_->pauseWanted = true;
    impl_->session.requestAttention();
}

void DebugSession::requestAttention() noexcept {
    impl_->attentionWanted = true;
    impl_->session.requestAttention();
}

std::string DebugSession::waitingIn() const {
    asIScriptContext* const context = impl_->watched;
    if (context == nullptr) return {};
    const asIScriptFunction* const function = context->GetSystemFunction();
    const char* const name = function != nullptr ? function->GetName() : nullptr;
    return name != nullptr ? name : "";
}

const Frames& DebugSession::frames() const noexcept {
    return impl_->frames;
}
unsigned DebugSession::callsOf(unsigned frame) const {
    const Frames& frames = impl_->frames;
    return frame < frames.count() ? frames.context()->GetCallstackSize() - frames.level(frame) : 0;
}
ValueTree& DebugSession::values() noexcept {
    return impl_->values;
}

unsigned DebugSession::Impl::levelOf(unsigned frame) const {
    return frame < frames.count() ? frames.level(frame) : ~0u;
}

ValueNode DebugSession::scope(ValueScope which, unsigned frame) {
    return impl_->values.scope(which, impl_->levelOf(frame));
}

bool DebugSession::hasThis(unsigned frame) const {
    return impl_->values.scopeOf(impl_->levelOf(frame)).hasThis();
}

FrameScope DebugSession::names(unsigned frame) const {
    return impl_->values.scopeOf(impl_->levelOf(frame));
}

Evaluation DebugSession::evaluate(unsigned frame, std::string_view expression,
                                  EvaluationPurpose purpose) {
    const bool still = impl_->state != DebugState::idle && impl_->state != DebugState::running;
    if (!still) {
        Evaluation refused;
        refused.error = "The script does not stand still.";
        return refused;
    }
    ++impl_->inside;
    Evaluation answer = impl_->evaluator.evaluate(impl_->levelOf(frame), expression, purpose);
    --impl_->inside;
    return answer;
}

ShownValue DebugSession::Impl::shown(const Evaluation& evaluation, std::string_view name,
                                     const ValueFormat& format) {
    ShownValue answer;
    answer.error = evaluation.error;
    answer.isVoid = evaluation.isVoid;
    if (evaluation.done && !evaluation.isVoid)
        answer.value = values.show(evaluation.target, std::string(name), format);
    return answer;
}

ShownValue DebugSession::show(unsigned frame, std::string_view expression,
                              EvaluationPurpose purpose, const ValueFormat& format) {
    return impl_->shown(evaluate(frame, expression, purpose), expression, format);
}

std::vector<std::string> DebugSession::methodsOf(unsigned frame, std::string_view expression) {
    std::vector<std::string> names;
    const Evaluation found = evaluate(frame, expression, EvaluationPurpose::hover);
    const asITypeInfo* const type =
        found.done ? impl_->engine->GetTypeInfoById(found.target.value.typeId) : nullptr;
    for (asUINT i = 0; type != nullptr && i < type->GetMethodCount(); ++i) {
        const asIScriptFunction& method = *type->GetMethodByIndex(i);
        const std::string_view name = method.GetName();
        const bool isOperator = name.size() > 2 && name.starts_with("op") && name[2] < 'a';
        if (!isOperator && !method.IsProperty() && !method.IsPrivate()) names.emplace_back(name);
    }
    return names;
}

ShownValue DebugSession::setChild(ValueNode parent, std::string_view child, unsigned frame,
                                  std::string_view expression, const ValueFormat& format) {
    ShownValue answer;
    ValueTarget target;
    if (!impl_->values.target(parent, child, target)) {
        answer.error = "There is no \"" + std::string(child) + "\" here.";
        return answer;
    }
    ++impl_->inside;
    answer.error = impl_->evaluator.assign(impl_->levelOf(frame), target, expression);
    --impl_->inside;
    if (answer.error.empty()) impl_->values.child(parent, child, answer.value, format);
    return answer;
}

namespace {

/// "name" of "@name"; empty: there is no such sign.
std::string_view afterHandleSign(std::string_view target) {
    const auto sign = target.find_first_not_of(kTextBlanks);
    if (sign == std::string_view::npos || target[sign] != '@') return {};
    target.remove_prefix(std::min(target.find_first_not_of(kTextBlanks, sign + 1), target.size()));
    return target;
}

}  // namespace

ShownValue DebugSession::setExpression(unsigned frame, std::string_view target,
                                       std::string_view expression, const ValueFormat& format) {
    ShownValue answer;
    ValueTarget found;
    const unsigned level = impl_->levelOf(frame);
    if (const std::string_view name = afterHandleSign(target);
        !name.empty() && impl_->values.find(impl_->values.scopeOf(level), name, found) &&
        isFunctionHandle(*impl_->engine, found.value.typeId))
        target = name;
    if (!impl_->values.find(impl_->values.scopeOf(level), target, found)) {
        // An index that is computed, or an accessor: the script's own assignment.
        answer = show(frame, "(" + std::string(target) + ") = (" + std::string(expression) + ")",
                      EvaluationPurpose::console, format);
        // An accessor gives nothing when it sets.
        if (answer.error.empty() && answer.isVoid) {
            ShownValue now = show(frame, target, EvaluationPurpose::console, format);
            if (now.error.empty() && !now.isVoid) answer = std::move(now);
        }
        return answer;
    }
    ++impl_->inside;
    answer.error = impl_->evaluator.assign(level, found, expression);
    --impl_->inside;
    found.value.unset = false;
    if (answer.error.empty()) answer.value = impl_->values.show(found, std::string(target), format);
    return answer;
}

void DebugSession::cancelEvaluation() noexcept {
    impl_->evaluator.cancel();
}
void DebugSession::forgetCancel() noexcept {
    impl_->evaluator.forgetCancel();
}

}  // namespace korvant
