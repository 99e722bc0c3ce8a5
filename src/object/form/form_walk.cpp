#include "object/form/form_walk.h"

namespace korvant {

void FormWalk::run(const Visit& visit, bool keepComputed) {
    EditStep scratch;
    std::vector<GroupContent> computed;
    core_.values.setJournal(&scratch.values);
    core_.desk.setJournal(&scratch.groups);
    visitForm(visit);
    for (int group = 0; group < core_.desk.count(); ++group) {
        if (core_.desk.group(group).outer != GroupDesk::kNoGroup) continue;
        visitGroup(group, visit);
        computed.push_back(core_.desk.group(group).content);
    }
    core_.values.setJournal(nullptr);
    core_.desk.setJournal(nullptr);
    core_.revert(scratch);
    if (!keepComputed) return;
    auto next = computed.begin();
    for (int group = 0; group < core_.desk.count(); ++group)
        if (core_.desk.group(group).outer == GroupDesk::kNoGroup)
            core_.desk.setContent(group, *next++);
}

/// Rows that belong to no group.
void FormWalk::visitForm(const Visit& visit) {
    std::vector<std::int32_t> rows;
    for (std::int32_t row = 0; row < core_.layout.count(); ++row)
        if (core_.desk.groupOfRow(row) == GroupDesk::kNoGroup) rows.push_back(row);
    visit(rows, path_);
}

std::vector<std::int32_t> FormWalk::ownRows(int group) const {
    std::vector<std::int32_t> rows;
    for (const std::int32_t row : core_.desk.group(group).members)
        if (core_.desk.groupOfRow(row) == group) rows.push_back(row);
    return rows;
}

/// A group without elements is not looked at.
void FormWalk::visitGroup(int group, const Visit& visit) {
    GroupDesk& desk = core_.desk;
    const std::vector<std::int32_t> rows = ownRows(group);
    const std::int32_t current = desk.group(group).content.current;
    for (std::int32_t i = 0; i < desk.group(group).content.size(); ++i) {
        desk.choose(group, i);
        core_.rules.pass(i == current ? core_.lastEdited : RuleBook::kNoRow);
        path_.stops.push_back({group, i});
        visit(rows, path_);
        for (const int inner : desk.group(group).inner) visitGroup(inner, visit);
        path_.stops.pop_back();
    }
    desk.getGroupDlg(group);
    desk.setContent(group, {desk.group(group).content.list, current});
    if (desk.group(group).content.hasCurrent()) desk.setGroupDlg(group, current);
}

}  // namespace korvant
