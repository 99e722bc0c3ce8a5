// What is offered while one writes, by a service that answers when the test lets it.
#include "editor/assist/code_assist.h"

#include <gmock/gmock.h>

#include <deque>

#include "editor/assist/hover_expression.h"
#include "support/memory_control.h"

namespace korvant::test {
namespace {

using testing::ElementsAre;

/// Answers with what the test has prepared, when it says so.
class Answers : public AssistService {
  public:
    void ask(std::shared_ptr<const std::string> text, AssistQuestion question,
             Answered answered) override {
        waiting.push_back({std::move(text), std::move(question), std::move(answered)});
    }
    void read(std::shared_ptr<const std::string>, IndexRead) override {}

    struct Waiting {
        std::shared_ptr<const std::string> text;
        AssistQuestion question;
        Answered answered;
    };
    std::deque<Waiting> waiting;
};

class View : public AssistView {
  public:
    void showSuggestions(const SuggestionList& list, int position) override {
        suggested.clear();
        for (std::size_t i = 0; i < list.count(); ++i)
            suggested.push_back((i == list.chosen() ? ">" : "") + list.row(i).suggestion.label);
        place = position;
    }
    void hideSuggestions() override { suggested.clear(); }
    void showSignatures(const Signatures& signatures, int position) override {
        tip = signatures.all[signatures.active].label;
        place = position;
    }
    void showDocumentation(const HoverText& help) override { tip = help.declaration; }
    bool showValue(const std::string& expression, ByteRange) override {
        value = expression;
        return hasValue;
    }
    void say(const Sentence& sentence, int) override { tip = sentence.text(); }
    void hideTips() override { tip.clear(); }
    void choosePlace(bool uses, const std::string& name,
                     const std::vector<ListedPlace>& found) override {
        tip = (uses ? "Uses of " : "Declarations of ") + name;
        places = found;
    }
    void chooseRepair(const std::vector<Repair>& found, int) override { repairs = found; }
    void askName(const std::string& name, ByteRange) override { asked = name; }
    void refuseName(const Sentence& reason) override { tip = reason.text(); }
    void closeName() override { asked.clear(); }
    void markOccurrences(const std::vector<ByteRange>& found) override { marked = found.size(); }
    void selectAll(const std::vector<ByteRange>& ranges) override { selected = ranges; }
    void goTo(std::size_t position) override {
        wentTo.push_back(position);
        if (moved) moved(position);
    }

    std::vector<std::string> suggested;
    std::string tip, value, asked;
    std::vector<ListedPlace> places;
    std::vector<Repair> repairs;
    std::vector<ByteRange> selected;
    std::vector<std::size_t> wentTo;
    std::function<void(std::size_t)> moved;
    std::size_t marked = 0;
    int place = -1;
    bool hasValue = true;
};

Suggestion named(const std::string& label, const std::string& detail = {},
                 Suggestion::Kind kind = Suggestion::Kind::variable) {
    Suggestion one;
    one.kind = kind;
    one.label = label;
    one.detail = detail;
    return one;
}

class Assisting : public testing::Test {
  protected:
    Assisting() {
        control.notify = [this](const ControlNotification& n) { assist.notified(n); };
        view.moved = [this](std::size_t at) { caretTo(static_cast<int>(at)); };
    }
    void type(const std::string& text) { control.type(text); }
    void caretTo(int position) {
        control.caret = control.anchor = position;
        ControlNotification moved;
        moved.code = sci::kUpdateUi;
        assist.notified(moved);
    }
    /// The answer to what was asked last; what waits before it stays without.
    void answer(const AssistAnswer& found, AssistQuestion::Kind kind) {
        ASSERT_FALSE(service.waiting.empty());
        const auto last = service.waiting.back();
        service.waiting.clear();
        ASSERT_EQ(last.question.kind, kind);
        last.answered(&found);
    }
    void offer(std::vector<Suggestion> names) {
        AssistAnswer found;
        found.suggestions = std::move(names);
        answer(found, AssistQuestion::Kind::suggestions);
    }
    bool press(int code) { return assist.key({code}); }

