// Documents that name headers and tests name all of those that there are, and none that is not.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "house/source_tree.h"

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The rows of the tables below a heading, as cells.
std::vector<std::vector<std::string>> rowsBelow(const fs::path& document,
                                                const std::string& heading) {
    std::istringstream lines(contentOf(document));
    std::vector<std::vector<std::string>> rows;
    bool below = heading.empty();
    for (std::string line; std::getline(lines, line);) {
        if (!heading.empty() && line.starts_with("## ")) below = line == "## " + heading;
        if (!below || !line.starts_with("|") || line.starts_with("|---")) continue;
        std::istringstream cells(line.substr(1));
        rows.emplace_back();
        for (std::string cell; std::getline(cells, cell, '|');) rows.back().push_back(cell);
    }
    return rows;
}

/// What stands in back quotes, with the text in front of it.
std::vector<std::pair<std::string, std::string>> quoted(const std::string& text) {
    static const std::regex kQuoted("([^`]*)`([^`]+)`");
    std::vector<std::pair<std::string, std::string>> found;
    for (std::sregex_iterator at(text.begin(), text.end(), kQuoted), end; at != end; ++at)
        found.emplace_back((*at)[1], (*at)[2]);
    return found;
}

template <class Visit>
void forEachSource(const fs::path& folder, const Visit& visit) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const auto extension = entry.path().extension();
        if (extension == ".cpp" || extension == ".h") visit(entry.path());
    }
}

TEST(DocumentedNames, HeadersForHostsAreThoseThatAreInstalled) {
    Names documented, there;
    for (const auto& row : rowsBelow(kRoot / "docs/embedding.md", "Headers"))
        for (const auto& [before, name] : quoted(row[0])) documented.insert(name);
    forEachSource(kRoot / "include", [&](const fs::path& path) {
        there.insert(fs::relative(path, kRoot / "include").generic_string());
    });
    EXPECT_EQ(documented, there);
}

TEST(DocumentedNames, HeadersForProgramsAreThoseThatProgramsInclude) {
    Names documented, included;
    for (const auto& row : rowsBelow(kRoot / "docs/architecture.md", "Public headers")) {
        if (quoted(row[0]).empty()) continue;
        const std::string room = quoted(row[0])[0].second;
        for (const auto& [before, name] : quoted(row[1]))
            documented.insert(room + "/" + name + ".h");
    }
    static const std::regex kInclude(R"re(\n#include "(\w+/[^"]+)")re");
    forEachSource(kRoot / "apps", [&](const fs::path& path) {
        const std::string text = "\n" + contentOf(path);
        for (std::sregex_iterator at(text.begin(), text.end(), kInclude), end; at != end; ++at)
            if (fs::exists(kRoot / "src" / (*at)[1].str())) included.insert((*at)[1]);
    });
    EXPECT_EQ(documented, included);
}

/// The tests of a suite, by its name.
std::map<std::string, Names> allTests() {
    static const std::regex kTest(R"re(\bTEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\))re");
    std::map<std::string, Names> tests;
    forEachSource(kRoot / "tests", [&](const fs::path& path) {
        const std::string text = contentOf(path);
        for (std::sregex_iterator at(text.begin(), text.end(), kTest), end; at != end; ++at)
            tests[(*at)[1]].insert((*at)[2]);
    });
    return tests;
}

bool isThere(const std::map<std::string, Names>& tests, const std::string& name) {
    const auto point = name.find('.');
    const auto suite = tests.find(name.substr(0, point));
    if (suite == tests.end()) return false;
    if (point == std::string::npos) return true;
    const std::string test = name.substr(point + 1);
    if (!test.ends_with("*")) return suite->second.count(test) > 0;
    const auto first = suite->second.lower_bound(test.substr(0, test.size() - 1));
    return first != suite->second.end() && first->starts_with(test.substr(0, test.size() - 1));
}

TEST(DocumentedNames, EveryTestOfADangerIsThere) {
    const std::map<std::string, Names> tests = allTests();
    static const std::regex kTestName("[A-Z]\\w*(\\.[\\w*]+)?");
    int named = 0;
    for (const auto& row : rowsBelow(kRoot / "docs/robustness.md", "")) {
        if (row.size() < 4 || row[0] == " # ") continue;
        EXPECT_NE(row[3].find_first_not_of(' '), std::string::npos) << row[1];
        bool fuzzed = false;
        for (const auto& [before, name] : quoted(row[3])) {
            if (before.find("fuzz target") != std::string::npos) fuzzed = true;
            if (std::regex_match(name, kTestName)) {
                EXPECT_TRUE(isThere(tests, name)) << name;
                ++named;
            } else if (fuzzed) {
                EXPECT_TRUE(fs::exists(kRoot / "fuzz" / ("fuzz_" + name + ".cpp"))) << name;
            }
        }
    }
    EXPECT_GT(named, 150);
}

}  // namespace
