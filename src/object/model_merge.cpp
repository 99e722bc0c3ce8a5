#include "object/model_merge.h"

#include <algorithm>

namespace korvant {

ModelRollback::ModelRollback(ObjectModel& model)
    : model_(model),
      properties_(model.properties.size()),
      optionLists_(model.optionLists.size()),
      rules_(model.rules.size()),
      classes_(model.classes.size()),
      categories_(model.categories.size()),
      dictionaries_(model.dictionaries.size()),
      charged_(model.charged.total()),
      groups_(model.groups),
      currentGroup_(model.currentGroup),
      depth_(model.depth) {
    if (classes_ > 0) lastClass_ = model.classes.back();
}

ModelRollback::~ModelRollback() {
    if (!kept_) takeBack();
}

namespace {

template <class Item>
void cutTo(std::vector<Item>& items, std::size_t size) noexcept {
    if (items.size() > size)
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(size), items.end());
}

}  // namespace

/// Nothing here allocates: the tables of names are refilled inside the room that they have.
void ModelRollback::takeBack() noexcept {
    cutTo(model_.properties, properties_);
    cutTo(model_.optionLists, optionLists_);
    cutTo(model_.rules, rules_);
    cutTo(model_.classes, classes_);
    cutTo(model_.categories, categories_);
    cutTo(model_.dictionaries, dictionaries_);
    if (classes_ > 0) std::swap(model_.classes.back(), lastClass_);
    model_.groups.swap(groups_);
    model_.currentGroup.swap(currentGroup_);
    model_.depth = depth_;
    model_.charged.drop(model_.charged.total() - charged_);
    model_.refillNames();
}

ModelMerge::ModelMerge(ObjectModel& target, const ObjectModel& other)
    : target_(target), other_(other), countBefore_(target.count()) {
    for (const GroupRecord& group : target.groups)
        if (group.declared) declaredBefore_.push_back(group.name);
    for (const GroupRecord& group : other.groups)
        if (group.declared) declared_.push_back(&group);
    const auto before = [](const GroupRecord* a, const GroupRecord* b) {
        if (a->start.properties != b->start.properties)
            return a->start.properties < b->start.properties;
        return a->end.properties > b->end.properties;
    };
    std::stable_sort(declared_.begin(), declared_.end(), before);
}

void ModelMerge::run() {
    for (std::int32_t index = 0; index < other_.count(); ++index) {
        addStructureAt(index);
        addProperty(other_.properties[static_cast<std::size_t>(index)]);
    }
    addStructureAt(other_.count());
    addTranslations();
}

bool ModelMerge::wasDeclared(const std::string& group) const {
    return std::find(declaredBefore_.begin(), declaredBefore_.end(), group) !=
           declaredBefore_.end();
}

/// Everything that was added to the other object before its property `index`.
void ModelMerge::addStructureAt(std::int32_t index) {
    for (; nextGroup_ < declared_.size(); ++nextGroup_) {
        const GroupRecord& group = *declared_[nextGroup_];
        if (group.start.properties > index) break;
        addClassesAndCategories(index, group.start);
        addGroup(group);
    }
    addClassesAndCategories(index, other_.position());
}

void ModelMerge::addClassesAndCategories(std::int32_t index, const ModelPosition& limit) {
    for (; nextClass_ < limit.classes; ++nextClass_) {
        const ClassRecord& one = other_.classes[nextClass_];
        if (one.first > index) break;
        target_.addClass(one.name, one.value);
    }
    for (; nextCategory_ < limit.categories; ++nextCategory_) {
        const CategoryRecord& one = other_.categories[nextCategory_];
        if (one.first > index) break;
        addCategory(one.name);
    }
}

/// A category that the target's last class ends with is gone on with.
void ModelMerge::addCategory(const std::string& name) {
    if (!target_.categories.empty()) {
        const CategoryRecord& last = target_.categories.back();
        const std::int32_t classStart = target_.classes.empty() ? 0 : target_.classes.back().first;
        if (last.name == name && last.first >= classStart) return;
    }
    target_.addCategory(name);
}

void ModelMerge::addGroup(const GroupRecord& group) {
    target_.addGroup(group.name, group.layout, group.flags);
    if (wasDeclared(group.name)) return;
    // The layout has brought its classes and categories itself.
    nextClass_ = std::max(nextClass_, group.end.classes);
    nextCategory_ = std::max(nextCategory_, group.end.categories);
    if (!group.hasElements) return;
    GroupRecord& added = *target_.findGroup(group.name);
    added.elements = group.elements;
    added.hasElements = true;
    added.current = group.current;
    target_.depth = std::max(target_.depth, other_.depth);
}

void ModelMerge::addProperty(const PropertyRecord& property) {
    PropertyRecord made = property;
    made.rules = -1;
    made.options = -1;
    if (target_.insert(std::move(made))) {
        if (property.options >= 0) {
            target_.properties.back().options =
                static_cast<std::int32_t>(target_.optionLists.size());
            target_.optionLists.push_back(
                other_.optionLists[static_cast<std::size_t>(property.options)]);
        }
        addRules(property);
        return;
    }
    // What the layout of a group brought in a moment ago takes this object's values and rules.
    const std::int32_t index = target_.find(property.name);
    if (index < countBefore_) return;
    PropertyRecord& brought = target_.properties[static_cast<std::size_t>(index)];
    target_.setText(brought, property.text);
    brought.integer = property.integer;
    brought.real = property.real;
    brought.boolean = property.boolean;
    addRules(property);
}

void ModelMerge::addRules(const PropertyRecord& property) {
    const PropertyRules& rules = other_.rulesOf(property);
    for (const Constraint& one : rules.errors)
        target_.addError(property.name, one.expression, one.message);
    for (const Constraint& one : rules.warnings)
        target_.addWarning(property.name, one.expression, one.message);
    for (const std::string& one : rules.enables) target_.addEnable(property.name, one);
    if (rules.computation) target_.setComputation(property.name, *rules.computation);
    if (rules.hint) target_.addHint(property.name, *rules.hint);
}

/// Entries move from copies, so that nothing can fail once the first has moved.
void ModelMerge::addTranslations() {
    if (other_.dictionaries.empty()) return;
    std::vector<ObjectModel::Dictionary> copies = other_.dictionaries;
    std::vector<ObjectModel::Dictionary>& mine = target_.dictionaries;
    if (mine.size() < copies.size()) mine.resize(copies.size());
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        mine[i].reserve(mine[i].size() + copies[i].size());
        for (const auto& [source, text] : copies[i])
            bytes += sizeof(ObjectModel::Dictionary::value_type) + source.size() + text.size();
    }
    target_.charged.add(bytes);
    for (std::size_t i = 0; i < copies.size(); ++i) {
        while (!copies[i].empty()) {
            auto taken = mine[i].insert(copies[i].extract(copies[i].begin()));
            if (!taken.inserted) taken.position->second.swap(taken.node.mapped());
        }
    }
}

}  // namespace korvant