    MemoryControl control;
    TextControl editor{control.send()};
    Answers service;
    View view;
    bool isStopped = false;
    CodeAssist assist{{editor, view, [this] { return &service; }, [this] { return isStopped; }}};
};

TEST_F(Assisting, ThreeLettersAskAndTheListFollowsTheWord) {
    type("St");
    EXPECT_TRUE(service.waiting.empty());
    type("r");
    EXPECT_EQ(service.waiting.back().question.offset, 3u);
    type("S");  // while the answer is on its way
    offer({named("StrSize"), named("strange"), named("StrSubstring"), named("other")});
    EXPECT_THAT(view.suggested, ElementsAre(">StrSize", "StrSubstring"));
    EXPECT_EQ(view.place, 0);
    EXPECT_TRUE(press(KeyPress::kDown));
    EXPECT_THAT(view.suggested, ElementsAre("StrSize", ">StrSubstring"));
    EXPECT_TRUE(press(KeyPress::kDown));
    EXPECT_THAT(view.suggested, ElementsAre(">StrSize", "StrSubstring"));
    EXPECT_TRUE(press(KeyPress::kEnter));
    EXPECT_EQ(control.text, "StrSize");
    EXPECT_EQ(control.caret, 7);
    EXPECT_TRUE(view.suggested.empty());
    EXPECT_FALSE(press(KeyPress::kEnter)) << "nothing is open any more";
}

TEST_F(Assisting, AnswerThatComesTooLateShowsNothing) {
    type("Str");
    type(" ");
    const auto late = service.waiting.back();
    AssistAnswer found;
    found.suggestions = {named("StrSize")};
    late.answered(&found);
    EXPECT_TRUE(view.suggested.empty());
    type("abc");
    assist.escape();
    service.waiting.back().answered(nullptr);
    EXPECT_TRUE(view.suggested.empty());
}

TEST_F(Assisting, EnterBehindAWholeWordBeginsALine) {
    type("for");
    Suggestion snippet = named("for", "counts", Suggestion::Kind::snippet);
    snippet.snippet = true;
    snippet.insert = "for (int ${1:i} = 0; ${1:i} < ${2:n}; ${1:i}++) {\n    $0\n}";
    offer({named("forward"), named("for", {}, Suggestion::Kind::keyword), snippet});
    EXPECT_EQ(view.suggested.front(), ">for");
    EXPECT_FALSE(press(KeyPress::kEnter));
    EXPECT_TRUE(view.suggested.empty());
    EXPECT_EQ(control.text, "for");
}

/// "sum", which nothing knew yet, became "SetMaxRunTime" with the end of its line.
TEST_F(Assisting, EnterTakesNoNameThatOnlyHasTheLetters) {
    type("sum");
    offer({named("SetMaxRunTime")});
    EXPECT_THAT(view.suggested, ElementsAre(">SetMaxRunTime"));
    EXPECT_FALSE(press(KeyPress::kEnter));
    EXPECT_EQ(control.text, "sum");
    for (const int key : {KeyPress::kEnter, KeyPress::kTab}) {
        control.text.clear();
        control.caret = control.anchor = 0;
        type("sum");
        offer({named("SetMaxRunTime")});
        if (key == KeyPress::kEnter) {
            EXPECT_TRUE(press(KeyPress::kDown));
        }
        EXPECT_TRUE(press(key));
        EXPECT_EQ(control.text, "SetMaxRunTime");
    }
}

TEST_F(Assisting, SnippetIsFilledPlaceByPlace) {
    control.press("    fo");
    assist.complete();
    Suggestion snippet = named("for", "counts", Suggestion::Kind::snippet);
    snippet.snippet = true;
    snippet.insert = "for (int ${1:i} = 0; ${1:i} < ${2:n};) {\n    $0\n}";
    offer({snippet});
    EXPECT_TRUE(press(KeyPress::kTab));
    EXPECT_EQ(control.text, "    for (int i = 0; i < n;) {\n        \n    }");
    EXPECT_THAT(view.selected, ElementsAre(ByteRange{13, 14}, ByteRange{20, 21}));
    // The name is written into both places.
    editor.select(20, 21);
    control.press("row");
    editor.select(13, 14);
    control.press("row");
    EXPECT_TRUE(press(KeyPress::kTab));
    EXPECT_THAT(view.selected, ElementsAre(ByteRange{28, 29}));
    editor.select(29, 29);
    EXPECT_TRUE(press(KeyPress::kTab));
    ASSERT_EQ(view.selected.size(), 1u);
    EXPECT_EQ(control.text.substr(view.selected[0].begin), "\n    }");
    EXPECT_FALSE(press(KeyPress::kTab)) << "everything is filled";
}

TEST_F(Assisting, DotAndPathAskAndNumbersDoNot) {
    type("x = 12.");
    EXPECT_TRUE(service.waiting.empty());
    type(" a.");
    EXPECT_EQ(service.waiting.size(), 1u);
    type("Rock::");
    EXPECT_EQ(service.waiting.back().question.offset, control.text.size());
    offer({named("granite", "Rock::granite", Suggestion::Kind::enumValue)});
    EXPECT_THAT(view.suggested, ElementsAre(">granite"));
    type(";");
    EXPECT_TRUE(view.suggested.empty());
}

TEST_F(Assisting, ParametersFollowTheCaretAndGoWithTheCall) {
    type("a = f(");
    AssistAnswer found;
    found.signatures.all = {{"int f(int a, int b)", {}, {}}};
    answer(found, AssistQuestion::Kind::signatures);
    EXPECT_EQ(view.tip, "int f(int a, int b)");
    EXPECT_EQ(view.place, 5);
    type("1");
    caretTo(7);
    EXPECT_FALSE(service.waiting.empty()) << "the caret may be in another parameter";
    caretTo(1);
    EXPECT_EQ(view.tip, "");
}

TEST_F(Assisting, HoverShowsValuesWhileStoppedAndHelpOtherwise) {
    editor.replaceText("metal += samples[i].grade;");
    assist.restedAt(21);
    ASSERT_EQ(service.waiting.size(), 1u);
    AssistAnswer help;
    help.hover = HoverText{{20, 25}, "double grade", {}};
    answer(help, AssistQuestion::Kind::hover);
    EXPECT_EQ(view.tip, "double grade");
    isStopped = true;
    assist.hideAll();
    assist.restedAt(21);
    EXPECT_EQ(view.value, "samples[i].grade");
    EXPECT_TRUE(service.waiting.empty());
    view.hasValue = false;
    assist.restedAt(10);
    EXPECT_EQ(view.value, "samples");
    EXPECT_EQ(service.waiting.size(), 1u);
}

TEST_F(Assisting, EachTextHasItsOwnWayBackAndGetsNoAnswerAboutAnother) {
    assist.textExchanged(1);
    editor.replaceText("int first;");
    caretTo(7);
    assist.leavingPlace();
    caretTo(0);
    type("Str");
    const auto late = service.waiting.back();
    const auto notify = std::exchange(control.notify, nullptr);
    editor.replaceText("int second;");
    control.notify = notify;
    assist.textExchanged(2);
    AssistAnswer found;
    found.suggestions = {named("StrSize")};
    late.answered(&found);
    EXPECT_TRUE(view.suggested.empty());
    EXPECT_EQ(*assist.text(), "int second;");
    assist.goBack();
    EXPECT_TRUE(view.wentTo.empty());
    assist.textExchanged(1);
    assist.goBack();
    EXPECT_THAT(view.wentTo, ElementsAre(10u));
}

TEST_F(Assisting, DeclarationIsGoneToAndBackFrom) {
    editor.replaceText("int a;\nint b = a;\n");
    caretTo(15);
    assist.goToDeclaration();
    AssistAnswer found;
    found.word = {15, 16};
    found.places = {{4, 5}};
    answer(found, AssistQuestion::Kind::definition);
    EXPECT_THAT(view.wentTo, ElementsAre(4u));
    // What is written in front moves the way back.
    control.caret = control.anchor = 0;
    type("xx");
    caretTo(6);
    assist.goBack();
    EXPECT_THAT(view.wentTo, ElementsAre(4u, 17u));
    assist.goForward();
    EXPECT_EQ(view.wentTo.back(), 6u);
    // On the declaration itself its uses are listed.
    service.waiting.clear();
    assist.goToDeclaration();
    found.word = {6, 7};
    found.places = {{6, 7}};
    answer(found, AssistQuestion::Kind::definition);
    found.places = {{6, 7}, {17, 18}};
    answer(found, AssistQuestion::Kind::references);
    EXPECT_EQ(view.tip, "Uses of a");
    ASSERT_EQ(view.places.size(), 2u);
    EXPECT_EQ(view.places[1].line, 2);
    EXPECT_EQ(view.places[1].text, "int b = a;");
}

TEST_F(Assisting, RenameWritesEverywhereOrSaysWhyNot) {
    editor.replaceText("int a; int b = a;");
    caretTo(16);
    assist.rename();
    AssistAnswer place;
    place.word = {15, 16};
    answer(place, AssistQuestion::Kind::renamePlace);
    EXPECT_EQ(view.asked, "a");
    assist.renameTo("b");
    AssistAnswer refused;
    refused.refusal = {"\"b\" is taken"};
    answer(refused, AssistQuestion::Kind::rename);
    EXPECT_EQ(view.tip, "\"b\" is taken");
    EXPECT_EQ(view.asked, "a") << "the box stays open";
    assist.renameTo("total");
    AssistAnswer renamed;
    renamed.places = {{4, 5}, {15, 16}};
    answer(renamed, AssistQuestion::Kind::rename);
    EXPECT_EQ(control.text, "int total; int b = total;");
    EXPECT_EQ(control.caret, 24) << "behind the name, as before";
    editor.send(sci::kUndo);
    EXPECT_EQ(control.text, "int a; int b = a;");
    // An answer about a text that is no more changes nothing.
    assist.renameTo("total");
    const auto late = service.waiting.back();
    type(" ");
    late.answered(&renamed);
    EXPECT_EQ(control.text.find("total"), std::string::npos);
}

TEST_F(Assisting, ReindentChangesBlanksOfTheSelectionOnly) {
    editor.replaceText("void f() {\nint a;\n        int b;\n}\n");
    editor.select(11, 17);
    assist.reindent();
    EXPECT_EQ(control.text, "void f() {\n    int a;\n        int b;\n}\n");
    editor.select(0, 0);
    assist.reindent();
    EXPECT_EQ(control.text, "void f() {\n    int a;\n    int b;\n}\n");
    editor.send(sci::kUndo);
    EXPECT_EQ(control.text, "void f() {\n    int a;\n        int b;\n}\n");
}

TEST(SuggestionRows, AreSortedJoinedAndFoundByTheirLetters) {
    SuggestionList list;
    using Kind = Suggestion::Kind;
    list.set(
        {named("max", "int max(int a, int b)", Kind::function), named("Maximum", "double Maximum"),
         named("max", "double max(double a, double b)", Kind::function),
         named("kMaximum", "const int kMaximum = 4"), named("main", "int main()", Kind::function)});
    const auto rows = [&](const std::string& word) {
        list.filter(word);
        std::string all;
        for (std::size_t i = 0; i < list.count(); ++i) all += list.row(i).suggestion.label + " ";
        return all;
    };
    EXPECT_EQ(rows(""), "kMaximum main max Maximum ");
    EXPECT_EQ(rows("max"), "max Maximum ");
    EXPECT_EQ(list.row(0).forms, 2u);
    EXPECT_EQ(rows("Max"), "Maximum max ");
    EXPECT_EQ(rows("imum"), "kMaximum Maximum ");
    EXPECT_EQ(rows("mxm"), "kMaximum Maximum ");
    EXPECT_EQ(rows("zz"), "");
    list.filter("main");
    EXPECT_TRUE(list.isWritten());
}

TEST(SuggestionRows, DeclarationsAreTakenApart) {
    const auto parts = [](const char* declaration, const char* label) {
        const DeclarationParts found = partsOf(declaration, label);
        return found.type + "|" + found.name + "|" + found.rest;
    };
    EXPECT_EQ(parts("string@ StrChr(int code)", "StrChr"), "string@|StrChr|(int code)");
    EXPECT_EQ(parts("double Hole::grade(int at) const", "grade"), "double|grade|(int at) const");
    EXPECT_EQ(parts("Rock Rock(int Rock)", "Rock"), "Rock|Rock|(int Rock)");
    EXPECT_EQ(parts("const int kMost = 5", "kMost"), "const int|kMost| = 5");
    EXPECT_EQ(parts("counts from 0", "for"), "counts from 0||");
}

TEST(HoverExpressions, EndWithTheNameUnderThePointer) {
    const auto of = [](const std::string& text, const std::string& word) {
        const std::size_t at = text.rfind(word);
        return expressionEndingWith(text, {at, at + word.size()});
    };
    EXPECT_EQ(of("x = a.b[i + c[2]].grade;", "grade"), "a.b[i + c[2]].grade");
    EXPECT_EQ(of("x = this.count;", "count"), "this.count");
    EXPECT_EQ(of("f().count", "count"), "") << "what is called could change something";
    EXPECT_EQ(of("count (1)", "count"), "");
    EXPECT_EQ(of("].count", "count"), "");
    EXPECT_EQ(of("12", "12"), "");
}

}  // namespace
}  // namespace korvant::test
