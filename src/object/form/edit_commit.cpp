// Values that the user enters.
#include "object/form/edit_state.h"
#include "object/form/form_texts.h"
#include "object/form/report_text.h"
#include "object/form/value_text.h"

namespace korvant {

namespace {

/// The message of a typed value that is refused; accepted otherwise.
template <class Value>
EditCommit refused(FormValue<Value>& typed) {
    return {false, std::move(typed.message)};
}

}  // namespace

EditCommit EditState::store(std::int32_t row, const SlotValue& value) {
    changeRow(row, [&] { core.values.set(row, value); });
    return {};
}

EditCommit EditState::storeBoolean(std::int32_t row, bool value) {
    const bool radio = core.layout.rows[EditCore::at(row)].radioGroup >= 0;
    if (!radio) return store(row, value);
    // The chosen one of a radio group is cleared by choosing another.
    if (!value) return {};
    changeRow(row, [&] {
        for (const std::int32_t member : core.radioMembers(row))
            core.values.setBoolean(member, member == row);
    });
    return {};
}

EditCommit EditState::storeTyped(std::int32_t row, const std::string& typed) {
    const Evaluate evaluate = [this](std::string_view text) { return core.rules.evaluate(text); };
    const EditRow& target = core.layout.rows[EditCore::at(row)];
    switch (target.letter) {
        case 'l': {
            auto whole = readInteger(typed, evaluate, core.layout.locale);
            return whole.accepted ? store(row, whole.value) : refused(whole);
        }
        case 'd': {
            auto real = readReal(typed, evaluate, core.layout.locale);
            return real.accepted ? store(row, real.value) : refused(real);
        }
        case 'c': {
            auto colour = readColour(typed, core.layout.locale);
            return colour.accepted ? store(row, colour.value) : refused(colour);
        }
        case 'o': {
            auto option = readOption(typed, target.options, core.layout.locale);
            return option.accepted ? store(row, option.value) : refused(option);
        }
        case 'b': {
            auto boolean = readBoolean(typed, core.layout.locale);
            return boolean.accepted ? storeBoolean(row, boolean.value) : refused(boolean);
        }
        default:
            return store(row, typed);
    }
}

}  // namespace korvant
