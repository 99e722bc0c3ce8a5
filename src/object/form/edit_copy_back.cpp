// An edited form on its way back into its object.
#include "object/form/edit_state.h"

namespace korvant {

namespace {

struct NewValue {
    std::int32_t property = 0;
    ValueSlots slots;
};

struct NewGroup {
    std::string name;
    std::vector<SharedModel> elements;
    std::int32_t current = 0;
};

/// Every value, the rows of groups included, which hold the current element: what the object reads
/// afterwards does not depend on whether the user typed something or only looked.
std::vector<NewValue> newValues(const EditCore& core, const ObjectModel& object) {
    std::vector<NewValue> values;
    const std::int32_t count = std::min(core.layout.count(), object.count());
    for (std::int32_t row = 0; row < count; ++row) {
        const PropertyRecord& property = object.properties[static_cast<std::size_t>(row)];
        // Somebody may have cleared the object meanwhile and given the index to another property.
        if (property.name != core.layout.rows[static_cast<std::size_t>(row)].name) continue;
        ValueSlots slots = core.values.slots(row);
        if (!sameSlots(slots, slotsOf(object, property))) values.push_back({row, std::move(slots)});
    }
    return values;
}

std::vector<NewGroup> newGroups(const EditCore& core) {
    std::vector<NewGroup> groups;
    for (int number = 0; number < core.desk.count(); ++number) {
        const EditGroup& group = core.desk.group(number);
        NewGroup made{group.name, {}, group.content.current};
        for (const ElementPlace& place : *group.content.list)
            made.elements.push_back(core.desk.toModel(number, *place.now));
        groups.push_back(std::move(made));
    }
    return groups;
}

std::size_t growth(const std::vector<NewValue>& values, const ObjectModel& object) {
    std::size_t bytes = 0;
    for (const NewValue& one : values) {
        const PropertyRecord& property = object.properties[static_cast<std::size_t>(one.property)];
        const std::size_t before = object.textOf(property).size();
        if (one.slots.text.size() > before) bytes += one.slots.text.size() - before;
    }
    return bytes;
}

}  // namespace

std::vector<std::int32_t> copyBack(EditCore& core, ObjectModel& object) {
    for (int number = 0; number < core.desk.count(); ++number)
        if (core.desk.group(number).outer == GroupDesk::kNoGroup) core.desk.getGroupDlg(number);
    std::vector<NewValue> values = newValues(core, object);
    std::vector<NewGroup> groups = newGroups(core);
    std::vector<std::int32_t> changed;
    changed.reserve(values.size());
    for (const NewValue& one : values)
        if (!one.slots.text.empty())
            object.ownText(object.properties[static_cast<std::size_t>(one.property)]);
    object.charged.add(growth(values, object));
    // From here on nothing can fail, so that the object gets all of it or nothing.
    for (NewValue& one : values) {
        PropertyRecord& property = object.properties[static_cast<std::size_t>(one.property)];
        if (property.text >= 0) object.ownText(property).swap(one.slots.text);
        property.integer = one.slots.integer;
        property.real = one.slots.real;
        property.boolean = one.slots.boolean;
        changed.push_back(one.property);
    }
    for (NewGroup& one : groups) {
        GroupRecord* group = object.findGroup(one.name);
        // A group that never had an element keeps whatever a script set as its current one.
        if (group == nullptr || (!group->hasElements && one.elements.empty())) continue;
        group->hasElements = group->hasElements || !one.elements.empty();
        group->elements.swap(one.elements);
        group->current = one.current;
    }
    return changed;
}

}  // namespace korvant
