// Groups of repeated elements, and merging.
#include <algorithm>
#include <utility>

#include "object/model/model_merge.h"

namespace korvant {

const GroupRecord* ObjectModel::findGroup(std::string_view name) const {
    const auto nameAt = [this](std::uint32_t number) -> std::string_view {
        return groups[number].name;
    };
    const std::uint32_t number = groupNames_.find(name, nameAt);
    return number == NameIndex::kNone ? nullptr : &groups[number];
}

GroupRecord* ObjectModel::findGroup(std::string_view name) {
    return const_cast<GroupRecord*>(std::as_const(*this).findGroup(name));
}

GroupRecord& ObjectModel::groupFor(std::string_view name) {
    if (GroupRecord* known = findGroup(name)) return *known;
    charged.add(sizeof(GroupRecord) + name.size());
    groupNames_.reserve(groups.size() + 1);
    GroupRecord made;
    made.name = name;
    groups.push_back(std::move(made));
    groupNames_.insert(name, static_cast<std::uint32_t>(groups.size() - 1));
    return groups.back();
}

void ObjectModel::checkDepth(int inner) const {
    if (inner + 1 > kDeepestNesting) throw NestedTooDeep();
}

void ObjectModel::addGroup(std::string_view name, const SharedModel& layout,
                           const GroupFlags& flags) {
    if (const GroupRecord* known = findGroup(name); known != nullptr && known->declared) {
        currentGroup = name;
        return;
    }
    checkDepth(layout->depth);
    ModelRollback rollback(*this);
    // Deliberate: the name is noted before the layout is merged, so that a group inside the
    // layout becomes the one that elements are added to; forms with nested groups rely on it.
    currentGroup = name;
    if (classes.empty()) addClass(name, true);
    classes.back().skip = true;
    GroupRecord& group = groupFor(name);
    const auto declared = [](const GroupRecord& one) { return one.declared; };
    group.order = static_cast<std::size_t>(std::count_if(groups.begin(), groups.end(), declared));
    group.declared = true;
    group.start = position();
    group.flags = flags;
    group.layout = layout;
    const auto at = static_cast<std::size_t>(&group - groups.data());
    append(*layout);
    groups[at].end = position();
    groups[at].current = -1;
    depth = std::max(depth, layout->depth + 1);
    rollback.keep();
}

void ObjectModel::addElement(const ObjectModel& element) {
    checkDepth(element.depth);
    auto copy = std::make_shared<const ObjectModel>(element);
    GroupRecord& group = groupFor(currentGroup);
    group.elements.push_back(std::move(copy));
    if (!group.hasElements) group.current = 0;
    group.hasElements = true;
    depth = std::max(depth, element.depth + 1);
}

void ObjectModel::setCurrentElement(std::string_view name, std::int32_t index) {
    groupFor(name).current = index;
}

void ObjectModel::append(const ObjectModel& other) {
    ModelRollback rollback(*this);
    ModelMerge(*this, other).run();
    rollback.keep();
}

void ObjectModel::refillNames() noexcept {
    names_.clear();
    for (std::size_t i = 0; i < properties.size(); ++i)
        names_.insert(properties[i].name, static_cast<std::uint32_t>(i));
    for (std::size_t i = 0; i < aliases_.size(); ++i)
        names_.insert(aliases_[i], kAlias | static_cast<std::uint32_t>(i));
    classNames_.clear();
    for (std::size_t i = 0; i < classes.size(); ++i)
        classNames_.insert(classes[i].name, static_cast<std::uint32_t>(i));
    groupNames_.clear();
    for (std::size_t i = 0; i < groups.size(); ++i)
        groupNames_.insert(groups[i].name, static_cast<std::uint32_t>(i));
}

}  // namespace korvant
