#include "debug/set_variables.h"

#include "host/engine/program_position.h"

namespace korvant {

void SetVariables::begin(const DeclaredVariables* text, std::string_view source) {
    text_ = text;
    source_ = source;
    touched_.clear();
    states_.clear();
    steps_.clear();
    lines_ = text != nullptr ? text->doubtfulLines() : std::vector<std::int32_t>();
}

/// The engine's number of a variable; -1 where it has another number of that name.
int SetVariables::indexOf(const asIScriptFunction& function, const Doubtful& variable) {
    std::size_t count = 0;
    int index = -1;
    for (asUINT i = 0; i < function.GetVarCount(); ++i) {
        const char* name = nullptr;
        if (function.GetVar(i, &name) < 0 || name == nullptr || variable.name != name) continue;
        if (count++ == variable.nth) index = static_cast<int>(i);
    }
    return count == variable.count ? index : -1;
}

SetVariables::Step SetVariables::findStep(asIScriptContext& context,
                                          const StatementPlace& here) const {
    Step step;
    const char* section = nullptr;
    context.GetLineNumber(0, nullptr, &section);
    if (section == nullptr || section != source_) return step;
    for (const Doubtful& variable : text_->doubtfulAt(here.line, here.column)) {
        const int index = indexOf(*here.function, variable);
        if (index < 0) continue;
        step.all.push_back(static_cast<asUINT>(index));
        if (text_->sets(variable, here.line, here.column)) step.sets.push_back(step.all.back());
    }
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
    const Step& step = stepAt(context, here);
    const auto addressOf = [&](asUINT index) { return context.GetAddressOfVar(index, 0); };
    if (entry)
        for (const asUINT index : step.all)
            if (const void* const address = addressOf(index)) {
                states_[address] = {};
                touched_.erase(address);
            }
    for (const asUINT index : step.sets) {
        const auto known = states_.find(addressOf(index));
        if (known == states_.end()) continue;
        State& state = known->second;
        // It was set by the statement that was noted before.
        if (state.line != 0) state.set = true;
        state.line = here.line;
        state.column = here.column;
    }
}

void SetVariables::touch(const void* variable) {
    touched_.insert(variable);
}

std::optional<bool> SetVariables::isSet(const void* variable, std::int32_t line,
                                        std::int32_t column) const {
    if (touched(variable)) return true;
    const auto known = states_.find(variable);
    if (known == states_.end()) return std::nullopt;
    const State& state = known->second;
    const bool setting = state.line == line && state.column == column;
    return state.set || (state.line != 0 && !setting);
}

}  // namespace korvant
