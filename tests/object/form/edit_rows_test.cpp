// Pages and rows of a form, and what is typed into them.
#include <cmath>

#include "object/form/form_fixture.h"
#include "object/form/form_texts.h"
#include "object/form/working_copy.h"

namespace korvant::test {
namespace {

class EditRows : public FormTest {};

TEST_F(EditRows, OneClassOrNoneIsADialogAndMoreAreASheet) {
    object.setTitle("Pump");
    object.addProperty("a", "A", 1, "", true);
    object.addTranslation(1, "Pump", "Pompe");
    object.addTranslation(1, "Size", "Taille");
    ScriptObject::m_locale = 1;
    EXPECT_EQ(open().kind(), FormKind::dialog);
    EXPECT_EQ(session().title(), "Pump");
    ASSERT_EQ(session().pageCount(), 1);
    EXPECT_EQ(session().page(0).caption, "Pump");
    EXPECT_TRUE(session().page(0).editable);
    object.addClass("Size", false);
    EXPECT_EQ(open().kind(), FormKind::dialog);
    EXPECT_FALSE(session().page(0).editable);
    EXPECT_EQ(session().page(0).first, 0);
    EXPECT_EQ(session().page(0).last, 0);
    object.addProperty("b", "B", 1, "", true);
    object.addClass("Empty", true);
    object.addClass("Rest", true);
    object.addProperty("c", "C", 1, "", true);
    EXPECT_EQ(open().kind(), FormKind::sheet);
    ASSERT_EQ(session().pageCount(), 3);
    EXPECT_EQ(session().page(0).caption, "Taille");
    struct Range {
        int first, last;
    };
    // Every property is on a page; a class without properties has an empty one.
    const Range kRanges[] = {{0, 1}, {2, 1}, {2, 2}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(session().page(i).first, kRanges[i].first) << i;
        EXPECT_EQ(session().page(i).last, kRanges[i].last) << i;
    }
    EXPECT_EQ(session().pageOf(0), 0);
    EXPECT_EQ(session().pageOf(2), 2);
}

TEST_F(EditRows, OutOfRangeIsAnsweredAndChangesNothing) {
    object.addProperty("a", "A", 1, "", true);
    open();
    for (const std::int32_t wrong : {-1, 1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(session().row(wrong).letter, '?');
        EXPECT_EQ(session().page(wrong).last, -1);
        EXPECT_EQ(session().pageOf(wrong), -1);
        EXPECT_EQ(session().description(wrong) + session().errorReport(wrong), "");
        EXPECT_FALSE(session().commitText(wrong, "1").accepted);
        EXPECT_FALSE(session().setBoolean(wrong, true).accepted);
        EXPECT_FALSE(session().setOption(wrong, 0).accepted);
        EXPECT_FALSE(session().resetRow(wrong).accepted);
        EXPECT_EQ(session().nextEditable(wrong, true), -1);
        EXPECT_EQ(session().groupBar(wrong).current, -1);
        EXPECT_FALSE(session().chooseElement(wrong, 0) || session().addElement(wrong));
    }
    EXPECT_EQ(session().findRow("nothing"), -1);
    EXPECT_FALSE(session().setBoolean(0, true).accepted);
    EXPECT_FALSE(session().changed() || session().canUndo());
}

TEST_F(EditRows, RowsCarryTranslatedTextsUnitsOptionsAndFilters) {
    object.addClass("First", true);
    object.addProperty("none", "Free", "x", true, false);
    object.addCategory("Size");
    object.addProperty("flow", "Flow", 2.5, "m3/h", true);
    object.addProperty("tint", "Tint", 0x0000FF, "color", true);
    object.addOption("one");
    object.addOption("two");
    object.addOptionProperty("kind", "Kind", 1, true);
    object.addProperty("log", "Log", "a.txt", "Text|*.txt", true, true);
    object.addClass("Next", true);
    object.addProperty("last", "Last", true, true, 3);
    const char* const kFrench[][2] = {
        {"Flow", "D\351bit"}, {"Size", "Taille"}, {"two", "deux"}, {"m3/h", "m3/heure"}};
    for (const auto& pair : kFrench) object.addTranslation(1, pair[0], pair[1]);
    ScriptObject::m_locale = 1;
    open();
    EXPECT_EQ(session().categoryCaption(session().row(0).category), "G\351n\351ral");
    const EditRow& flow = session().row(row("flow"));
    EXPECT_EQ(flow.label, "D\351bit");
    EXPECT_EQ(flow.name, "flow");
    EXPECT_EQ(flow.unit, "m3/heure");
    EXPECT_EQ(session().categoryCaption(flow.category), "Taille");
    EXPECT_EQ(session().row(row("tint")).unit, "");
    EXPECT_EQ(session().row(row("kind")).options, (std::vector<std::string>{"one", "deux"}));
    EXPECT_EQ(text("kind"), "deux");
    EXPECT_EQ(session().row(row("log")).unit, "");
    EXPECT_EQ(session().row(row("log")).filters[0].patterns, "*.txt");
    // A category ends with its page.
    EXPECT_EQ(session().row(row("last")).category, -1);
    EXPECT_EQ(session().row(row("last")).radioGroup, 3);
    EXPECT_TRUE(session().pageHasUnits(0));
    EXPECT_FALSE(session().pageHasUnits(1));
}

TEST_F(EditRows, OpeningAndConfirmingChangesNoBit) {
    const double kOdd[] = {0.1F, 1.0 / 3.0, -0.0, 1e308, 5e-324, std::nan(""), INFINITY};
    int i = 0;
    for (const double value : kOdd)
        object.addProperty("d" + std::to_string(i++), "D", value, "", true);
    object.addProperty("tint", "Tint", -5, "color", true);
    object.addOptionProperty("kind", "Kind", 77, true);
    object.addProperty("text", "Text", "a\tb\r\n\x81", true, false);
    const ObjectModel before = ObjectAccess::model(object);
    const auto confirmUntouched = [](EditSession& shown) {
        // Leaving a row commits what it shows.
        for (std::int32_t at = 0; at < shown.rowCount(); ++at)
            EXPECT_TRUE(shown.commitText(at, shown.state(at).text).accepted) << at;
        EXPECT_FALSE(shown.changed() || shown.canUndo());
        return shown.confirm().passed;
    };
    EXPECT_TRUE(edit(confirmUntouched));
    const ObjectModel& after = ObjectAccess::model(object);
    for (std::size_t at = 0; at < before.properties.size(); ++at)
        EXPECT_TRUE(
            sameSlots(slotsOf(before, before.properties[at]), slotsOf(after, after.properties[at])))
            << before.properties[at].name;
}

TEST_F(EditRows, EachKindTakesWhatItCanKeepAndRefusesTheRestAloud) {
    object.addProperty("s", "S", "", true, false);
    object.addProperty("e", "E", "", true, true);
    object.addProperty("f", "F", "", "", false, true);
    object.addProperty("l", "L", 0, "", true);
    object.addProperty("d", "D", 0.0, "", true);
    object.addProperty("c", "C", 0, "color", true);
    object.addOption("one");
    object.addOption("two");
    object.addOptionProperty("o", "O", 9, true);
    object.addProperty("b", "B", false, true, -1);
    open();
    EXPECT_EQ(text("o"), "");
    EXPECT_EQ(text("b"), "No");
    struct Case {
        const char* name;
        const char* typed;
        const char* shown;  ///< null: refused
    };
    for (const Case& one : {
             Case{"s", " any text \xFF ", " any text \xFF "},
             Case{"e", "two\nlines", "two\nlines"},
             Case{"f", "C:\\no such\\file", "C:\\no such\\file"},
             Case{"l", "12", "12"},
             Case{"l", "l*2", "24"},
             Case{"l", "1.5", nullptr},
             Case{"l", "2147483648", nullptr},
             Case{"d", "1,5", "1.5"},
             Case{"d", "l/10", "2.4"},
             Case{"d", "", nullptr},
             Case{"d", "nan", nullptr},
             Case{"d", "l+", nullptr},
             Case{"c", "#102030", "#102030"},
             Case{"c", "1,2,3", "#010203"},
             Case{"c", "red", nullptr},
             Case{"o", "two", "two"},
             Case{"o", "three", nullptr},
             Case{"b", "yes", "Yes"},
             Case{"b", "maybe", nullptr},
         }) {
        const std::string before = text(one.name);
        const std::string message = type(one.name, one.typed);
        EXPECT_EQ(message.empty(), one.shown != nullptr) << one.name << " " << one.typed << message;
        EXPECT_EQ(text(one.name), one.shown != nullptr ? one.shown : before) << one.typed;
    }
    EXPECT_EQ(session().integerValue(row("c")), 0x030201);
    EXPECT_NE(type("d", "l*-l").find("Syntax error"), std::string::npos);
    EXPECT_FALSE(session().setOption(row("o"), 2).accepted);
    EXPECT_FALSE(session().setOption(row("o"), -1).accepted);
    EXPECT_TRUE(session().setOption(row("o"), 0).accepted);
    EXPECT_TRUE(session().setColour(row("c"), 0xFF).accepted);
    EXPECT_EQ(text("c"), "#FF0000");
}

TEST_F(EditRows, LockedAndDisabledRowsSayWhyAndRefuse) {
    object.addClass("Open", true);
    object.addProperty("on", "On", false, true, -1);
    object.addProperty("free", "Free", 1, "", true);
    object.addProperty("fixed", "Fixed", 1, "", false);
    object.addEnableConstraint("free", "on");
    object.addEnableConstraint("free", "fixed<5");
    object.addErrorConstraint("fixed", "fixed>3", "Too small");
    object.addClass("Closed", false);
    object.addProperty("shut", "Shut", 1, "", true);
    open();
    EXPECT_FALSE(state("free").enabled);
    EXPECT_FALSE(state("free").locked);
    EXPECT_EQ(type("free", "2"), "Not available unless: on");
    EXPECT_TRUE(state("fixed").locked);
    EXPECT_TRUE(state("fixed").enabled);
    EXPECT_EQ(type("fixed", "2"), formText(FormText::lockedRow));
    EXPECT_EQ(type("shut", "2"), formText(FormText::lockedPage));
    EXPECT_FALSE(session().resetRow(row("shut")).accepted);
    // Errors of locked rows count all the same.
    EXPECT_EQ(state("fixed").severity, Severity::error);
    EXPECT_NE(session().description(row("free")).find("Not available unless: on"),
              std::string::npos);
    EXPECT_TRUE(session().setBoolean(row("on"), true).accepted);
    EXPECT_TRUE(state("free").editable);
    EXPECT_EQ(type("free", "2"), "");
    EXPECT_EQ(session().description(row("free")),
              "<center><h2>Free</h2></center><br><hr color=blue><br>");
}

TEST_F(EditRows, ARefusedMessageIsPlainAndADescriptionIsMarkup) {
    object.addProperty("a", "A", 1, "", true);
    object.addEnableConstraint("a", "a<0&&a>2");
    ScriptObject::m_locale = 1;
    open();
    EXPECT_EQ(type("a", "2"), "Disponible seulement si : a<0&&a>2");
    EXPECT_NE(session().description(0).find(
                  "<font color=gray>Disponible seulement si : a&lt;0&amp;&amp;a&gt;2</font><br>"),
              std::string::npos);
    object.clear();
    object.addProperty("a", "A", 1, "", false);
    open();
    EXPECT_NE(session().description(0).find("ne peut pas &#234;tre modifi&#233;e"),
              std::string::npos);
    EXPECT_NE(type("a", "2").find("\352tre modifi\351e"), std::string::npos);
}

TEST_F(EditRows, RadioBooleansClearEachOther) {
    object.addProperty("a1", "A1", true, true, 0);
    object.addProperty("a2", "A2", false, true, 0);
    object.addProperty("a3", "A3", true, false, 0);
    object.addProperty("b1", "B1", true, true, 1);
    object.addProperty("free", "Free", true, true, -1);
    open();
    const auto set = [&] {
        std::string all;
        for (std::int32_t at = 0; at < session().rowCount(); ++at)
            if (session().booleanValue(at)) all += session().row(at).name + " ";
        return all;
    };
    // What a script set stays until the user chooses.
    EXPECT_EQ(set(), "a1 a3 b1 free ");
    EXPECT_TRUE(state("a1").radioSet);
    EXPECT_FALSE(state("free").radioSet);
    EXPECT_TRUE(session().setBoolean(row("a1"), false).accepted);
    EXPECT_EQ(set(), "a1 a3 b1 free ");
    session().setBoolean(row("a2"), true);
    EXPECT_EQ(set(), "a2 b1 free ");
    session().setBoolean(row("free"), false);
    EXPECT_EQ(set(), "a2 b1 ");
    session().undo();
    session().undo();
    EXPECT_EQ(set(), "a1 a3 b1 free ");
    session().redo();
    session().resetRow(row("a2"));
    EXPECT_EQ(set(), "a1 a3 b1 free ");
}

TEST_F(EditRows, UndoRedoAndResetRestoreTheVeryBits) {
    object.addProperty("x", "X", 0.1, "", true);
    object.addProperty("double", "Twice", 0.0, "", true);
    object.addProperty("t", "T", "old", true, false);
    object.addComputation("double", "x*2");
    open();
    EXPECT_EQ(text("double"), "0.2");
    EXPECT_FALSE(state("double").changed);
    type("x", "3");
    type("t", "new");
    type("double", "9");
    EXPECT_EQ(text("double"), "9");
    EXPECT_TRUE(state("x").changed && state("double").changed && state("t").changed);
    EXPECT_EQ(session().undo().property, row("double"));
    EXPECT_EQ(text("double"), "6");
    EXPECT_EQ(session().undo().property, row("t"));
    EXPECT_EQ(text("t"), "old");
    EXPECT_EQ(session().undo().property, row("x"));
    EXPECT_EQ(session().realValue(row("x")), 0.1);
    EXPECT_EQ(text("double"), "0.2");
    EXPECT_FALSE(session().changed() || session().canUndo());
    EXPECT_EQ(session().undo().page, -1);
    EXPECT_EQ(session().redo().property, row("x"));
    session().redo();
    EXPECT_TRUE(session().canRedo());
    // A new change forgets what could be done again.
    type("t", "other");
    EXPECT_FALSE(session().canRedo());
    session().resetRow(row("t"));
    EXPECT_EQ(text("t"), "old");
    EXPECT_FALSE(state("t").changed);
    session().undo();
    EXPECT_EQ(text("t"), "other");
}

TEST_F(EditRows, ChangesNameExactlyTheRowsAndPagesToDrawAgain) {
    object.addClass("One", true);
    object.addProperty("x", "X", 1.0, "", true);
    object.addProperty("y", "Y", 0.0, "", true);
    object.addProperty("z", "Z", 1.0, "", true);
    object.addClass("Two", true);
    object.addProperty("w", "W", 1.0, "", true);
    object.addComputation("y", "x>5");
    object.addErrorConstraint("w", "y=0", "x is too large");
    open();
    type("z", "3");
    EditChanges changes = session().takeChanges();
    EXPECT_EQ(changes.rows, std::vector<std::int32_t>{row("z")});
    EXPECT_TRUE(changes.pages.empty());
    EXPECT_TRUE(changes.history);
    type("x", "6");
    changes = session().takeChanges();
    EXPECT_EQ(changes.rows, (std::vector<std::int32_t>{row("x"), row("y"), row("w")}));
    EXPECT_EQ(changes.pages, std::vector<int>{1});
    EXPECT_EQ(session().pageSeverity(1), Severity::error);
    type("x", "7");
    changes = session().takeChanges();
    EXPECT_EQ(changes.rows, std::vector<std::int32_t>{row("x")});
    session().undo();
    session().undo();
    changes = session().takeChanges();
    EXPECT_EQ(changes.rows, (std::vector<std::int32_t>{row("x"), row("y"), row("w")}));
    EXPECT_EQ(changes.pages, std::vector<int>{1});
    type("x", "1");
    changes = session().takeChanges();
    EXPECT_TRUE(changes.rows.empty() && changes.pages.empty() && !changes.history);
}

TEST_F(EditRows, TheFilterHidesRowsAndAffectsNothingElse) {
    object.addCategory("Size of things");
    object.addProperty("flow", "Flow", 12.0, "m3/h", true);
    object.addProperty("head", "Head", 3.0, "m", true);
    object.addProperty("site", "Place", "North D\311BIT", true, false);
    object.addHint("head", "Lifting height");
    object.addErrorConstraint("head", "head>5", "Low");
    open();
    const auto found = [&](const std::string& words) {
        session().setFilter(words);
        std::string all;
        for (std::int32_t at = 0; at < session().rowCount(); ++at)
            if (session().state(at).visible) all += session().row(at).name + " ";
        return all;
    };
    EXPECT_EQ(found(""), "flow head site ");
    EXPECT_EQ(found("FLOW"), "flow ");
    EXPECT_EQ(found("m"), "flow head ");
    EXPECT_EQ(found("lifting size"), "head ");
    EXPECT_EQ(found("d\351bit"), "site ");
    EXPECT_EQ(found("12"), "flow ");
    EXPECT_EQ(found("nothing"), "");
    EXPECT_TRUE(session().takeChanges().filter);
    EXPECT_FALSE(session().confirm().passed);
    EXPECT_EQ(session().nextEditable(0, true), -1);
    found("t");
    EXPECT_EQ(session().nextEditable(row("flow"), true), row("head"));
}

TEST_F(EditRows, ComputedNumbersShowFewDigitsAndKeepAll) {
    object.addProperty("a", "A", 1.0, "", true);
    object.addProperty("third", "Third", 0.0, "", true);
    object.addComputation("third", "a/3");
    EXPECT_TRUE(edit([](EditSession& shown) {
        EXPECT_TRUE(shown.state(1).computed);
        EXPECT_FALSE(shown.state(0).computed);
        EXPECT_EQ(shown.state(1).text, "0.3333333333");
        EXPECT_EQ(shown.fullText(1), "0.3333333333333333");
        EXPECT_TRUE(shown.commitText(1, "0.3333333333").accepted);
        EXPECT_TRUE(shown.commitText(1, "0.3333333333333333").accepted);
        EXPECT_FALSE(shown.canUndo());
        return shown.confirm().passed;
    }));
    EXPECT_EQ(number("third"), 1.0 / 3);
}

TEST_F(EditRows, TabGoesToTheNextRowThatCanBeEdited) {
    object.addClass("One", true);
    object.addProperty("a", "A", 1, "", true);
    object.addProperty("b", "B", 1, "", false);
    object.addProperty("c", "C", 1, "", true);
    object.addClass("Two", true);
    object.addProperty("d", "D", 1, "", true);
    open();
    EXPECT_EQ(session().nextEditable(0, true), 2);
    EXPECT_EQ(session().nextEditable(2, true), -1);
    EXPECT_EQ(session().nextEditable(2, false), 0);
    EXPECT_EQ(session().nextEditable(0, false), -1);
    EXPECT_EQ(session().nextEditable(3, false), -1);
}

}  // namespace
}  // namespace korvant::test
