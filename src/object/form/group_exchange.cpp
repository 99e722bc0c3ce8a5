// Elements on their way between lists and rows.
#include <algorithm>

#include "object/form/group_desk.h"

namespace korvant {

void GroupDesk::setContent(int number, const GroupContent& content) {
    EditGroup& group = groups_[static_cast<std::size_t>(number)];
    if (group.content == content) return;
    if (journal_ != nullptr) journal_->push_back({number, group.content, content});
    group.content = content;
}

void GroupDesk::setGroupDlg(int number, std::int32_t element) {
    const EditGroup& shown = group(number);
    setContent(number, {shown.content.list, element});
    const SharedElement source = (*shown.content.list)[static_cast<std::size_t>(element)].now;
    for (std::size_t member = 0; member < shown.members.size(); ++member)
        values_.setSlots(shown.members[member], memberSlots(shown, *source, member));
    for (std::size_t i = 0; i < shown.inner.size(); ++i) {
        setContent(shown.inner[i], innerContent(shown, *source, i));
        showCurrent(shown.inner[i]);
    }
}

void GroupDesk::replaceCurrent(int number, const ElementPlace& place) {
    const GroupContent& content = group(number).content;
    auto list = std::make_shared<GroupContent::List>(*content.list);
    (*list)[static_cast<std::size_t>(content.current)] = place;
    setContent(number, {std::move(list), content.current});
}

void GroupDesk::getGroupDlg(int number) {
    const EditGroup& shown = group(number);
    if (!shown.content.hasCurrent()) return;
    ElementPlace place = (*shown.content.list)[static_cast<std::size_t>(shown.content.current)];
    EditElement taken{place.now->base, {}, {}};
    bool differs = false;
    for (std::size_t i = 0; i < shown.inner.size(); ++i) {
        getGroupDlg(shown.inner[i]);
        taken.inner.push_back(group(shown.inner[i]).content);
        differs |= !sameContent(taken.inner.back(), innerContent(shown, *place.now, i));
    }
    for (std::size_t member = 0; member < shown.members.size(); ++member) {
        taken.values.push_back(values_.slots(shown.members[member]));
        differs |= !sameSlots(taken.values.back(), memberSlots(shown, *place.now, member));
    }
    if (!differs) return;
    place.now = std::make_shared<const EditElement>(std::move(taken));
    replaceCurrent(number, place);
}

/// Lists made twice from one object hold different elements over the same objects.
bool GroupDesk::sameContent(const GroupContent& a, const GroupContent& b) const {
    if (a.list == b.list || a.current != b.current || a.size() != b.size())
        return a.list == b.list && a.current == b.current;
    const auto same = [](const ElementPlace& x, const ElementPlace& y) {
        const bool plain = x.now->values.empty() && x.now->inner.empty() && y.now->values.empty() &&
                           y.now->inner.empty();
        return x.now == y.now || (plain && x.now->base == y.now->base);
    };
    return std::equal(a.list->begin(), a.list->end(), b.list->begin(), same);
}

void GroupDesk::choose(int number, std::int32_t element) {
    getGroupDlg(number);
    if (element >= 0 && element < group(number).content.size())
        setGroupDlg(number, element);
    else
        setContent(number, {group(number).content.list, -1});
}

void GroupDesk::insert(int number, std::int32_t at, const ElementPlace& element) {
    getGroupDlg(number);
    auto list = std::make_shared<GroupContent::List>(*group(number).content.list);
    list->insert(list->begin() + at, element);
    setContent(number, {std::move(list), at});
    setGroupDlg(number, at);
}

void GroupDesk::remove(int number, std::int32_t element) {
    auto list = std::make_shared<GroupContent::List>(*group(number).content.list);
    list->erase(list->begin() + element);
    const auto next = std::min(element, static_cast<std::int32_t>(list->size()) - 1);
    setContent(number, {std::move(list), next});
    if (next >= 0) setGroupDlg(number, next);
}

void GroupDesk::reorder(int number, const std::vector<std::int32_t>& order) {
    getGroupDlg(number);
    const GroupContent content = group(number).content;
    auto list = std::make_shared<GroupContent::List>();
    list->reserve(order.size());
    for (const std::int32_t from : order)
        list->push_back((*content.list)[static_cast<std::size_t>(from)]);
    const auto moved = std::find(order.begin(), order.end(), content.current);
    const auto current =
        moved == order.end() ? content.current : static_cast<std::int32_t>(moved - order.begin());
    setContent(number, {std::move(list), current});
}

ElementPlace GroupDesk::fromLayout(int number) const {
    auto element = std::make_shared<const EditElement>(EditElement{group(number).layout, {}, {}});
    return {element, element, false};
}

void GroupDesk::markShown(int number) {
    const EditGroup& shown = group(number);
    for (const int inner : shown.inner) markShown(inner);
    if (!shown.content.hasCurrent()) return;
    const auto at = static_cast<std::size_t>(shown.content.current);
    if ((*shown.content.list)[at].shown) return;
    getGroupDlg(number);
    ElementPlace place = (*shown.content.list)[at];
    place.opening = place.now;
    place.shown = true;
    replaceCurrent(number, place);
}

SharedModel GroupDesk::toModel(int number, const EditElement& element) const {
    if (element.values.empty() && element.inner.empty()) return element.base;
    const EditGroup& owner = group(number);
    auto model = std::make_shared<ObjectModel>(*element.base);
    for (std::size_t member = 0; member < owner.members.size(); ++member) {
        const ValueSlots& value = element.values[member];
        std::int32_t index = indexIn(owner, member, *model);
        if (index == ObjectModel::kUnknown) {
            if (sameSlots(value, memberSlots(owner, EditElement{element.base, {}, {}}, member)))
                continue;
            model->append(*owner.layout);
            index = indexIn(owner, member, *model);
        }
        PropertyRecord& property = model->properties[static_cast<std::size_t>(index)];
        model->setText(property, value.text);
        property.integer = value.integer;
        property.real = value.real;
        property.boolean = value.boolean;
    }
    for (std::size_t i = 0; i < owner.inner.size() && i < element.inner.size(); ++i)
        storeInner(*model, owner.inner[i], element.inner[i]);
    return model;
}

/// The elements of a group of an element.
void GroupDesk::storeInner(ObjectModel& model, int number, const GroupContent& content) const {
    GroupRecord* record = model.findGroup(group(number).name);
    if (record == nullptr) return;
    std::vector<SharedModel> elements;
    for (const ElementPlace& place : *content.list) elements.push_back(toModel(number, *place.now));
    record->hasElements = record->hasElements || !elements.empty();
    record->elements = std::move(elements);
    record->current = content.current;
}

}  // namespace korvant
