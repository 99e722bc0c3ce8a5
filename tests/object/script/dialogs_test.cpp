// Questions that objects ask: what is shown, what comes back, and what it does to the time limit.
#include "korvantide/script_object.h"
#include "support/script_fixture.h"

namespace korvant::test {
namespace {

class ObjectDialogs : public ScriptFixture {
  protected:
    ~ObjectDialogs() override { ScriptObject::m_locale = 0; }
    ScriptObject object;
};

TEST_F(ObjectDialogs, ABoxIsTranslatedAndCarriesItsNames) {
    object.addTranslation(1, "Save?", "Enregistrer ?");
    object.addTranslation(1, "Pump", "Pompe");
    object.addTranslation(1, "details", "en d\351tail");
    object.setLocale(1);
    frontend.answers = {box_button::kYes};
    EXPECT_EQ(object.messageBox("Pump", "Save?", ScriptObject::BU_YES_NO, ScriptObject::IC_QUESTION,
                                "details"),
              ScriptObject::ID_YES);
    const MessageBoxRequest& box = frontend.boxes.at(0);
    EXPECT_EQ(box.caption, "Pompe");
    EXPECT_EQ(box.text, "Enregistrer ?");
    EXPECT_EQ(box.details, "en d\351tail");
    EXPECT_EQ(box.style, 0x40040000U | 4U | 32U);
    EXPECT_EQ(box.captions.at(box_button::kYes), "Oui");
    EXPECT_EQ(box.captions.at(box_button::kNo), "Non");
    EXPECT_EQ(box.module, "KorvantIDE");
    EXPECT_EQ(box.company, "ZVK-Korvant");
    EXPECT_FALSE(box.plain);
}

TEST_F(ObjectDialogs, NamesChooseButtonsAndIcon) {
    std::string caption = "c", text = "t", extra = "e";
    struct Case {
        const char* buttons;
        const char* icon;
        std::uint32_t style;
    };
    for (const Case& one :
         {Case{"BU_OK_CANCEL", "IC_ERROR", 1 | 16},
          Case{"BU_YES_ALL_NO_ALL", "IC_WARNING", 0x18000034}, Case{"bu_ok_cancel", "IC_ERROR", 16},
          Case{"", "", 0}, Case{"IC_ERROR", "BU_OK", 0}}) {
        std::string buttons = one.buttons, icon = one.icon;
        EXPECT_EQ(object._messageBoxStrEx(caption, text, buttons, icon, extra),
                  ScriptObject::ID_CANCEL);
        EXPECT_EQ(frontend.boxes.back().style, one.style | 0x40040000U) << one.buttons;
        EXPECT_EQ(frontend.boxes.back().details, "e");
        object._messageBoxStr(caption, text, buttons, icon);
        EXPECT_EQ(frontend.boxes.back().details, "");
    }
}

int befores = 0;
int afters = 0;

/// After an answer the waiting goes on; only a box closed without a button ends it.
TEST_F(ObjectDialogs, OnlyABoxWithoutAnAnswerCallsTheHookAfter) {
    ScriptObject::m_before = [] { ++befores; };
    ScriptObject::m_after = [] { ++afters; };
    struct Case {
        int button;
        std::int32_t answer;
        int afters;
    };
    for (const Case& one : {Case{1, 209, 0}, Case{2, 202, 0}, Case{20, 208, 0}, Case{0, 202, 1},
                            Case{9, 202, 1}, Case{32, 202, 1}, Case{77, 202, 1}}) {
        befores = afters = 0;
        frontend.answers = {one.button};
        EXPECT_EQ(object.messageBox("c", "t", 15, 0, ""), one.answer) << one.button;
        EXPECT_EQ(befores, 1);
        EXPECT_EQ(afters, one.afters) << one.button;
    }
    run("int main() { return 0; }");  // forgets the stop
    frontend.boxes.clear();
    befores = afters = 0;
    object.prompt("label", 1);
    object.prompt("label", 1.5);
    object.prompt("label", "text");
    EXPECT_EQ(befores + afters, 0);
    // The hook of the beginning counts, null included.
    ScriptObject::m_after = nullptr;
    frontend.meanwhile = [] { ScriptObject::m_after = [] { ++afters; }; };
    object.messageBox("c", "t", 15, 0, "");
    EXPECT_EQ(afters, 0);
    ScriptObject::m_before = nullptr;
    object.messageBox("c", "t", 15, 0, "");
    EXPECT_EQ(afters, 1);
    ScriptObject::m_after = nullptr;
}

TEST_F(ObjectDialogs, WaitingInsideARunStopsTheClock) {
    FakeClock clock;
    useClock(&clock);
    frontend.meanwhile = [&] { clock.advance(60000); };
    frontend.answers = {box_button::kOk, 0};
    // After the first answer the limit is off, after the box without one it is on again.
    const std::string script =
        "int main() { Object o; SetMaxRunTime(1000); o.prompt(\"p\", 1); Print(\"a\");\n"
        "o.messageBox(\"c\", \"t\", \"BU_OK\", \"IC_ERROR\"); Print(\"b\"); Print(\"c\");\n"
        "o.messageBox(\"c\", \"t\", \"BU_OK\", \"IC_ERROR\"); Print(\"d\"); return 0; }\n";
    EXPECT_TRUE(run(script)) << session().lastFailure().text;
    EXPECT_EQ(console.output, "abcd");
    EXPECT_FALSE(session().interacting());
}

TEST_F(ObjectDialogs, AnAnsweredBoxLeavesTheWaitingAndEditEndsIt) {
    frontend.answers = {box_button::kOk};
    const std::string body =
        "Object o; o.messageBox(\"c\", \"t\", \"BU_OK\", \"IC_ERROR\"); Probe(); o.edit(); "
        "Probe();";
    static std::string seen;
    seen.clear();
    engine()->RegisterGlobalFunction(
        "void Probe()", asFUNCTION(+[] { seen += moduleSession().interacting() ? "w" : "-"; }),
        asCALL_CDECL);
    ::testing::internal::CaptureStderr();
    output(body);
    ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(seen, "w-");
}

TEST_F(ObjectDialogs, PromptsTranslateTheLabelAndReturnWhatStandsThere) {
    object.addTranslation(2, "Depth", "Profundidad");
    object.addTranslation(2, "initial", "inicial");
    object.setLocale(2);
    EXPECT_EQ(object.prompt("Depth", 7), 7);
    EXPECT_EQ(object.prompt("Depth", -0.25), -0.25);
    EXPECT_EQ(object.prompt("Depth", "initial"), "initial");
    EXPECT_EQ(frontend.labels, (std::vector<std::string>(3, "Profundidad")));
    frontend.number = 12.5;
    frontend.text = "first";
    EXPECT_EQ(object.prompt("Depth", 7), 12);
    EXPECT_EQ(object.prompt("Depth", 0.0), 12.5);
    std::string label = "Depth";
    const std::string& first = object._promptString(label, "x");
    EXPECT_EQ(first, "first");
    frontend.text = "second";
    ScriptObject other;
    const std::string& second = other._promptString(label, "x");
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first, "second");
    // The text that is offered may be the answer of the last prompt itself.
    frontend.text.reset();
    EXPECT_EQ(other._promptString(label, first), "second");
}

TEST_F(ObjectDialogs, RichTextIsShownAsMarkup) {
    object.showRtfDialog("Help", "{\\rtf1 a\\b b\\b0\\par c}");
    EXPECT_EQ(frontend.boxes.at(0).text, "a<b>b</b><br>c");
    EXPECT_EQ(frontend.boxes.at(0).caption, "Help");
    EXPECT_EQ(frontend.boxes.at(0).style, box_style::kOk);
}

}  // namespace
}  // namespace korvant::test
