// The check at OK, the summary, and the call that shows a form.
#include <stdexcept>
#include "host/engine/memory_budget.h"

#include "object/form/form_fixture.h"
#include "object/form/form_texts.h"

namespace korvant::test {
namespace {

class EditCheckTest : public FormTest {
  protected:
    void addPage(const std::string& name, double value) {
        object.addClass(name, true);
        object.addProperty(name + "1", name + " one", value, "", true);
        object.addErrorConstraint(name + "1", name + "1>0", name + " must be positive");
        object.addErrorConstraint(name + "1", name + "1>-5", name + " is far too low");
        object.addWarningConstraint(name + "1", name + "1<100", name + " is high");
        object.addProperty(name + "2", name + " two", value, "", true);
        object.addErrorConstraint(name + "2", name + "2<>-1", "Not -1");
    }
};

TEST_F(EditCheckTest, ASheetNamesTheFailingPages) {
    addPage("a", 1);
    addPage("b", -1);
    addPage("c", 1);
    addPage("d", -9);
    object.addTranslation(1, "b", "Deuxi\350me");
    EXPECT_FALSE(open().confirm().passed);
    EXPECT_EQ(session().confirm().report, "<b>There are errors : </b><br>1) b<br>2) d<br>");
    EXPECT_EQ(session().confirm().place.page, 1);
    EXPECT_EQ(session().confirm().place.property, row("b1"));
    type("d1", "1");
    EXPECT_EQ(session().confirm().report, "<b>There is an error : </b><br>b");
    type("b1", "1");
    EXPECT_EQ(session().confirm().place.property, row("b2"));
    type("b2", "0");
    EXPECT_TRUE(session().confirm().passed);
    EXPECT_EQ(session().confirm().report, "");
    ScriptObject::m_locale = 1;
    EXPECT_EQ(open().confirm().report,
              "<b>Il y a des erreurs : </b><br>1) Deuxi\350me<br>2) d<br>");
    ScriptObject::m_locale = 2;
    EXPECT_EQ(open().confirm().report, "<b>Hay errores : </b><br>1) b<br>2) d<br>");
}

TEST_F(EditCheckTest, ADialogNamesTheFailingRows) {
    addPage("a", -1);
    EXPECT_EQ(open().confirm().report, "<b>There are errors : </b><br>1) a one<br>2) a two<br>");
    type("a2", "0");
    EXPECT_EQ(session().confirm().report, "<b>There is an error : </b><br>a one");
}

TEST_F(EditCheckTest, WarningsAndFaultsNeverBlock) {
    addPage("a", 500);
    object.addErrorConstraint("a1", "nosuch", "a fault of the script");
    EXPECT_TRUE(open().confirm().passed);
    EXPECT_EQ(state("a1").severity, Severity::warning);
    EXPECT_NE(session().description(0).find(
                  "<font color=gray>nosuch: Unknow identifier: \"nosuch\"</font><br>"),
              std::string::npos);
}

TEST_F(EditCheckTest, TheSummaryHasErrorsThenWarningsAsLinks) {
    addPage("a", 1);
    addPage("b", 500);
    EXPECT_EQ(open().summary(),
              "<h3>There is a warning</h3>"
              "<b><a href=\"row:2\">b one</a> : </b><br>b is high<br>");
    type("a1", "-7");
    EXPECT_EQ(session().summary(),
              "<h3>There are errors</h3><b><a href=\"row:0\">a one</a> : </b><br>"
              "1) a must be positive<br>2) a is far too low<br>"
              "<h3>There is a warning</h3>"
              "<b><a href=\"row:2\">b one</a> : </b><br>b is high<br>");
    EXPECT_EQ(session().follow("row:2").property, 2);
    EXPECT_EQ(session().follow("row:2").page, 1);
    type("a1", "1");
    type("b1", "1");
    EXPECT_EQ(session().summary(), "No errors or warnings");
    for (const char* link : {"", "row", "row:", "row:9", "row:-1", "http://x", "row:1:0.0",
                             "row:1:x", "row:99999999999"})
        EXPECT_EQ(session().follow(link).page, -1) << link;
}

TEST_F(EditCheckTest, EveryElementIsCheckedAndTheFailingOneBecomesCurrent) {
    ScriptObject interval;
    interval.addProperty("note", "Note", "", true, false);
    interval.addProperty("from", "From", 0.0, "", true);
    interval.addProperty("to", "To", 1.0, "", true);
    interval.addErrorConstraint("to", "to>from", "Ends before it begins");
    interval.addWarningConstraint("to", "to<100", "Deep");
    addPage("a", 1);
    object.addClass("Intervals", true);
    object.addGroup("Intervals", interval, true, true, true, true);
    for (const double to : {5.0, 500.0, -2.0, 7.0, -3.0}) {
        interval.setProperty("to", to);
        object.addGroupElement(interval);
    }
    open();
    using Marks = std::vector<Severity>;
    EXPECT_EQ(session().pageSeverity(1), Severity::error) << "of an element that is not shown";
    EXPECT_EQ(session().groupBar(1).severities,
              (Marks{Severity::none, Severity::warning, Severity::error, Severity::none,
                     Severity::error}));
    EXPECT_EQ(session().summary(),
              "<h3>There are errors</h3>"
              "<b><a href=\"row:4:0.2\">To</a> (3) : </b><br>Ends before it begins<br>"
              "<b><a href=\"row:4:0.4\">To</a> (5) : </b><br>Ends before it begins<br>"
              "<h3>There is a warning</h3>"
              "<b><a href=\"row:4:0.1\">To</a> (2) : </b><br>Deep<br>");
    EXPECT_EQ(session().groupBar(1).current, 0);
    EXPECT_EQ(session().follow("row:4:0.1").property, row("to"));
    EXPECT_EQ(session().groupBar(1).current, 1);
    const EditCheck check = session().confirm();
    EXPECT_EQ(check.report, "<b>There is an error : </b><br>Intervals");
    EXPECT_EQ(check.details,
              "<b>To (3) : </b>Ends before it begins<br>"
              "<b>To (5) : </b>Ends before it begins<br>");
    ASSERT_EQ(check.findings.size(), 2U);
    EXPECT_EQ(check.findings[1].elements, std::vector<std::int32_t>{4});
    EXPECT_EQ(session().groupBar(1).current, 2);
    EXPECT_EQ(check.place.property, row("to"));
    EXPECT_EQ(text("to"), "-2");
    type("to", "9");
    EXPECT_FALSE(session().confirm().passed);
    EXPECT_EQ(session().groupBar(1).current, 4);
    type("to", "9");
    EXPECT_TRUE(session().confirm().passed);
    EXPECT_EQ(session().pageSeverity(1), Severity::warning);
    // Looking at elements is undone together with the change before it.
    session().undo();
    EXPECT_EQ(session().groupBar(1).current, 4);
    EXPECT_EQ(text("to"), "-3");
    EXPECT_EQ(session().groupBar(1).severities[4], Severity::error);
}

/// The check computes for every element; what depends on the element that is looked at must be as
/// before when it is done.
TEST_F(EditCheckTest, TheCheckLeavesTheFormAsItWas) {
    ScriptObject interval;
    interval.addProperty("to", "To", 1.0, "", true);
    interval.addProperty("half", "Half", 0.0, "", true);
    interval.addComputation("half", "to/2");
    addPage("a", 1);
    object.addProperty("shown", "Shown", 0.0, "", true);
    object.addProperty("runs", "Runs", 0, "", true);
    object.addComputation("shown", "to*10");
    object.addClass("Intervals", true);
    object.addGroup("Intervals", interval, true, true, true, true);
    for (const double to : {4.0, 6.0, 8.0}) {
        interval.setProperty("to", to);
        object.addGroupElement(interval);
    }
    open();
    session().chooseElement(1, 1);
    EXPECT_EQ(text("shown"), "60");
    EXPECT_EQ(text("half"), "3");
    type("shown", "7");
    const bool passed = session().confirm().passed;
    session().summary();
    EXPECT_TRUE(passed);
    EXPECT_EQ(session().groupBar(1).current, 1);
    EXPECT_EQ(text("shown"), "7");
    EXPECT_EQ(text("half"), "3");
    type("to", "10");
    EXPECT_EQ(text("shown"), "100");
}

struct Counter : KorStampListener {
    std::vector<std::string> told;
    std::function<void(KorStamp&)> act;
    void propertyChanged(KorStamp& object, const std::string& property) override {
        told.push_back(property);
        if (act) act(object);
    }
};

TEST_F(EditCheckTest, AListenerThatThrowsSilencesNoOther) {
    Counter counter, faulty;
    faulty.act = [](KorStamp&) { throw std::runtime_error("no"); };
    for (const char* name : {"a", "b", "c"}) {
        object.addProperty(name, name, 1.0, "", true);
        object.addListener(name, name[0] == 'b' ? &faulty : &counter);
    }
    EXPECT_TRUE(edit([](EditSession& shown) {
        for (int row = 0; row < 3; ++row) shown.commitText(row, "2");
        return true;
    }));
    EXPECT_EQ(faulty.told, std::vector<std::string>{"b"});
    EXPECT_EQ(counter.told, (std::vector<std::string>{"a", "c"}));
}

TEST_F(EditCheckTest, ListenersAreToldOfConfirmedChangesInOrder) {
    Counter counter;
    for (const char* name : {"a", "b", "c", "d"}) {
        object.addProperty(name, name, 1.0, "", true);
        EXPECT_TRUE(object.addListener(name, &counter));
    }
    EXPECT_FALSE(object.addListener("nothing", &counter));
    object.addComputation("d", "c+1");
    const auto play = [](bool ok) {
        return [ok](EditSession& shown) {
            shown.commitText(2, "5");
            shown.commitText(0, "2");
            shown.commitText(1, "3");
            shown.commitText(1, "1");
            return ok;
        };
    };
    EXPECT_FALSE(edit(play(false)));
    EXPECT_TRUE(counter.told.empty());
    object.addListener("a", nullptr);
    EXPECT_TRUE(edit(play(true)));
    EXPECT_EQ(counter.told, (std::vector<std::string>{"c", "d"}));
    EXPECT_EQ(number("a"), 2.0);
}

/// clear() keeps listeners by index; the next properties answer to them.
TEST_F(EditCheckTest, AListenerSurvivesClear) {
    Counter counter;
    object.addProperty("old", "Old", 1, "", true);
    object.addListener("old", &counter);
    object.clear();
    object.addProperty("new", "New", 1, "", true);
    EXPECT_TRUE(edit([](EditSession& shown) { return shown.commitText(0, "2").accepted; }));
    EXPECT_EQ(counter.told, std::vector<std::string>{"new"});
}

TEST_F(EditCheckTest, EditsMayNestAndObjectsMayGoMeanwhile) {
    Counter counter;
    int depth = 0;
    counter.act = [&](KorStamp& shown) {
        if (++depth < 3) shown.edit();
    };
    auto* held = new ScriptObject;
    held->addRef();
    held->addProperty("a", "A", 1, "", true);
    held->addProperty("b", "B", 1, "", true);
    held->addListener("a", &counter);
    object.addProperty("x", "X", 1.0, "", true);
    object.addProperty("y", "Y", 1.0, "", true);
    const ScriptedEditor editor([&](EditSession& shown) {
        const std::string next = std::to_string(shown.integerValue(0) + 1);
        shown.commitText(0, next);
        return true;
    });
    EXPECT_TRUE(held->edit());
    EXPECT_EQ(counter.told.size(), 3U);
    // Another object is edited while the first one is open: each has values of its own.
    const ScriptedEditor outer([&](EditSession& shown) {
        shown.commitText(0, "7");
        const ScriptedEditor inner([&](EditSession& other) {
            other.commitText(0, "70");
            held->release();
            return true;
        });
        EXPECT_TRUE(held->edit());
        return true;
    });
    EXPECT_TRUE(object.edit());
    EXPECT_EQ(number("x"), 7.0);
    EXPECT_EQ(number("y"), 1.0);
}

TEST_F(EditCheckTest, AnObjectThatChangesWhileItIsOpenGetsOnlyWhatItStillHas) {
    object.addProperty("a", "A", 1.0, "", true);
    object.addProperty("b", "B", 1.0, "", true);
    object.addProperty("c", "C", 1.0, "", true);
    EXPECT_TRUE(edit([&](EditSession& shown) {
        shown.commitText(0, "5");
        shown.commitText(1, "6");
        shown.commitText(2, "7");
        object.clear();
        object.addProperty("a", "A", 2.0, "", true);
        object.addProperty("other", "Other", 2.0, "", true);
        return true;
    }));
    EXPECT_EQ(number("a"), 5.0);
    EXPECT_EQ(number("other"), 2.0);
    EXPECT_TRUE(edit([&](EditSession&) {
        object.clear();
        return true;
    }));
    EXPECT_EQ(object.getPropertiesCount(), 0);
}

int befores = 0;
int afters = 0;
int others = 0;

TEST_F(EditCheckTest, TheHooksAreCalledAsRemembered) {
    const auto before = [] { ++befores; };
    const auto after = [] { ++afters; };
    const auto other = [] { ++others; };
    struct Case {
        ScriptObject::Hook before, after, later;
        int befores, afters, others;
    };
    for (const Case& one : {
             Case{before, after, after, 1, 1, 0},
             // The one of the beginning is called if there is any at the end.
             Case{before, after, other, 1, 1, 0},
             Case{before, after, nullptr, 1, 0, 0},
             Case{before, nullptr, other, 1, 0, 0},
             Case{nullptr, nullptr, nullptr, 0, 0, 0},
         }) {
        befores = afters = others = 0;
        ScriptObject::m_before = one.before;
        ScriptObject::m_after = one.after;
        edit([&](EditSession&) {
            ScriptObject::m_after = one.later;
            return false;
        });
        EXPECT_EQ(befores, one.befores);
        EXPECT_EQ(afters, one.afters);
        EXPECT_EQ(others, one.others);
    }
    ScriptObject::m_before = nullptr;
    ScriptObject::m_after = nullptr;
}

TEST_F(EditCheckTest, WithoutMemoryForTheSessionTheObjectStaysAsItIs) {
    memoryBudget.scriptRuns = true;
    for (int i = 0; i < 200; ++i)
        object.addProperty("p" + std::to_string(i), "P", "text", true, false);
    ScriptObject element;
    element.addProperty("e", "E", 1, "", true);
    object.addGroup("G", element, true, true, true, true);
    object.addGroupElement(element);
    const std::size_t limit = memoryBudget.limit;
    EXPECT_FALSE(edit([&](EditSession& shown) {
                     shown.commitText(0, std::string(100000, 'x'));
                     memoryBudget.limit = memoryBudget.used;
                     return true;
                 }) &&
                 object.getPropertiesCount() == 0);
    memoryBudget.limit = limit;
    memoryBudget.scriptRuns = false;
    std::string value;
    object.getProperty("p0", &value);
    EXPECT_EQ(value, "text");
}

TEST(HeadlessEditing, CancelsAndSaysSoOnce) {
    ScriptObject object;
    object.addProperty("a", "A", 1, "", true);
    HeadlessEditor headless;
    EditSession session(ObjectAccess::model(object));
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(headless.run(session));
    EXPECT_FALSE(headless.run(session));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "korvant: no window to edit properties in; cancelled\n");
}

TEST(FormMemory, KeepsOneRectangleAKind) {
    EXPECT_FALSE(rememberedRectangle(FormKind::sheet).known);
    rememberedRectangle(FormKind::sheet) = {1, 2, 3, 4, true};
    EXPECT_FALSE(rememberedRectangle(FormKind::dialog).known);
    EXPECT_EQ(rememberedRectangle(FormKind::sheet).height, 4);
    rememberedRectangle(FormKind::sheet) = {};
}

}  // namespace
}  // namespace korvant::test
