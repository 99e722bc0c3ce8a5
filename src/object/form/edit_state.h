// The inside of an edit session.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "object/form/edit_session.h"
#include "object/form/form_layout.h"
#include "object/form/form_texts.h"
#include "object/form/group_desk.h"
#include "object/form/row_filter.h"
#include "object/form/rule_book.h"
#include "object/form/working_copy.h"

namespace korvant {

/// One step of undo: every change of values and groups, computed ones included.
struct EditStep {
    ValueJournal values;
    GroupJournal groups;
    bool browse = false;  ///< only another element was looked at; undone with the step before it
    EditPlace place;
};

/// Which elements are current in the groups that have rows on the way to a row.
struct ElementPath {
    struct Stop {
        int group = 0;
        std::int32_t element = 0;
    };
    std::vector<Stop> stops;  ///< outer groups first
};

/// How bad the elements of groups are, seen from the elements that are current.
struct ElementMarks {
    std::vector<std::vector<Severity>> elements;  ///< by group and element
    std::vector<Severity> pages;                  ///< by page: the worst of all elements there
};

/// Everything behind an EditSession.
struct EditState {
    explicit EditState(const ObjectModel& object);

    FormLayout layout;
    WorkingCopy values;
    GroupDesk desk;
    RuleBook rules;
    std::vector<ValueSlots> opening;  ///< by row, after the computations of the opening
    std::vector<EditStep> done;
    std::vector<EditStep> undone;
    std::int32_t lastEdited = RuleBook::kNoRow;
    RowFilter filter;
    std::vector<bool> visible;
    std::vector<std::string> searchTexts;  ///< by row, folded; made for the first filter

    ElementMarks marks;

    std::vector<std::int32_t> dirtyRows;
    std::vector<Severity> shownSeverity;  ///< by page, as last told
    std::vector<bool> dirtyBars;          ///< by page
    bool filterChanged = false;
    bool historyChanged = false;

    static std::size_t at(std::int32_t row) { return static_cast<std::size_t>(row); }
    bool enabled(std::int32_t row) const { return rules.enabled(row); }
    bool locked(std::int32_t row) const;
    bool editable(std::int32_t row) const { return enabled(row) && !locked(row); }
    bool rowChanged(std::int32_t row) const;
    ValueSlots openingOf(std::int32_t row) const;
    Severity severity(std::int32_t row) const;
    Severity pageSeverity(int page) const;
    std::string shownText(std::int32_t row) const;
    /// The value with all its digits.
    std::string fullText(std::int32_t row) const;
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

    /// Runs `change` and the rules after it as one step; false when nothing changed.
    bool transact(EditPlace place, std::int32_t edited, bool browse,
                  const std::function<void()>& change);
    void revert(const EditStep& step);
    void repeat(const EditStep& step);
    /// Looks at every element of every group; after values or groups changed.
    void refreshMarks();
    /// The same after a step, which most often changes nothing but the element that is shown.
    void refreshMarks(const EditStep& step);
    bool staysInElement(const EditStep& step) const;
    /// After values or groups changed: rows and pages to draw again.
    void noteChanges(const GroupJournal& groups);
    void noteBar(int group);
    void noteGroup(int group);

    EditCommit store(std::int32_t row, const SlotValue& value);
    EditCommit storeBoolean(std::int32_t row, bool value);
    EditCommit storeTyped(std::int32_t row, const std::string& typed);
    /// The row and the other radio booleans of its group; the row alone when it is none.
    std::vector<std::int32_t> radioMembers(std::int32_t row) const;

    /// The group of a page whose bar allows `what`, or kNoGroup.
    int groupFor(int page, bool EditGroupBar::*what) const;
    EditGroupBar groupBar(int page, bool captions) const;
    bool changeGroup(int group, bool browse, const std::function<void()>& change);
    void choosePath(const ElementPath& path);

    static constexpr std::size_t kNoStep = ~std::size_t{0};
    std::size_t firstToUndo() const;
    EditPlace undo();
    EditPlace redo();
    void reset(std::int32_t row);
    void resetSlot(std::int32_t row);
    void setFilter(const std::string& words);
    void makeSearchTexts();
    EditChanges takeChanges();
    bool changed() const;
};

/// Looks at the form as it is, and then at every element of every group, computed. Afterwards
/// the session is as it was.
class FormWalk {
  public:
    /// Told which rows to look at, with the elements that they show.
    using Visit = std::function<void(const std::vector<std::int32_t>& rows, const ElementPath&)>;

    explicit FormWalk(EditState& session) : session_(session) {}
    /// `keepComputed`: the elements keep what was computed for them.
    void run(const Visit& visit, bool keepComputed);

  private:
    void visitForm(const Visit& visit);
    void visitGroup(int group, const Visit& visit);
    std::vector<std::int32_t> ownRows(int group) const;

    EditState& session_;
    ElementPath path_;
};

/// Copies an edited session back into its object, all or nothing. Returns the properties whose
/// value changed, ascending. Throws std::bad_alloc.
std::vector<std::int32_t> copyBack(EditState& session, ObjectModel& object);

}  // namespace korvant
