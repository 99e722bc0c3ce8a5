// Groups of repeated elements in a form.
#include "object/form/form_fixture.h"
#include "object/form/form_texts.h"

namespace korvant::test {
namespace {

/// A hole with a class of its own and a group of intervals: from, to, thickness, note.
class EditGroups : public FormTest {
  protected:
    EditGroups() {
        interval_.addProperty("note", "Note", "new", true, false);
        interval_.addProperty("from", "From", 0.0, "m", true);
        interval_.addProperty("to", "To", 1.0, "m", true);
        interval_.addProperty("thickness", "Thickness", 0.0, "m", true);
        interval_.addErrorConstraint("to", "to>from", "Ends before it begins");
        interval_.addComputation("thickness", "to-from");
    }

    void declare(bool flags = true) {
        object.addClass("Hole", true);
        object.addProperty("name", "Name", "DH-1", true, false);
        object.addProperty("deepest", "Deepest", 0.0, "m", true);
        object.addClass("Intervals", true);
        object.addGroup("Intervals", interval_, flags, flags, flags, flags);
    }

    void addInterval(const std::string& note, double from, double to) {
        ScriptObject element(interval_);
        element.setProperty("note", note);
        element.setProperty("from", from);
        element.setProperty("to", to);
        object.addGroupElement(element);
    }

    void declareWithThree() {
        declare();
        addInterval("sand", 0, 4);
        addInterval("clay", 4, 9);
        addInterval("rock", 9, 20);
    }

    std::string bar(int page = 1) {
        const EditGroupBar shown = session().groupBar(page);
        std::string all;
        for (std::size_t i = 0; i < shown.elements.size(); ++i)
            all += (static_cast<std::int32_t>(i) == shown.current ? "*" : "") + shown.elements[i] +
                   " ";
        return all;
    }

    /// "note from-to=thickness" of every element in the object.
    std::string stored() {
        std::string all;
        for (std::int32_t i = 0; i < object.getGroupSize("Intervals"); ++i) {
            ScriptObject element;
            EXPECT_TRUE(object.getGroup("Intervals", i, &element));
            all += describe(element) + " ";
        }
        return all + "@" + std::to_string(object.getGroupElement("Intervals"));
    }

    static std::string describe(ScriptObject& element) {
        std::string note;
        double from = 0, to = 0, thickness = 0;
        element.getProperty("note", &note);
        element.getProperty("from", &from);
        element.getProperty("to", &to);
        element.getProperty("thickness", &thickness);
        const auto whole = [](double value) { return std::to_string(static_cast<int>(value)); };
        return note + " " + whole(from) + "-" + whole(to) + "=" + whole(thickness);
    }

