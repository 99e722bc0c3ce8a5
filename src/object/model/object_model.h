// Everything that a property object holds, as values.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "object/model/charged_bytes.h"
#include "object/model/constraint_list.h"
#include "object/model/name_index.h"
#include "object/model/object_title.h"
#include "object/model/property_labels.h"

class KorStampListener;

namespace korvant {

/// What `getPropertyType` answers.
namespace property_type {
constexpr std::int32_t kInteger = 0, kReal = 1, kBoolean = 2, kText = 3, kNone = -1;
std::int32_t ofLetter(char letter) noexcept;
}  // namespace property_type

/// The unit that makes an integer property a colour.
inline constexpr std::string_view kColourUnit = "color";

/// One property: a name, and a slot for each kind of value. What reading a value by name touches
/// is one line of the processor's cache; texts and labels are kept apart.
struct alignas(64) PropertyRecord {
    std::string name;  ///< the key, never translated
    double real = 0.0;
    std::int32_t integer = 0;
    std::int32_t radioGroup = -1;  ///< of a boolean
    std::int32_t options = -1;     ///< index in ObjectModel::optionLists; -1 none
    std::int32_t rules = -1;       ///< index in ObjectModel::rules; -1 none
    std::int32_t text = -1;        ///< index in ObjectModel::texts; -1 empty
    char letter = '?';
    bool boolean = false;
    bool flag = false;  ///< may be edited
};

struct ClassRecord {
    std::string name;
    std::int32_t first = 0;  ///< properties that stood before the class was added
    std::int32_t last = 0;   ///< index of the last property; `first` while there is none
    bool skip = false;       ///< a group's class, which the class walk passes over
    bool value = true;       ///< its properties may be edited
};

struct CategoryRecord {
    std::string name;
    std::int32_t first = 0;  ///< properties that stood before the category was added
};

/// What scripts attached to one property.
struct PropertyRules {
    ConstraintList errors;
    ConstraintList warnings;
    ConstraintList enables;
    std::optional<std::string> computation;
    std::optional<std::string> hint;
};

struct ObjectModel;
using SharedModel = std::shared_ptr<const ObjectModel>;

/// Four choices of what the user may do with the elements of a group.
struct GroupFlags {
    bool add = false;
    bool copy = false;
    bool remove = false;
    bool order = false;
};

/// Positions in an object: how many there were of each.
struct ModelPosition {
    std::int32_t properties = 0;
    std::size_t classes = 0;
    std::size_t categories = 0;
};

/// A repeated set of properties. Layout and elements are copies that nobody changes any more, so
/// that copies of the object share them.
struct GroupRecord {
    std::string name;
    bool declared = false;  ///< else only elements or a current element were given
    std::size_t order = 0;  ///< declared groups before it; an outer group comes before its inner
    ModelPosition start;    ///< where its layout joined the object, after the group's own class
    ModelPosition end;
    SharedModel layout;
    GroupFlags flags;
    bool hasElements = false;
    std::vector<SharedModel> elements;
    std::int32_t current = 0;  ///< -1 none; any value that a script set
};

/// Where a walk through classes, categories and properties stands.
struct WalkState {
    static constexpr std::int32_t kNoLimit = 999999;
    std::uint32_t classCursor = 0;
    std::uint32_t categoryCursor = 0;
    std::uint32_t propertyCursor = 0;
    std::int32_t classLimit = kNoLimit;
    std::int32_t categoryLimit = kNoLimit;
};

/// Thrown when groups would nest deeper than kDeepestNesting.
struct NestedTooDeep {};

/// The data of one object and the rules of changing it. Each operation either succeeds or throws
/// (std::bad_alloc, NestedTooDeep) and leaves the object as it was.
struct ObjectModel {
    static constexpr int kDeepestNesting = 64;
    static constexpr std::int32_t kHighestLocale = 1000;
    static constexpr std::int32_t kUnknown = -1;

    using Dictionary = std::unordered_map<std::string, std::string>;

    ChargedBytes charged;  ///< first, so that a copy is refused before anything is copied
    std::vector<PropertyRecord> properties;
    PropertyLabels labels;  ///< by property index, translated for display
    std::vector<std::string> texts;
    std::vector<std::vector<std::string>> optionLists;
    std::vector<PropertyRules> rules;
    std::vector<ClassRecord> classes;
    std::vector<CategoryRecord> categories;
    std::vector<GroupRecord> groups;       ///< in the order in which they were first named
    std::vector<Dictionary> dictionaries;  ///< of locale 1, 2, ...
    std::vector<std::string> pendingOptions;
    /// By property index; never shorter than `properties`. Deliberate: clear() keeps it, so that
    /// a property made later at an index answers to the listener that the index had.
    std::vector<KorStampListener*> listeners;
    ObjectTitle title;
    std::string currentGroup;
    WalkState walk;
    std::int32_t reportedCount = 0;  ///< reference count as hosts see it
    int depth = 1;                   ///< 1 + the deepest of layouts and elements

