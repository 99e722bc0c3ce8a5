#include "object/object_model.h"

#include <algorithm>

namespace korvant {

std::int32_t property_type::ofLetter(char letter) noexcept {
    switch (letter) {
        case 's':
        case 'e':
        case 'F':
        case 'f':
            return kText;
        case 'l':
        case 'c':
        case 'o':
            return kInteger;
        case 'd':
            return kReal;
        case 'b':
            return kBoolean;
        default:
            return kNone;
    }
}

namespace {

std::size_t bytesOf(const PropertyRecord& property) {
    return sizeof(PropertyRecord) + property.name.size() + property.label.size() +
           property.unit.size() + property.text.size();
}

PropertyRecord makeRecord(std::string_view name, std::string_view label, char letter, bool flag) {
    PropertyRecord made;
    made.name = name;
    made.label = label;
    made.letter = letter;
    made.flag = flag;
    return made;
}

}  // namespace

std::string_view ObjectModel::nameOf(std::uint32_t number) const {
    if ((number & kAlias) != 0) return aliases_[number & ~kAlias];
    return properties[number].name;
}

std::int32_t ObjectModel::find(std::string_view name) const {
    const std::uint32_t number = names_.find(name, [this](std::uint32_t n) { return nameOf(n); });
    if (number == NameIndex::kNone || properties.empty()) return kUnknown;
    return (number & kAlias) != 0 ? 0 : static_cast<std::int32_t>(number);
}

/// After this one property more can be taken in without an allocation.
void ObjectModel::growForOne() {
    if (properties.size() == properties.capacity())
        properties.reserve(std::max<std::size_t>(8, properties.size() * 2));
    names_.reserve(names_.size() + 1);
    if (listeners.size() <= properties.size()) listeners.push_back(nullptr);
}

bool ObjectModel::insert(PropertyRecord&& property) {
    const auto nameAt = [this](std::uint32_t number) { return nameOf(number); };
    if (names_.find(property.name, nameAt) != NameIndex::kNone) return false;
    growForOne();
    charged.add(bytesOf(property));
    const std::int32_t index = count();
    if (!classes.empty()) classes.back().last = index;
    names_.insert(property.name, static_cast<std::uint32_t>(index));
    properties.push_back(std::move(property));
    return true;
}

bool ObjectModel::addText(std::string_view name, std::string_view label, std::string_view value,
                          bool flag, char letter, std::string_view unit) {
    PropertyRecord made = makeRecord(name, label, letter, flag);
    made.text = value;
    made.unit = unit;
    return insert(std::move(made));
}

bool ObjectModel::addInteger(std::string_view name, std::string_view label, std::int32_t value,
                             std::string_view unit, bool flag) {
    if (!pendingOptions.empty()) return addOptions(name, label, value, flag);
    PropertyRecord made = makeRecord(name, label, unit == kColourUnit ? 'c' : 'l', flag);
    made.integer = value;
    made.unit = unit;
    return insert(std::move(made));
}

bool ObjectModel::addOptions(std::string_view name, std::string_view label, std::int32_t value,
                             bool flag) {
    PropertyRecord made = makeRecord(name, label, 'o', flag);
    made.integer = value;
    made.options = static_cast<std::int32_t>(optionLists.size());
    optionLists.emplace_back();
    if (!insert(std::move(made))) {
        optionLists.pop_back();
        return false;
    }
    optionLists.back().swap(pendingOptions);
    return true;
}

bool ObjectModel::addReal(std::string_view name, std::string_view label, double value,
                          std::string_view unit, bool flag) {
    PropertyRecord made = makeRecord(name, label, 'd', flag);
    made.real = value;
    made.unit = unit;
    return insert(std::move(made));
}

bool ObjectModel::addBoolean(std::string_view name, std::string_view label, bool value, bool flag,
                             std::int32_t radioGroup) {
    PropertyRecord made = makeRecord(name, label, 'b', flag);
    made.boolean = value;
    made.radioGroup = radioGroup;
    return insert(std::move(made));
}

void ObjectModel::addOption(std::string_view option) {
    charged.add(sizeof(std::string) + option.size());
    pendingOptions.emplace_back(option);
}

void ObjectModel::addCategory(std::string_view name) {
    charged.add(sizeof(CategoryRecord) + name.size());
    categories.push_back({std::string(name), count()});
}

std::int32_t ObjectModel::findClass(std::string_view name) const {
    const auto nameAt = [this](std::uint32_t number) -> std::string_view {
        return classes[number].name;
    };
    const std::uint32_t number = classNames_.find(name, nameAt);
    return number == NameIndex::kNone ? kUnknown : static_cast<std::int32_t>(number);
}

void ObjectModel::addClass(std::string_view name, bool value) {
    if (findClass(name) != kUnknown) return;
    charged.add(sizeof(ClassRecord) + name.size());
    classNames_.reserve(classes.size() + 1);
    classes.push_back({std::string(name), count(), count(), false, value});
    classNames_.insert(name, static_cast<std::uint32_t>(classes.size() - 1));
}

void ObjectModel::setText(PropertyRecord& property, std::string_view value) {
    const std::size_t before = property.text.size();
    property.text.reserve(value.size());
    if (value.size() > before)
        charged.add(value.size() - before);
    else
        charged.drop(before - value.size());
    property.text.assign(value);
}

void ObjectModel::clear() noexcept {
    ObjectModel fresh;
    fresh.listeners.swap(listeners);
    fresh.currentGroup.swap(currentGroup);
    fresh.walk = walk;
    fresh.reportedCount = reportedCount;
    *this = std::move(fresh);
}

bool ObjectModel::nextClass(std::string& name, bool& value) {
    std::uint32_t at = walk.classCursor;
    // Deliberate: one class is passed over, not a run of them; forms with two groups in a row
    // rely on seeing the second.
    if (at < classes.size() && classes[at].skip) ++at;
    if (at >= classes.size()) {
        walk.classCursor = at;
        if (at != 0) return false;
        name.clear();
        value = true;
    } else {
        name = classes[at].name;
        value = classes[at].value;
        walk.classLimit = classes[at].last;
    }
    walk.classCursor = at + 1;
    return true;
}

bool ObjectModel::nextCategory(std::string& name) {
    const std::uint32_t at = walk.categoryCursor;
    if (at >= categories.size() || walk.classLimit < categories[at].first) return false;
    name = categories[at].name;
    walk.categoryCursor = at + 1;
    walk.categoryLimit =
        at + 1 < categories.size() ? categories[at + 1].first : WalkState::kNoLimit;
    return true;
}

bool ObjectModel::nextProperty(std::string& name, std::int32_t& index) {
    const std::uint32_t at = walk.propertyCursor;
    if (at >= properties.size() || static_cast<std::int32_t>(at) >= walk.categoryLimit)
        return false;
    name = properties[at].name;
    index = static_cast<std::int32_t>(at);
    walk.propertyCursor = at + 1;
    return true;
}

}  // namespace korvant
