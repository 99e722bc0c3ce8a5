#include "object/model/model_merge.h"

#include <algorithm>

namespace korvant {

ModelRollback::ModelRollback(ObjectModel& model)
    : model_(model),
      properties_(model.properties.size()),
      labelBytes_(model.labels.bytes()),
      texts_(model.texts.size()),
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
    model_.labels.cutTo(properties_, labelBytes_);
    cutTo(model_.texts, texts_);
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
        return a->order < b->order;
    };
    std::sort(declared_.begin(), declared_.end(), before);
}

void ModelMerge::run() {
    for (std::int32_t index = 0; index < other_.count(); ++index) {
        addStructureAt(index);
        if (index < broughtTo_ || !addProperty(index)) notAdded_.push_back(index);
    }
    addStructureAt(other_.count());
    for (const std::int32_t index : notAdded_) takeOver(index);
    addElements();
    addTranslations();
}

bool ModelMerge::wasDeclared(const std::string& group) const {
    return std::find(declaredBefore_.begin(), declaredBefore_.end(), group) !=
           declaredBefore_.end();
}

/// True for a group that came with the layout of the one that was handled last.
bool ModelMerge::isHandled(const GroupRecord& group) const {
    if (handled_ == nullptr || group.end.properties > handled_->end.properties) return false;
    const GroupRecord* inner = handled_->layout->findGroup(group.name);
    return inner != nullptr && inner->declared;
}

/// Everything that was added to the other object before its property `index`.
void ModelMerge::addStructureAt(std::int32_t index) {
    for (; nextGroup_ < declared_.size(); ++nextGroup_) {
        const GroupRecord& group = *declared_[nextGroup_];
        if (group.start.properties > index) break;
        if (isHandled(group)) continue;
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

/// A group that the target has is refused with everything that its layout brought.
void ModelMerge::addGroup(const GroupRecord& group) {
    target_.addGroup(group.name, group.layout, group.flags);
    handled_ = &group;
    nextClass_ = std::max(nextClass_, group.end.classes);
    nextCategory_ = std::max(nextCategory_, group.end.categories);
    broughtTo_ = group.end.properties;
}

void ModelMerge::addElements() {
    for (const GroupRecord* group : declared_) {
        GroupRecord* added = target_.findGroup(group->name);
        const bool fresh = added != nullptr && added->declared && !wasDeclared(group->name);
        if (!fresh || !group->hasElements) continue;
        added->elements = group->elements;
        added->hasElements = true;
        added->current = group->current;
        target_.depth = std::max(target_.depth, other_.depth);
    }
}

const PropertyRecord& ModelMerge::theirs(std::int32_t index) const {
    return other_.properties[static_cast<std::size_t>(index)];
}

/// Without what stands elsewhere in its object.
PropertyRecord ModelMerge::withoutParts(const PropertyRecord& property) {
    PropertyRecord made = property;
    made.rules = -1;
    made.options = -1;
    made.text = -1;
    return made;
}

bool ModelMerge::addProperty(std::int32_t index) {
    const PropertyRecord& property = theirs(index);
    const auto at = static_cast<std::size_t>(index);
    if (!target_.insert(withoutParts(property), other_.labels.label(at), other_.labels.unit(at),
                        other_.textOf(property)))
        return false;
    addRules(property);
    addOptions(property, target_.properties.back());
    return true;
}

/// What the layout of a group brought in becomes what it is in the other object. A
/// property that the target had before stays as it is.
void ModelMerge::takeOver(std::int32_t index) {
    const PropertyRecord& property = theirs(index);
    const std::int32_t place = target_.find(property.name);
    if (place < countBefore_) return;
    const auto from = static_cast<std::size_t>(index), to = static_cast<std::size_t>(place);
    PropertyRecord copy = withoutParts(property);
    target_.labels.set(to, other_.labels.label(from), other_.labels.unit(from));
    target_.setText(target_.properties[to], other_.textOf(property));
    copy.text = target_.properties[to].text;
    target_.properties[to] = std::move(copy);
    addRules(property);
    addOptions(property, target_.properties[to]);
}

void ModelMerge::addOptions(const PropertyRecord& from, PropertyRecord& to) {
    if (from.options < 0) return;
    target_.optionLists.push_back(other_.optionLists[static_cast<std::size_t>(from.options)]);
    to.options = static_cast<std::int32_t>(target_.optionLists.size() - 1);
}

void ModelMerge::addRules(const PropertyRecord& property) {
    const PropertyRules& rules = other_.rulesOf(property);
    for (const Constraint& one : rules.errors)
        target_.addError(property.name, one.expression, one.message);
    for (const Constraint& one : rules.warnings)
        target_.addWarning(property.name, one.expression, one.message);
    for (const Constraint& one : rules.enables) target_.addEnable(property.name, one.expression);
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
