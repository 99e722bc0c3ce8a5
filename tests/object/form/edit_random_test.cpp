// Forms under random hands: what undo, redo, the check and OK promise, whatever was done before.
#include <algorithm>
#include <random>

#include "object/form/edit_state.h"
#include "object/form/form_fixture.h"

namespace korvant::test {
namespace {

class RandomUser {
  public:
    explicit RandomUser(unsigned seed) : seed_(seed), random_(seed) { build(); }

    ScriptObject object;

    void use(EditSession& session, int steps) {
        for (int i = 0; i < steps; ++i) act(session);
    }

    /// Everything that a view shows.
    static std::string look(const EditSession& session) {
        std::string all;
        for (std::int32_t row = 0; row < session.rowCount(); ++row) {
            const EditRowState state = session.state(row);
            all += session.row(row).name + "=" + state.text + (state.editable ? " e" : " -") +
                   (state.changed ? "c" : "-") + std::to_string(static_cast<int>(state.severity)) +
                   session.description(row) + "\n";
        }
        for (int page = 0; page < session.pageCount(); ++page) {
            const EditGroupBar bar = session.groupBar(page);
            all += std::to_string(bar.current) + ":";
            for (const std::string& element : bar.elements) all += element + "|";
            all += "\n";
        }
        return all;
    }

  private:
    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

    std::string expression(const std::vector<std::string>& names) {
        const std::string& a = names[pick(names.size())];
        const std::string& b = names[pick(names.size())];
        const char* const kForms[] = {"%>%", "%+%", "%%%", "min(%;%)", "%<>%", "%*%/7", "%&&%"};
        std::string text = kForms[pick(std::size(kForms))];
        text.replace(text.find('%'), 1, a);
        const std::size_t last = text.rfind('%');
        return text.replace(last, 1, b);
    }

    void addRules(ScriptObject& target, const std::vector<std::string>& names) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            // Every other form has no errors, so that its OK succeeds.
            const std::string error = expression(names);
            if (seed_ % 2 == 0)
                target.addErrorConstraint(names[pick(names.size())], error, "error");
            target.addWarningConstraint(names[pick(names.size())], expression(names), "warning");
            if (i % 3 == 0)
                target.addEnableConstraint(names[pick(names.size())], expression(names));
            if (i % 3 == 1) target.addComputation(names[pick(names.size())], expression(names));
        }
    }

    std::vector<std::string> addProperties(ScriptObject& target, const std::string& prefix) {
        std::vector<std::string> names;
        for (int i = 0; i < 5; ++i) {
            const std::string name = prefix + std::to_string(i);
            const auto value = static_cast<int>(pick(6));
            if (i == 0) target.addProperty(name, name, name.c_str(), true, false);
            if (i == 1) target.addProperty(name, name, value, "", pick(9) != 0);
            if (i == 2) target.addProperty(name, name, value / 4.0, "", true);
            if (i == 3) target.addProperty(name, name, value > 2, true, 0);
            if (i == 4) target.addProperty(name, name, value > 3, true, 0);
            names.push_back(name);
        }
        return names;
    }

    void build() {
        ScriptObject inner;
        std::vector<std::string> innerNames = addProperties(inner, "i");
        addRules(inner, innerNames);
        ScriptObject outer;
        outer.addClass("Outer", true);
        std::vector<std::string> names = addProperties(outer, "o");
        outer.addClass("Inner", true);
        outer.addGroup("Inner", inner, true, true, true, true);
        for (std::size_t i = pick(3); i > 0; --i) outer.addGroupElement(inner);
        names.insert(names.end(), innerNames.begin(), innerNames.end());
        addRules(outer, names);
        object.addClass("First", true);
        const std::vector<std::string> own = addProperties(object, "p");
        object.addClass("Outer", true);
        object.addGroup("Outer", outer, true, true, true, true);
        std::string group = "Outer";
        bool yes = true;
        object._addGroup(group, outer, yes, yes, yes, yes);
        for (std::size_t i = pick(4); i > 0; --i) object.addGroupElement(outer);
        names.insert(names.end(), own.begin(), own.end());
        addRules(object, names);
    }

    void act(EditSession& session) {
        const auto row =
            static_cast<std::int32_t>(pick(static_cast<std::size_t>(session.rowCount())));
        const auto page = static_cast<int>(pick(static_cast<std::size_t>(session.pageCount())));
        const EditGroupBar bar = session.groupBar(page);
        const auto size = static_cast<std::int32_t>(bar.elements.size());
        switch (pick(14)) {
            case 0:
                session.addElement(page);
                break;
            case 1:
                session.copyElement(page);
                break;
            case 2:
                session.removeElement(page);
                break;
            case 3: {
                std::vector<std::int32_t> order(static_cast<std::size_t>(size));
                for (std::size_t i = 0; i < order.size(); ++i)
                    order[i] = static_cast<std::int32_t>(i);
                std::shuffle(order.begin(), order.end(), random_);
                session.orderElements(page, order);
                break;
            }
            case 4:
            case 5:
                session.chooseElement(page, static_cast<std::int32_t>(pick(6)) - 1);
                break;
            case 6:
                session.undo();
                break;
            case 7:
                session.redo();
                break;
            case 8:
                session.resetRow(row);
                break;
            case 9:
                session.setBoolean(row, pick(2) == 0);
                break;
            default:
                session.commitText(row, std::to_string(pick(7)));
        }
    }

