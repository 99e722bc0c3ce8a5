// Which variables of plain types have been given a value, where the text alone does not tell.
#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "debug/declared_variables.h"
#include "debug/step_rule.h"
#include "host/engine/engine_compat.h"

namespace korvant {

/// The engine leaves what lay in memory before to a variable that is declared without a value. Of
/// one that a branch may have set, it is noted when a call begins and when one of the statements is
/// passed that set it. Script's thread only.
class SetVariables {
  public:
    /// A script is built from a text, which must live as long; null: it is gone. `source`: its
    /// section.
    void begin(const DeclaredVariables* text, std::string_view source = {});
    bool begun() const noexcept { return text_ != nullptr; }
    /// Where pass() must be told of statements, ascending.
    const std::vector<std::int32_t>& lines() const noexcept { return lines_; }
    bool watches(std::int32_t line) const {
        return std::binary_search(lines_.begin(), lines_.end(), line);
    }
    /// A statement is about to run in the innermost frame; `entry`: the first one of its call,
    /// which may be told of twice.
    void pass(asIScriptContext& context, const StatementPlace& here, bool entry);
    /// A variable of one call of a function. Variables of other functions, and of other blocks of
    /// the same one, may lie in the same place later.
    struct Variable {
        const void* address = nullptr;
        const asIScriptFunction* function = nullptr;
        asUINT index = 0;  ///< the engine's number of it in its function
        auto operator<=>(const Variable&) const = default;
    };
    /// A variable is set from outside, in the call that is the `depth`th from the outermost. It is
    /// a new one when that begins again.
    void touch(const Variable& variable, unsigned depth);
    /// Whether a variable has been set before the statement at which its frame stands, counted from
    /// 1 in bytes; nothing where that has not been seen.
    std::optional<bool> isSet(const Variable& variable, std::int32_t line,
                              std::int32_t column) const;

  private:
    struct State {
        bool set = false;
        std::int32_t line = 0;  ///< of the statement that sets it, or has
        std::int32_t column = 0;
    };
    using Valueless = DeclaredVariables::Valueless;
    /// The engine's numbers of the doubtful variables of a function, null where there are none, and
    /// of those that one of its statements may set.
    struct Step {
        const std::vector<asUINT>* all = nullptr;
        std::vector<asUINT> sets;
        std::vector<asUINT> declared;  ///< again, right before it
    };
    void watch(const std::vector<std::int32_t>& lines);
    const std::vector<asUINT>& numbersOf(const asIScriptFunction& function,
                                         const std::vector<Valueless>& variables);
    const Step& stepAt(asIScriptContext& context, const StatementPlace& here);
    Step findStep(asIScriptContext& context, const StatementPlace& here);

    const DeclaredVariables* text_ = nullptr;
    std::string source_;  ///< the section that the text is of
    std::vector<std::int32_t> lines_;
    struct Touched {
        unsigned depth = 0;  ///< of its call
        bool fresh = true;   ///< no statement has been passed since
    };
    std::map<Variable, Touched> touched_;
    std::map<Variable, State> states_;
    bool touchedAny_ = false;
    std::unordered_map<const asIScriptFunction*, std::vector<asUINT>> numbers_;
    std::unordered_map<const asDWORD*, Step> steps_;  ///< by the place in the code
};

}  // namespace korvant
