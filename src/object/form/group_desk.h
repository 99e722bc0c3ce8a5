// The groups of an object while it is edited.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "object/form/form_layout.h"
#include "object/form/working_copy.h"
#include "object/model/object_model.h"

namespace korvant {

struct EditElement;
using SharedElement = std::shared_ptr<const EditElement>;

/// One place in a group's list.
struct ElementPlace {
    SharedElement now;
    SharedElement opening;  ///< what "changed" and reset compare with
    bool shown = false;     ///< the user has seen it, computations done
};

/// The list and the current element of one group. Lists are shared and never change.
struct GroupContent {
    using List = std::vector<ElementPlace>;
    std::shared_ptr<const List> list;
    std::int32_t current = -1;

    std::int32_t size() const { return static_cast<std::int32_t>(list->size()); }
    bool hasCurrent() const { return current >= 0 && current < size(); }
    bool operator==(const GroupContent&) const = default;
};

/// An element: the object that it came from, and what differs from it.
struct EditElement {
    SharedModel base;
    std::vector<ValueSlots> values;   ///< by member of its group; empty: those of `base`
    std::vector<GroupContent> inner;  ///< by inner group of its group; empty: those of `base`
};

/// One group that has a page. Its members are the rows that hold the current element.
struct EditGroup {
    std::string name;
    int page = -1;
    GroupFlags flags;
    SharedModel layout;
    std::vector<std::int32_t> members;        ///< rows, ascending
    std::vector<std::int32_t> layoutIndexes;  ///< of the members in the layout
    int outer = -1;                           ///< the group that this one is inside of
    std::vector<int> inner;
    GroupContent content;
    GroupContent opening;
};

struct GroupChange {
    int group = 0;
    GroupContent before;
    GroupContent after;
};
using GroupJournal = std::vector<GroupChange>;

/// Exchanges elements between their lists and the rows. For the current element the rows are what
/// counts; its place in the list is brought up to date when the rows are needed for another.
class GroupDesk {
  public:
    static constexpr int kNoGroup = -1;

    GroupDesk(const ObjectModel& object, const FormLayout& layout, WorkingCopy& values);

    int count() const noexcept { return static_cast<int>(groups_.size()); }
    const EditGroup& group(int group) const { return groups_[static_cast<std::size_t>(group)]; }
    int groupOfPage(int page) const { return groupOfPage_[static_cast<std::size_t>(page)]; }
    /// The innermost group that the row is a member of, or kNoGroup.
    int groupOfRow(std::int32_t row) const { return groupOfRow_[static_cast<std::size_t>(row)]; }
    /// The group has a current element, and so have the groups around it.
    bool hasElement(int group) const;
    /// False for the rows of a group that has no current element.
    bool active(std::int32_t row) const { return hasElement(groupOfRow(row)); }
    /// The row's values at opening, for a member of the element that is current.
    ValueSlots openingSlots(std::int32_t row) const;
    /// "2: " and the first text of the element, or "2".
    std::string caption(int group, std::int32_t element) const;
    bool changed(int group) const;

    /// From the list to the rows.
    void setGroupDlg(int group, std::int32_t element);
    /// From the rows to the list, for the current element.
    void getGroupDlg(int group);

    // What users do with elements; each begins with getGroupDlg().
    void choose(int group, std::int32_t element);
    void insert(int group, std::int32_t at, const ElementPlace& element);
    void remove(int group, std::int32_t element);
    void reorder(int group, const std::vector<std::int32_t>& order);
    ElementPlace fromLayout(int group) const;

    /// The current element is what it was at opening from now on, unless it was seen before.
    void markShown(int group);
    /// For undo: no rows are exchanged.
    void setContent(int group, const GroupContent& content);
    void setJournal(GroupJournal* journal) noexcept { journal_ = journal; }

    /// The element as an object of its own.
    SharedModel toModel(int group, const EditElement& element) const;

  private:
    void makeGroup(const ObjectModel& object, const GroupRecord& record, int page);
    void findOuterGroups(const ObjectModel& object);
    void assignRows();
    void showCurrent(int group);
    GroupContent contentOf(const GroupRecord* record) const;
    std::int32_t indexIn(const EditGroup& group, std::size_t member, const ObjectModel& base) const;
    ValueSlots memberSlots(const EditGroup& group, const EditElement& element,
                           std::size_t member) const;
    GroupContent innerContent(const EditGroup& group, const EditElement& element,
                              std::size_t inner) const;
    void replaceCurrent(int group, const ElementPlace& place);
    std::string firstText(int group, std::int32_t element) const;
    bool sameContent(const GroupContent& a, const GroupContent& b) const;
    void storeInner(ObjectModel& model, int group, const GroupContent& content) const;

    const FormLayout& layout_;
    WorkingCopy& values_;
    std::vector<EditGroup> groups_;
    std::vector<int> groupOfPage_;
    std::vector<int> groupOfRow_;
    GroupJournal* journal_ = nullptr;
};

}  // namespace korvant