    unsigned seed_;
    std::mt19937 random_;
};

TEST(RandomForms, UndoGoesAllTheWayBackAndRedoAllTheWayForth) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        RandomUser user(seed);
        EditSession session(ObjectAccess::model(user.object));
        const std::string before = RandomUser::look(session);
        user.use(session, 60);
        while (session.canRedo()) session.redo();
        const std::string after = RandomUser::look(session);
        std::vector<std::string> looks;
        while (session.canUndo()) {
            looks.push_back(RandomUser::look(session));
            session.undo();
        }
        // Looking around alone is no step.
        for (auto look = looks.rbegin(); look != looks.rend(); ++look) {
            ASSERT_TRUE(session.canRedo());
            session.redo();
            ASSERT_EQ(RandomUser::look(session), *look);
        }
        ASSERT_EQ(RandomUser::look(session), after);
        while (session.canUndo()) session.undo();
        EditSession fresh(ObjectAccess::model(user.object));
        ASSERT_EQ(RandomUser::look(fresh), before);
    }
}

TEST(RandomForms, WhatIsShownIsWhatTheRulesSayOfTheValues) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        RandomUser user(seed);
        EditState state(ObjectAccess::model(user.object));
        EditSession session(ObjectAccess::model(user.object));
        for (int i = 0; i < 12; ++i) {
            user.use(session, 5);
            WorkingCopy values(ObjectAccess::model(user.object));
            for (std::int32_t row = 0; row < session.rowCount(); ++row)
                values.setSlots(row, {session.textValue(row), session.integerValue(row),
                                      session.realValue(row), session.booleanValue(row)});
            RuleBook rules(ObjectAccess::model(user.object), values, 0);
            rules.check();
            for (std::int32_t row = 0; row < session.rowCount(); ++row) {
                ASSERT_EQ(session.state(row).enabled, rules.enabled(row));
                const bool member = state.core.desk.groupOfRow(row) != GroupDesk::kNoGroup;
                if (!member || !session.errorReport(row).empty()) {
                    ASSERT_EQ(session.errorReport(row), rules.errorReport(row));
                }
            }
        }
    }
}

TEST(RandomForms, CheckAndSummaryLeaveWhatIsShownAndOkKeepsIt) {
    int passed = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        RandomUser user(seed);
        EditSession session(ObjectAccess::model(user.object));
        user.use(session, 40);
        const std::string before = RandomUser::look(session);
        const std::string summary = session.summary();
        ASSERT_EQ(RandomUser::look(session), before);
        ASSERT_EQ(session.summary(), summary);
        const EditCheck check = session.confirm();
        ASSERT_EQ(check.passed, check.report.empty());
        if (!check.passed) {
            ASSERT_EQ(session.state(check.place.property).severity, Severity::error);
            continue;
        }
        ++passed;
        ASSERT_TRUE(session.confirm().passed);
        // The same hands on the object itself: what the form showed is what the object holds.
        std::vector<ValueSlots> shown;
        std::vector<EditGroupBar> bars;
        const ScriptedEditor editor([&](EditSession& opened) {
            RandomUser(seed).use(opened, 40);
            EXPECT_TRUE(opened.confirm().passed);
            for (std::int32_t row = 0; row < opened.rowCount(); ++row)
                shown.push_back({opened.textValue(row), opened.integerValue(row),
                                 opened.realValue(row), opened.booleanValue(row)});
            for (int page = 0; page < opened.pageCount(); ++page)
                bars.push_back(opened.groupBar(page));
            return true;
        });
        const EditState layout(ObjectAccess::model(user.object));
        ASSERT_TRUE(user.object.edit());
        const ObjectModel& after = ObjectAccess::model(user.object);
        for (std::size_t row = 0; row < shown.size(); ++row) {
            if (layout.core.desk.groupOfRow(static_cast<std::int32_t>(row)) ==
                GroupDesk::kNoGroup) {
                ASSERT_TRUE(sameSlots(slotsOf(after, after.properties[row]), shown[row])) << row;
            }
        }
        ASSERT_EQ(user.object.getGroupSize("Outer"),
                  static_cast<std::int32_t>(bars[1].elements.size()));
        const GroupRecord* outer = after.findGroup("Outer");
        if (bars[1].current < 0) continue;
        // The current element holds what its rows showed.
        const ObjectModel& element = *outer->elements[static_cast<std::size_t>(bars[1].current)];
        for (const PropertyRecord& property : element.properties) {
            const std::int32_t row = after.find(property.name);
            if (layout.core.desk.groupOfRow(row) != layout.core.desk.groupOfPage(1)) continue;
            ASSERT_TRUE(sameSlots(slotsOf(element, property), shown[static_cast<std::size_t>(row)]))
                << property.name;
        }
    }
    EXPECT_GE(passed, 75);
}

}  // namespace
}  // namespace korvant::test
