#include "object/model/plain_model.h"

#include <algorithm>

namespace korvant::test {

PlainProperty* PlainModel::find(const std::string& name) {
    for (PlainProperty& property : properties)
        if (property.name == name) return &property;
    return aliases.count(name) != 0 && !properties.empty() ? &properties[0] : nullptr;
}

bool PlainModel::taken(const std::string& name) const {
    const auto named = [&](const PlainProperty& one) { return one.name == name; };
    return aliases.count(name) != 0 || std::any_of(properties.begin(), properties.end(), named);
}

bool PlainModel::add(PlainProperty property) {
    if (taken(property.name)) return false;
    if (!classLasts.empty()) classLasts.back() = static_cast<std::int32_t>(properties.size());
    history_.push_back({'p', property.name, false, {}, nullptr});
    properties.push_back(std::move(property));
    return true;
}

bool PlainModel::addOptionProperty(PlainProperty property) {
    property.letter = 'o';
    property.unit.clear();
    property.options = pending;
    if (!add(property)) return false;
    pending.clear();
    return true;
}

bool PlainModel::addInteger(PlainProperty property) {
    if (!pending.empty()) return addOptionProperty(property);
    property.letter = property.unit == "color" ? 'c' : 'l';
    return add(property);
}

void PlainModel::addClass(const std::string& name, bool value) {
    if (std::find(classNames.begin(), classNames.end(), name) != classNames.end()) return;
    // Of a category and a class at one place the class comes first when it is done again.
    auto at = history_.end();
    while (at != history_.begin() && std::prev(at)->what == 'k') --at;
    history_.insert(at, {'c', name, value, {}, nullptr});
    classNames.push_back(name);
    classSkips.push_back(false);
    classValues.push_back(value);
    classLasts.push_back(static_cast<std::int32_t>(properties.size()));
    lastClassStart_ = classLasts.back();
}

void PlainModel::addCategory(const std::string& name) {
    history_.push_back({'k', name, false, {}, nullptr});
    categoryNames.push_back(name);
    categoryFirsts.push_back(static_cast<std::int32_t>(properties.size()));
}

void PlainModel::addGroup(const std::string& name, const PlainModel& layout,
                          const bool (&flags)[4]) {
    const auto copy = std::make_shared<const PlainModel>(layout);
    currentGroup = name;
    if (groups.count(name) != 0 && groups[name].layout) return;
    if (classNames.empty()) addClass(name, true);
    classSkips.back() = true;
    Group& group = groups[name];
    group.layout = copy;
    std::copy(std::begin(flags), std::end(flags), group.flags);
    Step step{'g', name, false, {flags[0], flags[1], flags[2], flags[3]}, copy};
    const std::vector<Step> before = history_;
    append(*copy);
    // The group is one step, whatever its layout brought.
    history_ = before;
    history_.push_back(step);
    groups[name].current = -1;
}

void PlainModel::addElement(const PlainModel& element) {
    const PlainModel copy = element;
    Group& group = groups[currentGroup];
    group.elements.push_back(copy);
    if (!group.listed) group.current = 0;
    group.listed = true;
}

/// Does again what was done to the other object, then takes over what its new properties hold.
void PlainModel::append(const PlainModel& other) {
    const std::size_t before = properties.size();
    std::vector<std::string> declared;
    for (const auto& [name, group] : groups)
        if (group.layout) declared.push_back(name);
    for (const Step& step : other.history_) {
        if (step.what == 'c') addClass(step.name, step.value);
        if (step.what == 'k') {
            const bool goesOn = !categoryNames.empty() && categoryNames.back() == step.name &&
                                categoryFirsts.back() >= (classNames.empty() ? 0 : lastClassStart_);
            if (!goesOn) addCategory(step.name);
        }
        if (step.what == 'g') addGroup(step.name, *step.layout, step.flags);
        if (step.what == 'p') {
            PlainProperty named;
            named.name = step.name;
            add(named);
        }
    }
    for (const PlainProperty& theirs : other.properties)
        for (std::size_t i = before; i < properties.size(); ++i)
            if (properties[i].name == theirs.name) properties[i] = theirs;
    for (const auto& [name, theirs] : other.groups) {
        const bool had = std::find(declared.begin(), declared.end(), name) != declared.end();
        const bool here = groups.count(name) != 0 && groups[name].layout;
        if (had || !here || !theirs.layout || !theirs.listed) continue;
        groups[name].elements = theirs.elements;
        groups[name].listed = true;
        groups[name].current = theirs.current;
    }
    for (std::size_t i = 0; i < other.dictionaries.size(); ++i) {
        if (dictionaries.size() <= i) dictionaries.resize(i + 1);
        for (const auto& [source, text] : other.dictionaries[i]) dictionaries[i][source] = text;
    }
}

void PlainModel::addTranslation(std::int32_t locale, const std::string& source,
                                const std::string& text) {
    if (locale <= 0 || locale > 1000) return;
    if (dictionaries.size() < static_cast<std::size_t>(locale))
        dictionaries.resize(static_cast<std::size_t>(locale));
    dictionaries[static_cast<std::size_t>(locale) - 1][source] = text;
}

void PlainModel::addHint(const std::string& name, const std::string& text) {
    if (properties.empty()) return;
    PlainProperty* property = find(name);
    if (property == nullptr) {
        aliases[name] = 0;
        property = &properties[0];
    }
    property->hint = text;
}

void PlainModel::clear() {
    PlainModel fresh;
    fresh.currentGroup = currentGroup;
    fresh.classCursor_ = classCursor_;
    fresh.categoryCursor_ = categoryCursor_;
    fresh.propertyCursor_ = propertyCursor_;
    fresh.classLimit_ = classLimit_;
    fresh.categoryLimit_ = categoryLimit_;
    *this = fresh;
}

void PlainModel::resetIterators() {
    classCursor_ = categoryCursor_ = propertyCursor_ = 0;
    classLimit_ = categoryLimit_ = 999999;
}

bool PlainModel::nextClass(std::string& name, bool& value) {
    if (classCursor_ < classNames.size() && classSkips[classCursor_]) ++classCursor_;
    if (classCursor_ >= classNames.size()) {
        if (classCursor_ != 0 || !classNames.empty()) return false;
        name.clear();
        value = true;
        classCursor_ = 1;
        return true;
    }
    name = classNames[classCursor_];
    value = classValues[classCursor_];
    classLimit_ = classLasts[classCursor_];
    ++classCursor_;
    return true;
}

bool PlainModel::nextCategory(std::string& name) {
    if (categoryCursor_ >= categoryNames.size()) return false;
    if (classLimit_ < categoryFirsts[categoryCursor_]) return false;
    name = categoryNames[categoryCursor_++];
    categoryLimit_ =
        categoryCursor_ < categoryNames.size() ? categoryFirsts[categoryCursor_] : 999999;
    return true;
}

bool PlainModel::nextProperty(std::string& name, std::int32_t& index) {
    if (propertyCursor_ >= properties.size()) return false;
    if (static_cast<std::int32_t>(propertyCursor_) >= categoryLimit_) return false;
    name = properties[propertyCursor_].name;
    index = static_cast<std::int32_t>(propertyCursor_++);
    return true;
}

}  // namespace korvant::test
