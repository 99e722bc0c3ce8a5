// korvant object, and runs that a file of answers drives.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "support/process_runner.h"
#include "support/temporary_folder.h"

namespace korvant::test {
namespace {

const std::string kExamples = KORVANT_SOURCE_DIR "/examples/";

std::string written(const TemporaryFolder& folder, const std::string& name,
                    const std::string& text) {
    const std::string path = (folder.path() / name).string();
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

nlohmann::json formOf(const std::string& script, const std::string& locale) {
    const ProcessResult result =
        runKorvant({"object", "--json", "--locale", locale, kExamples + script});
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
    const ProcessResult result = runKorvant({"object", kExamples + "pump_form.as"});
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
    EXPECT_NE(result.errors.find("Width"), std::string::npos) << result.errors;
    result = runKorvant({"run", "--answer", written(folder, "bad.json", "[1"), script});
    EXPECT_EQ(result.exitCode, 66);
}

}  // namespace
}  // namespace korvant::test
