// The inside of an edit session.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "object/form/edit_core.h"
#include "object/form/edit_history.h"
#include "object/form/edit_marks.h"
#include "object/form/row_search.h"

namespace korvant {

/// Everything behind an EditSession: what users do, put together from its parts.
struct EditState {
    explicit EditState(const ObjectModel& object);

    EditCore core;
    EditHistory history;
    EditMarks marks;
    RowSearch search;

    /// Runs `change` and the rules after it as one step.
    void transact(EditPlace place, std::int32_t edited, bool browse,
                  const std::function<void()>& change);
    /// The same for one row.
    void changeRow(std::int32_t row, const std::function<void()>& change);

    EditCommit store(std::int32_t row, const SlotValue& value);
    EditCommit storeBoolean(std::int32_t row, bool value);
    EditCommit storeTyped(std::int32_t row, const std::string& typed);
    void reset(std::int32_t row);

    EditPlace undo();
    EditPlace redo();
    void afterHistory();

    /// The group of a page whose bar allows `what`, or kNoGroup.
    int groupFor(int page, bool EditGroupBar::*what) const;
    EditGroupBar groupBar(int page, bool captions) const;
    bool changeGroup(int group, bool browse, const std::function<void()>& change);
    void choosePath(const ElementPath& path);

    EditChanges takeChanges();
};

/// Copies an edited working copy back into its object, all or nothing. Returns the properties whose
/// value changed, ascending. Throws std::bad_alloc.
std::vector<std::int32_t> copyBack(EditCore& core, ObjectModel& object);

}  // namespace korvant
