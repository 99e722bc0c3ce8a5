// Which groups there are, and what their elements hold.
#include "object/form/group_desk.h"

#include <algorithm>

namespace korvant {

GroupDesk::GroupDesk(const ObjectModel& object, const FormLayout& layout, WorkingCopy& values)
    : layout_(layout),
      values_(values),
      groupOfPage_(layout.pages.size(), kNoGroup),
      groupOfRow_(layout.rows.size(), kNoGroup) {
    for (std::size_t page = 0; page < layout.pages.size(); ++page)
        if (layout.pages[page].isGroup)
            makeGroup(object, *object.findGroup(layout.groupOfPage[page]), static_cast<int>(page));
    findOuterGroups(object);
    assignRows();
    for (int group = 0; group < count(); ++group)
        if (groups_[static_cast<std::size_t>(group)].outer == kNoGroup) showCurrent(group);
}

void GroupDesk::makeGroup(const ObjectModel& object, const GroupRecord& record, int page) {
    EditGroup made;
    made.name = record.name;
    made.page = page;
    made.flags = record.flags;
    made.layout = record.layout;
    const std::int32_t end = std::min(record.end.properties, object.count());
    for (std::int32_t row = record.start.properties; row < end; ++row) {
        const std::string& name = object.properties[static_cast<std::size_t>(row)].name;
        const std::int32_t index = record.layout->find(name);
        if (index == ObjectModel::kUnknown) continue;
        made.members.push_back(row);
        made.layoutIndexes.push_back(index);
    }
    made.content = contentOf(&record);
    made.opening = made.content;
    groupOfPage_[static_cast<std::size_t>(page)] = count();
    groups_.push_back(std::move(made));
}

namespace {

/// Of two groups with the same rows the one that was declared first is around the other.
bool isInside(const GroupRecord& inner, const GroupRecord& outer) {
    const GroupRecord* declared = outer.layout->findGroup(inner.name);
    if (&inner == &outer || declared == nullptr || !declared->declared) return false;
    const std::int32_t starts = inner.start.properties - outer.start.properties;
    const std::int32_t ends = outer.end.properties - inner.end.properties;
    return starts >= 0 && ends >= 0 && (starts + ends > 0 || &outer < &inner);
}

}  // namespace

/// A group is inside the smallest other one whose layout declares it and whose rows hold its own.
void GroupDesk::findOuterGroups(const ObjectModel& object) {
    for (int one = 0; one < count(); ++one) {
        EditGroup& inner = groups_[static_cast<std::size_t>(one)];
        const GroupRecord& record = *object.findGroup(inner.name);
        for (int other = 0; other < count(); ++other) {
            if (!isInside(record, *object.findGroup(group(other).name))) continue;
            const bool smaller = inner.outer == kNoGroup ||
                                 group(other).members.size() < group(inner.outer).members.size();
            if (smaller) inner.outer = other;
        }
    }
    for (int one = 0; one < count(); ++one)
        if (group(one).outer != kNoGroup)
            groups_[static_cast<std::size_t>(group(one).outer)].inner.push_back(one);
}

void GroupDesk::assignRows() {
    for (int one = 0; one < count(); ++one)
        for (const std::int32_t row : group(one).members) {
            int& owner = groupOfRow_[static_cast<std::size_t>(row)];
            if (owner == kNoGroup || group(one).members.size() < group(owner).members.size())
                owner = one;
        }
}

void GroupDesk::showCurrent(int group) {
    const GroupContent& content = groups_[static_cast<std::size_t>(group)].content;
    if (content.hasCurrent()) setGroupDlg(group, content.current);
}

GroupContent GroupDesk::contentOf(const GroupRecord* record) const {
    auto list = std::make_shared<GroupContent::List>();
    if (record == nullptr || !record->hasElements) return {std::move(list), -1};
    list->reserve(record->elements.size());
    for (const SharedModel& model : record->elements) {
        auto element = std::make_shared<const EditElement>(EditElement{model, {}, {}});
        list->push_back({element, element, false});
    }
    return {std::move(list), record->current};
}

/// Where the member is in an object that may be any object; most are built from the layout.
std::int32_t GroupDesk::indexIn(const EditGroup& group, std::size_t member,
                                const ObjectModel& base) const {
    const std::string& name = layout_.rows[static_cast<std::size_t>(group.members[member])].name;
    const std::int32_t likely = group.layoutIndexes[member];
    if (base.holds(likely) && base.properties[static_cast<std::size_t>(likely)].name == name)
        return likely;
    return base.find(name);
}

ValueSlots GroupDesk::memberSlots(const EditGroup& group, const EditElement& element,
                                  std::size_t member) const {
    if (!element.values.empty()) return element.values[member];
    const std::int32_t index = indexIn(group, member, *element.base);
    if (index != ObjectModel::kUnknown)
        return slotsOf(*element.base, element.base->properties[static_cast<std::size_t>(index)]);
    // An element that lacks the property shows the layout's value.
    const auto likely = static_cast<std::size_t>(group.layoutIndexes[member]);
    return slotsOf(*group.layout, group.layout->properties[likely]);
}

GroupContent GroupDesk::innerContent(const EditGroup& group, const EditElement& element,
                                     std::size_t inner) const {
    if (!element.inner.empty()) return element.inner[inner];
    const std::string& name = groups_[static_cast<std::size_t>(group.inner[inner])].name;
    return contentOf(element.base->findGroup(name));
}

bool GroupDesk::hasElement(int number) const {
    for (int at = number; at != kNoGroup; at = group(at).outer)
        if (!group(at).content.hasCurrent()) return false;
    return true;
}

ValueSlots GroupDesk::openingSlots(std::int32_t row) const {
    const EditGroup& owner = group(groupOfRow(row));
    const auto member = std::lower_bound(owner.members.begin(), owner.members.end(), row);
    const auto& place = (*owner.content.list)[static_cast<std::size_t>(owner.content.current)];
    return memberSlots(owner, *place.opening,
                       static_cast<std::size_t>(member - owner.members.begin()));
}

std::string GroupDesk::firstText(int number, std::int32_t element) const {
    const EditGroup& owner = group(number);
    for (std::size_t member = 0; member < owner.members.size(); ++member) {
        const std::int32_t row = owner.members[member];
        const char letter = layout_.rows[static_cast<std::size_t>(row)].letter;
        if (property_type::ofLetter(letter) != property_type::kText) continue;
        if (element == owner.content.current) return values_.text(row);
        const auto& place = (*owner.content.list)[static_cast<std::size_t>(element)];
        return memberSlots(owner, *place.now, member).text;
    }
    return {};
}

std::string GroupDesk::caption(int group, std::int32_t element) const {
    const std::string number = std::to_string(std::int64_t{element} + 1);
    const std::string text = firstText(group, element);
    return text.empty() ? number : number + ": " + text;
}

bool GroupDesk::changed(int number) const {
    const EditGroup& one = group(number);
    if (one.outer != kNoGroup) return changed(one.outer);
    if (one.content.current != one.opening.current || one.content.size() != one.opening.size())
        return true;
    for (std::size_t i = 0; i < one.content.list->size(); ++i)
        if ((*one.content.list)[i].now != (*one.opening.list)[i].now) return true;
    return false;
}

}  // namespace korvant
