// Message boxes, prompts and the run-time functions, as scripts call them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "host/engine/script_string.h"
#include "host/library/dialog_functions.h"
#include "support/script_fixture.h"

namespace korvant {
namespace {

using testing::ElementsAre;

class DialogFunctions : public test::ScriptInBothConventions {
  protected:
    bool runMain(const std::string& body) { return run("int main() { " + body + " return 0; }"); }
};

INSTANTIATE_TEST_SUITE_P(Conventions, DialogFunctions, testing::Bool(), test::conventionName);

TEST_P(DialogFunctions, BoxesHaveTheirIconsAndButtons) {
    output("Error(\"e\"); Warning(\"w\"); Information(\"a < b\"); Question(\"q\");");
    ASSERT_EQ(4u, frontend.boxes.size());
    const std::uint32_t styles[] = {16, 48, 64, 36};
    const char* texts[] = {"e", "w", "a < b", "q"};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(styles[i], frontend.boxes[i].style);
        EXPECT_EQ(texts[i], frontend.boxes[i].text);
        EXPECT_TRUE(frontend.boxes[i].plain);
        EXPECT_FALSE(frontend.boxes[i].runReport);
    }
}

TEST_P(DialogFunctions, AQuestionIsTrueForYesAlone) {
    frontend.answers = {box_button::kYes, box_button::kNo, 0};
    EXPECT_EQ("yes no no", output("Print(Question(\"1\") ? \"yes \" : \"no \");"
                                  "Print(Question(\"2\") ? \"yes \" : \"no \");"
                                  "Print(Question(\"3\") ? \"yes\" : \"no\");"));
}

TEST_P(DialogFunctions, PromptsGiveWhatWasEnteredOrWhatWasOffered) {
    const std::string all =
        "string s = Prompt(\"t\", \"old\"); Print(Prompt(\"i\", 5) + \" \" + "
        "Prompt(\"f\", 0.5f) + \" \" + Prompt(\"d\", 0.25) + \" \" + s);";
    EXPECT_EQ("5 0.5 0.25 old", output("\"\";" + all));
    EXPECT_THAT(frontend.labels, ElementsAre("t", "i", "f", "d"));
    frontend.number = 7;
    frontend.text = "new";
    EXPECT_EQ("7 7 7 new", output("\"\";" + all));
}

TEST_P(DialogFunctions, HandlesOfTwoPromptsShowTheSecondText) {
    frontend.text = "first";
    frontend.meanwhile = [this] {
        if (frontend.labels.size() == 2) frontend.text = "second";
    };
    EXPECT_EQ("second second",
              output("string@ a = Prompt(\"1\", \"\"); string@ b = Prompt(\"2\", \"\");"
                     "Print(a + \" \" + b);"));
    // Released more often than it was handed out it would be gone by now.
    EXPECT_EQ("X",
              output("for (int i = 0; i < 1000; i++) { string@ h = Prompt(\"\", \"\"); @h = null; }"
                     "Print(StrToUpper(\"x\"));"));
}

TEST_P(DialogFunctions, WaitingDoesNotCountAndIsSeenByTheLimit) {
    test::FakeClock clock;
    useClock(&clock);
    bool interacting = true;
    frontend.meanwhile = [&] {
        interacting = interacting && session().interacting();
        clock.advance(60'000);
    };
    EXPECT_TRUE(
        runMain("Error(\"\"); Question(\"\"); string@ s = Prompt(\"\", \"\"); Prompt(\"\", 1);"
                "Prompt(\"\", 1.0f); Prompt(\"\", 1.0);"));
    EXPECT_TRUE(interacting);
    EXPECT_FALSE(session().interacting());
    useClock(nullptr);
}

TEST_P(DialogFunctions, PrintedTextIsHandedOverBeforeABoxIsShown) {
    std::vector<std::string> scopes;
    static std::vector<std::string>* seen;
    seen = &scopes;
    session().setServices({&console, &frontend, nullptr,
                           [](bool enter) { seen->push_back(enter ? "enter" : "leave"); }});
    frontend.meanwhile = [&] { scopes.push_back(console.output); };
    EXPECT_TRUE(runMain("Print(\"before\"); Information(\"box\"); Prompt(\"i\", 1);"));
    EXPECT_THAT(scopes, ElementsAre("enter", "before", "leave", "enter", "before", "leave"));
    useClock(nullptr);
}

TEST_P(DialogFunctions, AFrontEndThatThrowsEndsInAScriptException) {
    frontend.meanwhile = [] { throw std::runtime_error("no display"); };
    EXPECT_EQ("Internal error", exceptionOf("Prompt(\"\", 1);"));
    EXPECT_FALSE(session().interacting());
    frontend.meanwhile = [] { throw std::bad_alloc(); };
    EXPECT_EQ("Out of memory", exceptionOf("Prompt(\"\", \"\");"));
}

TEST_P(DialogFunctions, ALoopOfBoxesOffersAWayOut) {
    Limits limits;
    limits.boxesBeforeStopButton = 3;
    useLimits(limits);
    frontend.answers = {1, 1, 1, 1, box_button::kStopScript};
    EXPECT_FALSE(runMain("while (true) Information(\"again\");"));
    EXPECT_EQ(RunFailure::Kind::stopped, session().lastFailure().kind);
    std::vector<bool> offered;
    for (const MessageBoxRequest& box : frontend.boxes)
        if (!box.runReport) offered.push_back(box.offerStop);
    EXPECT_THAT(offered, ElementsAre(false, false, false, true, true));
    limits.boxesBeforeStopButton = 0;
    useLimits(limits);
    frontend.boxes.clear();
    output("for (int i = 0; i < 50; i++) Information(\"\");");
    EXPECT_FALSE(frontend.boxes.back().offerStop);
    useLimits({});
}

TEST_P(DialogFunctions, TheRunTimeIsSetAndTheClockIsRead) {
    test::FakeClock clock(5000);
    useClock(&clock);
    EXPECT_EQ("5000", output("Print(\"\" + GetSystemTime());"));
    clock.setTick(0xFFFFFFFF);
    EXPECT_EQ("4294967295", output("Print(\"\" + GetSystemTime());"));
    EXPECT_TRUE(runMain("SetMaxRunTime(250);"));
    EXPECT_EQ(250u, session().maxRunTime());
    EXPECT_EQ(249u, session().limitBegan() + 250u);  // counted across the end of the clock's range
    useClock(nullptr);
    EXPECT_FALSE(runMain("SetMaxRunTime(0); while (true) {}"));
    EXPECT_EQ(RunFailure::Kind::timeOut, session().lastFailure().kind);
}

}  // namespace
}  // namespace korvant
