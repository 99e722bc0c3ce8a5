#include "object/form/edit_state.h"

#include <algorithm>

namespace korvant {

EditState::EditState(const ObjectModel& object)
    : core(object), history(core), marks(core), search(core) {
    marks.refresh();
    takeChanges();
}

void EditState::transact(EditPlace place, std::int32_t edited, bool browse,
                         const std::function<void()>& change) {
    marks.refresh(history.transact(place, edited, browse, change));
}

void EditState::changeRow(std::int32_t row, const std::function<void()>& change) {
    core.lastEdited = row;
    transact({core.layout.pageOfRow[EditCore::at(row)], row}, row, false, change);
}

/// The members of a radio group go back together, or two of them could be set.
void EditState::reset(std::int32_t row) {
    changeRow(row, [&] {
        for (const std::int32_t member : core.radioMembers(row)) core.resetSlot(member);
    });
}

void EditState::afterHistory() {
    marks.refresh();
    core.lastEdited = RuleBook::kNoRow;
}

EditPlace EditState::undo() {
    if (!history.canUndo()) return {};
    const EditPlace place = history.undo();
    afterHistory();
    return place;
}

EditPlace EditState::redo() {
    const EditPlace place = history.redo();
    afterHistory();
    return place;
}

EditChanges EditState::takeChanges() {
    EditChanges changes;
    std::sort(core.dirtyRows.begin(), core.dirtyRows.end());
    core.dirtyRows.erase(std::unique(core.dirtyRows.begin(), core.dirtyRows.end()),
                         core.dirtyRows.end());
    changes.rows.swap(core.dirtyRows);
    changes.pages = marks.takePages();
    changes.filter = search.takeChanged();
    changes.history = history.takeChanged();
    return changes;
}

}  // namespace korvant
