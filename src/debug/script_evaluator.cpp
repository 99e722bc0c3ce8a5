#include "debug/script_evaluator.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <optional>
#include <unordered_map>

#include "base/system/file_io.h"
#include "base/text/characters.h"
#include "debug/evaluation_call.h"
#include "debug/kept_value.h"
#include "host/engine/type_view.h"
#include "host/run/inspect.h"
#include "host/scan/source_tokens.h"

namespace korvant {

namespace {

constexpr std::uint32_t kHoverMs = 50;
constexpr std::uint32_t kWatchMs = 300;
constexpr std::size_t kWatchBytes = std::size_t{64} << 20;
constexpr std::size_t kMostKept = 1000;
/// Of the expression in the function that is compiled for it.
constexpr std::int32_t kBodyRow = 1;

SideRunLimits limitsOf(EvaluationPurpose purpose) {
    if (purpose == EvaluationPurpose::console) return {0, 0, false};
    return {purpose == EvaluationPurpose::hover ? kHoverMs : kWatchMs, kWatchBytes, true};
}

/// Whether the compiler wanted the sign that was put behind the expression.
bool endsEarly(const BuildMessage& message, const std::string& body) {
    if (!message.plain.starts_with("Expected ") || message.row < kBodyRow) return false;
    if (message.plain.find("')'") == std::string::npos &&
        message.plain.find("';'") == std::string::npos)
        return false;
    std::size_t at = 0;
    for (std::int32_t row = kBodyRow; row < message.row && at != std::string::npos; ++row)
        if ((at = body.find('\n', at)) != std::string::npos) ++at;
    if (at == std::string::npos) return false;
    at += static_cast<std::size_t>(std::max(message.column, 1) - 1);
    const std::optional<TokenList> tokens = TokenList::of(body, body.size() + 1);
    int open = 0;
    for (std::size_t i = 0; tokens && i < tokens->size() && (*tokens)[i].begin < at; ++i) {
        for (const char sign : {'(', '[', '{'}) open += tokens->isSymbol(i, sign);
        for (const char sign : {')', ']', '}'}) open -= tokens->isSymbol(i, sign);
    }
    return open == 0;
}

/// The compiler's first error, or all that it says when there is none.
std::string firstError(const BuildMessages& messages, const std::string& body) {
    for (const BuildMessage& message : messages.all())
        if (message.kind == BuildMessage::Kind::error)
            return endsEarly(message, body)
                       ? "The expression ends before something that does not belong to it."
                       : message.plain;
    return messages.count() > 0 ? messages.all().front().plain : "This cannot be compiled.";
}

/// Whether it has no type of its own.
bool standsAsList(const std::string& text) {
    const auto begin = text.find_first_not_of(kTextBlanks);
    return begin != std::string::npos && text[begin] == '{';
}

/// The compiler's first error, without the function that a value is shown by.
std::string whyNotCompiled(const BuildMessages& messages, const EvaluationText& text) {
    std::string error = firstError(messages, text.body);
    if (error.find(kShow) == std::string::npos || text.body.find(kShow) != std::string::npos)
        return error;
    return standsAsList(text.body)
               ? "A list has no type of its own: name one, as in array<int> = {1}."
               : "This is not one value.";
}

/// A condition that has been compiled for a statement.
struct Kept {
    std::string expression;
    asIScriptFunction* function = nullptr;
    int line = 0;
    int column = 0;
    std::string error;
    std::unique_ptr<EvaluationCall> call;
};

}  // namespace

struct ScriptEvaluator::Impl {
    Impl(ScriptSession& ownSession, ValueTree& ownValues)
        : session(ownSession), values(ownValues) {}

    ScriptSession& session;
    ValueTree& values;
    std::unordered_map<std::uint64_t, Kept> kept;
    std::atomic<bool> running{false};
    std::atomic<bool> cancelled{false};