    ScriptObject interval_;
};

TEST_F(EditGroups, TheRowsHoldTheCurrentElement) {
    declareWithThree();
    open();
    EXPECT_TRUE(session().page(1).isGroup);
    EXPECT_FALSE(session().page(0).isGroup);
    EXPECT_EQ(bar(), "*1: sand 2: clay 3: rock ");
    EXPECT_EQ(text("note"), "sand");
    EXPECT_EQ(text("thickness"), "4");
    EXPECT_TRUE(session().chooseElement(1, 2));
    EXPECT_EQ(bar(), "1: sand 2: clay *3: rock ");
    EXPECT_EQ(text("note"), "rock");
    EXPECT_EQ(text("thickness"), "11");
    EXPECT_FALSE(session().changed() && session().canUndo());
    EXPECT_FALSE(session().chooseElement(1, 3) || session().chooseElement(1, -2));
    EXPECT_FALSE(session().chooseElement(0, 0));
}

TEST_F(EditGroups, FlagsHideButtonsAndNotTheBrowsing) {
    declare(false);
    addInterval("sand", 0, 4);
    addInterval("clay", 4, 9);
    open();
    const EditGroupBar shown = session().groupBar(1);
    EXPECT_FALSE(shown.showAdd || shown.showCopy || shown.showRemove || shown.showOrder);
    EXPECT_FALSE(session().addElement(1) || session().copyElement(1) ||
                 session().removeElement(1) || session().orderElements(1, {1, 0}));
    EXPECT_TRUE(session().chooseElement(1, 1));
    EXPECT_EQ(type("note", "loam"), "");
    EXPECT_EQ(bar(), "1: sand *2: loam ");
}

TEST_F(EditGroups, ALockedPageCanBeBrowsedAndNotChanged) {
    object.addClass("Intervals", false);
    object.addGroup("Intervals", interval_, true, true, true, true);
    addInterval("sand", 0, 4);
    addInterval("clay", 4, 9);
    open();
    const EditGroupBar shown = session().groupBar(0);
    EXPECT_TRUE(shown.showAdd && !shown.canAdd && !shown.canCopy && !shown.canRemove &&
                !shown.canOrder);
    EXPECT_TRUE(session().chooseElement(0, 1));
    EXPECT_EQ(type("note", "x"), formText(FormText::lockedPage));
}

TEST_F(EditGroups, WithoutAnElementTheRowsAreLockedAndUnchecked) {
    declare();
    object.setProperty("to", -5.0);
    open();
    EXPECT_EQ(bar(), "");
    EXPECT_EQ(session().groupBar(1).current, -1);
    EXPECT_TRUE(state("note").locked);
    EXPECT_EQ(state("to").severity, Severity::none);
    EXPECT_EQ(session().pageSeverity(1), Severity::none);
    EXPECT_EQ(type("note", "x"), formText(FormText::noElement));
    EXPECT_NE(session().description(row("to")).find("Press Add"), std::string::npos);
    EXPECT_TRUE(session().confirm().passed);
    EXPECT_TRUE(session().addElement(1));
    EXPECT_EQ(bar(), "*1: new ");
    EXPECT_EQ(text("to"), "1");
    EXPECT_TRUE(state("note").editable);
    EXPECT_FALSE(state("note").changed);
}

TEST_F(EditGroups, RowsSayWhatCanBeDoneWithoutACurrentElement) {
    object.addClass("Intervals", true);
    object.addGroup("Intervals", interval_, false, true, true, true);
    open();
    EXPECT_EQ(type("note", "x"), formText(FormText::noElementAtAll));
    ScriptObject filled;
    filled.addClass("Intervals", true);
    filled.addGroup("Intervals", interval_, true, true, true, true);
    filled.addGroupElement(interval_);
    filled.setGroupElement("Intervals", -1);
    object = filled;
    open();
    EXPECT_EQ(type("note", "x"), formText(FormText::noElementChosen));
}

TEST_F(EditGroups, AddCopyRemoveAndOrderWithUndo) {
    declareWithThree();
    open();
    session().chooseElement(1, 1);
    type("to", "8");
    EXPECT_TRUE(session().addElement(1));
    EXPECT_EQ(bar(), "1: sand 2: clay *3: new 4: rock ");
    type("note", "gravel");
    session().chooseElement(1, 1);
    EXPECT_EQ(text("to"), "8");
    EXPECT_TRUE(session().copyElement(1));
    EXPECT_EQ(bar(), "1: sand 2: clay *3: clay 4: gravel 5: rock ");
    EXPECT_EQ(text("to"), "8");
    type("note", "copy");
    EXPECT_TRUE(session().orderElements(1, {4, 3, 2, 1, 0}));
    EXPECT_EQ(bar(), "1: rock 2: gravel *3: copy 4: clay 5: sand ");
    EXPECT_FALSE(session().orderElements(1, {0, 0, 1, 2, 3}) ||
                 session().orderElements(1, {0, 1, 2, 3}) ||
                 session().orderElements(1, {0, 1, 2, 3, 5}));
    EXPECT_TRUE(session().removeElement(1));
    EXPECT_EQ(bar(), "1: rock 2: gravel *3: clay 4: sand ");
    const char* const kBack[] = {
        "1: rock 2: gravel *3: copy 4: clay 5: sand ",
        "1: sand 2: clay *3: copy 4: gravel 5: rock ",
        "1: sand 2: clay *3: clay 4: gravel 5: rock ",
        "1: sand *2: clay 3: gravel 4: rock ",
        "1: sand 2: clay *3: new 4: rock ",
        "1: sand *2: clay 3: rock ",
        "1: sand *2: clay 3: rock ",
    };
    for (const char* expected : kBack) {
        EXPECT_TRUE(session().canUndo());
        EXPECT_EQ(session().undo().page, 1);
        EXPECT_EQ(bar(), expected);
    }
    EXPECT_FALSE(session().canUndo());
    EXPECT_EQ(text("to"), "9");
    while (session().canRedo()) session().redo();
    EXPECT_EQ(bar(), "1: rock 2: gravel *3: clay 4: sand ");
}

TEST_F(EditGroups, RemovingTheLastLeavesNone) {
    declare();
    addInterval("sand", 0, 4);
    open();
    EXPECT_TRUE(session().removeElement(1));
    EXPECT_EQ(session().groupBar(1).current, -1);
    EXPECT_FALSE(session().removeElement(1) || session().copyElement(1));
    session().undo();
    EXPECT_EQ(bar(), "*1: sand ");
    EXPECT_EQ(text("to"), "4");
}

TEST_F(EditGroups, ChangedAndResetCompareWithTheElementAtOpening) {
    declareWithThree();
    open();
    type("note", "loam");
    EXPECT_TRUE(state("note").changed);
    session().chooseElement(1, 1);
    EXPECT_FALSE(state("note").changed);
    session().chooseElement(1, 0);
    EXPECT_TRUE(state("note").changed);
    session().resetRow(row("note"));
    EXPECT_EQ(text("note"), "sand");
    session().copyElement(1);
    EXPECT_FALSE(state("note").changed);
    type("note", "more");
    session().resetRow(row("note"));
    EXPECT_EQ(text("note"), "sand");
}

TEST_F(EditGroups, OkTakesElementsBackAndCancelDoesNot) {
    declareWithThree();
    const auto play = [](bool ok) {
        return [ok](EditSession& shown) {
            shown.chooseElement(1, 1);
            shown.commitText(shown.findRow("note"), "loam");
            shown.addElement(1);
            shown.commitText(shown.findRow("to"), "7");
            shown.commitText(shown.findRow("name"), "DH-2");
            return ok && shown.confirm().passed;
        };
    };
    const std::string before = stored();
    EXPECT_FALSE(edit(play(false)));
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(before, "sand 0-4=0 clay 4-9=0 rock 9-20=0 @0");
    EXPECT_TRUE(edit(play(true)));
    // What is computed is computed for every element.
    EXPECT_EQ(stored(), "sand 0-4=4 loam 4-9=5 new 0-7=7 rock 9-20=11 @2");
    EXPECT_EQ(number("to"), 7.0);
}

TEST_F(EditGroups, LayoutAndFlagsAndUntouchedElementsStayWhatTheyAre) {
    interval_ = ScriptObject();
    interval_.addProperty("note", "Note", "new", true, false);
    declare();
    ScriptObject other(interval_);
    other.addProperty("extra", "Extra", 5, "", true);
    other.setTitle("kept");
    object.addGroupElement(other);
    object.addGroupElement(other);
    object.setProperty("note", "of the object");
    EXPECT_TRUE(edit([](EditSession& shown) {
        shown.commitText(shown.findRow("name"), "DH-2");
        return shown.confirm().passed;
    }));
    std::string note;
    object.getProperty("note", &note);
    EXPECT_EQ(note, "new") << "as the current element has it";
    EXPECT_TRUE(edit([](EditSession& shown) {
        shown.chooseElement(1, 1);
        shown.commitText(shown.findRow("note"), "edited");
        return shown.confirm().passed;
    }));
    ScriptObject element;
    int extra = 0;
    ASSERT_TRUE(object.getGroup("Intervals", 1, &element));
    EXPECT_EQ(element.getTitle(), "kept");
    EXPECT_TRUE(element.getProperty("extra", &extra));
    EXPECT_EQ(extra, 5);
    element.getProperty("note", &note);
    EXPECT_EQ(note, "edited");
    const GroupRecord* group = ObjectAccess::model(object).findGroup("Intervals");
    EXPECT_EQ(group->layout->textOf(group->layout->properties[0]), "new");
    EXPECT_TRUE(group->flags.add && group->flags.order);
}

/// What is read after OK does not depend on whether something was typed.
TEST_F(EditGroups, OkAloneStoresTheSameAsOkAfterTyping) {
    const auto after = [this](bool types) {
        object.clear();
        declareWithThree();
        object.setGroupElement("Intervals", 2);
        EXPECT_TRUE(edit([types](EditSession& shown) {
            const std::int32_t note = shown.findRow("note");
            if (types) shown.commitText(note, "typed");
            if (types) shown.commitText(note, "rock");
            return shown.confirm().passed;
        }));
        std::string note;
        object.getProperty("note", &note);
        return stored() + " " + note + " " + std::to_string(number("thickness"));
    };
    const std::string untouched = after(false);
    EXPECT_EQ(untouched, after(true));
    EXPECT_EQ(untouched, "sand 0-4=4 clay 4-9=5 rock 9-20=11 @2 rock 11.000000");
}

TEST_F(EditGroups, WithoutAnElementTheRowsShowNothing) {
    declare();
    open();
    EXPECT_TRUE(state("note").empty);
    EXPECT_EQ(text("note"), "");
    EXPECT_EQ(text("to"), "");
    session().addElement(1);
    EXPECT_FALSE(state("note").empty);
    EXPECT_EQ(text("note"), "new");
    EXPECT_EQ(text("to"), "1");
}

/// Scripts may add any object as an element.
TEST_F(EditGroups, AnElementThatLacksPropertiesShowsTheLayoutsValues) {
    declare();
    ScriptObject poor;
    poor.addProperty("to", "To", 6.0, "", true);
    poor.addProperty("from", "From", "a text", true, false);
    object.addGroupElement(poor);
    object.addGroupElement(poor);
    EXPECT_TRUE(edit([&](EditSession& shown) {
        EXPECT_EQ(shown.state(shown.findRow("note")).text, "new");
        EXPECT_EQ(shown.state(shown.findRow("to")).text, "6");
        EXPECT_EQ(shown.state(shown.findRow("from")).text, "0");
        shown.chooseElement(1, 1);
        EXPECT_TRUE(shown.commitText(shown.findRow("note"), "now it has one").accepted);
        return shown.confirm().passed;
    }));
    ScriptObject element;
    std::string note;
    ASSERT_TRUE(object.getGroup("Intervals", 1, &element));
    EXPECT_TRUE(element.getProperty("note", &note));
    EXPECT_EQ(note, "now it has one");
    ASSERT_TRUE(object.getGroup("Intervals", 1, &element));
    EXPECT_TRUE(element.getProperty("from", &note));
    EXPECT_EQ(note, "a text");
}

TEST_F(EditGroups, ACurrentElementThatDoesNotExistIsNone) {
    declareWithThree();
    for (const std::int32_t wrong : {-1, 3, 2147483647, -2147483647 - 1}) {
        object.setGroupElement("Intervals", wrong);
        open();
        EXPECT_EQ(session().groupBar(1).current, -1) << wrong;
        EXPECT_TRUE(state("note").locked);
        EXPECT_TRUE(session().confirm().passed);
        EXPECT_TRUE(edit([](EditSession& shown) { return shown.confirm().passed; }));
        EXPECT_EQ(object.getGroupElement("Intervals"), wrong);
        EXPECT_TRUE(session().chooseElement(1, 0));
        EXPECT_EQ(text("note"), "sand");
    }
}

TEST_F(EditGroups, OneClassThatIsAGroupIsTheDialogItself) {
    object.addGroup("Intervals", interval_, true, true, true, true);
    addInterval("sand", 0, 4);
    addInterval("clay", 4, 3);
    open();
    EXPECT_EQ(session().kind(), FormKind::dialog);
    EXPECT_TRUE(session().page(0).isGroup);
    EXPECT_EQ(bar(0), "*1: sand 2: clay ");
    const EditCheck check = session().confirm();
    EXPECT_FALSE(check.passed);
    EXPECT_EQ(check.report, "<b>There is an error : </b><br>To");
    EXPECT_EQ(bar(0), "1: sand *2: clay ");
    EXPECT_TRUE(edit([](EditSession& shown) {
        shown.removeElement(0);
        return true;
    }));
    EXPECT_EQ(stored(), "clay 4-3=-1 @0");
}

TEST_F(EditGroups, RadioBooleansOfAGroupAreApartFromTheOthers) {
    interval_.addProperty("in", "In", true, true, 0);
    interval_.addProperty("out", "Out", false, true, 0);
    object.addClass("Hole", true);
    object.addProperty("left", "Left", true, true, 0);
    object.addProperty("right", "Right", false, true, 0);
    object.addClass("Intervals", true);
    object.addGroup("Intervals", interval_, true, true, true, true);
    addInterval("sand", 0, 4);
    open();
    session().setBoolean(row("out"), true);
    EXPECT_FALSE(session().booleanValue(row("in")));
    EXPECT_TRUE(session().booleanValue(row("left")));
    session().setBoolean(row("right"), true);
    EXPECT_TRUE(session().booleanValue(row("out")));
    EXPECT_FALSE(session().booleanValue(row("left")));
}

/// Layers of a hole, each with samples of its own.
TEST_F(EditGroups, AGroupInsideAGroupBelongsToTheElementAroundIt) {
    ScriptObject sample;
    sample.addProperty("grade", "Grade", 0.5, "g/t", true);
    sample.addErrorConstraint("grade", "grade<9", "Too rich");
    ScriptObject layer;
    layer.addClass("Layers", true);
    layer.addProperty("rock", "Rock", "sand", true, false);
    layer.addClass("Samples", true);
    layer.addGroup("Samples", sample, true, true, true, true);
    object.addClass("Hole", true);
    object.addProperty("name", "Name", "DH-1", true, false);
    object.addClass("Layers", true);
    object.addGroup("Layers", layer, true, true, true, true);
    open();
    ASSERT_EQ(session().pageCount(), 3);
    const auto grades = [&](EditSession& shown) {
        std::string all;
        for (const std::string& one : shown.groupBar(2).elements) all += one + " ";
        return all;
    };
    EXPECT_TRUE(edit([&](EditSession& shown) {
        // Samples need a layer first, and say so.
        EXPECT_FALSE(shown.addElement(2));
        const int layers = 1;
        const std::int32_t grade = shown.findRow("grade");
        EXPECT_EQ(shown.commitText(grade, "2").message, "\"Layers\" needs an element first.");
        EXPECT_EQ(shown.description(grade).find("Press Add"), std::string::npos);
        EXPECT_TRUE(shown.addElement(layers));
        EXPECT_TRUE(shown.addElement(2));
        EXPECT_TRUE(shown.addElement(2));
        EXPECT_EQ(grades(shown), "1 2 ");
        EXPECT_TRUE(shown.commitText(shown.findRow("grade"), "2").accepted);
        EXPECT_TRUE(shown.copyElement(layers));
        EXPECT_EQ(grades(shown), "1 2 ");
        EXPECT_TRUE(shown.commitText(shown.findRow("grade"), "20").accepted);
        EXPECT_TRUE(shown.addElement(layers));
        EXPECT_EQ(grades(shown), "");
        // The failing sample of the second layer becomes current, with its layer.
        const EditCheck check = shown.confirm();
        EXPECT_FALSE(check.passed);
        EXPECT_EQ(shown.groupBar(layers).current, 1);
        EXPECT_EQ(check.place.property, shown.findRow("grade"));
        EXPECT_EQ(shown.state(check.place.property).text, "20");
        EXPECT_TRUE(shown.commitText(shown.findRow("grade"), "3").accepted);
        return shown.confirm().passed;
    }));
    EXPECT_EQ(object.getGroupSize("Layers"), 3);
    const std::int32_t kSamples[] = {2, 2, 0};
    const double kGrades[] = {2.0, 3.0};
    for (std::int32_t i = 0; i < 3; ++i) {
        ScriptObject element;
        ASSERT_TRUE(object.getGroup("Layers", i, &element));
        EXPECT_EQ(element.getGroupSize("Samples"), kSamples[i]) << i;
        ScriptObject inner;
        double grade = 0.0;
        if (!element.getGroup("Samples", 1, &inner)) continue;
        inner.getProperty("grade", &grade);
        EXPECT_EQ(grade, kGrades[i]) << i;
    }
}

}  // namespace
}  // namespace korvant::test
