// The plain C functions, as a host without a toolkit uses them.
#include "korvantide/host_interface.h"

#include <gmock/gmock.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "korvantide/korvantide.h"
#include "language/api_description.h"
#include "support/script_fixture.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

KorvantRunResult lastResult() {
    KorvantRunResult result{};
    result.size = sizeof result;
    GetLastRunResult(&result);
    return result;
}

std::string frameText(std::uint32_t index) {
    KorvantRunFrame frame{};
    frame.size = sizeof frame;
    if (GetRunFrame(index, &frame) == 0) return "";
    return std::string(frame.function) + ":" + std::to_string(frame.line);
}

class HostRun : public ScriptFixture {
  protected:
    /// RunScript of a function without arguments of `text`.
    int runScript(const std::string& text, const char* name) {
        EXPECT_EQ(CompileScript(engine(), text), 1) << messages();
        context()->Prepare(engine()->GetModule("main")->GetFunctionByName(name));
        return RunScript(context());
    }
};

TEST_F(HostRun, RunScriptSaysWhyAndWhereARunEndedAndShowsNothing) {
    EXPECT_EQ(
        runScript("int[] a;\nvoid inner() {\n a[7] = 1;\n}\nvoid outer() {\n inner();\n}", "outer"),
        asEXECUTION_EXCEPTION);
    EXPECT_EQ(lastResult().end, KORVANT_RUN_EXCEPTION);
    EXPECT_EQ(lastResult().line, 3);
    EXPECT_THAT(lastResult().message, HasSubstr("desc: Index out of bounds"));
    EXPECT_EQ(lastResult().calls, lastResult().frames);
    std::vector<std::string> frames;
    for (std::uint32_t i = 0; i < lastResult().frames; ++i) frames.push_back(frameText(i));
    EXPECT_THAT(frames, ::testing::IsSupersetOf({"void inner():3", "void outer():6"}));

    EXPECT_EQ(runScript("void f() {\n SetMaxRunTime(20);\n while (true) {}\n}", "f"),
              asEXECUTION_ABORTED);
    EXPECT_EQ(lastResult().end, KORVANT_RUN_TIMED_OUT);
    EXPECT_EQ(lastResult().line, 3);
    EXPECT_EQ(frameText(0), "void f():3");

    engine()->RegisterGlobalFunction("void stop()", asFUNCTION(RequestScriptStop), asCALL_CDECL);
    frontend.boxes.clear();
    EXPECT_EQ(runScript("void f() {\n stop();\n while (true) {}\n}", "f"), asEXECUTION_ABORTED);
    EXPECT_EQ(lastResult().end, KORVANT_RUN_STOPPED);

    EXPECT_EQ(runScript("void f() {}", "f"), asEXECUTION_FINISHED);
    EXPECT_EQ(lastResult().end, KORVANT_RUN_FINISHED);
    EXPECT_EQ(frameText(0), "");
    EXPECT_THAT(boxes(), ::testing::Not(HasSubstr("exception")));
}

/// A host that shows everything itself.
class HostCallbacksTest : public ScriptFixture {
  protected:
    HostCallbacksTest() {
        callbacks.size = sizeof callbacks;
        callbacks.user = this;
        callbacks.print = print;
        callbacks.message = message;
        callbacks.box = box;
        callbacks.answerBox = answerBox;
        EXPECT_EQ(SetScriptCallbacks(&callbacks), 1);
    }
    ~HostCallbacksTest() override { SetScriptCallbacks(nullptr); }

    KorvantCallbacks callbacks{};
    std::string printed;
    std::vector<std::string> told;
    std::vector<std::string> shown;
    bool takesPrint = true;
    bool takesBoxes = true;
    bool throws = false;
    std::chrono::milliseconds thinks{0};
    std::int32_t button = KORVANT_BUTTON_OK;
    double number = 0;
    const char* text = "";

