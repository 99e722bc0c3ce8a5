// Rules at work: what is bound, what fails, what is computed, and what is said about it.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "korvantide/script_object.h"
#include "object/form/report_text.h"
#include "object/form/rule_book.h"
#include "object/script/object_access.h"

namespace korvant::test {
namespace {

struct Rules {
    explicit Rules(ScriptObject& object, std::int32_t locale = 0)
        : values(ObjectAccess::model(object)), book(ObjectAccess::model(object), values, locale) {
        book.pass(RuleBook::kNoRow);
    }
    WorkingCopy values;
    RuleBook book;
};

TEST(ReportTexts, NumberTheMessagesOfOneProperty) {
    struct Case {
        std::vector<std::string> messages;
        std::string errors, warnings;
    };
    const Case kCases[] = {
        {{}, "", ""},
        {{"X"}, "<b>There is an error</b><br>X", "<b>There is a warning</b><br>X"},
        {{"X", "Y"},
         "<b>There are errors</b><br>1) X<br>2) Y<br>",
         "<b>There are warnings</b><br>1) X<br>2) Y<br>"},
        {{"X", "Y", "Z"},
         "<b>There are errors</b><br>1) X<br>2) Y<br>3) Z<br>",
         "<b>There are warnings</b><br>1) X<br>2) Y<br>3) Z<br>"},
    };
    for (const Case& one : kCases) {
        ScriptObject object;
        object.addProperty("p", "P", 0, "", true);
        for (const std::string& message : one.messages) {
            object.addErrorConstraint(
                "p", "p>" + message.substr(0, 0) + "0+" + std::to_string(message[0]), message);
            object.addWarningConstraint("p", "p=" + std::to_string(message[0]), message);
        }
        Rules rules(object);
        EXPECT_EQ(rules.book.errorReport(0), one.errors);
        EXPECT_EQ(rules.book.warningReport(0), one.warnings);
    }
}

TEST(ReportTexts, SpeakTheLanguageOfTheModule) {
    ScriptObject object;
    object.addProperty("p", "P", 0, "", true);
    object.addErrorConstraint("p", "p>0", "positive");
    object.addWarningConstraint("p", "p>1", "more");
    object.addWarningConstraint("p", "p>2", "much more");
    object.addTranslation(1, "positive", "positif");
    object.addTranslation(2, "much more", "mucho mas");
    EXPECT_EQ(Rules(object, 1).book.errorReport(0), "<b>Il y a une erreur</b><br>positif");
    EXPECT_EQ(Rules(object, 2).book.warningReport(0),
              "<b>Hay advertencias</b><br>1) more<br>2) mucho mas<br>");
    EXPECT_EQ(Rules(object, 3).book.errorReport(0), "<b>There is an error</b><br>positive");
}

TEST(ReportTexts, AreCutWhenTheyGrowBeyondReason) {
    NumberedMessages messages;
    for (int i = 0; i < 100000; ++i) messages.add("a message of some length");
    EXPECT_EQ(messages.count(), 100000);
    const std::string report = propertyReport(messages, true, 0);
    EXPECT_EQ(report.size(), kReportBytes + 3);
    EXPECT_EQ(report.substr(report.size() - 3), "...");
    NumberedMessages one;
    one.add(std::string(10000000, 'x'));
    EXPECT_EQ(propertyReport(one, true, 0).size(), kReportBytes + 3);
}

TEST(Descriptions, ShowWarningsOnlyWithoutErrors) {
    const std::string hint = "Hint", none, error = "E", warning = "W";
    const std::string head = "<center><h2>Label</h2></center><br><hr color=blue><br>";
    struct Case {
        const std::string* hint;
        const std::string& errors;
        const std::string& warnings;
        std::string expected;
    };
    const Case kCases[] = {
        {nullptr, none, none, ""},
        {&hint, none, none, "Hint<br>"},
        {&none, none, none, "<br>"},
        {nullptr, error, none, "E<br>"},
        {nullptr, none, warning, "W<br>"},
        {nullptr, error, warning, "E<br>"},
        {&hint, error, warning, "Hint<br><hr color=blue><br>E<br>"},
        {&hint, none, warning, "Hint<br><hr color=blue><br>W<br>"},
    };
    for (const Case& one : kCases)
        EXPECT_EQ(describe({"Label", one.hint, one.errors, one.warnings}), head + one.expected);
}

TEST(RuleNames, AreReadAsExpressionsReadThem) {
    EXPECT_EQ(expressionKey("Hole Depth\t\xE9\x80"), "holedepth");
    EXPECT_EQ(expressionKey("\xC3\xA9"), "");
    EXPECT_EQ(expressionKey("a\x7F"), "a\x7F");
    ScriptObject object;
    object.addProperty("Hole Depth", "", 3.5, "", true);
    object.addProperty("HOLEDEPTH", "", 9.0, "", true);
    object.addProperty("whole", "", 7, "", true);
    object.addProperty("colour", "", 255, "color", true);
    object.addOption("a");
    object.addOption("b");
    object.addOptionProperty("choice", "", 1, true);
    object.addProperty("on", "", true, true, -1);
    object.addProperty("text", "", "four", true, false);
    object.addProperty("file", "", "", "", true, true);
    Rules rules(object);
    struct Case {
        const char* text;
        double value;
    };
    // Of two names that read alike the first is meant; texts stand for their length.
    for (const Case& one : {Case{"holedepth", 3.5}, Case{"HOLE depth", 3.5}, Case{"whole", 7},
                            Case{"colour", 255}, Case{"choice", 1}, Case{"on", 1}, Case{"text", 4},
                            Case{"file", 0}, Case{"!on", 0}, Case{"!text", 0}}) {
        const ExpressionResult result = rules.book.evaluate(one.text);
        EXPECT_EQ(result.error, "") << one.text;
        EXPECT_EQ(result.value, one.value) << one.text;
    }
}

TEST(Computations, StoreByTypeAndLeaveTextsAlone) {
    struct Case {
        double source;
        std::int32_t integer;
        bool boolean;
    };
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    for (const Case& one :
         {Case{2.9, 2, true}, Case{-2.9, -2, true}, Case{0.0, 0, false}, Case{0.4, 0, true},
          Case{1e300, 2147483647, true}, Case{-1e300, -2147483647 - 1, true},
          Case{kInfinite, 2147483647, true}, Case{-kInfinite, -2147483647 - 1, true},
          Case{std::nan(""), 0, true}, Case{2147483647.5, 2147483647, true}}) {
        ScriptObject object;
        object.addProperty("x", "", one.source, "", true);
        object.addProperty("l", "", 5, "", true);
        object.addProperty("c", "", 5, "color", true);
        object.addOptionProperty("o", "", 5, true);
        object.addProperty("b", "", false, true, -1);
        object.addProperty("d", "", 5.0, "", true);
        object.addProperty("s", "", "kept", true, false);
        for (const char* name : {"l", "c", "o", "b", "d", "s"}) object.addComputation(name, "x");
        Rules rules(object);
        for (const std::int32_t row : {1, 2, 3}) EXPECT_EQ(rules.values.integer(row), one.integer);
        EXPECT_EQ(rules.values.boolean(4), one.boolean);
        EXPECT_TRUE(sameReal(rules.values.real(5), one.source));
        EXPECT_EQ(rules.values.text(6), "kept");
    }
}

TEST(Computations, RunOnceInOrderButForTheEditedRow) {
    ScriptObject object;
    object.addProperty("a", "", 1.0, "", true);
    object.addProperty("b", "", 0.0, "", true);
    object.addProperty("c", "", 0.0, "", true);
    object.addComputation("a", "c+1");
    object.addComputation("b", "a*10");
    object.addComputation("c", "b+0.5");
    Rules rules(object);
    const auto values = [&] {
        return std::vector<double>{rules.values.real(0), rules.values.real(1),
                                   rules.values.real(2)};
    };
    // a reads c of the pass before, b and c what this pass gave.
    EXPECT_EQ(values(), (std::vector<double>{1, 10, 10.5}));
    rules.book.pass(RuleBook::kNoRow);
    EXPECT_EQ(values(), (std::vector<double>{11.5, 115, 115.5}));
    rules.values.setReal(1, 7.0);
    rules.book.pass(1);
    EXPECT_EQ(values(), (std::vector<double>{116.5, 7, 7.5}));
    rules.book.pass(0);
    EXPECT_EQ(values(), (std::vector<double>{116.5, 1165, 1165.5}));
}

/// What cannot be evaluated must hold nobody up; the fault is told below the row.
TEST(Faults, HoldAndComputeNothing) {
    ScriptObject object;
    object.addProperty("a", "", 4.0, "", true);
    object.addProperty("zero", "", 0.0, "", true);
    object.addErrorConstraint("a", "nosuch>1", "never shown");
    object.addErrorConstraint("a", "5%zero", "nor this");
    object.addWarningConstraint("a", "a<", "nor that");
    object.addEnableConstraint("a", "(((");
    object.addComputation("a", "5%zero");
    Rules rules(object);
    EXPECT_TRUE(rules.book.enabled(0));
    EXPECT_EQ(rules.book.failingErrors() + rules.book.failingWarnings(), 0);
    EXPECT_EQ(rules.values.real(0), 4.0);
    const std::vector<RuleBook::Fault> faults = rules.book.faults(0);
    ASSERT_EQ(faults.size(), 5U);
    EXPECT_EQ(faults[0].expression, "5%zero");
    EXPECT_EQ(faults[0].message, "Division by zero.");
    for (const RuleBook::Fault& fault : faults) EXPECT_NE(fault.message, "") << fault.expression;
    EXPECT_TRUE(rules.book.faults(1).empty());
    // A value mends what reads it, and the next pass finds out.
    rules.values.setReal(1, 3.0);
    rules.book.pass(1);
    EXPECT_EQ(rules.book.faults(0).size(), 3U);
    EXPECT_EQ(rules.values.real(0), 2.0);
}

TEST(Conditions, FailAtExactlyZero) {
    ScriptObject object;
    object.addProperty("x", "", 0.0, "", true);
    object.addErrorConstraint("x", "x", "zero");
    object.addEnableConstraint("x", "x");
    object.addEnableConstraint("x", "x<10");
    Rules rules(object);
    for (const double value : {0.0, -0.0, 1e-300, -1.0, 12.0}) {
        rules.values.setReal(0, value);
        rules.book.pass(0);
        EXPECT_EQ(rules.book.failingErrors(0), value == 0.0) << value;
        EXPECT_EQ(rules.book.enabled(0), value != 0.0 && value < 10) << value;
    }
    rules.values.setReal(0, std::nan(""));
    rules.book.pass(0);
    EXPECT_EQ(rules.book.failingErrors(0), 0);
}

/// Rules that are evaluated when something they read changed, against all rules every time.
class TwoBooks {
  public:
    explicit TwoBooks(unsigned seed) : random_(seed) {
        build();
        for (Rules& rules : {std::ref(*tracked_), std::ref(*full_)}) rules.book.pass(-1);
    }

