// Merging one object's content into another.
#pragma once

#include "object/model/object_model.h"

namespace korvant {

/// Remembers the size of everything that a merge adds to, and takes the additions back unless
/// keep() was called: a merge that runs out of memory leaves the object as it was.
class ModelRollback {
  public:
    explicit ModelRollback(ObjectModel& model);
    ~ModelRollback();
    ModelRollback(const ModelRollback&) = delete;
    ModelRollback& operator=(const ModelRollback&) = delete;
    void keep() noexcept { kept_ = true; }

  private:
    void takeBack() noexcept;

    ObjectModel& model_;
    bool kept_ = false;
    std::size_t properties_, labelBytes_, texts_, optionLists_, rules_;
    std::size_t classes_, categories_, dictionaries_, charged_;
    std::vector<GroupRecord> groups_;
    std::string currentGroup_;
    ClassRecord lastClass_;
    int depth_;
};

/// Re-creates the items of one object in another, in display order: classes, categories, groups,
/// properties, each with its rules. A property whose name is taken is refused and its rules are
/// dropped.
class ModelMerge {
  public:
    ModelMerge(ObjectModel& target, const ObjectModel& other);
    void run();

  private:
    bool wasDeclared(const std::string& group) const;
    bool isHandled(const GroupRecord& group) const;
    void addStructureAt(std::int32_t index);
    void addClassesAndCategories(std::int32_t index, const ModelPosition& limit);
    void addCategory(const std::string& name);
    void addGroup(const GroupRecord& group);
    bool addProperty(std::int32_t index);
    void takeOver(std::int32_t index);
    const PropertyRecord& theirs(std::int32_t index) const;
    static PropertyRecord withoutParts(const PropertyRecord& property);
    void addRules(const PropertyRecord& property);
    void addOptions(const PropertyRecord& from, PropertyRecord& to);
    void addElements();
    void addTranslations();

    ObjectModel& target_;
    const ObjectModel& other_;
    std::int32_t countBefore_;
    std::size_t nextClass_ = 0;
    std::size_t nextCategory_ = 0;
    std::size_t nextGroup_ = 0;
    std::int32_t broughtTo_ = 0;  ///< properties below came, or were refused, with their group
    std::vector<std::int32_t> notAdded_;        ///< properties of `other`
    const GroupRecord* handled_ = nullptr;      ///< the group that was added or refused last
    std::vector<const GroupRecord*> declared_;  ///< groups of `other`, outer before inner
    std::vector<std::string> declaredBefore_;   ///< names of groups that the target had
};

}  // namespace korvant