  private:
    static HostCallbacksTest& self(void* user) {
        auto& test = *static_cast<HostCallbacksTest*>(user);
        if (test.throws) throw std::runtime_error("of the host");
        return test;
    }
    static std::int32_t print(void* user, const char* bytes, std::uint64_t count) {
        self(user).printed.append(bytes, count);
        return self(user).takesPrint;
    }
    static void message(void* user, const KorvantBuildMessage* message) {
        self(user).told.push_back(std::to_string(message->kind) + ":" +
                                  std::to_string(message->row) + ":" +
                                  std::to_string(message->column) + " " + message->text);
    }
    static void box(void* user, const KorvantBox* box) {
        std::string line =
            std::to_string(box->kind) + ":" + std::to_string(box->style) + " " + box->text + " [";
        for (std::uint32_t i = 0; i < box->buttonCount; ++i)
            line += std::to_string(box->buttons[i]) + box->captions[i] + " ";
        self(user).shown.push_back(line + "] " + box->offered);
    }
    static std::int32_t answerBox(void* user, const KorvantBox* box, KorvantBoxAnswer* answer) {
        auto& test = self(user);
        std::this_thread::sleep_for(test.thinks);
        EXPECT_EQ(answer->button, box->closeButton);
        answer->button = test.button;
        answer->number = test.number;
        answer->text = test.text;
        return test.takesBoxes;
    }
};

TEST_F(HostCallbacksTest, GetOutputAndMessagesInPlaceOfConsoleAndBoxes) {
    const std::string script =
        "int main() {\n int unused = 5000000000;\n Print(\"a%%b\\0c\");\n int[] a;\n"
        " return a[3];\n}";
    EXPECT_FALSE(RunApplication(engine(), context(), script, nullptr));
    EXPECT_EQ(printed, std::string("a%b\0c", 5));
    EXPECT_EQ(console.output, "");
    EXPECT_THAT(console.calls, ::testing::Not(::testing::Contains("allocate")));
    EXPECT_THAT(told, ::testing::Contains(::testing::StartsWith("1:2:")));
    EXPECT_THAT(shown, ElementsAre(::testing::StartsWith("1:16 The script ended with an")));
    EXPECT_THAT(frontend.boxes, IsEmpty());

    told.clear();
    EXPECT_FALSE(RunApplication(engine(), context(), "int main() {\n return x;\n}", nullptr));
    EXPECT_THAT(told, ::testing::Contains("0:2:9 No matching symbol 'x'"));

    takesPrint = takesBoxes = false;
    EXPECT_EQ(output("Print(\"both\"); Information(\"i\");"), "both");
    EXPECT_THAT(printed, ::testing::EndsWith("both"));
    EXPECT_EQ(boxes(), "i\n");
}

TEST_F(HostCallbacksTest, AnswerQuestionsOfEveryKind) {
    takesPrint = false;
    button = KORVANT_BUTTON_YES;
    EXPECT_EQ(value("Question(\"Go on?\") ? 1 : 0"), "1");
    EXPECT_EQ(shown.back(), "0:36 Go on? [6Yes 7No ] ");
    button = KORVANT_BUTTON_OK;  // which the box does not have: it is closed
    EXPECT_EQ(value("Question(\"Go on?\") ? 1 : 0"), "0");
    number = 1e30;
    EXPECT_EQ(value("Prompt(\"How many?\", 12)"), "2147483647");
    EXPECT_EQ(shown.back(), "2:1 How many? [1OK 2Cancel ] 12");
    number = -2.75;
    EXPECT_EQ(value("Prompt(\"How many?\", 12)"), "-2");
    EXPECT_EQ(value("Prompt(\"How deep?\", 0.5f)"), "-2.75");
    EXPECT_EQ(value("Prompt(\"How deep?\", 120.25)"), "-2.75");
    EXPECT_EQ(shown.back(), "3:1 How deep? [1OK 2Cancel ] 120.25");
    text = "DH-2";
    EXPECT_EQ(value("Prompt(\"Name?\", \"DH-1\")"), "DH-2");
    text = nullptr;
    EXPECT_EQ(value("Prompt(\"Name?\", \"DH-1\")"), "");
    button = KORVANT_BUTTON_CANCEL;
    EXPECT_EQ(value("Prompt(\"Name?\", \"DH-1\")"), "DH-1");
    EXPECT_EQ(value("Prompt(\"How many?\", 12)"), "12");
    EXPECT_EQ(
        output("Object o; Print(\"\" + o.messageBox(\"c\", \"<b>t</b>\", \"BU_YES_NO_CANCEL\","
               " \"IC_WARNING\"));"),
        "202");
    EXPECT_EQ(shown.back(), "0:51 <b>t</b> [6Yes 7No 2Cancel ] ");
    EXPECT_THAT(frontend.boxes, IsEmpty());
}

