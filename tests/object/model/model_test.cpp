// The property object against a plain model, through random sequences of operations.
#include <gtest/gtest.h>

#include <random>

#include "korvantide/script_object.h"
#include "object/model/plain_model.h"
#include "object/script/object_access.h"

namespace korvant::test {
namespace {

/// An object and the model of it, changed together.
struct Pair {
    ScriptObject real;
    PlainModel plain;
};

class Player {
  public:
    explicit Player(unsigned seed) : random_(seed), objects_(4) {}

    void play(int steps) {
        for (int i = 0; i < steps; ++i) {
            Pair& pair = objects_[pick(objects_.size())];
            step(pair);
            if (::testing::Test::HasFatalFailure()) return;
            compare(pair);
        }
    }

  private:
    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    bool flip() { return pick(2) == 0; }
    std::string word(const char* prefix, std::size_t kinds) {
        return prefix + std::to_string(pick(kinds));
    }
    std::string name() { return word("p", 30); }
    std::int32_t number() { return static_cast<std::int32_t>(pick(2000)) - 1000; }

    void step(Pair& pair) {
        switch (pick(16)) {
            case 0:
                return addText(pair);
            case 1:
                return addInteger(pair);
            case 2:
                return addReal(pair);
            case 3:
                return addBoolean(pair);
            case 4:
                return addOption(pair);
            case 5:
                return addStructure(pair);
            case 6:
            case 7:
                return setValue(pair);
            case 8:
                return addRule(pair);
            case 9:
                return walkSome(pair);
            case 10:
                return addTranslation(pair);
            case 11:
                return addGroup(pair);
            case 12:
                return addElement(pair);
            case 13:
                return append(pair);
            case 14:
                return copy(pair);
            default:
                if (pick(8) == 0) clear(pair);
        }
    }

    PlainProperty property() {
        PlainProperty made;
        made.name = name();
        made.label = word("Label ", 100);
        made.flag = flip();
        return made;
    }

    void addText(Pair& pair) {
        PlainProperty made = property();
        made.text = word("text ", 50);
        const bool file = flip();
        const bool kind = flip();
        bool added = false;
        if (file) {
            made.letter = kind ? 'F' : 'f';
            made.unit = "All|*";
            bool open = kind;
            added = pair.real._addStringFileProperty(made.name, made.label, made.text, made.unit,
                                                     open, made.flag);
        } else {
            made.letter = kind ? 'e' : 's';
            added =
                pair.real.addProperty(made.name, made.label, made.text.c_str(), made.flag, kind);
        }
        EXPECT_EQ(added, pair.plain.add(made));
    }

    void addInteger(Pair& pair) {
        PlainProperty made = property();
        made.integer = number();
        made.unit = flip() ? "color" : word("Color", 3);
        const bool expected = pair.plain.addInteger(made);
        bool added = false;
        if (flip())
            added = pair.real._addLongProperty(made.name, made.label, made.integer, made.unit,
                                               made.flag);
        else
            added = pair.real.addProperty(made.name, made.label, static_cast<long>(made.integer),
                                          made.unit, made.flag);
        EXPECT_EQ(added, expected);
    }

    void addReal(Pair& pair) {
        PlainProperty made = property();
        made.letter = 'd';
        made.unit = word("m", 5);
        const bool single = flip();
        float narrow = static_cast<float>(number()) / 8.0F;
        made.real = single ? static_cast<double>(narrow) : number() / 7.0;
        const bool added =
            single
                ? pair.real._addFloatProperty(made.name, made.label, narrow, made.unit, made.flag)
                : pair.real.addProperty(made.name, made.label, made.real, made.unit, made.flag);
        EXPECT_EQ(added, pair.plain.add(made));
    }

    void addBoolean(Pair& pair) {
        PlainProperty made = property();
        made.letter = 'b';
        made.boolean = flip();
        made.radio = static_cast<std::int32_t>(pick(4)) - 1;
        const bool added =
            made.radio < 0
                ? pair.real._addBoolProperty(made.name, made.label, made.boolean, made.flag)
                : pair.real.addProperty(made.name, made.label, made.boolean, made.flag,
                                        static_cast<long>(made.radio));
        EXPECT_EQ(added, pair.plain.add(made));
    }

    void addOption(Pair& pair) {
        if (pick(3) != 0) {
            const std::string option = word("option ", 9);
            pair.real.addOption(option);
            pair.plain.pending.push_back(option);
            return;
        }
        PlainProperty made = property();
        made.integer = number();
        const bool added =
            pair.real.addOptionProperty(made.name, made.label, made.integer, made.flag);
        EXPECT_EQ(added, pair.plain.addOptionProperty(made));
    }

    void addStructure(Pair& pair) {
        if (flip()) {
            const std::string category = word("Category ", 4);
            pair.real.addCategory(category);
            pair.plain.addCategory(category);
        } else {
            const std::string shown = word("Class ", 5);
            const bool value = flip();
            pair.real.addClass(shown, value);
            pair.plain.addClass(shown, value);
        }
    }

