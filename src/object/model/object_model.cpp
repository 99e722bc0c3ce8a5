#include "object/model/object_model.h"

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

PropertyRecord makeRecord(std::string_view name, char letter, bool flag) {
    PropertyRecord made;
    made.name = name;
    made.letter = letter;
    made.flag = flag;
    return made;
}

template <class Item>
void makeRoomForOne(std::vector<Item>& items) {
    if (items.size() == items.capacity()) items.reserve(std::max<std::size_t>(8, items.size() * 2));
}

}  // namespace

/// After this one property more can be taken in without an allocation.
void ObjectModel::growForOne(std::size_t labelBytes) {
    makeRoomForOne(properties);
    labels.reserve(labelBytes);
    names_.reserve(names_.size() + 1);
    if (listeners.size() <= properties.size()) listeners.push_back(nullptr);
}

bool ObjectModel::insert(PropertyRecord&& property, std::string_view label, std::string_view unit,
                         std::string_view text) {
    const auto nameAt = [this](std::uint32_t number) { return nameOf(number); };
    if (names_.find(property.name, nameAt) != NameIndex::kNone) return false;
    std::string words(text);
    if (!words.empty()) makeRoomForOne(texts);
    growForOne(label.size() + unit.size());
    charged.add(sizeof(PropertyRecord) + PropertyLabels::bytesOfOne() + property.name.size() +
                label.size() + unit.size() + text.size());
    const std::int32_t index = count();
    if (!classes.empty()) classes.back().last = index;
    names_.insert(property.name, static_cast<std::uint32_t>(index));
    labels.add(label, unit);
    properties.push_back(std::move(property));
    if (!words.empty()) ownText(properties.back()).swap(words);
    return true;
}

bool ObjectModel::addText(std::string_view name, std::string_view label, std::string_view value,
                          bool flag, char letter, std::string_view unit) {
    return insert(makeRecord(name, letter, flag), label, unit, value);
}

bool ObjectModel::addInteger(std::string_view name, std::string_view label, std::int32_t value,
                             std::string_view unit, bool flag) {
    if (!pendingOptions.empty()) return addOptions(name, label, value, flag);
    PropertyRecord made = makeRecord(name, unit == kColourUnit ? 'c' : 'l', flag);
    made.integer = value;
    return insert(std::move(made), label, unit);
}

bool ObjectModel::addOptions(std::string_view name, std::string_view label, std::int32_t value,
                             bool flag) {
    PropertyRecord made = makeRecord(name, 'o', flag);
    made.integer = value;
    made.options = static_cast<std::int32_t>(optionLists.size());
    optionLists.emplace_back();
    if (!insert(std::move(made), label)) {
        optionLists.pop_back();
        return false;
    }
    optionLists.back().swap(pendingOptions);
    return true;
}

bool ObjectModel::addReal(std::string_view name, std::string_view label, double value,
                          std::string_view unit, bool flag) {
    PropertyRecord made = makeRecord(name, 'd', flag);
    made.real = value;
    return insert(std::move(made), label, unit);
}

bool ObjectModel::addBoolean(std::string_view name, std::string_view label, bool value, bool flag,
                             std::int32_t radioGroup) {
    PropertyRecord made = makeRecord(name, 'b', flag);
    made.boolean = value;
    made.radioGroup = radioGroup;
    return insert(std::move(made), label);
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

const std::string& ObjectModel::textOf(const PropertyRecord& property) const noexcept {
    static const std::string kEmpty;
    return property.text < 0 ? kEmpty : texts[static_cast<std::size_t>(property.text)];
}

std::string& ObjectModel::ownText(PropertyRecord& property) {
    if (property.text < 0) {
        makeRoomForOne(texts);
        property.text = static_cast<std::int32_t>(texts.size());
        texts.emplace_back();
    }
    return texts[static_cast<std::size_t>(property.text)];
}

void ObjectModel::setText(PropertyRecord& property, std::string_view value) {
    if (property.text < 0 && value.empty()) return;
    std::string& text = ownText(property);
    const std::size_t before = text.size();
    text.reserve(value.size());
    if (value.size() > before)
        charged.add(value.size() - before);
    else
        charged.drop(before - value.size());
    text.assign(value);
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
