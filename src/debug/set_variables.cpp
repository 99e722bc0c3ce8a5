#include "debug/set_variables.h"

#include <algorithm>

namespace korvant {

void SetVariables::begin(const DeclaredVariables* text) {
    text_ = text;
    touched_.clear();
    states_.clear();
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

void SetVariables::pass(asIScriptContext& context, const StatementPlace& here, bool entry) {
    if (text_ == nullptr || here.function == nullptr) return;
    for (const Doubtful& variable : text_->doubtfulAt(here.line, here.column)) {
        const bool sets = text_->sets(variable, here.line, here.column);
        const int index = entry || sets ? indexOf(*here.function, variable) : -1;
        if (index < 0) continue;
        const void* const address = context.GetAddressOfVar(static_cast<asUINT>(index), 0);
        if (address == nullptr) continue;
        if (entry) {
            states_[address] = {};
            touched_.erase(address);
        }
        const auto known = states_.find(address);
        if (!sets || known == states_.end()) continue;
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
