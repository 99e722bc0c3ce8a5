// Scripts with their expectations inside. Comments in a script of tests/scripts say
//   // expect: LINE     the next line of the output; all of them are all of the output
//   // error: TEXT      what standard error contains
//   // exit: CODE       instead of 0
//   // input: LINE      the next line of standard input
//   // switches: A B    switches of "korvant run"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

namespace fs = std::filesystem;
const fs::path kScripts = fs::path(korvant::test::sourceFolder()) / "tests" / "scripts";

struct Expectations {
    std::string output;
    std::vector<std::string> errors;
    int exitCode = 0;
    std::string input;
    std::vector<std::string> switches;
};

/// What stands behind `key` in a line; false when it is not there.
bool comment(const std::string& line, const std::string& key, std::string& value) {
    const auto found = line.find("// " + key + ":");
    if (found == std::string::npos) return false;
    const auto begin = found + key.size() + 4;
    value = begin < line.size() ? line.substr(begin + 1) : "";
    return true;
}

Expectations expectationsOf(const std::string& text) {
    Expectations expected;
    std::istringstream lines(text);
    for (std::string line, value; std::getline(lines, line);) {
        if (comment(line, "expect", value)) expected.output += value + "\n";
        if (comment(line, "error", value)) expected.errors.push_back(value);
        if (comment(line, "exit", value)) expected.exitCode = std::stoi(value);
        if (comment(line, "input", value)) expected.input += value + "\n";
        if (comment(line, "switches", value)) {
            std::istringstream words(value);
            for (std::string word; words >> word;) expected.switches.push_back(word);
        }
    }
    return expected;
}

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kScripts))
        if (entry.path().extension() == ".as") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

class Script : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(All, Script, testing::ValuesIn(scriptNames()),
                         [](const auto& entry) { return entry.param; });

TEST_P(Script, DoesWhatItSays) {
    const TemporaryFolder folder;
    const std::string file = (kScripts / (GetParam() + ".as")).string();
    const Expectations expected = expectationsOf(readFile(file));
    std::vector<std::string> arguments = {"run"};
    arguments.insert(arguments.end(), expected.switches.begin(), expected.switches.end());
    arguments.push_back(file);
    ProcessOptions options;
    options.folder = folder.path().string();
    options.input = expected.input;
    const ProcessResult result = runKorvant(arguments, options);
    EXPECT_EQ(expected.output, result.output);
    EXPECT_EQ(expected.exitCode, result.exitCode) << result.errors;
    for (const std::string& text : expected.errors)
        EXPECT_THAT(result.errors, testing::HasSubstr(text));
}

}  // namespace
}  // namespace korvant::test
