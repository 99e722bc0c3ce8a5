#include "debug/set_variables.h"

#include <utility>

#include "host/engine/program_position.h"

namespace korvant {

namespace {

constexpr asUINT kNoNumber = ~asUINT{0};
constexpr std::int32_t kLastLineOfAll = (1 << 20) - 1;

}  // namespace

void SetVariables::begin(const DeclaredVariables* text, std::string_view source) {
    text_ = text;
    source_ = source;
    touched_.clear();
    states_.clear();
    numbers_.clear();
    steps_.clear();
    lines_ = text != nullptr ? text->doubtfulLines() : std::vector<std::int32_t>();
    touchedAny_ = false;
    if (text != nullptr) watch(text->linesBehindDeclarations(true));
}

void SetVariables::watch(const std::vector<std::int32_t>& lines) {
    lines_.insert(lines_.end(), lines.begin(), lines.end());
    std::sort(lines_.begin(), lines_.end());
    lines_.erase(std::unique(lines_.begin(), lines_.end()), lines_.end());
}

namespace {

/// By name, in the order of their declarations.
std::unordered_map<std::string_view, std::vector<asUINT>> variablesOf(
    const asIScriptFunction& function) {
    std::unordered_map<std::string_view, std::vector<asUINT>> named;
    for (asUINT i = 0; i < function.GetVarCount(); ++i) {
        const char* name = nullptr;
        if (function.GetVar(i, &name) >= 0 && name != nullptr) named[name].push_back(i);
    }
    return named;
}

/// kNoNumber where the engine has another number of variables with a name than the text.
std::vector<asUINT> numbersIn(const asIScriptFunction& function,
                              const std::vector<DeclaredVariables::Valueless>& variables) {
    auto named = variablesOf(function);
    std::vector<asUINT> numbers;
    for (const DeclaredVariables::Valueless& variable : variables) {
        const std::vector<asUINT>& all = named[variable.name];
        numbers.push_back(all.size() == variable.count ? all[variable.nth] : kNoNumber);
    }
    return numbers;
}

}  // namespace

const std::vector<asUINT>& SetVariables::numbersOf(const asIScriptFunction& function,
                                                   const std::vector<Valueless>& variables) {
    const auto [place, isNew] = numbers_.try_emplace(&function);
    if (isNew) place->second = numbersIn(function, variables);
    return place->second;
}

SetVariables::Step SetVariables::findStep(asIScriptContext& context, const StatementPlace& here) {
    Step step;
    const char* section = nullptr;
    context.GetLineNumber(0, nullptr, &section);
    if (section == nullptr || section != source_) return step;
    const std::vector<Valueless>& again = text_->declaredBefore(here.line, here.column);
    if (!again.empty()) step.declared = numbersIn(*here.function, again);
    std::erase(step.declared, kNoNumber);
    const std::vector<Valueless>& variables = text_->doubtfulAt(here.line, here.column);
    if (variables.empty()) return step;
    step.all = &numbersOf(*here.function, variables);
    for (const std::size_t variable : text_->setAt(here.line, here.column))
        if (variable < step.all->size() && (*step.all)[variable] != kNoNumber)
            step.sets.push_back((*step.all)[variable]);
    return step;
}

/// Found once for each statement: one may be passed very often.
const SetVariables::Step& SetVariables::stepAt(asIScriptContext& context,
                                               const StatementPlace& here) {
    const asDWORD* const position = programPosition(context);
    const auto known = steps_.find(position);
    if (position != nullptr && known != steps_.end()) return known->second;
    return steps_.insert_or_assign(position, findStep(context, here)).first->second;
}

void SetVariables::pass(asIScriptContext& context, const StatementPlace& here, bool entry) {
    if (text_ == nullptr || here.function == nullptr) return;
    if (entry)
        std::erase_if(touched_, [&here](const auto& one) {
            return one.first.function == here.function && one.second.depth >= here.depth &&
                   !one.second.fresh;
        });
    for (auto& [variable, touched] : touched_) touched.fresh = false;
    const Step& step = stepAt(context, here);
    const auto variable = [&](asUINT index) {
        return Variable{context.GetAddressOfVar(index, 0), here.function, index};
    };
    if (entry && step.all != nullptr)
        for (const asUINT index : *step.all)
            if (index != kNoNumber) states_[variable(index)] = {};
    // A second look at the first statement is no second pass.
    for (const asUINT index : step.declared) {
        if (entry) continue;
        touched_.erase(variable(index));
        const auto known = states_.find(variable(index));
        if (known != states_.end()) known->second = {};
    }
    for (const asUINT index : step.sets) {
        const auto known = states_.find(variable(index));
        if (known == states_.end()) continue;
        State& state = known->second;
        // It was set by the statement that was noted before.
        if (state.line != 0) state.set = true;
        state.line = here.line;
        state.column = here.column;
    }
}

void SetVariables::touch(const Variable& variable, unsigned depth) {
    touched_[variable] = {depth};
    if (text_ != nullptr && !std::exchange(touchedAny_, true))
        watch(text_->linesBehindDeclarations(false));
    // The engine answers from the line of the function's head on.
    std::int32_t begin = -1;
    for (std::int32_t line = 1; begin < 0 && line <= kLastLineOfAll; ++line)
        begin = variable.function->FindNextLineWithCode(line);
    if (begin > 0 && !watches(begin))
        lines_.insert(std::upper_bound(lines_.begin(), lines_.end(), begin), begin);
}

std::optional<bool> SetVariables::isSet(const Variable& variable, std::int32_t line,
                                        std::int32_t column) const {
    if (touched_.contains(variable)) return true;
    const auto known = states_.find(variable);
    if (known == states_.end()) return std::nullopt;
    const State& state = known->second;
    const bool setting = state.line == line && state.column == column;
    return state.set || (state.line != 0 && !setting);
}

}  // namespace korvant