    void setValue(Pair& pair) {
        std::string target = name();
        PlainProperty* plain = pair.plain.find(target);
        PlainProperty none;
        if (plain == nullptr) plain = &none;
        const bool known = plain != &none;
        const std::int32_t value = number();
        switch (pick(4)) {
            case 0:
                plain->text = word("set ", 99);
                EXPECT_EQ(pair.real._setStringProperty(target, plain->text), known);
                break;
            case 1:
                plain->integer = value;
                EXPECT_EQ(pair.real.setProperty(target, value), known);
                break;
            case 2:
                plain->real = value / 3.0;
                EXPECT_EQ(pair.real.setProperty(target, plain->real), known);
                break;
            default:
                plain->boolean = flip();
                EXPECT_EQ(pair.real.setProperty(target, plain->boolean), known);
        }
    }

    template <class Entry>
    static void addOnce(std::vector<Entry>& list, const Entry& entry) {
        if (std::find(list.begin(), list.end(), entry) == list.end()) list.push_back(entry);
    }

    void addRule(Pair& pair) {
        const std::string target = name();
        const std::string expression = word("p1>", 3);
        const std::string message = word("message ", 9);
        PlainProperty none;
        PlainProperty* found = pair.plain.find(target);
        PlainProperty& plain = found == nullptr ? none : *found;
        const auto addPair = [&](auto& list) {
            for (const auto& one : list)
                if (one.first == expression) return;
            list.emplace_back(expression, message);
        };
        switch (pick(6)) {
            case 0:
                pair.real.addErrorConstraint(target, expression, message);
                return addPair(plain.errors);
            case 1:
                pair.real.addWarningConstraint(target, expression, message);
                return addPair(plain.warnings);
            case 2:
                pair.real.addEnableConstraint(target, expression);
                return addOnce(plain.enables, expression);
            case 3:
                pair.real.addComputation(target, expression);
                plain.computation = expression;
                return;
            default:
                // Rarely of an unknown name, which becomes a second name of property 0.
                if (found == nullptr && pick(5) != 0) return;
                pair.real.addHint(target, message);
                pair.plain.addHint(target, message);
        }
    }

    void walkSome(Pair& pair) {
        if (pick(3) == 0) {
            pair.real.resetIterators();
            pair.plain.resetIterators();
        }
        for (int i = 0; i < 6; ++i) {
            std::string mine = "left", theirs = "left";
            bool a = false, b = false;
            std::int32_t x = -7, y = -7;
            const auto which = pick(3);
            if (which == 0)
                EXPECT_EQ(pair.real._getNextClass(mine, a), pair.plain.nextClass(theirs, b));
            else if (which == 1)
                EXPECT_EQ(pair.real._getNextCategory(mine), pair.plain.nextCategory(theirs));
            else
                EXPECT_EQ(pair.real._getNextProperty(mine, x), pair.plain.nextProperty(theirs, y));
            ASSERT_EQ(mine, theirs);
            ASSERT_EQ(a, b);
            ASSERT_EQ(x, y);
        }
    }

    void addTranslation(Pair& pair) {
        const std::int32_t locale = static_cast<std::int32_t>(pick(7)) - 2;
        const std::string source = word("Label ", 20);
        const std::string text = word("Texte ", 99);
        pair.real.addTranslation(locale, source, text);
        pair.plain.addTranslation(locale, source, text);
    }

    void addGroup(Pair& pair) {
        Pair& layout = objects_[pick(objects_.size())];
        const std::string group = word("Group ", 5);
        const bool flags[4] = {flip(), flip(), flip(), flip()};
        // Objects that grow through each other are kept small.
        if (layout.plain.properties.size() > 12 || layout.plain.groups.size() > 2) return;
        pair.real.addGroup(group, layout.real, flags[0], flags[1], flags[2], flags[3]);
        pair.plain.addGroup(group, layout.plain, flags);
        if (&layout != &pair) walkThrough(layout.plain);
    }

    void addElement(Pair& pair) {
        Pair& element = objects_[pick(objects_.size())];
        if (element.plain.groups.size() > 2 ||
            pair.plain.groups[pair.plain.currentGroup].elements.size() > 3)
            return;
        pair.real.addGroupElement(element.real);
        pair.plain.addElement(element.plain);
        if (flip()) return;
        const std::string group = word("Group ", 6);
        pair.real.setGroupElement(group, number());
        pair.plain.groups[group].current = pair.real.getGroupElement(group);
    }

    void append(Pair& pair) {
        Pair& other = objects_[pick(objects_.size())];
        if (other.plain.properties.size() > 25) return;
        EXPECT_TRUE(pair.real.append(other.real));
        if (&pair == &other) return;
        pair.plain.append(other.plain);
        walkThrough(other.plain);
    }

