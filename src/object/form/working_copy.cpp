#include "object/form/working_copy.h"

#include <bit>
#include <cstdint>

namespace korvant {

bool sameReal(double a, double b) noexcept {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool sameSlots(const ValueSlots& a, const ValueSlots& b) noexcept {
    return a.integer == b.integer && a.boolean == b.boolean && sameReal(a.real, b.real) &&
           a.text == b.text;
}

ValueSlots slotsOf(const ObjectModel& object, const PropertyRecord& property) {
    return {object.textOf(property), property.integer, property.real, property.boolean};
}

WorkingCopy::WorkingCopy(const ObjectModel& object) {
    const std::size_t count = object.properties.size();
    texts_.reserve(count);
    integers_.reserve(count);
    reals_.reserve(count);
    booleans_.reserve(count);
    for (const PropertyRecord& property : object.properties) {
        texts_.push_back(object.textOf(property));
        integers_.push_back(property.integer);
        reals_.push_back(property.real);
        booleans_.push_back(property.boolean ? 1 : 0);
    }
}

ValueSlots WorkingCopy::slots(std::int32_t property) const {
    return {text(property), integer(property), real(property), boolean(property)};
}

/// Noted before it happens, so that a change that cannot be noted does not happen.
template <class Value>
void WorkingCopy::note(std::int32_t property, const Value& before, const Value& after) {
    changed_.push_back(property);
    if (journal_ != nullptr) journal_->push_back({property, SlotValue(before), SlotValue(after)});
}

bool WorkingCopy::setText(std::int32_t property, const std::string& value) {
    if (text(property) == value) return false;
    std::string copy = value;
    note(property, text(property), value);
    texts_[at(property)] = std::move(copy);
    return true;
}

bool WorkingCopy::setInteger(std::int32_t property, std::int32_t value) {
    if (integer(property) == value) return false;
    note(property, integer(property), value);
    integers_[at(property)] = value;
    return true;
}

bool WorkingCopy::setReal(std::int32_t property, double value) {
    if (sameReal(real(property), value)) return false;
    note(property, real(property), value);
    reals_[at(property)] = value;
    return true;
}

bool WorkingCopy::setBoolean(std::int32_t property, bool value) {
    if (boolean(property) == value) return false;
    note(property, boolean(property), value);
    booleans_[at(property)] = value ? 1 : 0;
    return true;
}

bool WorkingCopy::set(std::int32_t property, const SlotValue& value) {
    if (const auto* words = std::get_if<std::string>(&value)) return setText(property, *words);
    if (const auto* whole = std::get_if<std::int32_t>(&value)) return setInteger(property, *whole);
    if (const auto* number = std::get_if<double>(&value)) return setReal(property, *number);
    return setBoolean(property, std::get<bool>(value));
}

void WorkingCopy::setSlots(std::int32_t property, const ValueSlots& values) {
    setText(property, values.text);
    setInteger(property, values.integer);
    setReal(property, values.real);
    setBoolean(property, values.boolean);
}

}  // namespace korvant
