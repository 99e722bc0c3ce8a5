// What users do with the elements of a group.
#include <algorithm>

#include "object/form/edit_state.h"

namespace korvant {

EditGroupBar EditState::groupBar(int page, bool captions) const {
    EditGroupBar bar;
    const int number = core.desk.groupOfPage(page);
    if (number == GroupDesk::kNoGroup) return bar;
    const EditGroup& group = core.desk.group(number);
    const bool current = group.content.hasCurrent();
    // The elements of an inner group belong to an element of the outer one.
    const bool owned = group.outer == GroupDesk::kNoGroup || core.desk.hasElement(group.outer);
    const bool open = core.layout.pages[static_cast<std::size_t>(page)].editable && owned;
    bar.current = current ? group.content.current : -1;
    bar.showAdd = group.flags.add;
    bar.showCopy = group.flags.copy;
    bar.showRemove = group.flags.remove;
    bar.showOrder = group.flags.order;
    bar.canAdd = open && bar.showAdd;
    bar.canCopy = open && bar.showCopy && current;
    bar.canRemove = open && bar.showRemove && current;
    bar.canOrder = open && bar.showOrder && group.content.size() > 1;
    for (std::int32_t i = 0; captions && i < group.content.size(); ++i) {
        bar.elements.push_back(core.desk.caption(number, i));
        bar.severities.push_back(marks.ofElement(number, i));
    }
    return bar;
}

int EditState::groupFor(int page, bool EditGroupBar::*what) const {
    if (!core.layout.holdsPage(page) || !(groupBar(page, false).*what)) return GroupDesk::kNoGroup;
    return core.desk.groupOfPage(page);
}

bool EditState::changeGroup(int group, bool browse, const std::function<void()>& change) {
    const std::vector<std::int32_t>& members = core.desk.group(group).members;
    const bool member = std::binary_search(members.begin(), members.end(), core.lastEdited);
    if (!browse || member) core.lastEdited = RuleBook::kNoRow;
    const EditPlace place{core.desk.group(group).page, -1};
    transact(place, core.lastEdited, browse, change);
    core.noteGroup(group);
    for (const int inner : core.desk.group(group).inner) core.noteGroup(inner);
    return true;
}

void EditState::choosePath(const ElementPath& path) {
    for (const ElementPath::Stop& stop : path.stops) {
        if (core.desk.group(stop.group).content.current == stop.element) continue;
        changeGroup(stop.group, true, [&] { core.desk.choose(stop.group, stop.element); });
    }
}

bool EditSession::chooseElement(int page, std::int32_t element) {
    EditState& state = *state_;
    if (!state.core.layout.holdsPage(page)) return false;
    const int group = state.core.desk.groupOfPage(page);
    if (group == GroupDesk::kNoGroup) return false;
    const GroupContent& content = state.core.desk.group(group).content;
    if (element < -1 || element >= content.size()) return false;
    if (element == content.current) return true;
    return state.changeGroup(group, true, [&] { state.core.desk.choose(group, element); });
}

bool EditSession::addElement(int page) {
    EditState& state = *state_;
    const int group = state.groupFor(page, &EditGroupBar::canAdd);
    if (group == GroupDesk::kNoGroup) return false;
    const GroupContent& content = state.core.desk.group(group).content;
    const std::int32_t at = content.hasCurrent() ? content.current + 1 : content.size();
    return state.changeGroup(group, false, [&] {
        state.core.desk.insert(group, at, state.core.desk.fromLayout(group));
    });
}

bool EditSession::copyElement(int page) {
    EditState& state = *state_;
    const int group = state.groupFor(page, &EditGroupBar::canCopy);
    if (group == GroupDesk::kNoGroup) return false;
    return state.changeGroup(group, false, [&] {
        state.core.desk.getGroupDlg(group);
        const GroupContent content = state.core.desk.group(group).content;
        const SharedElement source = (*content.list)[static_cast<std::size_t>(content.current)].now;
        state.core.desk.insert(group, content.current + 1, {source, source, false});
    });
}

bool EditSession::removeElement(int page) {
    EditState& state = *state_;
    const int group = state.groupFor(page, &EditGroupBar::canRemove);
    if (group == GroupDesk::kNoGroup) return false;
    const std::int32_t current = state.core.desk.group(group).content.current;
    return state.changeGroup(group, false, [&] { state.core.desk.remove(group, current); });
}

bool EditSession::orderElements(int page, const std::vector<std::int32_t>& order) {
    EditState& state = *state_;
    const int group = state.groupFor(page, &EditGroupBar::canOrder);
    if (group == GroupDesk::kNoGroup) return false;
    std::vector<std::int32_t> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    const auto size = static_cast<std::size_t>(state.core.desk.group(group).content.size());
    if (sorted.size() != size) return false;
    for (std::size_t i = 0; i < size; ++i)
        if (sorted[i] != static_cast<std::int32_t>(i)) return false;
    if (order == sorted) return true;
    return state.changeGroup(group, false, [&] { state.core.desk.reorder(group, order); });
}

}  // namespace korvant
