// Every example prints what its page promises.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "support/process_runner.h"
#include "support/temporary_folder.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

namespace fs = std::filesystem;
const fs::path kExamples = fs::path(korvant::test::sourceFolder()) / "examples";

std::vector<std::string> exampleNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kExamples))
        if (entry.path().extension() == ".as") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// "Ends with exit code 1." in a comment, else 0.
int promisedExitCode(const std::string& text) {
    std::smatch found;
    const std::regex promise("// Ends with exit code ([0-9]+)");
    return std::regex_search(text, found, promise) ? std::stoi(found[1]) : 0;
}

class Example : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(All, Example, testing::ValuesIn(exampleNames()),
                         [](const auto& entry) { return entry.param; });

TEST_P(Example, PrintsWhatIsExpected) {
    const TemporaryFolder folder;
    fs::create_directory_symlink(kExamples / "data", folder.path() / "data");
    const fs::path expected = kExamples / "expected" / (GetParam() + ".out");
    ASSERT_TRUE(fs::exists(expected)) << "examples/expected/" << GetParam() << ".out is missing";
    ProcessOptions options;
    options.folder = folder.path().string();
    options.input = readFile(kExamples / "expected" / (GetParam() + ".in"));
    const std::string script = (kExamples / (GetParam() + ".as")).string();
    const ProcessResult result = runKorvant({"run", script}, options);
    EXPECT_EQ(readFile(expected), result.output);
    EXPECT_EQ(promisedExitCode(readFile(script)), result.exitCode) << result.errors;
}

TEST(Examples, TheHostsFormsNeedNoWindow) {
    const ProcessResult result =
        runProcess({"/usr/bin/env", "-u", "DISPLAY", "-u", "WAYLAND_DISPLAY",
                    korvant::test::binFolder() + "/host_form"});
    EXPECT_EQ(readFile(kExamples / "expected" / "host_form.out"), result.output);
    EXPECT_EQ(0, result.exitCode) << result.errors;
}

TEST(Examples, AreEnoughToLearnFrom) {
    EXPECT_GE(exampleNames().size(), 10u);
}

}  // namespace
}  // namespace korvant::test
