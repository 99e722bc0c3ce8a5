// korvant object, and runs that a file of answers drives.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

const std::string kExampleFolder = korvant::test::sourceFolder() + "/examples/";

std::string written(const TemporaryFolder& folder, const std::string& name,
                    const std::string& text) {
    const std::string path = (folder.path() / name).string();
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

nlohmann::json formOf(const std::string& script, const std::string& locale) {
    const ProcessResult result =
        runKorvant({"object", "--json", "--locale", locale, kExampleFolder + script});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    const nlohmann::json forms = nlohmann::json::parse(result.output, nullptr, false);
    EXPECT_TRUE(forms.is_array() && forms.size() == 1) << result.output;
    return forms.is_array() && !forms.empty() ? forms[0] : nlohmann::json::object();
}

TEST(ObjectCommand, ShowsTheExampleFormsInThreeLanguages) {
    const char* const kDuty[] = {"Duty", "Service", "Servicio"};
    const char* const kIntervals[] = {"Intervals", "Intervalles", "Intervalos"};
    for (int locale = 0; locale < 3; ++locale) {
        const nlohmann::json pump = formOf("pump_form.as", std::to_string(locale));
        ASSERT_EQ(pump["pages"].size(), 2U);
        EXPECT_EQ(pump["pages"][0]["caption"], kDuty[locale]);
        EXPECT_EQ(pump["pages"][0]["properties"].size(), 9U);
        const nlohmann::json hole = formOf("drillhole_form.as", std::to_string(locale));
        ASSERT_EQ(hole["pages"].size(), 2U);
        EXPECT_EQ(hole["pages"][1]["caption"], kIntervals[locale]);
        EXPECT_EQ(hole["pages"][1]["elements"].size(), 3U);
    }
}

TEST(ObjectCommand, SpeaksToPeopleToo) {
    const ProcessResult result = runKorvant({"object", kExampleFolder + "pump_form.as"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.output.find("Flow (flow, real): 36"), std::string::npos) << result.output;
    EXPECT_EQ(result.output.find("properties."), std::string::npos) << result.output;
}

TEST(Answers, DriveARunAndAreMissedByName) {
    const TemporaryFolder folder;
    const std::string script = written(folder, "ask.as", R"(int main() { Object o;
        o.setTitle("Tank"); o.addProperty("width", "Width", 2.0, "m", true);
        o.addErrorConstraint("width", "width>0", "positive");
        int holes = o.prompt("Holes", 1); int yes = o.messageBox("c", "Save it?", "BU_YES_NO", "");
        bool ok = o.edit(); double width; o.getProperty("width", width);
        Print("" + holes + " " + yes + " " + (ok ? 1 : 0) + " " + width); return 0; })");
    const auto answered = [&](const std::string& width, const std::string& title) {
        return written(folder, "answers.json",
                       R"({"answers": [{"prompt": "Holes", "value": 7},
                           {"box": "Save it?", "button": "Yes"},
                           {"edit": ")" +
                           title + R"(", "set": {"width": )" + width + "}}]}");
    };
    ProcessResult result = runKorvant({"run", "--answer", answered("3.5", "Tank"), script});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "7 214 1 3.5");
    result = runKorvant({"run", "--answer", answered("3.5", "Other"), script});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("no answer for the edit \"Tank\""), std::string::npos)
        << result.errors;
    result = runKorvant({"run", "--answer", answered("-1", "Tank"), script});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("property \"width\" (Width): positive"), std::string::npos);
    EXPECT_NE(result.errors.find("ask.as:5\n"), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("bool ok = o.edit();"), std::string::npos) << result.errors;
    EXPECT_NE(runKorvant({"run", "--answer", answered("true", "Tank"), script})
                  .errors.find("\"width\": true and false are for booleans alone"),
              std::string::npos);
    for (const char* word : {"stopped", "time", "Time"})
        EXPECT_EQ(result.errors.find(word), std::string::npos) << result.errors;
    result = runKorvant({"run", "--answer", written(folder, "bad.json", "[1"), script});
    EXPECT_EQ(result.exitCode, 66);
    result = runKorvant({"run", "--answer", folder.path().string(), script});
    EXPECT_EQ(result.exitCode, 66);
    EXPECT_NE(result.errors.find("is a folder"), std::string::npos) << result.errors;
}

TEST(Answers, OfTheWrongKindAreRefusedBeforeTheRun) {
    const TemporaryFolder folder;
    const std::string script = written(folder, "a.as", "int main() { Print(\"ran\"); return 0; }");
    struct Case {
        const char* answer;
        const char* message;
    };
    for (const Case& one :
         {Case{R"({"edit": "Tank", "set": 5})", "answer 1: \"set\" must be an object"},
          Case{R"({"edit": "Tank", "set": {"width": [1]}})", "\"width\" must be a number"},
          Case{R"({"edit": "Tank", "elements": {"G": {"a": 1}}})", "must be a list of elements"},
          Case{R"({"edit": "Tank", "ok": "no"})", "\"ok\" must be true or false"},
          Case{R"({"prompt": 4})", "\"prompt\" must be a text"},
          Case{R"({"value": 4})", "needs one of"},
          Case{R"({"box": "x", "button": 6})", "\"button\" must be a text"},
          Case{R"({"prompt": "x", "vlaue": 3})",
               "\"vlaue\" is nothing that an answer to \"prompt\""},
          Case{R"({"edit": "x", "button": "OK"})", "\"button\" is nothing that an answer to"},
          Case{"\n{\"prompt\": \"x\",}", "answers.json:2:16: this is no JSON"},
          Case{"7", "must be an object"}}) {
        const std::string file =
            written(folder, "answers.json", std::string("{\"answers\": [") + one.answer + "]}");
        const ProcessResult result = runKorvant({"run", "--answer", file, script});
        EXPECT_EQ(result.exitCode, 66) << one.answer;
        EXPECT_EQ(result.output, "") << one.answer;
        EXPECT_NE(result.errors.find(one.message), std::string::npos) << result.errors;
    }
}

TEST(Answers, NameTheElementAndItsMessage) {
    const TemporaryFolder folder;
    const std::string script = written(folder, "g.as", R"(int main() { Object e, o;
        e.addProperty("to", "Bottom", 1.0, "m", true);
        e.addErrorConstraint("to", "to>0", "<b>Too</b> high");
        o.setTitle("Hole"); o.addClass("Layers", true);
        o.addGroup("Layers", e, true, true, true, true); o.addGroupElement(e);
        o.edit(); return 0; })");
    const std::string answers = written(folder, "answers.json",
                                        R"({"answers": [{"edit": "Hole", "elements":
                                        {"Hole": [{"to": 1}, {"to": -1}]}}]})");
    const ProcessResult result = runKorvant({"object", "--answer", answers, script});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("property \"to\" of element 2 (Bottom): Too high"),
              std::string::npos)
        << result.errors;
    const std::string wrong =
        written(folder, "wrong.json", R"({"answers": [{"edit": "Hole", "elements": {"X": []}}]})");
    EXPECT_NE(runKorvant({"object", "--answer", wrong, script})
                  .errors.find("the form \"Hole\" has no group \"X\"; it has \"Hole\""),
              std::string::npos);
}

}  // namespace
}  // namespace korvant::test