TEST_F(HostCallbacksTest, ALoopAroundAnAnsweredQuestionEndsAndAReaderHasHisTime) {
    EXPECT_FALSE(
        run("int main() { SetMaxRunTime(100); while (true) Information(\"i\"); return 0; }"));
    EXPECT_EQ(lastResult().end, KORVANT_RUN_TIMED_OUT);
    thinks = std::chrono::milliseconds(150);
    EXPECT_TRUE(
        run("int main() { SetMaxRunTime(100); Information(\"i\"); int i = 0;"
            " while (i < 1000) i++; return 0; }"))
        << lastResult().message;
}

TEST_F(HostCallbacksTest, ThatThrowAreAsGoodAsNone) {
    throws = true;
    EXPECT_EQ(output("Print(\"on\"); Information(\"i\");"), "on");
    EXPECT_EQ(boxes(), "i\n");
    EXPECT_EQ(CompileScript(engine(), "not a script"), 0);
}

TEST_F(HostCallbacksTest, AreRefusedInsideARunAndWithAWrongSize) {
    static std::int32_t answer = 1;
    engine()->RegisterGlobalFunction(
        "void change()", asFUNCTION(+[] { answer = SetScriptCallbacks(nullptr); }), asCALL_CDECL);
    output("change(); Print(\"x\");");
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(printed, "x");
    KorvantCallbacks wrong = callbacks;
    for (const std::uint32_t size : {0u, 3u, 4096u}) {
        wrong.size = size;
        EXPECT_EQ(SetScriptCallbacks(&wrong), 0) << size;
    }
    KorvantCallbacks older = callbacks;  // of a version that knew `print` alone
    older.size = offsetof(KorvantCallbacks, message);
    EXPECT_EQ(SetScriptCallbacks(&older), 1);
    EXPECT_TRUE(run("int main() { Print(\"y\"); Information(\"i\"); return 0; }"));
    EXPECT_EQ(printed, "xy");
    EXPECT_EQ(boxes(), "i\n");
}

/// What docs/embedding.md says of texts in functions of a host.
TEST_F(HostRun, TextsGoInAndOutOfFunctionsOfTheHost) {
    static std::string heard;
    engine()->RegisterGlobalFunction("void hear(const string &in)",
                                     asFUNCTION(+[](const std::string& text) { heard += text; }),
                                     asCALL_CDECL);
    engine()->RegisterGlobalFunction("void change(string &in)", asFUNCTION(+[](std::string& text) {
                                         heard += text;
                                         text = "changed";
                                     }),
                                     asCALL_CDECL);
    engine()->RegisterGlobalFunction("void tell(string &out)", asFUNCTION(+[](std::string& text) {
                                         heard += "[" + text + "]";
                                         text = "told";
                                     }),
                                     asCALL_CDECL);
    engine()->RegisterGlobalFunction(
        "void take(string@)", asFUNCTION(+[](std::string* text) {
            heard += text ? *text : "null";
            asIScriptEngine* const engine = asGetActiveContext()->GetEngine();
            if (text) engine->ReleaseScriptObject(text, engine->GetTypeInfoByName("string"));
        }),
        asCALL_CDECL);
    engine()->RegisterGlobalFunction(
        "string@ give(int)", asFUNCTION(+[](int number) {
            asIScriptEngine* const engine = asGetActiveContext()->GetEngine();
            auto* const text = static_cast<std::string*>(
                engine->CreateScriptObject(engine->GetTypeInfoByName("string")));
            *text = std::string(100, 'x') + std::to_string(number);
            return text;
        }),
        asCALL_CDECL);
    EXPECT_EQ(output("string a = \"a\\0b\", b = \"b\"; hear(a); change(a); tell(b); hear(b);"
                     " string@ h = a; take(h); take(null); take(give(3)); Print(a + b);"
                     " Print(\"\" + (give(1) + give(2)).length());"),
              std::string("a\0btold202", 10));
    EXPECT_EQ(heard, std::string("a\0b", 3) + std::string("a\0b", 3) + "[]told" +
                         std::string("a\0b", 3) + "null" + std::string(100, 'x') + "3");
}