    void edit() {
        const auto row = static_cast<std::int32_t>(pick(kRows));
        for (Rules* rules : {tracked_.get(), full_.get()}) write(*rules, row);
        if (pick(6) == 0) {
            tracked_->book.check();
            full_->book.markAll();
            full_->book.check();
            // Checking leaves the computations waiting; both books do them next.
        } else {
            const std::int32_t edited = pick(4) == 0 ? RuleBook::kNoRow : row;
            tracked_->book.pass(edited);
            full_->book.markAll();
            full_->book.pass(edited);
        }
        ++state_;
        compare();
    }

  private:
    static constexpr std::size_t kRows = 40;

    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    std::string name() { return "p" + std::to_string(pick(kRows)); }

    std::string expression() {
        switch (pick(6)) {
            case 0:
                return name() + ">" + name();
            case 1:
                return name() + "*2-" + name();
            case 2:
                return "min(" + name() + ";" + name() + ";" + std::to_string(pick(20)) + ")";
            case 3:
                return name() + "%" + name();
            case 4:
                return name() + "&&" + name() + "<>" + std::to_string(pick(5));
            default:
                return pick(5) == 0 ? "broken(" : name() + "-" + std::to_string(pick(9));
        }
    }

    void build() {
        for (std::size_t i = 0; i < kRows; ++i) {
            const std::string named = "p" + std::to_string(i);
            const auto value = static_cast<int>(pick(9));
            if (i % 4 == 0) object_.addProperty(named, "", value, "", true);
            if (i % 4 == 1) object_.addProperty(named, "", value / 2.0, "", true);
            if (i % 4 == 2) object_.addProperty(named, "", value > 4, true, -1);
            if (i % 4 == 3) object_.addProperty(named, "", "text", true, false);
        }
        for (std::size_t i = 0; i < kRows * 3; ++i) {
            object_.addErrorConstraint(name(), expression(), "error " + std::to_string(i));
            object_.addWarningConstraint(name(), expression(), "warning " + std::to_string(i));
            object_.addEnableConstraint(name(), expression());
            if (i % 12 == 0) object_.addComputation(name(), expression());
        }
        tracked_ = std::make_unique<Rules>(object_);
        full_ = std::make_unique<Rules>(object_);
    }