    std::unique_ptr<EvaluationCall> compile(const FrameScope& scope, const EvaluationText& text,
                                            EvaluationCall::Form form, int target,
                                            std::string& error);
    std::string run(EvaluationCall& call, const FrameScope& scope, EvaluationPurpose purpose);
    Evaluation evaluate(const FrameScope& scope, std::string_view expression,
                        EvaluationPurpose purpose);
    Evaluation compiled(const FrameScope& scope, std::string_view expression,
                        EvaluationPurpose purpose);
    Kept make(const FrameScope& scope, std::string_view expression);
    bool mayChange(const FrameScope& scope, const EvaluationText& text);
    std::string assign(const FrameScope& scope, const ValueTarget& target, EvaluationText text);
    std::string assignPart(unsigned level, const ValueTarget& target, std::string_view expression);
};

ScriptEvaluator::ScriptEvaluator(ScriptSession& session, ValueTree& values)
    : impl_(std::make_unique<Impl>(session, values)) {}

ScriptEvaluator::~ScriptEvaluator() = default;

void ScriptEvaluator::forget() {
    impl_->kept.clear();
}

bool ScriptEvaluator::evaluating() const noexcept {
    return impl_->running;
}

void ScriptEvaluator::cancel() noexcept {
    impl_->cancelled = true;
    if (impl_->running) impl_->session.cancelAside();
}

void ScriptEvaluator::forgetCancel() noexcept {
    impl_->cancelled = false;
}

std::unique_ptr<EvaluationCall> ScriptEvaluator::Impl::compile(const FrameScope& scope,
                                                               const EvaluationText& text,
                                                               EvaluationCall::Form form,
                                                               int target, std::string& error) {
    asIScriptModule* const module = scope.module();
    if (module == nullptr) {
        error = "The script of this frame is gone.";
        return nullptr;
    }
    if (!registerShow(*module->GetEngine())) {
        error = "The engine of this script cannot evaluate expressions.";
        return nullptr;
    }
    BuildMessages messages;
    auto call =
        EvaluationCall::make(session, *module, scope.nameSpace(), text, form, target, messages);
    if (call == nullptr) error = whyNotCompiled(messages, text);
    return call;
}

std::string ScriptEvaluator::Impl::run(EvaluationCall& call, const FrameScope& scope,
                                       EvaluationPurpose purpose) {
    running = true;
    const bool late = purpose == EvaluationPurpose::console && cancelled;
    std::string error = late ? "Cancelled." : call.run(session, scope, limitsOf(purpose));
    running = false;
    values.readAnew();
    return error;
}

Evaluation ScriptEvaluator::evaluate(unsigned level, std::string_view expression,
                                     EvaluationPurpose purpose) {
    return impl_->evaluate(impl_->values.scopeOf(level), expression, purpose);
}

Evaluation ScriptEvaluator::evaluateGlobal(const std::string& nameSpace,
                                           std::string_view expression, EvaluationPurpose purpose) {
    return impl_->evaluate(impl_->values.scopeOf(~0u).globalsWithin(nameSpace), expression,
                           purpose);
}

Evaluation ScriptEvaluator::Impl::evaluate(const FrameScope& scope, std::string_view expression,
                                           EvaluationPurpose purpose) {
    Evaluation answer;
    if (values.find(scope, expression, answer.target)) {
        const TypedValue& value = answer.target.value;
        answer.done = answer.target.owner != nullptr || (value.address != nullptr && !value.unset);
        if (!answer.done) answer.error = whyNoValue(expression, value);
        return answer;
    }
    return compiled(scope, expression, purpose);
}

Evaluation ScriptEvaluator::Impl::compiled(const FrameScope& scope, std::string_view expression,
                                           EvaluationPurpose purpose) {
    Evaluation answer;
    if (scope.module() == nullptr) {
        answer.error = "The script of this frame is gone.";
        return answer;
    }
    const bool hover = purpose == EvaluationPurpose::hover;
    EvaluationText text = evaluationText(*scope.module()->GetEngine(), scope, expression);
    if (text.error.empty() && hover && (text.calls || text.changes))
        text.error = "This could change something.";
    if (text.error.empty() && text.untyped) text.error = EvaluationText::kUntyped;
    answer.error = text.error;
    if (!answer.error.empty()) return answer;
    auto call = compile(scope, text, EvaluationCall::Form::show, 0, answer.error);
    if (call == nullptr && !hover) {
        std::string ignored;
        call = compile(scope, text, EvaluationCall::Form::statement, 0, ignored);
        answer.isVoid = call != nullptr;
    }
    if (call == nullptr) return answer;
    if (hover && call->mayChange())
        answer.error = "This could change something.";
    else
        answer.error = run(*call, scope, purpose);
    if (!answer.error.empty()) return answer;
    answer.done = true;
    for (const EvaluationBinding& binding : text.bindings)
        if (binding.value.unset) values.touch(binding.value.address, scope);
    if (const auto shown = call->takeShown()) {
        answer.target.value = shown->value();
        answer.target.evaluateName = expression;
        answer.target.why = "This is no variable.";
        values.keep(shown);
    }
    return answer;
}

Kept ScriptEvaluator::Impl::make(const FrameScope& scope, std::string_view expression) {
    Kept made;
    made.expression = expression;
    made.function = scope.function();
    made.line = scope.line();
    made.column = scope.column();
    if (scope.module() == nullptr) {
        made.error = "The script of this frame is gone.";
        return made;
    }
    const EvaluationText text =
        evaluationText(*scope.module()->GetEngine(), scope, expression, true);
    made.error = text.untyped ? EvaluationText::kUntyped : text.error;
    if (made.error.empty())
        made.call = compile(scope, text, EvaluationCall::Form::show, 0, made.error);
    return made;
}

bool ScriptEvaluator::holds(const FrameScope& scope, std::string_view expression,
                            std::string& error) {
    const auto place = static_cast<std::uint64_t>(scope.line()) << 20 ^
                       static_cast<std::uint64_t>(scope.column()) ^
                       reinterpret_cast<std::uintptr_t>(scope.function());
    const std::uint64_t key = contentHash(expression) ^ place * 0x9E3779B97F4A7C15u;
    auto found = impl_->kept.find(key);
    const bool known = found != impl_->kept.end() && found->second.expression == expression &&
                       found->second.function == scope.function() &&
                       found->second.line == scope.line() && found->second.column == scope.column();
    if (!known) {
        if (impl_->kept.size() >= kMostKept) impl_->kept.clear();
        found = impl_->kept.insert_or_assign(key, impl_->make(scope, expression)).first;
    }
    Kept& kept = found->second;
    error = kept.error;
    if (kept.call == nullptr) return false;
    ShowScope shown;
    shown.truth = true;
    error = impl_->run(*kept.call, scope, EvaluationPurpose::condition);
    if (error.empty() && !shown.isNumber) error = "This is neither true nor false.";
    return error.empty() && shown.number != 0.0;
}

namespace {

bool scalarOf(asIScriptEngine& engine, const TypedValue& value, ViewedScalar& scalar) {
    const ValueView view = StoppedScript(engine).view(value.typeId, value.address);
    using Kind = ViewedScalar::Kind;
    switch (view.kind) {
        case ValueKind::boolean:
            scalar.kind = Kind::boolean;
            scalar.integer = boolOf(view) ? 1 : 0;
            return true;
        case ValueKind::signedInteger:
        case ValueKind::unsignedInteger:
        case ValueKind::enumeration:
            scalar.kind = Kind::integer;
            scalar.integer = integerOf(view);
            return true;
        case ValueKind::singleReal:
        case ValueKind::doubleReal:
            scalar.kind = Kind::real;
            scalar.real = realOf(view);
            return true;
        case ValueKind::string:
            scalar.kind = Kind::text;
            scalar.text = textOf(view);
            return true;
        default:
            return false;
    }
}

/// The name of an enum; null for any other type. Good until the engine is asked for another.
const char* enumOf(const FrameScope& scope, int typeId) {
    asIScriptEngine& engine = *scope.module()->GetEngine();
    const asITypeInfo* const type = engine.GetTypeInfoById(typeId);
    const bool isEnum = type != nullptr && (type->GetFlags() & asOBJ_ENUM) != 0;
    return isEnum ? engine.GetTypeDeclaration(typeId, true) : nullptr;
}

}  // namespace

std::string ScriptEvaluator::Impl::assignPart(unsigned level, const ValueTarget& target,
                                              std::string_view expression) {
    const FrameScope scope = values.scopeOf(level);
    const Evaluation given = compiled(scope, expression, EvaluationPurpose::console);
    if (!given.done) return given.error;
    ViewedScalar scalar;
    if (given.isVoid || !scalarOf(*scope.module()->GetEngine(), given.target.value, scalar))
        return "This value does not fit here.";
    const TypeView* const view = typeViewOf(target.ownerType);
    if (view == nullptr) return "This value cannot be changed.";
    values.readAnew();
    return view->set(const_cast<void*>(target.owner), target.part, scalar);
}

std::string ScriptEvaluator::assign(unsigned level, const ValueTarget& target,
                                    std::string_view expression) {
    if (!target.why.empty()) return target.why;
    if (target.owner != nullptr) return impl_->assignPart(level, target, expression);
    const FrameScope scope = impl_->values.scopeOf(level);
    if (scope.module() == nullptr) return "The script of this frame is gone.";
    EvaluationText text = evaluationText(*scope.module()->GetEngine(), scope, expression);
    if (!text.error.empty()) return text.error;
    const bool handle = isHandle(*scope.module()->GetEngine(), target.value.typeId);
    if (text.untyped && !handle) return EvaluationText::kUntyped;
    const bool variable = target.evaluateName.find_first_of(".[") == std::string::npos;
    if (variable || !impl_->mayChange(scope, text)) return impl_->assign(scope, target, text);
    // The call that gives the value may let go of what it is for: it comes first.
    if (text.untyped || isFunctionHandle(*scope.module()->GetEngine(), target.value.typeId) ||
        standsAsList(text.body))
        return "Only a variable can be set to this where it calls a function.";
    const Evaluation given = impl_->compiled(scope, expression, EvaluationPurpose::console);
    if (!given.done) return given.error;
    if (given.isVoid) return "There is no value.";
    ValueTarget now;
    if (!impl_->values.find(scope, target.evaluateName, now) || !now.why.empty() ||
        now.owner != nullptr || now.value.typeId != target.value.typeId)
        return "\"" + target.evaluateName + "\" is gone.";
    EvaluationText later;
    later.body = "value_";
    EvaluationBinding value;
    value.kind = EvaluationBinding::Kind::given;
    value.name = value.parameter = later.body;
    value.value = given.target.value;
    if (isHandle(*scope.module()->GetEngine(), value.value.typeId))
        value.pass = EvaluationBinding::Pass::handle;
    later.bindings.push_back(value);
    return impl_->assign(scope, now, later);
}

/// What cannot be told alone, as a list, is gone by its signs.
bool ScriptEvaluator::Impl::mayChange(const FrameScope& scope, const EvaluationText& text) {
    std::string ignored;
    const auto call = compile(scope, text, EvaluationCall::Form::show, 0, ignored);
    return call != nullptr ? call->mayChange() : text.calls || text.changes;
}

std::string ScriptEvaluator::Impl::assign(const FrameScope& scope, const ValueTarget& target,
                                          EvaluationText text) {
    std::string error;
    EvaluationBinding binding;
    binding.name = binding.parameter = "target_";
    binding.value = target.value;
    const bool handle = isHandle(*scope.module()->GetEngine(), target.value.typeId);
    if (!handle) text.bindings.push_back(binding);
    const auto compile = [&](std::string& why) {
        return this->compile(scope, text,
                             handle ? EvaluationCall::Form::give : EvaluationCall::Form::set,
                             target.value.typeId, why);
    };
    auto call = compile(error);
    if (const char* const type = call == nullptr ? enumOf(scope, target.value.typeId) : nullptr) {
        // A number is what an enum is shown with.
        std::string ignored;
        text.body = std::string(type) + "(\n" + text.body + "\n)";
        call = compile(ignored);
    }
    if (call == nullptr) return error;
    error.clear();
    call->bindTarget(target.value);
    error = run(*call, scope, EvaluationPurpose::console);
    if (error.empty() && target.value.unset) values.touch(target.value.address, scope);
    return error;
}

}  // namespace korvant