/// As docs/embedding.md tells a script that stands at a line from one that has finished.
TEST_F(HostRun, TheContextTellsAStoppedRunFromAFinishedOne) {
    const std::string script = "int main() {\n int i = 0;\n i++;\n return i;\n}\n";
    const std::vector<std::int32_t> lines = {3};
    EXPECT_TRUE(RunApplication(engine(), context(), script, &lines));
    EXPECT_EQ(context()->GetState(), asEXECUTION_SUSPENDED);
    EXPECT_EQ(context()->GetLineNumber(), 3);
    EXPECT_TRUE(ContinueApplication(engine(), context(), &lines, 1));
    EXPECT_EQ(context()->GetLineNumber(), 4);
    EXPECT_TRUE(ContinueApplication(engine(), context(), nullptr, 0));
    EXPECT_EQ(context()->GetState(), asEXECUTION_FINISHED);
}

TEST_F(HostRun, ABoxOfTheHostsOwnMayCountDownAndBeKept) {
    KorvantBox box{};
    box.size = sizeof box;
    box.caption = "Drilling";
    box.text = "<b>Go on?</b>";
    box.markup = 1;
    box.style = KORVANT_BOX_YES_NO + KORVANT_BOX_QUESTION;
    box.countdownSeconds = 30;
    box.offerDoNotShow = 1;
    box.company = "Maker";
    box.module = "Question of the holes";
    frontend.answers = {box_button::kYes};
    EXPECT_EQ(ShowScriptBox(&box), KORVANT_BUTTON_YES);
    ASSERT_EQ(frontend.boxes.size(), 1u);
    const MessageBoxRequest& asked = frontend.boxes[0];
    EXPECT_EQ(asked.caption, "Drilling");
    EXPECT_EQ(asked.style, box_style::kYesNo | box_style::kIconQuestion);
    EXPECT_EQ(asked.countdownSeconds, 30u);
    EXPECT_TRUE(asked.offerDoNotShow);
    EXPECT_EQ(asked.company, "Maker");
    EXPECT_EQ(asked.module, "Question of the holes");
    EXPECT_FALSE(asked.plain);
    EXPECT_EQ(ShowScriptBox(nullptr), 0);
    box.size = 0;
    EXPECT_EQ(ShowScriptBox(&box), 0);
}

TEST_F(HostRun, WhatScriptsCanCallIsWrittenForTools) {
    const TemporaryFolder folder;
    engine()->RegisterGlobalFunction("int pumpSpeed(double depth)",
                                     asFUNCTION(+[](double) { return 1; }), asCALL_CDECL);
    const std::string json = folder.file("api.json");
    writeFile(json, "old");
    ASSERT_EQ(ExportScriptApi(engine(), json.c_str()), 1);
    const auto api = apiFromJson(readFile(json));
    ASSERT_TRUE(api);
    EXPECT_TRUE(std::any_of(api->functions.begin(), api->functions.end(), [](const ApiFunction& f) {
        return f.declaration.find("pumpSpeed") != std::string::npos;
    }));
    const std::string declarations = folder.file("as.predefined");
    ASSERT_EQ(ExportScriptApi(engine(), declarations.c_str()), 1);
    EXPECT_THAT(readFile(declarations), HasSubstr("int pumpSpeed(double"));
    EXPECT_THAT(readFile(declarations), HasSubstr("void Print("));

    EXPECT_EQ(ExportScriptApi(engine(), folder.file("no/such.json").c_str()), 0);
    EXPECT_EQ(ExportScriptApi(nullptr, json.c_str()), 0);
    EXPECT_EQ(ExportScriptApi(engine(), nullptr), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

}  // namespace
}  // namespace korvant::test