    void write(Rules& rules, std::int32_t row) {
        std::mt19937 same(state_);
        const auto value = static_cast<std::int32_t>(same() % 12);
        switch (row % 4) {
            case 0:
                rules.values.setInteger(row, value);
                break;
            case 1:
                rules.values.setReal(row, value / 2.0);
                break;
            case 2:
                rules.values.setBoolean(row, value > 5);
                break;
            default:
                rules.values.setText(row, std::string(static_cast<std::size_t>(value), 'x'));
        }
    }

    void compare() {
        ASSERT_EQ(tracked_->book.failingErrors(), full_->book.failingErrors());
        ASSERT_EQ(tracked_->book.failingWarnings(), full_->book.failingWarnings());
        for (std::int32_t row = 0; row < static_cast<std::int32_t>(kRows); ++row) {
            ASSERT_TRUE(sameSlots(tracked_->values.slots(row), full_->values.slots(row))) << row;
            ASSERT_EQ(tracked_->book.enabled(row), full_->book.enabled(row)) << row;
            ASSERT_EQ(tracked_->book.errorReport(row), full_->book.errorReport(row));
            ASSERT_EQ(tracked_->book.warningReport(row), full_->book.warningReport(row));
            ASSERT_EQ(tracked_->book.faults(row), full_->book.faults(row));
        }
    }

    std::mt19937 random_;
    unsigned state_ = 1;
    ScriptObject object_;
    std::unique_ptr<Rules> tracked_, full_;
};

TEST(TrackedRules, SayWhatEvaluatingAllOfThemSays) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        TwoBooks books(seed);
        for (int i = 0; i < 80 && !::testing::Test::HasFatalFailure(); ++i) books.edit();
        if (::testing::Test::HasFailure()) return;
    }
}

/// markAll() evaluates computations again that tracking knows to be settled; a computation that
/// feeds itself must go on feeding itself all the same.
TEST(TrackedRules, GoOnWithAComputationThatReadsItself) {
    ScriptObject object;
    object.addProperty("n", "", 0, "", true);
    object.addProperty("x", "", 0.0, "", true);
    object.addComputation("n", "n+1");
    Rules rules(object);
    for (int i = 2; i < 6; ++i) {
        rules.values.setReal(1, i);
        rules.book.pass(1);
        EXPECT_EQ(rules.values.integer(0), i);
    }
}

}  // namespace
}  // namespace korvant::test