    std::int32_t count() const noexcept { return static_cast<std::int32_t>(properties.size()); }
    ModelPosition position() const noexcept { return {count(), classes.size(), categories.size()}; }
    bool holds(std::int32_t index) const noexcept { return index >= 0 && index < count(); }
    /// Index of the property, or kUnknown.
    std::int32_t find(std::string_view name) const {
        const auto number = names_.find(name, [this](std::uint32_t one) { return nameOf(one); });
        // kNone has that bit as well.
        if ((number & kAlias) != 0) [[unlikely]]
            return number == NameIndex::kNone || properties.empty() ? kUnknown : 0;
        return static_cast<std::int32_t>(number);
    }
    /// Takes the property in behind the others; false when its name is taken.
    bool insert(PropertyRecord&& property, std::string_view label, std::string_view unit = {},
                std::string_view text = {});
    bool addText(std::string_view name, std::string_view label, std::string_view value, bool flag,
                 char letter, std::string_view unit = {});
    bool addInteger(std::string_view name, std::string_view label, std::int32_t value,
                    std::string_view unit, bool flag);
    bool addOptions(std::string_view name, std::string_view label, std::int32_t value, bool flag);
    bool addReal(std::string_view name, std::string_view label, double value, std::string_view unit,
                 bool flag);
    bool addBoolean(std::string_view name, std::string_view label, bool value, bool flag,
                    std::int32_t radioGroup);
    void addOption(std::string_view option);
    void addCategory(std::string_view name);
    void addClass(std::string_view name, bool value);
    std::int32_t findClass(std::string_view name) const;
    const std::string& textOf(const PropertyRecord& property) const noexcept;
    /// Gives the property a text of its own to write to, if it has none.
    std::string& ownText(PropertyRecord& property);
    void setText(PropertyRecord& property, std::string_view value);
    void clear() noexcept;

    // Walking in display order.
    void resetWalk() noexcept { walk = WalkState(); }
    bool nextClass(std::string& name, bool& value);
    bool nextCategory(std::string& name);
    bool nextProperty(std::string& name, std::int32_t& index);

    // Rules. An unknown name changes nothing, but for a hint: see addHint().
    void addError(std::string_view name, std::string_view expression, std::string_view message);
    void addWarning(std::string_view name, std::string_view expression, std::string_view message);
    void addEnable(std::string_view name, std::string_view expression);
    void setComputation(std::string_view name, std::string_view expression);
    /// Deliberate: an unknown name becomes another name of property 0 (of an object that has
    /// one), because scripts look such names up afterwards.
    void addHint(std::string_view name, std::string_view text);
    const PropertyRules& rulesOf(const PropertyRecord& property) const noexcept;

    void addTranslation(std::int32_t locale, std::string_view source, std::string_view text);
    const std::string& translate(const std::string& source, std::int32_t locale) const;

    // Groups.
    GroupRecord* findGroup(std::string_view name);
    const GroupRecord* findGroup(std::string_view name) const;
    void addGroup(std::string_view name, const SharedModel& layout, const GroupFlags& flags);
    void addElement(const ObjectModel& element);
    void setCurrentElement(std::string_view name, std::int32_t index);
    /// Merges `other`, which must be another object.
    void append(const ObjectModel& other);

  private:
    friend class ModelRollback;
    static constexpr std::uint32_t kAlias = (NameIndex::kMost + 1) / 2;

    std::string_view nameOf(std::uint32_t number) const {
        return (number & kAlias) != 0 ? aliases_[number & ~kAlias] : properties[number].name;
    }
    void growForOne(std::size_t labelBytes);
    PropertyRules& rulesFor(std::int32_t index);
    void addCondition(std::string_view name, ConstraintList PropertyRules::*list,
                      std::string_view expression, std::string_view message);
    GroupRecord& groupFor(std::string_view name);
    void checkDepth(int inner) const;
    void refillNames() noexcept;

    NameIndex names_;
    NameIndex classNames_;
    NameIndex groupNames_;
    std::vector<std::string> aliases_;
};

}  // namespace korvant