    /// Merging leaves the cursors of the other object at the end.
    static void walkThrough(PlainModel& model) {
        std::string text;
        bool value = false;
        std::int32_t index = 0;
        model.resetIterators();
        while (model.nextClass(text, value))
            while (model.nextCategory(text))
                while (model.nextProperty(text, index)) continue;
    }

    void copy(Pair& pair) {
        Pair& other = objects_[pick(objects_.size())];
        if (flip()) {
            const ScriptObject made(other.real);
            pair.real = made;
        } else {
            pair.real = other.real;
        }
        pair.plain = other.plain;
    }

    void clear(Pair& pair) {
        pair.real.clear();
        pair.plain.clear();
    }

    static PlainProperty read(const ObjectModel& model, std::size_t index) {
        const PropertyRecord& from = model.properties[index];
        PlainProperty made;
        made.name = from.name;
        made.label = model.labels.label(index);
        made.unit = model.labels.unit(index);
        made.text = model.textOf(from);
        made.real = from.real;
        made.integer = from.integer;
        made.boolean = from.boolean;
        made.flag = from.flag;
        made.letter = from.letter;
        made.radio = from.radioGroup;
        if (from.options >= 0)
            made.options = model.optionLists[static_cast<std::size_t>(from.options)];
        const PropertyRules& rules = model.rulesOf(from);
        for (const Constraint& one : rules.errors)
            made.errors.emplace_back(one.expression, one.message);
        for (const Constraint& one : rules.warnings)
            made.warnings.emplace_back(one.expression, one.message);
        for (const Constraint& one : rules.enables) made.enables.push_back(one.expression);
        made.hint = rules.hint.value_or("");
        made.computation = rules.computation.value_or("");
        return made;
    }

    static void compareModels(const ObjectModel& real, const PlainModel& plain) {
        ASSERT_EQ(real.properties.size(), plain.properties.size());
        for (std::size_t i = 0; i < plain.properties.size(); ++i) {
            ASSERT_EQ(read(real, i), plain.properties[i]) << plain.properties[i].name;
            ASSERT_EQ(real.find(plain.properties[i].name), static_cast<std::int32_t>(i));
        }
        ASSERT_EQ(real.classes.size(), plain.classNames.size());
        for (std::size_t i = 0; i < plain.classNames.size(); ++i) {
            ASSERT_EQ(real.classes[i].name, plain.classNames[i]);
            ASSERT_EQ(real.classes[i].skip, plain.classSkips[i]) << plain.classNames[i];
            ASSERT_EQ(real.classes[i].value, plain.classValues[i]);
            ASSERT_EQ(real.classes[i].last, plain.classLasts[i]);
        }
        ASSERT_EQ(real.categories.size(), plain.categoryNames.size());
        for (std::size_t i = 0; i < plain.categoryNames.size(); ++i) {
            ASSERT_EQ(real.categories[i].name, plain.categoryNames[i]);
            ASSERT_EQ(real.categories[i].first, plain.categoryFirsts[i]);
        }
        compareGroups(real, plain);
        ASSERT_EQ(real.currentGroup, plain.currentGroup);
        ASSERT_EQ(real.pendingOptions, plain.pending);
        for (std::size_t i = 0; i < plain.dictionaries.size(); ++i)
            for (const auto& [source, text] : plain.dictionaries[i])
                ASSERT_EQ(real.translate(source, static_cast<std::int32_t>(i) + 1), text);
    }

    static void compareGroups(const ObjectModel& real, const PlainModel& plain) {
        for (const auto& [name, group] : plain.groups) {
            const GroupRecord* record = real.findGroup(name);
            const bool told = group.layout || group.listed;
            ASSERT_TRUE(record != nullptr || !told) << name;
            if (record == nullptr) continue;
            ASSERT_EQ(record->declared, group.layout != nullptr) << name;
            ASSERT_EQ(record->hasElements, group.listed) << name;
            ASSERT_EQ(record->current, group.current) << name;
            ASSERT_EQ(record->elements.size(), group.elements.size()) << name;
            for (std::size_t i = 0; i < group.elements.size(); ++i)
                compareModels(*record->elements[i], group.elements[i]);
            if (group.layout) compareModels(*record->layout, *group.layout);
        }
    }

    static void compare(Pair& pair) {
        compareModels(ObjectAccess::model(pair.real), pair.plain);
        ASSERT_EQ(pair.real.getPropertiesCount(), static_cast<int>(pair.plain.properties.size()));
        for (int index : {-1, pair.real.getPropertiesCount()}) {
            ASSERT_EQ(pair.real.getPropertyName(index), "");
            ASSERT_EQ(pair.real.getPropertyType(index), -1);
        }
    }

    std::mt19937 random_;
    std::vector<Pair> objects_;
};

TEST(ObjectModel, DoesWhatThePlainModelDoes) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Player(seed).play(400);
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace
}  // namespace korvant::test
