// What an edit session works on: the working copy with its layout, groups and rules.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "object/form/edit_session.h"
#include "object/form/form_layout.h"
#include "object/form/form_texts.h"
#include "object/form/group_desk.h"
#include "object/form/rule_book.h"
#include "object/form/working_copy.h"

namespace korvant {

/// One step of undo: every change of values and groups, computed ones included.
struct EditStep {
    ValueJournal values;
    GroupJournal groups;
    bool browse = false;  ///< only another element was looked at; undone with the step before it
    EditPlace place;

    bool empty() const { return values.empty() && groups.empty(); }
};

/// Which elements are current in the groups that have rows on the way to a row.
struct ElementPath {
    struct Stop {
        int group = 0;
        std::int32_t element = 0;
    };
    std::vector<Stop> stops;  ///< outer groups first
};

/// The working copy and everything that the rules say about it, row by row. Rows and pages have to
/// be there.
struct EditCore {
    explicit EditCore(const ObjectModel& object);

    FormLayout layout;
    WorkingCopy values;
    GroupDesk desk;
    RuleBook rules;
    std::vector<ValueSlots> opening;  ///< by row, after the computations of the opening
    std::int32_t lastEdited = RuleBook::kNoRow;
    std::vector<std::int32_t> dirtyRows;  ///< to draw again
    std::vector<bool> dirtyBars;          ///< by page

    static std::size_t at(std::int32_t number) { return static_cast<std::size_t>(number); }
    bool enabled(std::int32_t row) const { return rules.enabled(row); }
    bool locked(std::int32_t row) const;
    bool editable(std::int32_t row) const { return enabled(row) && !locked(row); }
    bool rowChanged(std::int32_t row) const;
    /// True when a value or a group differs from what it was at opening.
    bool changed() const;
    ValueSlots openingOf(std::int32_t row) const;
    Severity severity(std::int32_t row) const;
    std::string shownText(std::int32_t row) const;
    /// The value with all its digits.
    std::string fullText(std::int32_t row) const;
    /// The row and the other radio booleans of its group; the row alone when it is none.
    std::vector<std::int32_t> radioMembers(std::int32_t row) const;

    /// Why nothing can be entered in a row; FormText::none when something can.
    struct Obstacle {
        FormText text = FormText::none;
        std::string subject;     ///< what the text speaks of, with a blank behind it
        std::string conditions;  ///< that do not hold, each with a blank before it
    };
    Obstacle obstacle(std::int32_t row) const;
    Obstacle missingElement(int group) const;
    EditCommit refusal(std::int32_t row) const;
    std::string description(std::int32_t row);

    void revert(const EditStep& step);
    void repeat(const EditStep& step);
    void resetSlot(std::int32_t row);

    /// After values or groups changed: rows and pages to draw again.
    void noteChanges(const GroupJournal& groups);
    void noteBar(int group);
    void noteGroup(int group);
};

}  // namespace korvant
